#pragma once

#include "tests/screen/screen_fixture.h"

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
};

/// Runs the action once for each of its messages to the database, that message failing: one report under its
/// label, the stated after-effects, and a screen that works on and closes cleanly.
void failEachStatement(const Action& action);

} // namespace veldran::test
