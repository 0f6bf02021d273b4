#pragma once

#include <QModelIndex>
#include <QString>
#include <string>

namespace veldran::qt {
class TreeWidget;
}

namespace veldran::shell {

class Stage;

/// A user at the chart of accounts: reads the tree's rows, clicks them, and searches.
class ChartUser {
public:
    explicit ChartUser(Stage& stage) : stage_(stage) {}

    qt::TreeWidget& tree() const;
    /// The row, among those that are open, whose text begins so. \throws TourFailure
    QModelIndex row(const std::string& text) const;
    bool hasRow(const std::string& text) const;
    bool isChecked(const std::string& text) const;
    bool isSelected(const std::string& text) const;
    /// Whether the row is drawn as that of an account with correlations.
    bool isMarked(const std::string& text) const;
    /// \param hitFlag the part of the row to be clicked, as the tree's own hit test names it
    void clickRow(const std::string& text, int hitFlag);
    void typeIntoSearch(const QString& code);
    /// Presses Enter in the search field and waits until the tree has selected the account.
    void searchNow(const std::string& selectedText);

private:
    Stage& stage_;
};

} // namespace veldran::shell
