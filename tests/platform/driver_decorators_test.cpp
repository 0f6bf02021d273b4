#include "tests/platform/recordset_fixture.h"

#include <gtest/gtest-spi.h>

namespace veldran::test {
namespace {

using DecoratorsTest = RecordsetTest;

TEST_F(DecoratorsTest, TheRecorderKeepsEveryMessageInOrder) {
    connection->BeginTrans();
    connection->Execute("-- uno");
    connection->CommitTrans();
    connection->BeginTrans();
    connection->RollbackTrans();
    std::vector<std::string> texts;
    for (const Message& message : recording->log().messages()) {
        texts.push_back(message.text);
    }
    EXPECT_EQ(texts, (std::vector<std::string>{"BEGIN TRANSACTION", "-- uno", "COMMIT TRANSACTION",
                                               "BEGIN TRANSACTION", "ROLLBACK TRANSACTION"}));
    EXPECT_EQ(recording->log().texts(), std::vector<std::string>{"-- uno"});
    EXPECT_EQ(recording->log().opened(), std::vector<std::string>{"memory"});
}

TEST_F(DecoratorsTest, TheRecorderComparesMessagesWhole) {
    connection->Execute("-- uno");
    const Message message = recording->log().executed().at(0);
    EXPECT_TRUE(message == sent("-- uno"));
    EXPECT_FALSE(message == sent("-- due"));
    EXPECT_FALSE(message == sent("-- uno").timeout(0));
    EXPECT_FALSE(message == sent("-- uno").withoutRows());
    EXPECT_FALSE(message == sentPrepared("-- uno"));
    EXPECT_FALSE(message == sent("-- uno").with("@A", ado::adInteger, 0, 1));
}

TEST_F(DecoratorsTest, TheRecorderKeepsWhatFails) {
    EXPECT_ADO_ERROR(connection->Execute("SELECT * FROM #ASSENTE"), 208);
    EXPECT_EQ(recording->log().containing("#ASSENTE").size(), 1U);
}

TEST_F(DecoratorsTest, TheRecorderRefusesATemporaryTableThatWouldBeGoneWithItsExecution) {
    for (const char* text : {"CREATE TABLE #T (N INT)", "select *\r\n into\r\n #T from A"}) {
        SCOPED_TRACE(text);
        EXPECT_TRUE(makesTemporaryTable(text));
        StatementLog log;
        log.sending({Sent::Direct, text, {}, {}});
        EXPECT_NONFATAL_FAILURE(log.sending({Sent::Prepare, text, {}, {}}), "prepare with 0 parameters");
        EXPECT_NONFATAL_FAILURE(log.sending({Sent::Prepared, text, {}, {}}), "prepared with 0 parameters");
        EXPECT_NONFATAL_FAILURE(log.sending({Sent::Direct, text, {ado::BoundParameter()}, {}}),
                                "direct with 1 parameters");
        EXPECT_EQ(log.messages().size(), 4U);
    }
    for (const char* text : {"INSERT INTO #T VALUES (?)", "DROP TABLE #T", "SELECT N INTO T FROM #T",
                             "CREATE INDEX I ON #T (N)", "INTO", ""}) {
        EXPECT_FALSE(makesTemporaryTable(text)) << text;
    }
}

TEST_F(DecoratorsTest, TheNthMessageFailsOnce) {
    failing->plan().failStatement(2);
    connection->Execute("-- uno");
    EXPECT_ADO_ERROR(connection->Execute("-- due"), 50000);
    connection->Execute("-- tre");
    EXPECT_EQ(failing->plan().failuresRaised(), 1);
    EXPECT_EQ(failing->plan().statementCount(), 3);
    EXPECT_EQ(recording->log().texts(), (std::vector<std::string>{"-- uno", "-- tre"}));
}

TEST_F(DecoratorsTest, TheNthMessageAndAllThatFollowFailUntilHealed) {
    failing->plan().failStatement(2, Times::Always);
    connection->Execute("-- uno");
    EXPECT_ADO_ERROR(connection->Execute("-- due"), 50000);
    EXPECT_ADO_ERROR(connection->Execute("-- tre"), 50000);
    failing->plan().heal();
    connection->Execute("-- quattro");
    EXPECT_EQ(failing->plan().failuresRaised(), 2);
}

TEST_F(DecoratorsTest, RestartingTheCountDoesNotMoveAnOrder) {
    connection->Execute("-- uno");
    failing->plan().failStatement(1);
    failing->plan().restartCount();
    EXPECT_EQ(failing->plan().statementCount(), 0);
    EXPECT_ADO_ERROR(connection->Execute("-- due"), 50000);
}

TEST_F(DecoratorsTest, AMessageIsChosenByItsText) {
    failing->plan().failContaining("due", Times::Once, {2627, "database", "doppione", "23000", 2627});
    connection->Execute("-- uno");
    EXPECT_ADO_ERROR(connection->Execute("-- due"), 2627);
    connection->Execute("-- due");
}

TEST_F(DecoratorsTest, ACountedFailureSparesTheRollback) {
    connection->BeginTrans();
    failing->plan().failStatement(1, Times::Always);
    connection->RollbackTrans();
    EXPECT_EQ(failing->plan().failuresRaised(), 0);
}

TEST_F(DecoratorsTest, OpeningFailsWhenToldSo) {
    failing->plan().failOpening();
    const auto other = ado::Connection::create(failing);
    EXPECT_ADO_ERROR(other->Open("memory"), 50000);
    other->Open("memory");
    EXPECT_EQ(other->State(), ado::adStateOpen);
}

TEST_F(DecoratorsTest, SessionsOutliveTheDecorators) {
    recording.reset();
    failing.reset();
    memory.reset();
    connection->Execute("-- uno");
    EXPECT_EQ(connection->State(), ado::adStateOpen);
}

} // namespace
} // namespace veldran::test
