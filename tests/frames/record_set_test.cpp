#include "tests/frames/frame_fixture.h"

#include <stdexcept>

namespace veldran::test {
namespace {

using namespace frames;

class RecordSetOfAFrame : public FrameTest {};

TEST_F(RecordSetOfAFrame, IsReopenedFromAnotherText) {
    open(3);
    frame->MoveLast();
    log->taken();
    frame->Reopen("SELECT * FROM #RIGHE WHERE PROG > 1 ORDER BY PROG ASC");
    EXPECT_EQ(log->taken(), (Lines{"0->0"}));
    EXPECT_EQ(frame->Source(), "SELECT * FROM #RIGHE WHERE PROG > 1 ORDER BY PROG ASC");
    EXPECT_EQ(prog(), "2");
    EXPECT_EQ(frame->Recordset()->LockType(), ado::adLockOptimistic);
    EXPECT_EQ(gridColumn(0), (Lines{"C2", "C3"}));
    EXPECT_EQ(form.account.Text(), "C2");
}

TEST_F(RecordSetOfAFrame, IsReadTheNextTimeFromTheTextThatItWasGiven) {
    open(3);
    log->taken();
    frame->SetSource("SELECT * FROM #RIGHE WHERE PROG > 1 ORDER BY PROG ASC");
    EXPECT_TRUE(log->lines.empty()) << "nothing is read now";
    EXPECT_EQ(prog(), "1");
    frame->Requery();
    EXPECT_EQ(prog(), "2");
    EXPECT_EQ(gridColumn(0), (Lines{"C2", "C3"}));
}

TEST_F(RecordSetOfAFrame, IsReopenedEmpty) {
    open(2);
    frame->Reopen("SELECT * FROM #RIGHE WHERE 1 = 0");
    EXPECT_FALSE(frame->HasRecords());
    EXPECT_EQ(form.account.Text(), "");
    EXPECT_EQ(form.grid.RowCount(), 0U);
}

TEST_F(RecordSetOfAFrame, GivesUnsavedRowsUpWhenItIsReadAgain) {
    open(2, ado::adLockBatchOptimistic, LeavePolicy::Save);
    typeAccount("C9");
    frame->Update();
    addRow("3", "C3");
    EXPECT_TRUE(frame->HasChangedRow());
    EXPECT_TRUE(frame->HasNewRow());
    log->taken();
    frame->Requery();
    EXPECT_EQ(log->taken(), (Lines{"2->0"}));
    EXPECT_FALSE(frame->HasChangedRow());
    EXPECT_FALSE(frame->HasNewRow());
    EXPECT_EQ(gridColumn(0), (Lines{"C1", "C2"}));
    EXPECT_TRUE(told->boxes.empty());
}

TEST_F(RecordSetOfAFrame, CountsRowsThatAreKeptLocally) {
    open(2, ado::adLockBatchOptimistic, LeavePolicy::Save);
    typeAccount("C9");
    EXPECT_TRUE(frame->Update());
    EXPECT_FALSE(frame->IsRecordChanged());
    EXPECT_TRUE(frame->HasChangedRow());
    EXPECT_FALSE(frame->HasNewRow());
    EXPECT_FALSE(frame->HasPendingRow());
    EXPECT_EQ(database.stored(), "1:C1 2:C2");
    addRow("3", "C3");
    EXPECT_TRUE(frame->Update());
    EXPECT_TRUE(frame->HasNewRow());
}

TEST_F(RecordSetOfAFrame, CountsADeletedRowAsAChange) {
    open(1, ado::adLockBatchOptimistic, LeavePolicy::Save);
    told->answers = {services::answerYes};
    EXPECT_TRUE(frame->Delete());
    EXPECT_FALSE(frame->HasRecords());
    EXPECT_TRUE(frame->HasChangedRow());
    EXPECT_EQ(database.stored(), "1:C1");
}

TEST_F(RecordSetOfAFrame, FollowsValuesThatCodeHasWritten) {
    open(2);
    frame->Recordset()->Fields()["CONTO"].Value("C7");
    frame->Refresh();
    EXPECT_EQ(log->taken(), (Lines{"0->1"}));
    EXPECT_EQ(frame->Status(), statusEditing);
    EXPECT_EQ(form.account.Text(), "C7");
    EXPECT_EQ(gridColumn(0), (Lines{"C7", "C2"}));
}

TEST_F(RecordSetOfAFrame, FollowsRowsThatCodeHasSwapped) {
    open(3, ado::adLockBatchOptimistic, LeavePolicy::Save);
    frame->MoveNext();
    const auto rows = frame->Recordset();
    const Value upper = "C1";
    const Value lower = "C2";
    rows->MovePrevious();
    rows->Fields()["CONTO"].Value(lower);
    rows->MoveNext();
    rows->Fields()["CONTO"].Value(upper);
    frame->Refresh();
    EXPECT_TRUE(frame->MovePrevious());
    EXPECT_EQ(form.account.Text(), "C2");
    EXPECT_EQ(gridColumn(0), (Lines{"C2", "C1", "C3"}));
    EXPECT_EQ(frame->Status(), statusBrowsing);
    EXPECT_TRUE(frame->HasChangedRow());
}

class BatchOfAFrame : public FrameTest {
protected:
    void openBatch(int rows) {
        open(rows, ado::adLockBatchOptimistic, LeavePolicy::Save);
        writer = frame->UpdateBatchAll.subscribe([this](bool& written) {
            if (frame->HasPendingRow() && frame->Status() == statusAddingNew) {
                frame->Recordset()->CancelUpdate();
            }
            frame->DetachData();
            EXPECT_FALSE(form.grid.HasDataSource());
            EXPECT_FALSE(frame->MoveNext());
            writeNumbered(*frame->Recordset());
            frame->AttachData();
            written = true;
        });
    }

    Subscription writer;
};

TEST_F(BatchOfAFrame, WritesAllRowsRenumberedAndStaysOnItsRecord) {
    openBatch(3);
    told->answers = {services::answerYes};
    frame->Delete();
    frame->MoveLast();
    log->taken();
    EXPECT_TRUE(frame->UpdateBatch());
    EXPECT_EQ(database.stored(), "1:C2 2:C3");
    EXPECT_EQ(form.account.Text(), "C3");
    EXPECT_EQ(form.grid.CurrentRow(), 1U);
    EXPECT_EQ(log->taken(), (Lines{"0->0"}));
    EXPECT_FALSE(frame->HasChangedRow());
}

TEST_F(BatchOfAFrame, SavesTheCurrentRowFirstWhenTheUserTypedIntoIt) {
    openBatch(1);
    addRow("9", "C2");
    log->taken();
    EXPECT_TRUE(frame->UpdateBatch());
    EXPECT_EQ(log->taken(), (Lines{"BeforeUpdate", "AfterUpdate", "7->0", "0->0"}));
    EXPECT_EQ(database.stored(), "1:C1 2:C2");
}

TEST_F(BatchOfAFrame, LeavesANewRowWithoutContentToItsHandler) {
    openBatch(2);
    frame->AddNew();
    log->taken();
    EXPECT_TRUE(frame->UpdateBatch());
    EXPECT_EQ(log->taken(), (Lines{"2->0"}));
    EXPECT_EQ(database.stored(), "1:C1 2:C2");
    EXPECT_EQ(frame->Recordset()->RecordCount(), 2);
}

TEST_F(BatchOfAFrame, WritesNothingWhenTheCurrentRowIsRefused) {
    openBatch(1);
    typeAccount("C9");
    log->refused = "BeforeUpdate";
    EXPECT_FALSE(frame->UpdateBatch());
    EXPECT_EQ(database.stored(), "1:C1");
    log->refused.clear();
    form.percentage.TypeFromView("12x");
    EXPECT_FALSE(frame->UpdateBatch());
    EXPECT_EQ(database.stored(), "1:C1");
    EXPECT_EQ(frame->Status(), statusEditing);
}

TEST_F(BatchOfAFrame, AnswersThatNothingWasWrittenAndTakesItsDataUpWhenTheHandlerStops) {
    open(2, ado::adLockBatchOptimistic, LeavePolicy::Save);
    writer = frame->UpdateBatchAll.subscribe([this](bool&) { frame->DetachData(); });
    frame->MoveNext();
    EXPECT_FALSE(frame->UpdateBatch());
    EXPECT_EQ(frame->Status(), statusBrowsing);
    EXPECT_EQ(gridColumn(0), (Lines{"C1", "C2"}));
    EXPECT_EQ(form.grid.CurrentRow(), 1U);
    writer.release();
    EXPECT_FALSE(frame->UpdateBatch());
}

TEST_F(BatchOfAFrame, TakesItsDataUpWhenTheHandlerThrows) {
    open(2, ado::adLockBatchOptimistic, LeavePolicy::Save);
    writer = frame->UpdateBatchAll.subscribe([this](bool&) {
        frame->DetachData();
        throw std::runtime_error("numerazione");
    });
    EXPECT_THROW(frame->UpdateBatch(), std::runtime_error);
    EXPECT_EQ(gridColumn(0), (Lines{"C1", "C2"}));
    EXPECT_TRUE(frame->MoveNext());
}

TEST_F(BatchOfAFrame, FollowsANewRowThatTheHandlerCancelsWithoutDetaching) {
    open(0, ado::adLockBatchOptimistic, LeavePolicy::Save);
    writer = frame->UpdateBatchAll.subscribe([this](bool& written) {
        frame->Recordset()->CancelUpdate();
        written = true;
    });
    frame->AddNew();
    log->taken();
    EXPECT_TRUE(frame->UpdateBatch());
    EXPECT_EQ(log->taken(), (Lines{"2->0"}));
    EXPECT_FALSE(frame->HasRecords());
}

TEST_F(BatchOfAFrame, ComesBackToItsRecordWhereverTheHandlerHasWalked) {
    openBatch(3);
    frame->MoveNext();
    frame->DetachData();
    frame->Recordset()->MoveLast();
    frame->AttachData();
    EXPECT_EQ(prog(), "2");
    frame->DetachData();
    frame->Recordset()->Delete();
    frame->AttachData();
    EXPECT_EQ(prog(), "1");
    EXPECT_EQ(form.grid.CurrentRow(), 0U);
}

TEST_F(BatchOfAFrame, IgnoresDetachingTwiceAndAttachingUnasked) {
    open(2);
    frame->AttachData();
    frame->DetachData();
    frame->DetachData();
    EXPECT_EQ(frame->Status(), statusBrowsing);
    EXPECT_FALSE(frame->Update());
    EXPECT_THROW(frame->Requery(), std::logic_error);
    frame->AttachData();
    EXPECT_TRUE(frame->MoveNext());
}

class ClosingAFrame : public FrameTest {};

TEST_F(ClosingAFrame, GivesUpWhatIsPendingAndDisconnects) {
    open(1);
    const auto rows = frame->Recordset();
    frame->AddNew();
    typeAccount("C2");
    frame->Close();
    EXPECT_EQ(rows->State(), ado::adStateClosed);
    EXPECT_EQ(rows->ActiveConnection(), nullptr);
    EXPECT_EQ(frame->Recordset(), nullptr);
    EXPECT_EQ(form.account.Text(), "");
    EXPECT_EQ(database.stored(), "1:C1");
    frame->Close();
    EXPECT_FALSE(frame->AddNew());
    EXPECT_FALSE(frame->IsRecordChanged());
    EXPECT_FALSE(frame->HasNewRow());
    EXPECT_THROW(frame->Requery(), std::logic_error);
}

TEST_F(ClosingAFrame, LetsItBeOpenedAgain) {
    open(2);
    frame->Close();
    frame->Open("SELECT * FROM #RIGHE WHERE PROG = 2", database.connection, ado::adLockOptimistic);
    EXPECT_EQ(form.account.Text(), "C2");
    EXPECT_THROW(frame->Open("SELECT * FROM #RIGHE", database.connection, ado::adLockOptimistic),
                 std::logic_error);
}

TEST_F(ClosingAFrame, IsPossibleAfterTheConnectionHasGone) {
    open(2);
    typeAccount("C9");
    database.connection->Close();
    EXPECT_FALSE(frame->IsRecordChanged());
    EXPECT_FALSE(frame->MoveNext());
    EXPECT_FALSE(frame->HasRecords());
    frame->Refresh();
    frame->Close();
    EXPECT_EQ(frame->Recordset(), nullptr);
}

} // namespace
} // namespace veldran::test
