#pragma once

#include "tests/screen/network_faults.h"

#include <functional>
#include <memory>
#include <string>

namespace veldran::test {

/// The report of a failure that a test ordered, whole.
void expectReport(const ShownError& shown, const std::string& label);

std::unique_ptr<Screen> openScreen(const Chart& chart);

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
    bool storesRowByRow = false; ///< correlations are written without a transaction
};

/// Runs the action once for each of its messages to the database, that message failing: one report under its
/// label, the stated after-effects, and a screen that works on and closes cleanly.
///
/// On a server the network fails at each message, too. The connection is cut before the message arrives, and
/// before it is answered, and stalls without end: the first report is that of its label, nothing is half
/// stored, every later routine reports, and the form closes and opens again. A stall that ends after the
/// connection's time limit: one report, and a screen that works on. Messages without a limit wait as long as
/// it takes.
void failEachStatement(const Action& action);

} // namespace veldran::test
