#include "tests/frames/frame_fixture.h"

#include <stdexcept>

namespace veldran::test {
namespace {

using namespace frames;

class AFrame : public FrameTest {};

TEST_F(AFrame, OpensOnTheFirstRecordAndAnnouncesNothingBeforeItsStatusIsSet) {
    open(2);
    EXPECT_EQ(frame->Status(), statusBrowsing);
    EXPECT_EQ(prog(), "1");
    EXPECT_TRUE(frame->SetStatus(statusBrowsing));
    EXPECT_EQ(log->taken(), (Lines{"0->0"}));
}

TEST_F(AFrame, BrowsesFromRecordToRecordAndAnnouncesEach) {
    open(3);
    EXPECT_TRUE(frame->MoveNext());
    EXPECT_TRUE(frame->MoveLast());
    EXPECT_TRUE(frame->MovePrevious());
    EXPECT_TRUE(frame->MoveFirst());
    EXPECT_EQ(log->taken(), (Lines{"0->0", "0->0", "0->0", "0->0"}));
    EXPECT_EQ(prog(), "1");
    EXPECT_TRUE(frame->MoveBy(2));
    EXPECT_EQ(prog(), "3");
}

TEST_F(AFrame, StaysWhereThereIsNoFurtherRecord) {
    open(2);
    EXPECT_FALSE(frame->MovePrevious());
    EXPECT_TRUE(frame->MoveFirst());
    EXPECT_TRUE(frame->MoveLast());
    log->taken();
    EXPECT_FALSE(frame->MoveNext());
    EXPECT_FALSE(frame->MoveBy(5));
    EXPECT_TRUE(frame->MoveLast());
    EXPECT_TRUE(log->lines.empty());
}

TEST_F(AFrame, HasNowhereToGoWithoutRecords) {
    open(0);
    EXPECT_FALSE(frame->HasRecords());
    EXPECT_FALSE(frame->MoveFirst());
    EXPECT_FALSE(frame->MoveLast());
    EXPECT_FALSE(frame->MoveNext());
    EXPECT_FALSE(frame->Delete());
    EXPECT_TRUE(frame->Undo());
    EXPECT_TRUE(frame->Update());
    EXPECT_TRUE(log->lines.empty());
    EXPECT_TRUE(told->boxes.empty());
}

TEST_F(AFrame, TurnsToEditingWhenTheUserChangesAValue) {
    open(2);
    form.sign.ChooseFromView(1);
    EXPECT_EQ(frame->Status(), statusEditing);
    EXPECT_EQ(value("SEGNO").toInt32(), 1);
    EXPECT_TRUE(frame->IsRecordChanged());
    EXPECT_TRUE(frame->HasChangedRow());
    EXPECT_TRUE(frame->HasPendingRow());
    EXPECT_FALSE(frame->HasNewRow());
    EXPECT_EQ(log->taken(), (Lines{"0->1"}));
}

TEST_F(AFrame, TurnsToEditingAtTheFirstKeyAndWritesWhenTheFieldIsLeft) {
    open(2);
    form.percentage.TypeFromView("12,5");
    EXPECT_EQ(log->taken(), (Lines{"0->1"}));
    EXPECT_EQ(value("PERCENTUALE").toText(), "10.00");
    EXPECT_TRUE(frame->IsRecordChanged());
    form.percentage.LeaveFromView();
    EXPECT_EQ(value("PERCENTUALE").toText(), "12.50");
    form.percentage.TypeFromView("13");
    EXPECT_TRUE(log->lines.empty());
}

TEST_F(AFrame, SavesAnEditedRecordThroughStatusSeven) {
    open(2);
    typeAccount("C9");
    std::vector<FrameStatus> seen;
    const auto before = frame->BeforeUpdate.subscribe([&](bool&) { seen.push_back(frame->Status()); });
    const auto after = frame->AfterUpdate.subscribe([&](bool) { seen.push_back(frame->Status()); });
    log->taken();
    EXPECT_TRUE(frame->Update());
    EXPECT_EQ(log->taken(), (Lines{"BeforeUpdate", "AfterUpdate", "7->0"}));
    EXPECT_EQ(seen, (std::vector{statusEditing, statusSaving}));
    EXPECT_EQ(database.stored(), "1:C9 2:C2");
    EXPECT_FALSE(frame->IsRecordChanged());
}

TEST_F(AFrame, SavesWhatIsStillBeingTyped) {
    open(1);
    form.account.TypeFromView("C7");
    EXPECT_TRUE(frame->Update());
    EXPECT_EQ(database.stored(), "1:C7");
}

TEST_F(AFrame, BrowsesAgainWhenWhatWasTypedIsWhatTheRecordHolds) {
    open(1);
    form.percentage.TypeFromView("10,0");
    EXPECT_TRUE(frame->Update());
    EXPECT_EQ(log->taken(), (Lines{"0->1", "1->0"}));
    EXPECT_EQ(form.percentage.Text(), "10.00");
}

TEST_F(AFrame, DoesNothingWhenThereIsNothingToSave) {
    open(1);
    EXPECT_TRUE(frame->Update());
    EXPECT_TRUE(log->lines.empty());
}

TEST_F(AFrame, StaysEditingWhenTheSaveIsRefused) {
    open(2);
    typeAccount("C9");
    log->taken();
    log->refused = "BeforeUpdate";
    EXPECT_FALSE(frame->Update());
    EXPECT_EQ(log->taken(), (Lines{"BeforeUpdate"}));
    EXPECT_EQ(frame->Status(), statusEditing);
    EXPECT_EQ(form.account.Text(), "C9");
    EXPECT_EQ(database.stored(), "1:C1 2:C2");
}

TEST_F(AFrame, UndoesAnEditAndShowsTheOldValues) {
    open(1);
    typeAccount("C9");
    form.sign.ChooseFromView(1);
    form.percentage.TypeFromView("77");
    log->taken();
    EXPECT_TRUE(frame->Undo());
    EXPECT_EQ(log->taken(), (Lines{"BeforeUndo", "AfterUndo", "1->0"}));
    EXPECT_EQ(form.account.Text(), "C1");
    EXPECT_EQ(form.sign.Text(), "Avere");
    EXPECT_EQ(form.percentage.Text(), "10.00");
    EXPECT_FALSE(frame->IsRecordChanged());
}

TEST_F(AFrame, KeepsTheEditWhenTheUndoIsRefused) {
    open(1);
    typeAccount("C9");
    log->refused = "BeforeUndo";
    EXPECT_FALSE(frame->Undo());
    EXPECT_EQ(frame->Status(), statusEditing);
    EXPECT_EQ(form.account.Text(), "C9");
}

TEST_F(AFrame, AddsANewRecordAtTheEnd) {
    open(2);
    const auto defaults =
        frame->AfterAddNew.subscribe([&](bool) { frame->Recordset()->Fields()["SEGNO"].Value(1); });
    EXPECT_TRUE(frame->AddNew());
    EXPECT_EQ(log->taken(), (Lines{"BeforeAddNew", "AfterAddNew", "0->2"}));
    EXPECT_EQ(frame->Status(), statusAddingNew);
    EXPECT_EQ(frame->Recordset()->RecordCount(), 3);
    EXPECT_EQ(form.sign.Text(), "Dare");
    EXPECT_EQ(form.account.Text(), "");
    EXPECT_FALSE(frame->IsRecordChanged());
    EXPECT_FALSE(frame->HasNewRow());
    EXPECT_FALSE(frame->HasChangedRow());
    EXPECT_TRUE(frame->HasPendingRow());
    typeAccount("C9");
    EXPECT_TRUE(log->lines.empty());
    EXPECT_TRUE(frame->IsRecordChanged());
    EXPECT_TRUE(frame->HasNewRow());
    EXPECT_FALSE(frame->HasChangedRow());
}

TEST_F(AFrame, AddsNothingWhenThatIsRefused) {
    open(2);
    log->refused = "BeforeAddNew";
    EXPECT_FALSE(frame->AddNew());
    EXPECT_EQ(log->taken(), (Lines{"BeforeAddNew"}));
    EXPECT_EQ(frame->Status(), statusBrowsing);
    EXPECT_EQ(frame->Recordset()->RecordCount(), 2);
}

TEST_F(AFrame, StaysOnANewRecordWithoutContent) {
    open(1);
    EXPECT_TRUE(frame->SetStatus(statusAddingNew));
    log->taken();
    EXPECT_TRUE(frame->AddNew());
    EXPECT_TRUE(log->lines.empty());
    EXPECT_EQ(frame->Recordset()->RecordCount(), 2);
}

TEST_F(AFrame, SavesANewRecord) {
    open(1);
    addRow("2", "C2");
    log->taken();
    EXPECT_TRUE(frame->Update());
    EXPECT_EQ(log->taken(), (Lines{"BeforeUpdate", "AfterUpdate", "7->0"}));
    EXPECT_EQ(database.stored(), "1:C1 2:C2");
    EXPECT_EQ(prog(), "2");
}

TEST_F(AFrame, StaysAddingWhenTheSaveIsRefused) {
    open(1);
    addRow("2", "C2");
    log->taken();
    log->refused = "BeforeUpdate";
    EXPECT_FALSE(frame->Update());
    EXPECT_EQ(log->taken(), (Lines{"BeforeUpdate"}));
    EXPECT_EQ(frame->Status(), statusAddingNew);
    EXPECT_EQ(form.account.Text(), "C2");
}

TEST_F(AFrame, UndoesANewRecordAndGoesBackToTheOneThatWasCurrent) {
    open(3);
    frame->MoveNext();
    addRow("4", "C4");
    log->taken();
    EXPECT_TRUE(frame->Undo());
    EXPECT_EQ(log->taken(), (Lines{"BeforeUndo", "AfterUndo", "2->0"}));
    EXPECT_EQ(prog(), "2");
    EXPECT_EQ(frame->Recordset()->RecordCount(), 3);
    EXPECT_EQ(form.account.Text(), "C2");
}

TEST_F(AFrame, HasNoRecordAfterTheOnlyNewOneWasUndone) {
    open(0);
    addRow("1", "C1");
    EXPECT_TRUE(frame->Undo());
    EXPECT_FALSE(frame->HasRecords());
    EXPECT_EQ(frame->Status(), statusBrowsing);
    EXPECT_EQ(form.account.Text(), "");
    EXPECT_EQ(form.grid.RowCount(), 0U);
}

TEST_F(AFrame, DeletesAfterTheUserHasConfirmed) {
    open(3);
    frame->MoveNext();
    log->taken();
    told->answers = {services::answerYes};
    FrameStatus seen = statusBrowsing;
    const auto after = frame->AfterDelete.subscribe([&](bool) { seen = frame->Status(); });
    EXPECT_TRUE(frame->Delete());
    ASSERT_EQ(told->boxes.size(), 1U);
    EXPECT_EQ(told->boxes[0].text, "Eliminare la riga?");
    EXPECT_EQ(told->boxes[0].title, "Attenzione");
    EXPECT_EQ(told->boxes[0].style, services::styleYesNo | services::styleExclamation);
    EXPECT_EQ(log->taken(), (Lines{"BeforeDelete", "AfterDelete", "3->0"}));
    EXPECT_EQ(seen, statusDeleting);
    EXPECT_EQ(database.stored(), "1:C1 3:C3");
    EXPECT_EQ(prog(), "3");
}

TEST_F(AFrame, GoesToTheLastRecordAfterTheLastWasDeletedAndToNoneAfterTheOnlyOne) {
    open(2);
    frame->MoveLast();
    told->answers = {services::answerYes, services::answerYes};
    EXPECT_TRUE(frame->Delete());
    EXPECT_EQ(prog(), "1");
    log->taken();
    EXPECT_TRUE(frame->Delete());
    EXPECT_EQ(log->taken(), (Lines{"BeforeDelete", "AfterDelete", "3->0"}));
    EXPECT_FALSE(frame->HasRecords());
    EXPECT_EQ(form.account.Text(), "");
    EXPECT_EQ(form.sign.ListIndex(), -1);
    EXPECT_EQ(database.stored(), "");
    EXPECT_TRUE(frame->AddNew());
    EXPECT_EQ(frame->Status(), statusAddingNew);
}

TEST_F(AFrame, DeletesNothingUnlessTheUserSaysYesAndNobodyRefuses) {
    open(2);
    told->answers = {services::answerNo, services::answerYes};
    EXPECT_FALSE(frame->Delete());
    EXPECT_TRUE(log->lines.empty());
    log->refused = "BeforeDelete";
    EXPECT_FALSE(frame->Delete());
    EXPECT_EQ(log->taken(), (Lines{"BeforeDelete"}));
    EXPECT_EQ(database.stored(), "1:C1 2:C2");
    EXPECT_EQ(frame->Status(), statusBrowsing);
}

TEST_F(AFrame, DeletesARecordThatIsBeingEdited) {
    open(2);
    typeAccount("C9");
    told->answers = {services::answerYes};
    EXPECT_TRUE(frame->Delete());
    EXPECT_EQ(database.stored(), "2:C2");
    EXPECT_EQ(frame->Status(), statusBrowsing);
    EXPECT_FALSE(frame->IsRecordChanged());
}

TEST_F(AFrame, GivesUpANewRecordThatIsDeleted) {
    open(1);
    addRow("2", "C2");
    told->answers = {services::answerYes};
    log->taken();
    EXPECT_TRUE(frame->Delete());
    EXPECT_EQ(log->taken(), (Lines{"BeforeUndo", "AfterUndo", "2->0"}));
    EXPECT_EQ(database.stored(), "1:C1");
}

TEST_F(AFrame, RefusesOperationsFromInsideItsOwn) {
    open(2);
    typeAccount("C9");
    int refused = 0;
    const auto nested = frame->AfterUpdate.subscribe([&](bool) {
        refused += frame->AddNew() ? 0 : 1;
        refused += frame->MoveNext() ? 0 : 1;
        refused += frame->Undo() ? 0 : 1;
        refused += frame->Delete() ? 0 : 1;
        refused += frame->Update() ? 0 : 1;
        refused += frame->QueryUnload(true, true, true) ? 0 : 1;
        EXPECT_THROW(frame->Requery(), std::logic_error);
    });
    EXPECT_TRUE(frame->Update());
    EXPECT_EQ(refused, 6);
    EXPECT_EQ(frame->Status(), statusBrowsing);
    EXPECT_TRUE(frame->MoveNext());
}

TEST_F(AFrame, RefusesOperationsFromItsBeforeEventsAndWhileItAnnouncesItsArrival) {
    open(3);
    int refused = 0;
    const auto before = frame->BeforeUpdate.subscribe([&](bool&) { refused += frame->MoveNext() ? 0 : 1; });
    const auto arrival = frame->ChangeStatus.subscribe([&](std::int16_t status, std::int16_t) {
        refused += status == statusBrowsing && !frame->AddNew() ? 1 : 0;
    });
    typeAccount("C9");
    EXPECT_TRUE(frame->Update());
    EXPECT_EQ(refused, 2);
    EXPECT_EQ(prog(), "1");
    EXPECT_EQ(database.stored(), "1:C9 2:C2 3:C3");
}

TEST_F(AFrame, IsBackAtRestWhenAHandlerThrows) {
    open(2);
    Subscription thrower = frame->BeforeUpdate.subscribe([](bool&) { throw std::runtime_error("prima"); });
    typeAccount("C9");
    EXPECT_THROW(frame->Update(), std::runtime_error);
    EXPECT_EQ(frame->Status(), statusEditing);
    thrower = frame->AfterUpdate.subscribe([](bool) { throw std::runtime_error("dopo"); });
    EXPECT_THROW(frame->Update(), std::runtime_error);
    EXPECT_EQ(frame->Status(), statusBrowsing);
    EXPECT_EQ(database.stored(), "1:C9 2:C2");
    thrower = frame->AfterAddNew.subscribe([](bool) { throw std::runtime_error("nuovo"); });
    EXPECT_THROW(frame->AddNew(), std::runtime_error);
    EXPECT_EQ(frame->Status(), statusBrowsing);
    EXPECT_EQ(frame->Recordset()->RecordCount(), 2);
    thrower.release();
    EXPECT_TRUE(frame->MoveNext());
}

TEST_F(AFrame, LetsAnEarlierHandlersRefusalBeSeenByALaterOne) {
    open(1);
    log->refused = "BeforeAddNew";
    bool seen = false;
    const auto later = frame->BeforeAddNew.subscribe([&](bool& cancel) { seen = cancel; });
    EXPECT_FALSE(frame->AddNew());
    EXPECT_TRUE(seen);
}

TEST_F(AFrame, TellsItsStatusAsALateBoundProperty) {
    open(1);
    EXPECT_EQ(frame->GetProperty("status").toInt16(), 0);
    frame->AddNew();
    EXPECT_EQ(frame->GetProperty("Status").toInt16(), 2);
    EXPECT_THROW(frame->GetProperty("Altro"), std::out_of_range);
    EXPECT_THROW(frame->SetStatus(statusSaving), std::invalid_argument);
}

TEST_F(AFrame, DoesNotBrowseOverUnsavedChanges) {
    open(1);
    typeAccount("C9");
    EXPECT_FALSE(frame->SetStatus(statusBrowsing));
    EXPECT_EQ(frame->Status(), statusEditing);
    EXPECT_TRUE(frame->Undo());
    EXPECT_TRUE(frame->AddNew());
    EXPECT_TRUE(frame->SetStatus(statusBrowsing));
    EXPECT_EQ(frame->Recordset()->RecordCount(), 1);
}

} // namespace
} // namespace veldran::test
