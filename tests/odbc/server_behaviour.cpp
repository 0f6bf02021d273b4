#include "tests/odbc/server_behaviour.h"

#include "platform/ado/connection.h"
#include "platform/ado/constants.h"
#include "tests/support/ado_expect.h"

#include <gmock/gmock.h>

#include <chrono>
#include <future>
#include <thread>

namespace veldran::test {

using testing::HasSubstr;
using testing::Not;

void OdbcBehaviour::SetUp() {
    if (const std::string reason = server->whyMissing(); !reason.empty()) {
        GTEST_SKIP() << reason;
    }
    const auto session = open();
    run(*session, "DROP TABLE IF EXISTS VLDOB_TAB");
    run(*session, "CREATE TABLE VLDOB_TAB (COD INT NOT NULL PRIMARY KEY, VAL INT NULL)");
    run(*session, "INSERT INTO VLDOB_TAB (COD, VAL) VALUES (1, 10)");
    run(*session, "INSERT INTO VLDOB_TAB (COD, VAL) VALUES (2, 20)");
}

void OdbcBehaviour::TearDown() {
    if (server->whyMissing().empty()) {
        run(*open(), "DROP TABLE IF EXISTS VLDOB_TAB");
    }
}

ado::Errors OdbcBehaviour::failureOf(ado::Session& session, const std::string& text, int timeout) {
    try {
        run(session, text, timeout);
    } catch (const ado::AdoError& error) {
        return error.errors();
    }
    ADD_FAILURE() << text << " did not fail";
    return {ado::Error()};
}

std::string OdbcBehaviour::numberOf(ado::Session& session) {
    return run(session, server->sessionNumber()).rows->cell(0, 0).toText();
}

std::string OdbcBehaviour::stored() {
    const auto result = run(*open(), "SELECT COD, VAL FROM VLDOB_TAB ORDER BY COD");
    std::string text;
    for (std::size_t row = 0; row < result.rows->rowCount(); ++row) {
        text += (row == 0 ? "" : " ") + result.rows->cell(row, 0).toText() + ":" +
                result.rows->cell(row, 1).toText();
    }
    return text;
}

namespace {

TEST_P(OdbcBehaviour, NamesAServerThatDoesNotAnswer) {
    try {
        driver.open(server->deadConnectionString(), "", "segreta");
        FAIL() << "a session was opened";
    } catch (const ado::AdoError& error) {
        EXPECT_TRUE(error.first().SQLState.starts_with("08")) << error.first().SQLState;
        EXPECT_THAT(error.first().Description, HasSubstr("Il server 127.0.0.1"));
        EXPECT_THAT(error.first().Description, HasSubstr("non può essere raggiunto"));
        for (const ado::Error& one : error.errors()) {
            EXPECT_THAT(one.Description, Not(HasSubstr("segreta")));
        }
    }
}

TEST_P(OdbcBehaviour, GivesUpAStatementAtItsTimeLimit) {
    const auto session = open();
    const auto start = std::chrono::steady_clock::now();
    const ado::Errors errors = failureOf(*session, server->longStatement(), 1);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(8));
    EXPECT_EQ(errors.front().SQLState, "HYT00") << errors.front().Description;
    EXPECT_EQ(errors.front().Number, -2147217871);
    EXPECT_THAT(errors.front().Description, HasSubstr("Il tempo concesso al comando (1 s) è scaduto."));
}

TEST_P(OdbcBehaviour, ReportsALostConnectionAtEveryCallAndWritesNothing) {
    auto session = open();
    const std::vector<ado::BoundParameter> key{{{"@COD", ado::adInteger}, 1}};
    const std::vector<ado::ParameterInfo> declaration{key.front().info};
    auto prepared = session->prepare("UPDATE VLDOB_TAB SET VAL = 98 WHERE COD = ?", declaration);
    prepared->execute(key, {0, false});
    session->begin();
    run(*session, "UPDATE VLDOB_TAB SET VAL = 99");
    run(*open(), server->kill(numberOf(*session)));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    const ado::Errors first = failureOf(*session, "UPDATE VLDOB_TAB SET VAL = 97");
    EXPECT_FALSE(first.front().Description.empty());
    const ado::Errors second = failureOf(*session, "UPDATE VLDOB_TAB SET VAL = 96");
    EXPECT_EQ(second.front().SQLState, "08S01");
    EXPECT_THAT(second.front().Description, HasSubstr("La connessione con il server è stata interrotta."));
    EXPECT_THROW(prepared->execute(key, {0, false}), ado::AdoError);
    EXPECT_THROW(session->prepare("SELECT ?", declaration), ado::AdoError);
    EXPECT_THROW(session->describeProcedure("VLDOB_PROC"), ado::AdoError);
    EXPECT_THROW(session->commit(), ado::AdoError);
    EXPECT_NO_THROW(session->rollback());
    EXPECT_THROW(session->begin(), ado::AdoError);
    prepared.reset();
    session.reset();
    EXPECT_EQ(stored(), "1:98 2:20");
}

TEST_P(OdbcBehaviour, RollsBackTheVictimOfADeadlockAndGoesOnWithIt) {
    const auto first = open();
    const auto second = open();
    first->begin();
    second->begin();
    run(*first, "UPDATE VLDOB_TAB SET VAL = 11 WHERE COD = 1");
    run(*second, "UPDATE VLDOB_TAB SET VAL = 22 WHERE COD = 2");
    const auto attempt = [](ado::Session& session, const std::string& text) {
        try {
            run(session, text);
            return ado::Errors();
        } catch (const ado::AdoError& error) {
            return error.errors();
        }
    };
    auto waiting = std::async(std::launch::async,
                              [&] { return attempt(*first, "UPDATE VLDOB_TAB SET VAL = 12 WHERE COD = 2"); });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    const ado::Errors ofSecond = attempt(*second, "UPDATE VLDOB_TAB SET VAL = 21 WHERE COD = 1");
    if (!ofSecond.empty()) {
        EXPECT_THROW(run(*second, "UPDATE VLDOB_TAB SET VAL = 77"), ado::AdoError);
        second->rollback();
    } else {
        second->commit();
    }
    const ado::Errors ofFirst = waiting.get();
    ASSERT_NE(ofFirst.empty(), ofSecond.empty()) << "one of the two is the victim";
    ado::Session& victim = ofFirst.empty() ? *second : *first;
    EXPECT_TRUE(server->isDeadlock((ofFirst.empty() ? ofSecond : ofFirst).front()));
    if (ofFirst.empty()) {
        first->commit();
    } else {
        EXPECT_THROW(run(victim, "UPDATE VLDOB_TAB SET VAL = 77"), ado::AdoError);
        victim.rollback();
    }
    EXPECT_EQ(stored(), ofFirst.empty() ? "1:11 2:12" : "1:21 2:22");
    victim.begin();
    run(victim, "UPDATE VLDOB_TAB SET VAL = 5");
    victim.commit();
    EXPECT_EQ(stored(), "1:5 2:5");
}

TEST_P(OdbcBehaviour, KeepsTheErrorOfALockThatIsWaitedForTooLong) {
    const auto holder = open();
    holder->begin();
    run(*holder, "UPDATE VLDOB_TAB SET VAL = 11 WHERE COD = 1");
    const auto waiter = open();
    run(*waiter, server->shortLockWait());
    waiter->begin();
    const ado::Errors errors = failureOf(*waiter, "UPDATE VLDOB_TAB SET VAL = 12 WHERE COD = 1");
    EXPECT_TRUE(server->isLockTimeout(errors.front())) << errors.front().Number;
    waiter->rollback();
    holder->commit();
    EXPECT_EQ(stored(), "1:11 2:20");
}

TEST_P(OdbcBehaviour, ReadsATextThatIsLongerThanOnePiece) {
    const auto result = run(*open(), server->longText());
    std::string expected;
    for (int i = 0; i < 9000; ++i) {
        expected += "è";
    }
    EXPECT_EQ(result.rows->cell(0, 0), Value(expected));
}

TEST_P(OdbcBehaviour, TellsAnEmptyTextFromNull) {
    const auto session = open();
    const auto given = [&](const Value& value) {
        const std::vector<ado::BoundParameter> parameters{
            {{"@A", ado::adVarWChar, ado::adParamInput, 10}, value}, {{"@B", ado::adInteger}, 1}};
        return session
            ->execute("SELECT CAST(? AS VARCHAR(10)) AS A FROM VLDOB_TAB WHERE COD = ?", parameters,
                      {0, true})
            .rows->cell(0, 0);
    };
    EXPECT_EQ(given(""), Value(""));
    EXPECT_TRUE(given(Value()).isNull());
    EXPECT_EQ(given("x"), Value("x"));
}

TEST_P(OdbcBehaviour, GoesOnWithAPreparedTextWhenALongerValueComes) {
    const auto session = open();
    const ado::ParameterInfo info{"@A", ado::adVarWChar, ado::adParamInput, 2000};
    const ado::ParameterInfo key{"@B", ado::adInteger};
    const std::vector<ado::ParameterInfo> declarations{info, key};
    const auto prepared =
        session->prepare("SELECT CAST(? AS VARCHAR(2000)) AS A FROM VLDOB_TAB WHERE COD = ?", declarations);
    for (const std::size_t length : {3U, 300U, 2000U, 1U}) {
        const std::string text(length, 'x');
        const std::vector<ado::BoundParameter> values{{info, text}, {key, 2}};
        EXPECT_EQ(prepared->execute(values, {0, true}).rows->cell(0, 0), Value(text));
    }
}

TEST_P(OdbcBehaviour, TellsEveryErrorOfABatchAndReadsItToItsEnd) {
    const auto session = open();
    const ado::Errors errors =
        failureOf(*session, "SELECT 1; INSERT INTO VLDOB_TAB (COD) VALUES (1); SELECT 2");
    EXPECT_TRUE(errors.front().SQLState.starts_with("23")) << errors.front().SQLState;
    EXPECT_EQ(run(*session, "SELECT 3").rows->cell(0, 0), Value(3));
}

TEST_P(OdbcBehaviour, ListsWhatTheServerSaysOfASuccessUntilTheNextOperation) {
    const auto connection = ado::Connection::create(std::make_shared<odbc::OdbcDriver>());
    connection->Open(server->connectionString());
    connection->Execute(server->remark());
    ASSERT_EQ(connection->Errors().size(), 1U);
    EXPECT_THAT(connection->Errors().front().Description, HasSubstr("attenzione"));
    EXPECT_TRUE(connection->Errors().front().SQLState.starts_with("01"));
    EXPECT_EQ(connection->Errors().front().Number, connection->Errors().front().NativeError);
    connection->Execute("SELECT 1");
    EXPECT_TRUE(connection->Errors().empty());
}

TEST_P(OdbcBehaviour, KeepsEveryDigitOfADecimalOrRefusesIt) {
    const auto session = open();
    const auto read = [&](const std::string& number) {
        return run(*session, "SELECT CAST(" + number + ")").rows->cell(0, 0).toText();
    };
    EXPECT_EQ(read("999999999999999999 AS DECIMAL(18, 0)"), "999999999999999999");
    EXPECT_EQ(read("-0.000000000000000001 AS DECIMAL(18, 18)"), "-0.000000000000000001");
    EXPECT_EQ(read("0.50 AS DECIMAL(5, 2)"), "0.50");
    EXPECT_EQ(read("0.50 AS DECIMAL(38, 30)"), "0.5") << "its zeros are more than a value holds";
    EXPECT_EQ(read("-7 AS DECIMAL(38, 30)"), "-7");
    EXPECT_EQ(read("0 AS DECIMAL(38, 30)"), "0");
    EXPECT_ADO_ERROR(read("1234567890123456789012 AS DECIMAL(38, 0)"), ado::sqlErrOverflow);
}

TEST_P(OdbcBehaviour, KeepsManySessionsApart) {
    std::vector<std::unique_ptr<ado::Session>> sessions;
    for (int i = 0; i < 20; ++i) {
        sessions.push_back(open());
    }
    sessions.erase(sessions.begin() + 3);
    for (const auto& session : sessions) {
        EXPECT_EQ(run(*session, "SELECT 1").rows->cell(0, 0), Value(1));
    }
}

} // namespace
} // namespace veldran::test
