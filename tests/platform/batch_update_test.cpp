#include "tests/platform/recordset_fixture.h"

#include <algorithm>
#include <map>
#include <random>

namespace veldran::test {
namespace {

class BatchTest : public RecordsetTest {
protected:
    /// Everything the table and the recordset hold, to compare before and after a failure.
    std::string everything(ado::Recordset& recordset) {
        const auto cursor = recordset.Clone();
        cursor->Filter(ado::adFilterPendingRecords);
        std::string text = stored() + " | " + shown(recordset) + " |";
        for (; !cursor->EndOfFile(); cursor->MoveNext()) {
            text += " " + std::to_string(cursor->Status()) + ":" +
                    cursor->Fields()["PROG"].OriginalValue().toText();
        }
        return text;
    }
    /// Deletes the record at `position` and numbers the others from 1.
    static void closeGap(ado::Recordset& recordset, std::int64_t position) {
        recordset.AbsolutePosition(position);
        recordset.Delete();
        std::int64_t prog = 0;
        for (recordset.MoveFirst(); !recordset.EndOfFile(); recordset.MoveNext()) {
            put(recordset, "PROG", number(++prog));
        }
    }
};

TEST_F(BatchTest, KeepsChangesAtTheClientUntilTheBatchIsWritten) {
    fill({2, 1});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    recordset->MoveNext();
    recordset->Delete();
    addRow(*recordset, 3, "NUOVO");
    EXPECT_TRUE(recording->log().messages().empty());
    EXPECT_EQ(stored(), "1:C00001 2:C00002");
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:UNO 3:NUOVO");
    recordset->UpdateBatch();
    EXPECT_EQ(recording->log().executed().size(), 3U);
}

TEST_F(BatchTest, SendsNothingForARowThatIsAgainAsItIsStored) {
    fill({2});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    recordset->Update();
    put(*recordset, "CONTO", "C00001");
    recordset->UpdateBatch();
    EXPECT_TRUE(recording->log().messages().empty());
    EXPECT_EQ(recordset->Status(), ado::adRecUnmodified);
}

TEST_F(BatchTest, WritesInOneTransactionDeletionsFirstNewRowsLast) {
    fill({2, 1});
    const auto recordset = opened();
    addRow(*recordset, 3, "NUOVO");
    recordset->MoveFirst();
    put(*recordset, "CONTO", "UNO");
    recordset->MoveNext();
    recordset->Delete();
    recordset->UpdateBatch();
    std::vector<Sent> kinds;
    for (const Message& message : recording->log().messages()) {
        kinds.push_back(message.how);
    }
    EXPECT_EQ(kinds, (std::vector{Sent::Begin, Sent::Direct, Sent::Direct, Sent::Direct, Sent::Commit}));
    EXPECT_TRUE(recording->log().texts()[0].starts_with("DELETE"));
    EXPECT_TRUE(recording->log().texts()[1].starts_with("UPDATE"));
    EXPECT_TRUE(recording->log().texts()[2].starts_with("INSERT"));
}

TEST_F(BatchTest, EndsAnEditInProgressAndWritesIt) {
    fill({2});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    recordset->UpdateBatch();
    EXPECT_EQ(recordset->EditMode(), ado::adEditNone);
    EXPECT_EQ(stored(), "1:UNO");
}

TEST_F(BatchTest, LeavesOutARowThatAnotherCursorIsStillEditing) {
    fill({2, 1});
    const auto recordset = opened();
    const auto clone = recordset->Clone();
    clone->AddNew();
    put(*recordset, "CONTO", "UNO");
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:UNO 2:C00002");
    EXPECT_EQ(clone->EditMode(), ado::adEditAdd);
}

TEST_F(BatchTest, ClosesTheGapOfADeletedRow) {
    fill({2, 1, 1, 1});
    const auto recordset = opened();
    closeGap(*recordset, 2);
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:C00001 2:C00003 3:C00004");
}

TEST_F(BatchTest, MakesRoomForARowInTheMiddle) {
    fill({2, 1, 1});
    const auto recordset = opened();
    recordset->MoveNext();
    put(*recordset, "PROG", number(3));
    recordset->MoveNext();
    put(*recordset, "PROG", number(4));
    addRow(*recordset, 2, "NUOVO");
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:C00001 2:NUOVO 3:C00002 4:C00003");
}

TEST_F(BatchTest, GivesANewRowTheKeyOfADeletedOne) {
    fill({2, 1});
    const auto recordset = opened();
    recordset->Delete();
    addRow(*recordset, 1, "NUOVO");
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:NUOVO 2:C00002");
}

TEST_F(BatchTest, SwapsTheKeysOfTwoRows) {
    fill({2, 1, 1});
    const auto recordset = opened();
    put(*recordset, "PROG", number(2));
    recordset->MoveNext();
    put(*recordset, "PROG", number(1));
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:C00002 2:C00001 3:C00003");
    EXPECT_EQ(recording->log().executed().size(), 3U);
    recordset->Requery();
    EXPECT_EQ(shown(*recordset), "1:C00002 2:C00001 3:C00003");
}

TEST_F(BatchTest, SwapsKeysOfText) {
    memory->database().tables.push_back({"#V",
                                         {keyColumn("COD", ado::adWChar, 4), column("N", ado::adInteger)},
                                         {{"A   ", 1}, {"B   ", 2}, {"~   ", 3}}});
    for (auto& info : memory->database().table("#V").columns) {
        info.baseTable = "#V";
    }
    ado::Recordset recordset;
    recordset.Open("SELECT * FROM #V", connection, ado::adOpenStatic, ado::adLockBatchOptimistic);
    put(recordset, "COD", "b");
    recordset.MoveNext();
    put(recordset, "COD", "A");
    recordset.UpdateBatch();
    const auto& rows = memory->database().table("#V").rows;
    EXPECT_EQ(rows[0], (std::vector<Value>{"A   ", 2}));
    EXPECT_EQ(rows[1], (std::vector<Value>{"b   ", 1}));
    EXPECT_EQ(rows[2], (std::vector<Value>{"~   ", 3}));
}

TEST_F(BatchTest, RotatesAnyPermutationOfKeysWithoutCollision) {
    std::mt19937 random(20260101);
    for (int round = 0; round < 200; ++round) {
        rows().clear();
        fill(std::vector<int>(7, 1));
        const auto recordset = opened();
        std::vector<std::int64_t> progs{1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
        std::shuffle(progs.begin(), progs.end(), random);
        std::map<std::int64_t, std::string> expected;
        for (std::size_t i = 0; !recordset->EndOfFile(); recordset->MoveNext(), ++i) {
            if (random() % 5 == 0) {
                recordset->Delete();
            } else {
                put(*recordset, "PROG", number(progs[i]));
                expected[progs[i]] = nullSafeText(get(*recordset, "CONTO"));
            }
        }
        addRow(*recordset, progs[8], "NUOVO");
        expected[progs[8]] = "NUOVO";
        std::string text;
        for (const auto& [prog, conto] : expected) {
            text += (text.empty() ? "" : " ") + std::to_string(prog) + ":" + conto;
        }
        ASSERT_NO_THROW(recordset->UpdateBatch());
        ASSERT_EQ(stored(), text);
    }
}

TEST_F(BatchTest, LeavesTableAndMarksAsTheyWereWhicheverStatementFails) {
    int statements = 0;
    for (int n = 0; n <= statements; ++n) {
        rows().clear();
        fill({2, 1, 1, 1, 1});
        const auto recordset = opened();
        closeGap(*recordset, 2);
        addRow(*recordset, 5, "NUOVO");
        recordset->MoveFirst();
        put(*recordset, "PROG", number(2));
        recordset->MoveNext();
        put(*recordset, "PROG", number(1));
        recordset->Update();
        const std::string before = everything(*recordset);
        if (n == 0) { // counts the statements of a batch that succeeds
            failing->plan().restartCount();
            recordset->UpdateBatch();
            statements = failing->plan().statementCount();
            ASSERT_GE(statements, 8);
            ASSERT_EQ(stored(), "1:C00003 2:C00001 3:C00004 4:C00005 5:NUOVO");
            continue;
        }
        failing->plan().failStatement(n);
        EXPECT_ADO_ERROR(recordset->UpdateBatch(), 50000);
        EXPECT_EQ(connection->Errors().at(0).Description, "Guasto simulato");
        EXPECT_EQ(everything(*recordset), before) << "statement " << n;
        EXPECT_EQ(memory->database().transactions, 0);
        recordset->UpdateBatch();
        EXPECT_EQ(stored(), "1:C00003 2:C00001 3:C00004 4:C00005 5:NUOVO");
    }
}

TEST_F(BatchTest, ReportsAFailedRollbackAfterItsCause) {
    fill({2});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    failing->plan().failWhere(
        [](const Message& message) { return message.how == Sent::Direct || message.how == Sent::Rollback; },
        Times::Always);
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), 50000);
    EXPECT_EQ(connection->Errors().size(), 2U);
}

TEST_F(BatchTest, IsRefusedWholeWhenSomebodyElseDeletedARow) {
    fill({2, 1, 1});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    recordset->MoveLast();
    put(*recordset, "CONTO", "TRE");
    recordset->Update();
    rows().pop_back();
    const std::string before = everything(*recordset);
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), ado::adErrConcurrencyViolation);
    EXPECT_EQ(connection->Errors().at(0).SQLState, "01001");
    EXPECT_EQ(everything(*recordset), before);
    EXPECT_EQ(stored(), "1:C00001 2:C00002");
}

TEST_F(BatchTest, IsRefusedWhenTheRowToDeleteWasChangedByAnother) {
    fill({2});
    const auto recordset = opened();
    recordset->Delete();
    rows()[0][3] = percent(1);
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), ado::adErrConcurrencyViolation);
    EXPECT_EQ(stored(), "1:C00001");
}

TEST_F(BatchTest, IsRefusedForAKeyThatTwoRowsClaim) {
    fill({2, 1});
    const auto recordset = opened();
    addRow(*recordset, 2, "DOPPIO");
    const std::string before = everything(*recordset);
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), 2627);
    EXPECT_EQ(everything(*recordset), before);
}

TEST_F(BatchTest, LeavesTheCallersTransactionToTheCaller) {
    fill({2, 1});
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    connection->BeginTrans();
    recording->log().clear();
    recordset->UpdateBatch();
    EXPECT_EQ(recording->log().messages().size(), 1U);
    EXPECT_TRUE(connection->inTransaction());
    connection->RollbackTrans();
    EXPECT_EQ(stored(), "1:C00001 2:C00002");
}

TEST_F(BatchTest, WritesTheRowsOfItsFilterOrTheCurrentOneOnRequest) {
    fill({2, 1, 2});
    const auto recordset = opened();
    for (; !recordset->EndOfFile(); recordset->MoveNext()) {
        put(*recordset, "CONTO", "NUOVO");
    }
    recordset->MoveFirst();
    recordset->UpdateBatch(ado::adAffectCurrent);
    EXPECT_EQ(stored(), "1:NUOVO 2:C00002 3:C00003");
    recordset->Filter("SEGNO = 2");
    recordset->UpdateBatch(ado::adAffectGroup);
    EXPECT_EQ(stored(), "1:NUOVO 2:C00002 3:NUOVO");
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:NUOVO 2:NUOVO 3:NUOVO");
}

TEST_F(BatchTest, WorksOnDisconnectedRowsAndWritesThemWhenAttachedAgain) {
    fill({2, 1});
    const auto recordset = opened();
    recordset->ActiveConnection(nullptr);
    put(*recordset, "CONTO", "UNO");
    recordset->MoveNext();
    recordset->Delete();
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), ado::adErrInvalidConnection);
    EXPECT_ADO_ERROR(recordset->Requery(), ado::adErrInvalidConnection);
    recordset->ActiveConnection(connection);
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:UNO");
}

TEST_F(BatchTest, RefusesToWriteWhenTheKeyIsUnknown) {
    fill({2});
    for (auto& info : memory->database().tables[0].columns) {
        info.key = false;
    }
    const auto recordset = opened();
    put(*recordset, "CONTO", "UNO");
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), ado::adErrFeatureNotAvailable);
    EXPECT_TRUE(recording->log().messages().empty());
}

TEST_F(BatchTest, RefusesToWriteWhenTheBaseTableIsUnknownOrNotOne) {
    fill({2});
    auto& columns = memory->database().tables[0].columns;
    columns[4].baseTable = "#ALTRA";
    auto recordset = opened();
    put(*recordset, "SEGNO", 1);
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), ado::adErrFeatureNotAvailable);
    for (auto& info : columns) {
        info.baseTable.clear();
    }
    recordset = opened();
    put(*recordset, "SEGNO", 1);
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), ado::adErrFeatureNotAvailable);
}

TEST_F(BatchTest, RefusesAChangeOfAComputedColumnOnly) {
    fill({2});
    memory->database().tables[0].columns[4].baseTable.clear();
    const auto recordset = opened();
    put(*recordset, "SEGNO", 1);
    recordset->UpdateBatch();
    EXPECT_EQ(rows()[0][2], number(1));
    put(*recordset, "CONTO", "UNO");
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), ado::adErrFeatureNotAvailable);
}

TEST_F(BatchTest, RefusesAKeyThatFindsSeveralRows) {
    fill({2, 1});
    memory->database().tables[0].columns[1].key = false;
    rows().pop_back();
    const auto recordset = opened();
    rows().push_back(rows()[0]);
    put(*recordset, "CONTO", "UNO");
    memory->database().tables[0].columns[0].key = false;
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), ado::adErrKeyInsufficient);
    EXPECT_EQ(stored(), "1:C00001 1:C00001");
}

TEST_F(BatchTest, LeavesIdentityColumnsOut) {
    memory->database().tables.push_back(
        {"#W", {keyColumn("COD", ado::adInteger), column("ID", ado::adInteger)}, {}});
    auto& columns = memory->database().table("#W").columns;
    columns[0].baseTable = columns[1].baseTable = "#W";
    columns[1].identity = true;
    ado::Recordset recordset;
    recordset.Open("SELECT * FROM #W", connection, ado::adOpenStatic, ado::adLockBatchOptimistic);
    recordset.AddNew();
    put(recordset, "COD", 7);
    recordset.UpdateBatch();
    EXPECT_EQ(recording->log().texts().back(), "INSERT INTO [#W] ([COD]) VALUES (?)");
}

} // namespace
} // namespace veldran::test
