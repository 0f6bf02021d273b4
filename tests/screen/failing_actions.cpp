#include "tests/screen/failing_actions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

namespace veldran::test {

void expectReport(const ShownError& shown, const std::string& label) {
    EXPECT_EQ(shown.routine, label);
    EXPECT_EQ(shown.style, 4370);
    EXPECT_EQ(shown.applicationTitle, "Contabilità di prova");
    EXPECT_EQ(shown.formCaption, "Attivazione conti");
    EXPECT_EQ(shown.error.Number, 50000);
    EXPECT_EQ(shown.error.Description, "Guasto simulato");
    EXPECT_EQ(shown.error.Source, "\r\ntest") << "a line break stands before the source";
    ASSERT_EQ(shown.connectionErrors.size(), 1U) << "the database's own list goes with the report";
    EXPECT_EQ(shown.connectionErrors[0].Number, 50000);
    EXPECT_EQ(shown.connectionErrors[0].SQLState, "HY000");
}

std::unique_ptr<Screen> openScreen(const Chart& chart) {
    auto screen = std::make_unique<Screen>(chart);
    screen->host.open();
    return screen;
}

namespace {

std::unique_ptr<Screen> prepared(const Action& action) {
    auto screen = action.open(action.chart);
    action.prepare(*screen);
    EXPECT_TRUE(screen->host.messages->errors.empty());
    screen->host.messages->clear();
    screen->host.screen.pointers.clear();
    screen->forget();
    return screen;
}

using StoredRows = std::vector<std::vector<std::string>>;

StoredRows correlations(const Screen& screen) {
    return screen.database.rows(
        "SELECT * FROM CI15_CORRCONTICOGE ORDER BY CI15_CONTO_CG24, CI15_CODCAUS_CI03, "
        "CI15_PROG");
}

StoredRows activations(const Screen& screen) {
    return screen.database.rows("SELECT CI35_CONTO_CG24 FROM CI35_CONTIATTIVI ORDER BY CI35_CONTO_CG24");
}

/// What an action does when nothing fails.
struct Course {
    std::vector<Message> messages;
    std::vector<std::string> labels; ///< of the report when the message fails
    std::vector<int> requests;       ///< that the message sends through the network
    StoredRows correlationsBefore, correlationsAfter, activationsBefore, activationsAfter;
};

Course courseOf(const Action& action) {
    const auto screen = prepared(action);
    Course course;
    course.correlationsBefore = correlations(*screen);
    course.activationsBefore = activations(*screen);
    RequestCount requests(*screen);
    action.act(*screen);
    course.requests = requests.ofEachMessage();
    course.correlationsAfter = correlations(*screen);
    course.activationsAfter = activations(*screen);
    course.messages = screen->log().messages();
    for (const Message& message : course.messages) {
        course.labels.push_back(action.label(message));
    }
    EXPECT_TRUE(screen->host.messages->errors.empty());
    action.expectDone(*screen);
    return course;
}

std::string described(const Course& course, std::size_t i) {
    return "message " + std::to_string(i + 1) + " of " + std::to_string(course.messages.size()) + ": " +
           nameOf(course.messages[i].how) + " " + course.messages[i].text;
}

/// Every row was there before the action, or is there after it.
void expectOnlyRowsOf(const StoredRows& left, const StoredRows& before, const StoredRows& after) {
    for (const auto& row : left) {
        EXPECT_TRUE(std::find(before.begin(), before.end(), row) != before.end() ||
                    std::find(after.begin(), after.end(), row) != after.end())
            << ::testing::PrintToString(row);
    }
}

/// Each activation is a transaction of its own: some may have come about, but none that was not asked for.
void expectNothingHalfStored(const Screen& screen, const Action& action, const Course& course) {
    const StoredRows left = correlations(screen);
    if (action.storesRowByRow) {
        expectOnlyRowsOf(left, course.correlationsBefore, course.correlationsAfter);
    } else {
        EXPECT_TRUE(left == course.correlationsBefore || left == course.correlationsAfter)
            << ::testing::PrintToString(left);
    }
    expectOnlyRowsOf(activations(screen), course.activationsBefore, course.activationsAfter);
}

void loseTheConnectionAt(std::size_t i, const Fault& fault, int timeLimit, const Action& action,
                         const Course& course) {
    const auto screen = prepared(action);
    TcpProxy& network = screen->database.server()->network();
    screen->host.connection().CommandTimeout(timeLimit);
    failNetworkAt(*screen, i, fault);
    action.act(*screen);
    const auto& errors = screen->host.messages->errors;
    ASSERT_FALSE(errors.empty());
    expectReportOfLoss(errors[0], course.labels[i]);
    EXPECT_EQ(screen->host.screen.GetMousePointer(), services::mouseDefault);
    EXPECT_TRUE(screen->host.isOpen());
    expectNothingHalfStored(*screen, action, course);
    network.resume(); // what it held back still reaches the server
    const std::size_t reports = errors.size();
    screen->failures().heal();
    screen->forget();
    action.act(*screen);
    EXPECT_TRUE(errors.size() > reports || screen->sent().empty()) << "the connection does not come back";
    expectNothingHalfStored(*screen, action, course);
    screen->host.messages->answers = {services::answerNo}; // to the question about changes that are not saved
    EXPECT_TRUE(screen->host.form().Unload());
    EXPECT_EQ(screen->database.openSessions(), 0);
    screen->host.messages->clear();
    screen->host.open();
    EXPECT_TRUE(screen->host.messages->errors.empty()) << "the next form has a connection of its own";
}

/// The network holds the message back until its time is up, and goes on before the connection is given up.
void outwaitTheLimitAt(std::size_t i, const Action& action, const Course& course) {
    const auto screen = prepared(action);
    Stalls stalls(*screen);
    screen->host.connection().CommandTimeout(shortLimit);
    failNetworkAt(*screen, i, [&](TcpProxy&) { stalls.hold(course.requests[i], beyondTheLimit); });
    action.act(*screen);
    stalls.await();
    screen->failures().heal();
    const auto& errors = screen->host.messages->errors;
    ASSERT_EQ(errors.size(), 1U);
    expectReportOfTimeLimit(errors[0], course.labels[i]);
    EXPECT_EQ(screen->host.screen.GetMousePointer(), services::mouseDefault);
    EXPECT_TRUE(screen->host.isOpen());
    expectNothingHalfStored(*screen, action, course);
    action.repeat(*screen);
    EXPECT_EQ(errors.size(), 1U) << "the screen works on, on the same connection";
    action.expectDone(*screen);
    EXPECT_TRUE(screen->host.form().Unload());
    EXPECT_EQ(screen->database.openSessions(), 0);
}

/// Every message has to wait, those that no limit ends longer than the limit: nothing else may come of it.
void stallEachStatement(const Action& action, const Course& course) {
    const auto screen = prepared(action);
    Stalls stalls(*screen);
    screen->host.connection().CommandTimeout(shortLimit);
    screen->failures().failWhere(
        [&, i = std::size_t{0}](const Message& message) mutable {
            stalls.await();
            if (course.requests.at(i) > 0) {
                stalls.hold(course.requests[i],
                            isLimited(message) ? std::chrono::milliseconds(20) : beyondTheLimit);
            }
            ++i;
            return false;
        },
        Times::Always);
    action.act(*screen);
    stalls.await();
    screen->failures().heal();
    EXPECT_TRUE(screen->host.messages->errors.empty());
    action.expectDone(*screen);
}

/// Everything that a network does to an action, at each of its messages.
void failTheNetworkAtEachStatement(const Action& action, const Course& course) {
    stallEachStatement(action, course);
    for (std::size_t i = 0; i < course.messages.size(); ++i) {
        SCOPED_TRACE("network, " + described(course, i));
        constexpr int noLimit = 0;
        loseTheConnectionAt(i, &TcpProxy::cut, noLimit, action, course);
        loseTheConnectionAt(i, &TcpProxy::cutAtNextAnswer, noLimit, action, course);
        if (isLimited(course.messages[i])) {
            outwaitTheLimitAt(i, action, course);
            const auto stall = [&](TcpProxy& network) { network.stallAtRequest(course.requests[i]); };
            loseTheConnectionAt(i, stall, shortLimit, action, course);
        }
    }
}

} // namespace

void failEachStatement(const Action& action) {
    const Course course = courseOf(action);
    ASSERT_FALSE(course.messages.empty());
    for (std::size_t i = 0; i < course.messages.size(); ++i) {
        SCOPED_TRACE(described(course, i));
        const auto screen = prepared(action);
        screen->failures().failStatement(static_cast<int>(i) + 1);
        action.act(*screen);
        EXPECT_EQ(screen->failures().failuresRaised(), 1);
        ASSERT_EQ(screen->host.messages->errors.size(), 1U);
        expectReport(screen->host.messages->errors[0], course.labels[i]);
        EXPECT_EQ(screen->host.screen.GetMousePointer(), services::mouseDefault);
        action.afterFailure(*screen, course.messages[i]);
        screen->failures().heal();
        action.repeat(*screen);
        EXPECT_EQ(screen->host.messages->errors.size(), 1U) << "the screen works on";
        action.expectDone(*screen);
        EXPECT_TRUE(screen->host.form().Unload());
        EXPECT_EQ(screen->database.openSessions(), 0);
    }
    if (TestServer::chosen() != nullptr) {
        failTheNetworkAtEachStatement(action, course);
    }
}

} // namespace veldran::test
