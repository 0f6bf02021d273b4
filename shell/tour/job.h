#pragma once

#include "shell/tour/stage.h"

#include <QModelIndex>
#include <memory>
#include <string>

namespace veldran::ado {
class Connection;
}
namespace veldran::qt {
class TreeWidget;
}

namespace veldran::shell {

class Host;
class MainWindow;

/// The whole job of the screen on the demo company, step by step as a user does it.
class TourJob {
public:
    TourJob(Stage& stage, MainWindow& window, Host& host);
    ~TourJob();
    /// \throws TourFailure at the first step that does not show what it should
    void run();

private:
    void showWindow();
    void openByMenu();
    void openBranches();
    void filter();
    void searchTypedCode();
    void searchFromList();
    void checkByMouse();
    void checkBySpace();
    void lookForUnknownAccount();
    void refuseHostCommands();
    void closeAndReopen();

    qt::TreeWidget& tree();
    /// The row, among those that are open, whose text begins so. \throws TourFailure
    QModelIndex row(const std::string& text);
    bool hasRow(const std::string& text);
    bool isChecked(const std::string& text);
    void clickRow(const std::string& text, int hitFlag);
    void chooseMenuEntry();
    void typeIntoSearch(const QString& code);
    /// Presses Enter in the search field and waits until the tree has selected the account.
    void searchNow(const std::string& selectedText);
    void expectCatalogueMessage(const std::function<void()>& action, int number, const std::string& name,
                                const std::string& caption);
    void expectFilter(const QString& tab, const std::string& label);
    /// How many of the accounts whose code begins so the database holds as activated for the company.
    int activeAccounts(const std::string& codeStart);

    Stage& stage_;
    MainWindow& window_;
    Host& host_;
    std::shared_ptr<ado::Connection> connection_; // shared: as connections are; the tour's own
};

} // namespace veldran::shell
