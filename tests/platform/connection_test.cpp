#include "tests/platform/recordset_fixture.h"

namespace veldran::test {
namespace {

using ConnectionTest = RecordsetTest;

TEST_F(ConnectionTest, OpensFromItsPropertyAndReportsItsState) {
    const auto other = ado::Connection::create(memory);
    EXPECT_EQ(other->State(), ado::adStateClosed);
    other->ConnectionString("memory");
    other->Open();
    EXPECT_EQ(other->State(), ado::adStateOpen);
    other->Close();
    EXPECT_EQ(other->State(), ado::adStateClosed);
    other->Open();
    EXPECT_EQ(other->State(), ado::adStateOpen);
}

TEST_F(ConnectionTest, KeepsTheConnectionStringItWasOpenedWith) {
    EXPECT_EQ(connection->ConnectionString(), "memory");
}

TEST_F(ConnectionTest, ListsTheDriversErrorWhenOpeningFails) {
    const auto other = ado::Connection::create(memory);
    EXPECT_ADO_ERROR(other->Open("altrove"), 17);
    EXPECT_EQ(other->State(), ado::adStateClosed);
    ASSERT_EQ(other->Errors().size(), 1U);
    EXPECT_EQ(other->Errors()[0].SQLState, "08001");
    EXPECT_EQ(other->Errors()[0].Source, "memory");
    EXPECT_EQ(other->Errors()[0].Description, "Database sconosciuto: altrove");
    other->Open("memory");
    EXPECT_TRUE(other->Errors().empty());
}

TEST_F(ConnectionTest, RefusesToOpenTwiceAndToCloseTwice) {
    EXPECT_ADO_ERROR(connection->Open("memory"), ado::adErrObjectOpen);
    EXPECT_ADO_ERROR(connection->ConnectionString("x"), ado::adErrObjectOpen);
    connection->Close();
    EXPECT_ADO_ERROR(connection->Close(), ado::adErrObjectClosed);
    EXPECT_EQ(connection->Errors().at(0).Number, ado::adErrObjectClosed);
}

TEST_F(ConnectionTest, RefusesToOpenAsynchronously) {
    const auto other = ado::Connection::create(memory);
    EXPECT_ADO_ERROR(other->Open("memory", "", "", 16), ado::adErrFeatureNotAvailable);
}

TEST_F(ConnectionTest, RefusesANegativeTimeOut) {
    EXPECT_ADO_ERROR(connection->CommandTimeout(-1), ado::adErrInvalidArgument);
    EXPECT_EQ(connection->CommandTimeout(), 30);
}

TEST_F(ConnectionTest, ReportsEveryFailureUntilTheNextStatementBegins) {
    EXPECT_ADO_ERROR(connection->Execute("SELECT * FROM #ASSENTE"), 208);
    ASSERT_EQ(connection->Errors().size(), 1U);
    EXPECT_EQ(connection->Errors()[0].Number, 208);
    EXPECT_EQ(connection->Errors()[0].SQLState, "42S02");
    connection->Execute("-- niente");
    EXPECT_TRUE(connection->Errors().empty());
}

TEST_F(ConnectionTest, RefusesStatementsWhileClosed) {
    connection->Close();
    EXPECT_ADO_ERROR(connection->Execute("-- niente"), ado::adErrInvalidConnection);
    EXPECT_EQ(connection->Errors().at(0).SQLState, "08003");
    EXPECT_ADO_ERROR(connection->BeginTrans(), ado::adErrInvalidConnection);
}

TEST_F(ConnectionTest, ReturnsTheRowsAsAReadOnlyRecordset) {
    fill({2, 1});
    const auto recordset = connection->Execute("SELECT * FROM #T");
    EXPECT_EQ(recordset->RecordCount(), 2);
    EXPECT_EQ(recordset->LockType(), ado::adLockReadOnly);
    EXPECT_EQ(recordset->ActiveConnection(), connection);
    EXPECT_ADO_ERROR(recordset->AddNew(), ado::adErrFeatureNotAvailable);
}

TEST_F(ConnectionTest, ReturnsNothingWhenRowsAreNotWanted) {
    std::int64_t affected = 0;
    fill({2, 1});
    EXPECT_EQ(connection->Execute("DELETE FROM #T", &affected, ado::adCmdText | ado::adExecuteNoRecords),
              nullptr);
    EXPECT_EQ(affected, 2);
    EXPECT_EQ(recording->log().executed().back(), sent("DELETE FROM #T").withoutRows());
}

TEST_F(ConnectionTest, ReturnsAClosedRecordsetForAStatementWithoutRows) {
    std::int64_t affected = 0;
    const auto recordset = connection->Execute("-- niente", &affected);
    ASSERT_NE(recordset, nullptr);
    EXPECT_EQ(recordset->State(), ado::adStateClosed);
    EXPECT_EQ(affected, -1);
    EXPECT_ADO_ERROR(recordset->MoveNext(), ado::adErrObjectClosed);
}

TEST_F(ConnectionTest, PassesItsTimeOutWithEveryStatement) {
    connection->CommandTimeout(0);
    connection->Execute("-- niente");
    EXPECT_EQ(recording->log().executed().back(), sent("-- niente").timeout(0));
}

TEST_F(ConnectionTest, ReadsAWholeTableByItsName) {
    fill({2});
    EXPECT_EQ(connection->Execute("#T", nullptr, ado::adCmdTable)->RecordCount(), 1);
    EXPECT_EQ(recording->log().texts().back(), "SELECT * FROM [#T]");
}

TEST_F(ConnectionTest, CommitsAndRollsBack) {
    EXPECT_EQ(connection->BeginTrans(), 1);
    fill({2});
    connection->CommitTrans();
    EXPECT_EQ(stored(), "1:C00001");
    connection->BeginTrans();
    connection->Execute("DELETE FROM #T");
    EXPECT_EQ(stored(), "");
    connection->RollbackTrans();
    EXPECT_EQ(stored(), "1:C00001");
    EXPECT_FALSE(connection->inTransaction());
}

TEST_F(ConnectionTest, RefusesTransactionsThatNestOrAreNotThere) {
    EXPECT_ADO_ERROR(connection->CommitTrans(), ado::adErrNoTransaction);
    EXPECT_ADO_ERROR(connection->RollbackTrans(), ado::adErrNoTransaction);
    connection->BeginTrans();
    EXPECT_ADO_ERROR(connection->BeginTrans(), ado::adErrTransactionExists);
    EXPECT_TRUE(connection->inTransaction());
}

TEST_F(ConnectionTest, KeepsTheTransactionWhenItsCommitFails) {
    connection->BeginTrans();
    failing->plan().failContaining("COMMIT");
    EXPECT_ADO_ERROR(connection->CommitTrans(), 50000);
    EXPECT_TRUE(connection->inTransaction());
    connection->RollbackTrans();
    EXPECT_EQ(memory->database().transactions, 0);
}

TEST_F(ConnectionTest, StillListsAfterARollbackWhatLedToIt) {
    connection->BeginTrans();
    failing->plan().failContaining("DELETE");
    EXPECT_ADO_ERROR(connection->Execute("DELETE FROM #T"), 50000);
    connection->RollbackTrans();
    ASSERT_EQ(connection->Errors().size(), 1U);
    EXPECT_EQ(connection->Errors()[0].Number, 50000);
    connection->BeginTrans();
    EXPECT_TRUE(connection->Errors().empty());
    connection->RollbackTrans();
    EXPECT_TRUE(connection->Errors().empty());
}

TEST_F(ConnectionTest, CountsATransactionAsEndedWhenItsRollbackFails) {
    connection->BeginTrans();
    failing->plan().failContaining("ROLLBACK");
    EXPECT_ADO_ERROR(connection->RollbackTrans(), 50000);
    EXPECT_FALSE(connection->inTransaction());
    connection->Close();
    EXPECT_EQ(memory->database().transactions, 0);
}

TEST_F(ConnectionTest, DoesNotBeginATransactionThatTheDatabaseRefuses) {
    failing->plan().failContaining("BEGIN");
    EXPECT_ADO_ERROR(connection->BeginTrans(), 50000);
    EXPECT_FALSE(connection->inTransaction());
}

TEST_F(ConnectionTest, RefusesToCloseInsideATransaction) {
    connection->BeginTrans();
    EXPECT_ADO_ERROR(connection->Close(), ado::adErrInTransaction);
    EXPECT_EQ(connection->State(), ado::adStateOpen);
}

TEST_F(ConnectionTest, RollsBackWhenItIsLetGo) {
    fill({2});
    connection->BeginTrans();
    connection->Execute("DELETE FROM #T");
    connection.reset();
    EXPECT_EQ(stored(), "1:C00001");
    EXPECT_EQ(memory->database().openSessions, 0);
}

TEST_F(ConnectionTest, ClosesTheRecordsetsThatAreStillAttachedToIt) {
    fill({2, 1});
    const auto attached = opened();
    const auto clone = attached->Clone();
    const auto detached = opened();
    detached->ActiveConnection(nullptr);
    connection->Close();
    EXPECT_EQ(attached->State(), ado::adStateClosed);
    EXPECT_EQ(clone->State(), ado::adStateClosed);
    EXPECT_ADO_ERROR(attached->MoveFirst(), ado::adErrObjectClosed);
    EXPECT_ADO_ERROR(attached->Fields(), ado::adErrObjectClosed);
    EXPECT_EQ(detached->State(), ado::adStateOpen);
    EXPECT_EQ(shown(*detached), "1:C00001 2:C00002");
}

TEST_F(ConnectionTest, DoesNotRevivePastRecordsetsWhenItIsOpenedAgain) {
    fill({2});
    const auto recordset = opened();
    connection->Close();
    connection->Open("memory");
    EXPECT_EQ(recordset->State(), ado::adStateClosed);
    recordset->ActiveConnection(nullptr);
    EXPECT_EQ(recordset->State(), ado::adStateClosed);
    recordset->ActiveConnection(connection);
    recordset->Open();
    EXPECT_EQ(recordset->RecordCount(), 1);
}

} // namespace
} // namespace veldran::test
