#pragma once

#include "shell/tour/tour_part.h"

#include <string>

namespace veldran::shell {

class Host;
class MainWindow;

/// The activation of accounts on the demo company, step by step as a user does it.
class ActivationJob : private TourPart {
public:
    ActivationJob(TourGround& ground, MainWindow& window, Host& host)
        : TourPart(ground), window_(window), host_(host) {}
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

    MainWindow& window_;
    Host& host_;
};

} // namespace veldran::shell
