// A program killed while it saves a correlation leaves the old rows or the new ones, never a mixture.
#include "tests/screen/correlation_fixture.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

namespace veldran::test {

namespace {

const Rows oldRows = {{"2", "100.00", "COLACQ0010", "NULL"},
                      {"1", "60.00", "CDCPRO0010", "MATPRI"},
                      {"1", "40.00", "CDCPRO0020", "SERTRA"}};
const Rows newRows = {{"2", "50.00", "COLACQ0010", "NULL"}, {"1", "33.33", "CDCPRO0020", "MATPRI"}};

/// Types every difference between the rows shown and those wanted; fewer rows are wanted than are shown.
void becomeNew(Screen& screen) {
    Editor editor(screen);
    screen.host.messages->answers = {services::answerYes};
    editor.clickRow(2);
    editor.detail().PressFromView("Elimina");
    const auto retype = [&editor](std::size_t row, const Row& wanted) {
        editor.changePercentage(row, wanted.percentage);
        keyInto(editor.account(), wanted.account);
    };
    retype(0, newRows[0]);
    retype(1, newRows[1]);
}

/// A program of its own over the same database.
class Program {
public:
    template<class Work>
    explicit Program(Work work) : id_(::fork()) {
        if (id_ == 0) {
            work();
            ::_exit(0);
        }
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    void kill() const { ::kill(id_, SIGKILL); }
    /// \return true when it came to its end by itself.
    bool wait() {
        int status = 0;
        EXPECT_EQ(::waitpid(id_, &status, 0), id_);
        EXPECT_TRUE(WIFEXITED(status) || WTERMSIG(status) == SIGKILL) << "it fell by itself";
        return WIFEXITED(status);
    }

private:
    ::pid_t id_;
};

/// Dies in place of the n-th message from now on; lives on when there are fewer.
void dieAt(Screen& screen, int n) {
    screen.failures().failWhere(
        [n](const Message&) mutable {
            if (--n == 0) {
                ::kill(::getpid(), SIGKILL);
            }
            return false;
        },
        Times::Always);
}

/// What the killed program has left. Its connections have ended then: a program started while the network
/// still holds one would inherit it, and keep the dead program's transaction and locks alive at the server.
Rows stored(Screen& screen) {
    if (TestServer* server = screen.database.server()) {
        while (server->network().connections() > 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    return Editor::storedIn(screen.database, "ACQ");
}

TEST(CorrelationCrash, AtAnyStatementOfASaveLeavesTheOldRowsOrTheNew) {
    int killed = 0;
    bool finished = false;
    bool sawNew = false;
    for (int statement = 1; !finished; ++statement) {
        SCOPED_TRACE("statement " + std::to_string(statement));
        Screen screen(withStored(oldRows), costCompany());
        Program program([&] {
            openWithEveryCode(screen);
            Editor(screen).enter();
            becomeNew(screen);
            dieAt(screen, statement);
            Editor(screen).save();
        });
        finished = program.wait();
        killed += finished ? 0 : 1;
        const Rows left = stored(screen);
        EXPECT_TRUE(left == oldRows || left == newRows) << ::testing::PrintToString(left);
        sawNew = sawNew || left == newRows;
        EXPECT_EQ(left == newRows, finished) << "what is committed last is the correlation";
    }
    EXPECT_GE(killed, 7) << "a save sends rows, then the correlation in its transaction";
    EXPECT_TRUE(sawNew);
}

/// Tells another program of every message to the database.
class Heartbeat {
public:
    Heartbeat() { EXPECT_EQ(::pipe(ends_), 0); }
    ~Heartbeat() {
        ::close(ends_[0]);
        ::close(ends_[1]);
    }
    Heartbeat(const Heartbeat&) = delete;
    Heartbeat& operator=(const Heartbeat&) = delete;
    void beat() const { (void)!::write(ends_[1], "x", 1); }
    void await(unsigned beats) const {
        char byte = 0;
        while (beats-- > 0) {
            ASSERT_EQ(::read(ends_[0], &byte, 1), 1);
        }
    }

private:
    int ends_[2] = {};
};

const Rows thinRows = {{"2", "1.00", "COLACQ0010", "NULL"},
                       {"1", "1.00", "CDCPRO0010", "MATPRI"},
                       {"1", "1.00", "CDCPRO0020", "SERTRA"}};

/// Saves the thin rows and the old ones in turn until it is killed.
void saveForEver(Screen& screen, const Heartbeat& heart) {
    openWithEveryCode(screen);
    Editor editor(screen);
    editor.enter();
    screen.failures().failWhere(
        [&heart](const Message&) {
            heart.beat();
            return false;
        },
        Times::Always);
    for (bool thin = editor.stored("ACQ") != thinRows;; thin = !thin) {
        for (std::size_t row = 0; row < thinRows.size(); ++row) {
            editor.changePercentage(row, (thin ? thinRows : oldRows)[row].percentage);
        }
        editor.save();
    }
}

TEST(CorrelationCrash, AtAnyMomentOfManySavesLeavesAWholeCorrelation) {
    Screen screen(withStored(oldRows), costCompany());
    std::mt19937 random(11);
    int thin = 0;
    int old = 0;
    for (int round = 0; round < 25; ++round) {
        const Heartbeat heart;
        Program program([&] { saveForEver(screen, heart); });
        heart.await(1 + static_cast<unsigned>(random() % 60));
        program.kill();
        EXPECT_FALSE(program.wait());
        const Rows left = stored(screen);
        EXPECT_TRUE(left == oldRows || left == thinRows) << ::testing::PrintToString(left);
        (left == thinRows ? thin : old) += 1;
    }
    EXPECT_GT(thin, 0) << "no save was finished: nothing was proved";
    EXPECT_GT(old, 0);
}

} // namespace

} // namespace veldran::test
