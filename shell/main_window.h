#pragma once

#include "shell/component_library.h"
#include "shell/host.h"
#include "shell/navigator_bar.h"
#include "shell/open_screen.h"
#include "shell/status_line.h"
#include "shell/work_area.h"

#include <QMainWindow>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

class QAction;
class QMdiSubWindow;
class QMenu;

namespace veldran::shell {

/// The host's window: documents, menu, navigator, status bar. Opens screens through the component's contract.
class MainWindow final : public QMainWindow {
public:
    /// \param component the component's library, loaded when the first screen is opened
    MainWindow(Host& host, std::filesystem::path component);
    ~MainWindow() override;

    /// Opens the screen of the menu entry, or brings it to the front when it is already open.
    void openScreen(const MenuEntry& entry);
    /// Screens that are open, in the order of their opening.
    const std::vector<std::unique_ptr<OpenScreen>>& screens() const { return screens_; }
    /// Makes another company the current one, unless an open screen refuses.
    /// \return false when it was refused
    bool changeCompany(int index);

    static const MenuEntry& accountsEntry();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void buildWindowMenu(QMenu& menu);
    void listWindows(QMenu& menu);
    void openAnother(const MenuEntry& entry);
    void activeWindowChanged();
    OpenScreen* activeScreen() const;
    void pressed(NavigatorButton button);
    void forget(const OpenScreen* screen);
    void showCompany();
    void about();

    Host& host_;
    std::filesystem::path component_;
    std::optional<ComponentLibrary> library_;
    std::vector<std::unique_ptr<OpenScreen>> screens_;
    WorkArea* area_;
    NavigatorBar* bar_;
    std::unique_ptr<StatusLine> status_;
    QAction* anotherAction_ = nullptr;
    std::vector<QAction*> windowActions_; ///< that need an open window
    std::vector<QAction*> windowList_;
};

} // namespace veldran::shell
