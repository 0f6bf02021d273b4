// What a real server does to a screen: it is down, it refuses the user, it keeps a lock, it chooses a victim.
#include "tests/screen/correlation_fixture.h"
#include "tests/screen/server_sign_in.h"

#include <gmock/gmock.h>

#include <chrono>
#include <future>
#include <thread>

namespace veldran::test {

namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

const Rows changedRows = {wholeRows[0], {"1", "55.00", "CDCPRO0010", "MATPRI"}, wholeRows[2]};

/// A change of stored rows on its way to a server that somebody else uses, too.
class SaveOnServer : public EditorTest {
protected:
    void enterAndChange() {
        enter(withStored());
        e().changePercentage(1, "55");
        other = screen->database.server()->newSession();
        other->begin();
    }
    void execute(const std::string& text) { other->execute(text, {}, {.wantsRows = false}); }

    void expectRefusedOnce(int number) {
        ASSERT_EQ(messages().errors.size(), 1U);
        const ShownError& shown = messages().errors[0];
        EXPECT_EQ(shown.routine, "AggiornamentoDatabase:");
        ASSERT_FALSE(shown.connectionErrors.empty());
        EXPECT_TRUE(isNumbered(shown.connectionErrors[0], number))
            << shown.connectionErrors[0].Number << ": " << shown.error.Description;
        EXPECT_EQ(e().shown()[1][3], "55.00%") << "the rows stay as they were edited";
        EXPECT_EQ(e().working("ACQ"), changedRows);
        EXPECT_TRUE(e().header().CanPress("Conferma")) << "the save is still due";
        EXPECT_EQ(screen->host.screen.GetMousePointer(), services::mouseDefault);
    }
    void expectTheSameSaveToSucceed() {
        EXPECT_EQ(e().stored("ACQ"), wholeRows) << "rolled back";
        EXPECT_TRUE(e().save());
        EXPECT_EQ(messages().errors.size(), 1U);
        EXPECT_EQ(e().stored("ACQ"), changedRows);
        EXPECT_FALSE(e().header().CanPress("Conferma"));
    }

    std::unique_ptr<ado::Session> other;
};

TEST_F(SaveOnServer, ThatWaitsTooLongForALockIsRolledBackAndThenSucceeds) {
    enterAndChange();
    screen->waitBrieflyForLocks();
    execute("UPDATE CI15_CORRCONTICOGE SET CI15_PERC = CI15_PERC");
    e().save();
    expectRefusedOnce(1222);
    other->rollback();
    expectTheSameSaveToSucceed();
}

TEST_F(SaveOnServer, ThatWaitsForALockUntilItsTimeLimitWritesNothing) {
    enterAndChange();
    screen->host.connection().CommandTimeout(1);
    execute("UPDATE CI15_CORRCONTICOGE SET CI15_PERC = CI15_PERC");
    e().save();
    ASSERT_EQ(messages().errors.size(), 1U);
    ASSERT_FALSE(messages().errors[0].connectionErrors.empty());
    // A server that does not let go of a lock when it is asked to stop is given up, and the connection with
    // it.
    EXPECT_THAT(messages().errors[0].connectionErrors[0].SQLState, AnyOf("HYT00", "08S01"));
    EXPECT_EQ(messages().errors[0].routine, "AggiornamentoDatabase:");
    EXPECT_EQ(e().shown()[1][3], "55.00%") << "the rows stay as they were edited";
    EXPECT_TRUE(e().header().CanPress("Conferma")) << "the save is still due";
    EXPECT_EQ(screen->host.screen.GetMousePointer(), services::mouseDefault);
    other->rollback();
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
    messages().answers = {services::answerNo};
    EXPECT_TRUE(screen->host.form().Unload());
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
}

TEST_F(SaveOnServer, ThatIsTheVictimOfADeadlockIsRolledBackAndThenSucceeds) {
    enterAndChange();
    execute("SET DEADLOCK_PRIORITY HIGH");
    execute("SET LOCK_TIMEOUT -1");
    // The other program holds the row that the save writes last, and asks for the one that it writes first.
    execute("UPDATE CI15_CORRCONTICOGE SET CI15_PERC = CI15_PERC WHERE CI15_PROG = 3");
    std::promise<void> saving;
    std::future<void> crossing = std::async(std::launch::async, [&] {
        saving.get_future().wait();
        std::this_thread::sleep_for(std::chrono::milliseconds(300)); // now the save waits
        execute("UPDATE CI15_CORRCONTICOGE SET CI15_PERC = CI15_PERC WHERE CI15_PROG = 1");
    });
    screen->failures().failWhere(
        [&saving](const Message& message) {
            if (message.text.find("DELETE FROM CI15_CORRCONTICOGE") != std::string::npos) {
                saving.set_value();
            }
            return false;
        },
        Times::Always);
    e().save();
    EXPECT_NO_THROW(crossing.get()) << "the other program goes on";
    screen->failures().heal();
    expectRefusedOnce(1205);
    other->rollback();
    expectTheSameSaveToSucceed();
}

TEST(ServerDown, AtTheStartIsReportedAndTheNextActivationFindsItUpAgain) {
    Screen screen(smallChart());
    screen.database.server()->network().refuse(true);
    screen.host.open();
    ASSERT_EQ(screen.host.messages->errors.size(), 1U);
    const ShownError& shown = screen.host.messages->errors[0];
    EXPECT_EQ(shown.routine, "Form_Activate");
    EXPECT_THAT(shown.error.Description, HasSubstr("non può essere raggiunto"));
    EXPECT_TRUE(screen.host.isOpen());
    screen.database.server()->network().refuse(false);
    screen.host.form().Activate();
    EXPECT_EQ(screen.host.messages->errors.size(), 1U);
    EXPECT_EQ(screen.host.user().tree().RootCount(), 4);
}

TEST(ServerDown, WhileTheScreenIsOpenEndsEachRoutineThatAsksItAndNotTheScreen) {
    Screen screen(smallChart());
    screen.host.open();
    screen.database.server()->network().refuse(true);
    screen.database.server()->network().cut();
    screen.host.user().filter(2);
    screen.host.user().filter(1);
    ASSERT_EQ(screen.host.messages->errors.size(), 2U);
    EXPECT_EQ(screen.host.messages->errors[0].routine, "CaricamentoConti:");
    EXPECT_EQ(screen.host.messages->errors[1].routine, "CaricamentoConti:");
    EXPECT_EQ(screen.host.user().tree().RootCount(), 4) << "the tree stands as it was";
    EXPECT_TRUE(screen.host.form().Unload());
    EXPECT_EQ(screen.database.openSessions(), 0);
}

TEST(ServerStalled, WhileTheFormClosesKeepsItOpenNoLongerThanTheFarewellMayTake) {
    Screen screen(withStored(), costCompany());
    openWithEveryCode(screen);
    Editor(screen).enter();
    EXPECT_GT(screen.database.livePreparedStatements(), 0);
    screen.database.server()->network().stall();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(screen.host.form().Unload());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15));
    EXPECT_EQ(screen.database.openSessions(), 0);
    screen.database.server()->network().cut();
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(SignIn, ThatTheServerRefusesIsReportedWithoutThePassword) {
    const TestDatabase database(smallChart());
    TestHost host(database.driver(), withSignIn(database.connectionString(), "", "Parola-Sbagliata7"));
    host.open();
    ASSERT_EQ(host.messages->errors.size(), 1U);
    const ShownError& shown = host.messages->errors[0];
    EXPECT_EQ(shown.routine, "Form_Activate");
    EXPECT_THAT(shown.error.Description, HasSubstr("rifiuta l'accesso"));
    EXPECT_THAT(shown.error.Description + shown.error.Source, Not(HasSubstr("Parola-Sbagliata7")));
    for (const ado::Error& error : shown.connectionErrors) {
        EXPECT_THAT(error.Description + error.Source, Not(HasSubstr("Parola-Sbagliata7")));
    }
    EXPECT_EQ(database.openSessions(), 0);
}

} // namespace

} // namespace veldran::test
