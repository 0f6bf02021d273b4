#include "tests/screen/failing_actions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <thread>

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
    StoredRows correlationsBefore, correlationsAfter, activationsBefore, activationsAfter;
};

Course courseOf(const Action& action) {
    const auto screen = prepared(action);
    Course course;
    course.correlationsBefore = correlations(*screen);
    course.activationsBefore = activations(*screen);
    action.act(*screen);
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

/// Each activation is a transaction of its own: some may have come about, but none that was not asked for.
void expectNothingHalfStored(const Screen& screen, const Course& course) {
    const StoredRows left = correlations(screen);
    EXPECT_TRUE(left == course.correlationsBefore || left == course.correlationsAfter)
        << ::testing::PrintToString(left);
    for (const auto& row : activations(screen)) {
        const auto among = [&row](const StoredRows& rows) {
            return std::find(rows.begin(), rows.end(), row) != rows.end();
        };
        EXPECT_TRUE(among(course.activationsBefore) || among(course.activationsAfter)) << row.at(0);
    }
}

void loseTheConnectionAt(std::size_t i, Cut cut, const Action& action, const Course& course) {
    const auto screen = prepared(action);
    cutAt(*screen, i, cut);
    action.act(*screen);
    const auto& errors = screen->host.messages->errors;
    ASSERT_FALSE(errors.empty());
    expectReportOfLoss(errors[0], course.labels[i]);
    EXPECT_EQ(screen->host.screen.GetMousePointer(), services::mouseDefault);
    EXPECT_TRUE(screen->host.isOpen());
    expectNothingHalfStored(*screen, course);
    const std::size_t reports = errors.size();
    screen->failures().heal();
    screen->forget();
    action.act(*screen);
    EXPECT_TRUE(errors.size() > reports || screen->sent().empty()) << "the connection does not come back";
    expectNothingHalfStored(*screen, course);
    screen->host.messages->answers = {services::answerNo}; // to the question about changes that are not saved
    EXPECT_TRUE(screen->host.form().Unload());
    EXPECT_EQ(screen->database.openSessions(), 0);
    screen->host.messages->clear();
    screen->host.open();
    EXPECT_TRUE(screen->host.messages->errors.empty()) << "the next form has a connection of its own";
}

/// Every message has to wait a while: nothing else may come of it.
void stallEachStatement(const Action& action) {
    const auto screen = prepared(action);
    TcpProxy& network = screen->database.server()->network();
    std::vector<std::future<void>> resumed;
    screen->failures().failWhere(
        [&](const Message&) {
            network.stall();
            resumed.push_back(std::async(std::launch::async, [&network] {
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
                network.resume();
            }));
            return false;
        },
        Times::Always);
    action.act(*screen);
    resumed.clear(); // waits for each
    screen->failures().heal();
    EXPECT_TRUE(screen->host.messages->errors.empty());
    action.expectDone(*screen);
}

} // namespace

void cutAt(Screen& screen, std::size_t message, Cut cut) {
    TcpProxy& network = screen.database.server()->network();
    screen.failures().failWhere(
        [&network, cut, message](const Message&) mutable {
            if (message-- == 0) {
                (network.*cut)();
            }
            return false;
        },
        Times::Always);
}

void expectReportOfLoss(const ShownError& shown, const std::string& label) {
    EXPECT_EQ(shown.routine, label);
    ASSERT_FALSE(shown.connectionErrors.empty());
    EXPECT_EQ(shown.connectionErrors[0].SQLState.substr(0, 2), "08") << shown.error.Description;
}

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
        stallEachStatement(action);
        for (std::size_t i = 0; i < course.messages.size(); ++i) {
            SCOPED_TRACE("connection lost, " + described(course, i));
            loseTheConnectionAt(i, &TcpProxy::cut, action, course);
            loseTheConnectionAt(i, &TcpProxy::cutAtNextAnswer, action, course);
        }
    }
}

} // namespace veldran::test
