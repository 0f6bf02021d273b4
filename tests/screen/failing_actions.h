#pragma once

#include "tests/screen/screen_fixture.h"

#include <functional>
#include <memory>
#include <string>

namespace veldran::test {

/// The report of a failure that a test ordered, whole.
void expectReport(const ShownError& shown, const std::string& label);

std::unique_ptr<Screen> openScreen(const Chart& chart);

/// A way in which the network fails: `&TcpProxy::cut` before the message arrives,
/// `&TcpProxy::cutAtNextAnswer` when the server has it.
using Cut = void (TcpProxy::*)();
/// The network between the screen and its server fails at the message of that number, counted from 0 from now
/// on.
void cutAt(Screen& screen, std::size_t message, Cut cut);
/// The report of a lost connection.
void expectReportOfLoss(const ShownError& shown, const std::string& label);

/// One action of the user and what its failures have to look like.
struct Action {
    using Step = std::function<void(Screen&)>;

    Chart chart = smallChart();
    std::unique_ptr<Screen> (*open)(const Chart&) = openScreen;
    Step prepare = [](Screen&) {};
    Step act;
    std::function<std::string(const Message&)> label; ///< of the report when that message fails
    std::function<void(Screen&, const Message&)> afterFailure = [](Screen&, const Message&) {};
    Step repeat; ///< what the user does next; everything works again
    Step expectDone;
};

/// Runs the action once for each of its messages to the database, that message failing: one report under its
/// label, the stated after-effects, and a screen that works on and closes cleanly. On a server the connection
/// is cut at each message, too, before it arrives and before it is answered: the first report is that of its
/// label, nothing is half stored, every later routine reports, and the form closes and opens again.
void failEachStatement(const Action& action);

} // namespace veldran::test
