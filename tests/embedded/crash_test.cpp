#include "adapters/embedded/driver.h"
#include "adapters/embedded/file.h"
#include "tests/embedded/session_fixture.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <thread>

namespace veldran::embedded::test {

namespace {

using namespace std::chrono_literals;

/// A program of its own, killed or waited for.
class Child {
public:
    template<typename Work>
    explicit Child(Work work) : id_(::fork()) {
        if (id_ == 0) {
            int code = 0;
            try {
                work();
            } catch (const ado::AdoError& error) {
                code = error.first().Number == 1222 ? 12 : 1;
            }
            ::_exit(code);
        }
    }
    int wait() {
        int status = 0;
        ::waitpid(id_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    void kill() {
        ::kill(id_, SIGKILL);
        wait();
    }

private:
    ::pid_t id_;
};

std::unique_ptr<ado::Session> openAt(const std::string& path, const std::string& more = {}) {
    return EmbeddedDriver().open(connectionString(path, more), "", "");
}

std::string numbers(int from, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += (i == 0 ? "(" : ", (") + std::to_string(from + i) + ")";
    }
    return text;
}

// Statements of 50 rows, transactions over two tables, tables made and dropped: all of it, until killed.
void writeForEver(const std::string& path) {
    const auto session = openAt(path);
    for (int i = 0;; ++i) {
        const std::string values = numbers(i * 50, 50);
        session->execute("INSERT INTO SOLA (N) VALUES " + values, {}, {});
        session->begin();
        session->execute("INSERT INTO PRIMA (N) VALUES " + values, {}, {});
        session->execute("INSERT INTO SECONDA (N) VALUES " + values, {}, {});
        session->commit();
        session->execute("SELECT N INTO COPIA FROM PRIMA", {}, {});
        session->execute("DROP TABLE COPIA", {}, {});
    }
}

} // namespace

class Crash : public SessionTest {};

TEST_F(Crash, LeavesWholeStatementsAndTransactionsAtAnyMoment) {
    run({"CREATE TABLE SOLA (N INT)", "CREATE TABLE PRIMA (N INT)", "CREATE TABLE SECONDA (N INT)"});
    session_.reset();
    std::mt19937 random(7);
    for (int round = 0; round < 25; ++round) {
        Child child([&] { writeForEver(path()); });
        std::this_thread::sleep_for(std::chrono::milliseconds(20 + random() % 120));
        child.kill();
        session_ = anotherSession();
        const Rows counts = rows("SELECT (SELECT COUNT(*) FROM SOLA), (SELECT COUNT(*) FROM PRIMA), (SELECT "
                                 "COUNT(*) FROM SECONDA)");
        EXPECT_EQ(std::stoi(counts[0][0]) % 50, 0);
        EXPECT_EQ(counts[0][1], counts[0][2]);
        EXPECT_EQ(std::stoi(counts[0][1]) % 50, 0);
        // The copy is not there, or it is there with a whole transaction's rows and its definition.
        if (cell("SELECT OBJECT_ID('COPIA')") != "NULL") {
            EXPECT_EQ(cell("SELECT COUNT(*) FROM COPIA"), counts[0][1]);
            execute("DROP TABLE COPIA");
        }
        EXPECT_EQ(session_->state().database().integer(
                      "SELECT count(*) FROM pragma_integrity_check WHERE integrity_check <> 'ok'"),
                  0);
        session_.reset();
    }
    session_ = anotherSession();
    EXPECT_GT(std::stoi(cell("SELECT COUNT(*) FROM SOLA")), 0)
        << "the killed programs wrote nothing: nothing was proved";
}

TEST_F(Crash, OfTheMakerLeavesNoHalfFile) {
    const std::string path = directory_.file("altro.vdb");
    for (int round = 0; round < 8; ++round) {
        std::filesystem::remove(path);
        Child child([&] { createDatabase(path); });
        std::this_thread::sleep_for(std::chrono::milliseconds(round));
        child.kill();
        if (std::filesystem::exists(path)) {
            EXPECT_NO_THROW(openAt(path)->execute("CREATE TABLE T (A INT)", {}, {}));
        }
    }
}

TEST_F(Crash, OfOneProgramFreesItsLocks) {
    run({"CREATE TABLE T (A INT)"});
    int ready[2] = {};
    ASSERT_EQ(::pipe(ready), 0);
    Child child([&] {
        const auto session = openAt(path());
        session->begin();
        session->execute("INSERT INTO T VALUES (1)", {}, {});
        (void)!::write(ready[1], "x", 1);
        std::this_thread::sleep_for(60s);
    });
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    child.kill();
    EXPECT_EQ(affected("INSERT INTO T VALUES (2)"), 1);
    EXPECT_EQ(rows("SELECT A FROM T"), (Rows{{"2"}}));
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST_F(Crash, NeverComesFromWaitingForALock) {
    run({"CREATE TABLE T (A INT)", "INSERT INTO T VALUES (1)"});
    session_->begin();
    execute("UPDATE T SET A = 2");
    const auto other = anotherSession(";Lock Timeout=300");
    EXPECT_EQ(asText(*other->execute("SELECT A FROM T", {}, {}).rows), (Rows{{"1"}}))
        << "readers do not wait";
    const auto begun = std::chrono::steady_clock::now();
    const ado::Error refused = errorOf([&] { other->execute("UPDATE T SET A = 3", {}, {}); });
    const auto waited = std::chrono::steady_clock::now() - begun;
    EXPECT_EQ(refused.Number, 1222);
    EXPECT_NE(refused.Description.find("prova.vdb"), std::string::npos);
    EXPECT_GE(waited, 250ms);
    EXPECT_LT(waited, 10s);
    EXPECT_EQ(errorOf([&] { other->begin(); }).Number, 1222);
    EXPECT_EQ(errorOf([&] { other->execute("CREATE TABLE S (A INT)", {}, {}); }).Number, 1222);
    session_->commit();
    EXPECT_NO_THROW(other->execute("UPDATE T SET A = 3", {}, {}));
    EXPECT_EQ(cell("SELECT A FROM T"), "3");
}

TEST_F(Crash, IsNoneWhenTwoProgramsWriteAtOnce) {
    run({"CREATE TABLE T (A INT)", "INSERT INTO T VALUES (0)"});
    session_.reset();
    const auto count = [&] {
        const auto session = openAt(path(), ";Lock Timeout=60000");
        for (int i = 0; i < 100; ++i) {
            session->execute("UPDATE T SET A = A + 1", {}, {});
        }
    };
    Child first(count);
    Child second(count);
    EXPECT_EQ(first.wait(), 0);
    EXPECT_EQ(second.wait(), 0);
    session_ = anotherSession();
    EXPECT_EQ(cell("SELECT A FROM T"), "200");
}

} // namespace veldran::embedded::test
