#include "tests/platform/recordset_fixture.h"

namespace veldran::test {
namespace {

using EditTest = RecordsetTest;

TEST_F(EditTest, ConvertsAndPadsAValueAtOnce) {
    fill({2});
    const auto recordset = opened();
    put(*recordset, "CONTO", "A");
    put(*recordset, "PERC", 33.335);
    put(*recordset, "SEGNO", "1");
    EXPECT_EQ(get(*recordset, "CONTO"), Value("A     "));
    EXPECT_EQ(get(*recordset, "PERC"), percent(3334));
    EXPECT_EQ(get(*recordset, "SEGNO"), number(1));
    put(*recordset, "CONTO", Value());
    EXPECT_TRUE(get(*recordset, "CONTO").isNull());
}

TEST_F(EditTest, RefusesAValueThatDoesNotFitAndKeepsTheOldOne) {
    fill({2});
    const auto recordset = opened();
    EXPECT_ADO_ERROR(put(*recordset, "CONTO", "1234567"), ado::sqlErrTextTooLong);
    EXPECT_ADO_ERROR(put(*recordset, "PERC", 1000), ado::sqlErrOverflow);
    EXPECT_ADO_ERROR(put(*recordset, "SEGNO", "due"), ado::adErrDataConversion);
    EXPECT_EQ(connection->Errors().at(0).Number, ado::adErrDataConversion);
    EXPECT_EQ(get(*recordset, "CONTO"), Value("C00001"));
    EXPECT_EQ(recordset->EditMode(), ado::adEditNone);
}

TEST_F(EditTest, TellsTheModeAndTheStatusOfTheRecord) {
    fill({2, 1});
    const auto recordset = opened();
    put(*recordset, "SEGNO", 1);
    EXPECT_EQ(recordset->EditMode(), ado::adEditInProgress);
    recordset->Update();
    EXPECT_EQ(recordset->EditMode(), ado::adEditNone);
    EXPECT_EQ(recordset->Status(), ado::adRecModified);
    recordset->AddNew();
    EXPECT_EQ(recordset->EditMode(), ado::adEditAdd);
    EXPECT_EQ(recordset->Status(), ado::adRecNew);
    recordset->CancelUpdate();
    recordset->MoveFirst();
    recordset->Delete();
    EXPECT_EQ(recordset->EditMode(), ado::adEditDelete);
    EXPECT_EQ(recordset->Status(), ado::adRecDeleted);
}

TEST_F(EditTest, RemembersTheOriginalValueUntilItIsWritten) {
    fill({2});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    recordset->Update();
    put(*recordset, "CONTO", "DUE");
    recordset->Update();
    EXPECT_EQ(recordset->Fields()["CONTO"].OriginalValue(), Value("C00001"));
    recordset->UpdateBatch();
    EXPECT_EQ(recordset->Fields()["CONTO"].OriginalValue(), Value("DUE   "));
    EXPECT_EQ(recordset->Status(), ado::adRecUnmodified);
}

TEST_F(EditTest, CancelUpdateUndoesTheLastEditOnly) {
    fill({2});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    recordset->Update();
    put(*recordset, "CONTO", "DUE");
    put(*recordset, "SEGNO", 1);
    recordset->CancelUpdate();
    EXPECT_EQ(get(*recordset, "CONTO"), Value("UNO   "));
    EXPECT_EQ(get(*recordset, "SEGNO"), number(2));
    EXPECT_EQ(recordset->Status(), ado::adRecModified);
    recordset->CancelUpdate();
    EXPECT_EQ(get(*recordset, "CONTO"), Value("UNO   "));
}

TEST_F(EditTest, CancelledNewRecordDisappearsAndTheCursorReturns) {
    fill({2, 1});
    const auto recordset = opened();
    recordset->AddNew();
    EXPECT_EQ(recordset->RecordCount(), 3);
    EXPECT_EQ(recordset->AbsolutePosition(), 3);
    recordset->CancelUpdate();
    EXPECT_EQ(recordset->RecordCount(), 2);
    EXPECT_EQ(recordset->AbsolutePosition(), 1);
}

TEST_F(EditTest, CancelledFirstRecordOfAnEmptySetLeavesItEmpty) {
    const auto recordset = opened();
    recordset->AddNew();
    EXPECT_FALSE(recordset->BOF());
    EXPECT_FALSE(recordset->EndOfFile());
    recordset->CancelUpdate();
    EXPECT_TRUE(recordset->BOF());
    EXPECT_TRUE(recordset->EndOfFile());
}

TEST_F(EditTest, MovingAwayEndsTheEdit) {
    fill({2, 1});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    recordset->MoveNext();
    recordset->MovePrevious();
    EXPECT_EQ(recordset->EditMode(), ado::adEditNone);
    EXPECT_EQ(recordset->Status(), ado::adRecModified);
    EXPECT_EQ(get(*recordset, "CONTO"), Value("UNO   "));
}

TEST_F(EditTest, AddingAnotherRecordEndsTheEdit) {
    const auto recordset = opened();
    recordset->AddNew();
    put(*recordset, "CONTO", "UNO");
    recordset->AddNew();
    recordset->CancelUpdate();
    EXPECT_EQ(recordset->RecordCount(), 1);
    EXPECT_EQ(get(*recordset, "CONTO"), Value("UNO   "));
}

TEST_F(EditTest, SwapsTwoRecordsFieldByField) {
    fill({2, 1, 1});
    const auto recordset = opened();
    recordset->MoveNext();
    const auto copyOf = [&] {
        std::vector<Value> values;
        for (const ado::Field& field : recordset->Fields()) {
            values.push_back(field.Value());
        }
        return values;
    };
    const auto write = [&](const std::vector<Value>& values) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (recordset->Fields()[i].Name() != "PROG") {
                recordset->Fields()[i].Value(values[i]);
            }
        }
    };
    const auto a = copyOf();
    recordset->MovePrevious();
    const auto b = copyOf();
    write(a);
    recordset->MoveNext();
    write(b);
    recordset->MovePrevious();
    EXPECT_EQ(shown(*recordset), "1:C00002 2:C00001 3:C00003");
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:C00002 2:C00001 3:C00003");
}

TEST_F(EditTest, DeletedRecordStaysCurrentUntilTheCursorMoves) {
    fill({2, 1, 1});
    const auto recordset = opened();
    recordset->MoveNext();
    recordset->Delete();
    EXPECT_FALSE(recordset->BOF());
    EXPECT_FALSE(recordset->EndOfFile());
    EXPECT_ADO_ERROR(get(*recordset, "PROG"), ado::adErrNoCurrentRecord);
    EXPECT_ADO_ERROR(put(*recordset, "PROG", 1), ado::adErrNoCurrentRecord);
    EXPECT_ADO_ERROR(recordset->Delete(), ado::adErrNoCurrentRecord);
    EXPECT_EQ(recordset->Fields()["PROG"].OriginalValue(), number(2));
    recordset->MovePrevious();
    EXPECT_EQ(get(*recordset, "PROG"), number(1));
    recordset->MoveNext();
    EXPECT_EQ(get(*recordset, "PROG"), number(3));
}

TEST_F(EditTest, AfterDeletingTheOnlyRecordAMoveReachesTheEnd) {
    fill({2});
    const auto recordset = opened();
    recordset->Delete();
    EXPECT_EQ(recordset->RecordCount(), 0);
    recordset->MoveNext();
    EXPECT_TRUE(recordset->EndOfFile());
    EXPECT_TRUE(recordset->BOF());
    EXPECT_ADO_ERROR(recordset->MoveNext(), ado::adErrNoCurrentRecord);
}

TEST_F(EditTest, DeletingANewRecordLeavesNothingToWrite) {
    fill({2});
    const auto recordset = opened();
    addRow(*recordset, 2, "NUOVO");
    recordset->Delete();
    recordset->AddNew();
    recordset->Delete();
    recordset->UpdateBatch();
    EXPECT_TRUE(recording->log().messages().empty());
    EXPECT_EQ(stored(), "1:C00001");
}

TEST_F(EditTest, DeletesAllThatItsFilterShows) {
    fill({2, 1, 1, 2});
    const auto recordset = opened();
    recordset->Filter("SEGNO = 1");
    recordset->Delete(ado::adAffectGroup);
    recordset->Filter(ado::adFilterNone);
    EXPECT_EQ(shown(*recordset), "1:C00001 4:C00004");
    EXPECT_ADO_ERROR(recordset->Delete(ado::adAffectAll), ado::adErrInvalidArgument);
}

TEST_F(EditTest, ARecordThatNoLongerMeetsTheFilterDisappears) {
    fill({2, 1, 2});
    const auto recordset = opened();
    recordset->Filter("SEGNO = 2");
    put(*recordset, "SEGNO", 1);
    EXPECT_EQ(recordset->RecordCount(), 1);
    EXPECT_EQ(recordset->AbsolutePosition(), ado::adPosUnknown);
    EXPECT_EQ(get(*recordset, "PROG"), number(1));
    recordset->MoveNext();
    EXPECT_EQ(get(*recordset, "PROG"), number(3));
    EXPECT_EQ(recordset->AbsolutePosition(), 1);
}

TEST_F(EditTest, ShowsWhatIsPendingOnRequest) {
    fill({2, 1, 1});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    recordset->MoveLast();
    recordset->Delete();
    addRow(*recordset, 4, "NUOVO");
    recordset->Filter(ado::adFilterPendingRecords);
    EXPECT_EQ(recordset->RecordCount(), 3);
    EXPECT_EQ(recordset->Status(), ado::adRecModified);
    recordset->MoveNext();
    EXPECT_EQ(recordset->Status(), ado::adRecDeleted);
    recordset->MoveNext();
    EXPECT_EQ(recordset->Status(), ado::adRecNew);
    recordset->UpdateBatch();
    EXPECT_EQ(recordset->RecordCount(), 0);
}

TEST_F(EditTest, KnowsWithoutFilterWhetherAnythingIsPending) {
    fill({2, 1});
    const auto recordset = opened();
    EXPECT_FALSE(recordset->HasPendingRecords());
    put(*recordset, "CONTO", "UNO");
    EXPECT_TRUE(recordset->HasPendingRecords());
    EXPECT_TRUE(recordset->Clone()->HasPendingRecords());
    recordset->CancelUpdate();
    EXPECT_FALSE(recordset->HasPendingRecords());
    recordset->Delete();
    EXPECT_TRUE(recordset->HasPendingRecords());
    recordset->UpdateBatch();
    EXPECT_FALSE(recordset->HasPendingRecords());
    recordset->AddNew();
    EXPECT_TRUE(recordset->HasPendingRecords());
    recordset->CancelUpdate();
    EXPECT_FALSE(recordset->HasPendingRecords());
}

TEST_F(EditTest, CancelBatchReturnsToWhatTheDatabaseHolds) {
    fill({2, 1, 1});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    recordset->MoveNext();
    recordset->Delete();
    addRow(*recordset, 4, "NUOVO");
    recordset->AddNew();
    recordset->CancelBatch();
    EXPECT_EQ(shown(*recordset), "1:C00001 2:C00002 3:C00003");
    EXPECT_EQ(recordset->AbsolutePosition(), 1);
    recordset->UpdateBatch();
    EXPECT_TRUE(recording->log().messages().empty());
}

TEST_F(EditTest, CancelBatchOfTheCurrentRecordLeavesTheOthersMarked) {
    fill({2, 1});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    recordset->MoveNext();
    put(*recordset, "CONTO", "DUE");
    recordset->Update();
    recordset->CancelBatch(ado::adAffectCurrent);
    EXPECT_EQ(shown(*recordset), "1:UNO 2:C00002");
}

TEST_F(EditTest, ReadOnlyRefusesEveryChange) {
    fill({2});
    const auto recordset = opened(ado::adLockReadOnly);
    EXPECT_ADO_ERROR(put(*recordset, "SEGNO", 1), ado::adErrFeatureNotAvailable);
    EXPECT_ADO_ERROR(recordset->AddNew(), ado::adErrFeatureNotAvailable);
    EXPECT_ADO_ERROR(recordset->Delete(), ado::adErrFeatureNotAvailable);
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), ado::adErrFeatureNotAvailable);
    recordset->Update();
    EXPECT_EQ(recordset->RecordCount(), 1);
}

TEST_F(EditTest, RefusesAValueForAnIdentity) {
    memory->database().tables[0].columns[2].identity = true;
    fill({2});
    const auto recordset = opened();
    EXPECT_ADO_ERROR(put(*recordset, "SEGNO", 1), ado::adErrFeatureNotAvailable);
}

class ImmediateTest : public RecordsetTest {
protected:
    ImmediateTest() { fill({2, 1}); }
};

TEST_F(ImmediateTest, UpdateWritesAtOnceWithTypedParameters) {
    const auto recordset = opened(ado::adLockOptimistic);
    put(*recordset, "PERC", 50);
    EXPECT_TRUE(recording->log().messages().empty());
    recordset->Update();
    EXPECT_EQ(recording->log().executed().at(0),
              sent("UPDATE [#T] SET [PERC] = ? WHERE [CAUSALE] = ? AND [PROG] = ? AND [PERC] = ?")
                  .with("@P1", ado::adNumeric, 0, percent(5000), 5, 2)
                  .with("@P2", ado::adWChar, 4, "VEND")
                  .with("@P3", ado::adNumeric, 0, number(1), 3)
                  .with("@P4", ado::adNumeric, 0, percent(1000), 5, 2)
                  .withoutRows());
    EXPECT_EQ(recordset->Status(), ado::adRecUnmodified);
}

TEST_F(ImmediateTest, FindsANullByIsNull) {
    rows()[0][3] = Value();
    const auto recordset = opened(ado::adLockOptimistic);
    put(*recordset, "PERC", 50);
    recordset->Update();
    EXPECT_EQ(recording->log().texts().at(0),
              "UPDATE [#T] SET [PERC] = ? WHERE [CAUSALE] = ? AND [PROG] = ? AND [PERC] IS NULL");
    EXPECT_EQ(rows()[0][3], percent(5000));
}

TEST_F(ImmediateTest, InsertsANewRecordWithTheColumnsThatHaveValues) {
    const auto recordset = opened(ado::adLockOptimistic);
    addRow(*recordset, 3, "NUOVO");
    EXPECT_EQ(recording->log().texts().at(0),
              "INSERT INTO [#T] ([CAUSALE], [PROG], [SEGNO], [CONTO]) VALUES (?, ?, ?, ?)");
    EXPECT_EQ(stored(), "1:C00001 2:C00002 3:NUOVO");
    EXPECT_EQ(recordset->AbsolutePosition(), 3);
}

TEST_F(ImmediateTest, DeletesAtOnceByAllOriginalValues) {
    rows()[0][4] = Value();
    const auto recordset = opened(ado::adLockOptimistic);
    recordset->Delete();
    EXPECT_EQ(recording->log().texts().at(0),
              "DELETE FROM [#T] WHERE [CAUSALE] = ? AND [PROG] = ? AND [SEGNO] = ? "
              "AND [PERC] = ? AND [CONTO] IS NULL");
    EXPECT_EQ(stored(), "2:C00002");
}

TEST_F(ImmediateTest, MovingAwayWritesTheRecord) {
    const auto recordset = opened(ado::adLockOptimistic);
    put(*recordset, "CONTO", "UNO");
    recordset->MoveNext();
    EXPECT_EQ(stored(), "1:UNO 2:C00002");
}

TEST_F(ImmediateTest, WritesNothingForAnEditThatChangedNothing) {
    const auto recordset = opened(ado::adLockOptimistic);
    put(*recordset, "CONTO", "C00001");
    recordset->Update();
    EXPECT_TRUE(recording->log().executed().empty());
}

TEST_F(ImmediateTest, KeepsTheEditWhenItsWriteFails) {
    const auto recordset = opened(ado::adLockOptimistic);
    put(*recordset, "CONTO", "UNO");
    failing->plan().failContaining("UPDATE");
    EXPECT_ADO_ERROR(recordset->MoveNext(), 50000);
    EXPECT_EQ(recordset->EditMode(), ado::adEditInProgress);
    EXPECT_EQ(recordset->AbsolutePosition(), 1);
    EXPECT_EQ(get(*recordset, "CONTO"), Value("UNO   "));
    EXPECT_EQ(memory->database().transactions, 0);
    recordset->Update();
    EXPECT_EQ(stored(), "1:UNO 2:C00002");
}

TEST_F(ImmediateTest, KeepsTheNewRecordPendingWhenTheDatabaseRefusesIt) {
    const auto recordset = opened(ado::adLockOptimistic);
    EXPECT_ADO_ERROR(addRow(*recordset, 2, "DOPPIO"), 2627);
    EXPECT_EQ(connection->Errors().at(0).SQLState, "23000");
    EXPECT_EQ(recordset->EditMode(), ado::adEditAdd);
    put(*recordset, "PROG", number(3));
    recordset->Update();
    EXPECT_EQ(stored(), "1:C00001 2:C00002 3:DOPPIO");
}

TEST_F(ImmediateTest, BringsTheRecordBackWhenItsDeletionFails) {
    const auto recordset = opened(ado::adLockOptimistic);
    failing->plan().failContaining("DELETE");
    EXPECT_ADO_ERROR(recordset->Delete(), 50000);
    EXPECT_EQ(recordset->RecordCount(), 2);
    EXPECT_EQ(get(*recordset, "PROG"), number(1));
}

TEST_F(ImmediateTest, NoticesThatSomebodyElseChangedTheRecord) {
    const auto recordset = opened(ado::adLockOptimistic);
    rows()[0][4] = Value("ALTRO ");
    put(*recordset, "CONTO", "UNO");
    EXPECT_ADO_ERROR(recordset->Update(), ado::adErrConcurrencyViolation);
    EXPECT_EQ(stored(), "1:ALTRO 2:C00002");
}

TEST_F(ImmediateTest, RefusesToCloseOrRequeryDuringAnEdit) {
    const auto recordset = opened(ado::adLockOptimistic);
    put(*recordset, "CONTO", "UNO");
    EXPECT_ADO_ERROR(recordset->Close(), ado::adErrIllegalOperation);
    EXPECT_ADO_ERROR(recordset->Requery(), ado::adErrIllegalOperation);
    recordset->CancelUpdate();
    recordset->Close();
    EXPECT_EQ(stored(), "1:C00001 2:C00002");
}

TEST_F(ImmediateTest, CannotWriteWhileDisconnected) {
    const auto recordset = opened(ado::adLockOptimistic);
    recordset->ActiveConnection(nullptr);
    put(*recordset, "CONTO", "UNO");
    EXPECT_ADO_ERROR(recordset->Update(), ado::adErrInvalidConnection);
    recordset->ActiveConnection(connection);
    recordset->Update();
    EXPECT_EQ(stored(), "1:UNO 2:C00002");
}

} // namespace
} // namespace veldran::test
