#include "tests/screen/failing_actions.h"

#include <gtest/gtest.h>

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

} // namespace

void failEachStatement(const Action& action) {
    std::vector<Message> messages;
    {
        const auto screen = prepared(action);
        action.act(*screen);
        messages = screen->log().messages();
        EXPECT_TRUE(screen->host.messages->errors.empty());
        action.expectDone(*screen);
    }
    ASSERT_FALSE(messages.empty());
    for (std::size_t i = 0; i < messages.size(); ++i) {
        SCOPED_TRACE("message " + std::to_string(i + 1) + " of " + std::to_string(messages.size()) + ": " +
                     nameOf(messages[i].how) + " " + messages[i].text);
        const auto screen = prepared(action);
        screen->failures().failStatement(static_cast<int>(i) + 1);
        action.act(*screen);
        EXPECT_EQ(screen->failures().failuresRaised(), 1);
        ASSERT_EQ(screen->host.messages->errors.size(), 1U);
        expectReport(screen->host.messages->errors[0], action.label(messages[i]));
        EXPECT_EQ(screen->host.screen.GetMousePointer(), services::mouseDefault);
        action.afterFailure(*screen, messages[i]);
        screen->failures().heal();
        action.repeat(*screen);
        EXPECT_EQ(screen->host.messages->errors.size(), 1U) << "the screen works on";
        action.expectDone(*screen);
        EXPECT_TRUE(screen->host.form().Unload());
        EXPECT_EQ(screen->database.openSessions(), 0);
    }
}

} // namespace veldran::test
