#pragma once

#include <QToolBar>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

class QAction;
class QComboBox;

namespace veldran::shell {

/// Indexes of the navigator's buttons, as its events carry them.
enum NavigatorButton {
    buttonFirst = 1,
    buttonPrevious = 2,
    buttonNext = 3,
    buttonLast = 4,
    buttonNew = 5,
    buttonConfirm = 6,
    buttonUndo = 7,
    buttonDelete = 8,
    buttonExport = 24,
    buttonPrintCard = 25,
    buttonCloseScreen = 30
};

/// The toolbar: the company being worked on, the record buttons and the host's own commands.
/// It decides nothing; who owns it asks the active screen and acts.
class NavigatorBar final : public QToolBar {
public:
    explicit NavigatorBar(QWidget* parent);

    /// Fills the company chooser with texts in the given order and shows the one at `current` (-1: none).
    void setCompanies(const std::vector<std::string>& names, int current);
    /// Enables the buttons for a screen.
    /// \param active a screen is the active window
    /// \param status of its editing frame (0 browsing, 1 editing, 2 adding new); none without a frame
    void showState(bool active, std::optional<std::int16_t> status);
    QAction* button(NavigatorButton index) const { return actions_.at(index); }

    std::function<void(int companyIndex)> onCompanyChosen;
    std::function<void(NavigatorButton)> onButton;

private:
    QComboBox* companies_;
    std::map<NavigatorButton, QAction*> actions_;
};

} // namespace veldran::shell
