#pragma once

#include "shell/tour/stage.h"

#include <memory>
#include <string>

namespace veldran::ado {
class Connection;
}

namespace veldran::shell {

class ChartUser;
class Host;
class MainWindow;

/// The activation of accounts on the demo company, step by step as a user does it.
class TourJob {
public:
    /// \param connection the tour's own, to look into the database
    TourJob(Stage& stage, ChartUser& chart, MainWindow& window, Host& host,
            std::shared_ptr<ado::Connection> connection);
    /// \throws TourFailure at the first step that does not show what it should
    void run();
    /// Deactivates what `run` has activated.
    void undo();

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

    void chooseMenuEntry();
    void expectCatalogueMessage(const std::function<void()>& action, int number, const Shot& shot);
    void expectFilter(const QString& tab, const std::string& label);
    /// How many of the accounts whose code begins so the database holds as activated for the company.
    int activeAccounts(const std::string& codeStart);

    Stage& stage_;
    ChartUser& chart_;
    MainWindow& window_;
    Host& host_;
    std::shared_ptr<ado::Connection> connection_;
};

} // namespace veldran::shell
