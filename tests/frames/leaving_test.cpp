#include "tests/frames/frame_fixture.h"

namespace veldran::test {
namespace {

using namespace frames;
using services::answerCancel;
using services::answerNo;
using services::answerYes;

class LeavingARecord : public FrameTest {};

const std::string question = "Ci sono modifiche non salvate.\r\nSalvare la riga prima di proseguire?";

TEST_F(LeavingARecord, AsksAndSaves) {
    open(2);
    typeAccount("C9");
    told->answers = {answerYes};
    log->taken();
    EXPECT_TRUE(frame->MoveNext());
    EXPECT_EQ(boxes(), (Lines{question}));
    EXPECT_EQ(told->boxes[0].style, services::styleYesNoCancel | services::styleExclamation);
    EXPECT_EQ(log->taken(), (Lines{"BeforeUpdate", "AfterUpdate", "7->0", "0->0"}));
    EXPECT_EQ(database.stored(), "1:C9 2:C2");
    EXPECT_EQ(prog(), "2");
}

TEST_F(LeavingARecord, AsksAndDiscards) {
    open(2);
    typeAccount("C9");
    told->answers = {answerNo};
    log->taken();
    EXPECT_TRUE(frame->MoveNext());
    EXPECT_EQ(log->taken(), (Lines{"BeforeUndo", "AfterUndo", "1->0", "0->0"}));
    EXPECT_EQ(database.stored(), "1:C1 2:C2");
    EXPECT_EQ(prog(), "2");
}

TEST_F(LeavingARecord, AsksAndStays) {
    open(2);
    typeAccount("C9");
    told->answers = {answerCancel};
    log->taken();
    EXPECT_FALSE(frame->MoveNext());
    EXPECT_TRUE(log->lines.empty());
    EXPECT_EQ(prog(), "1");
    EXPECT_EQ(frame->Status(), statusEditing);
    EXPECT_EQ(form.account.Text(), "C9");
}

TEST_F(LeavingARecord, StaysWhenTheSaveIsRefused) {
    open(2);
    typeAccount("C9");
    told->answers = {answerYes, answerYes, answerYes};
    log->refused = "BeforeUpdate";
    EXPECT_FALSE(frame->MoveNext());
    EXPECT_FALSE(frame->AddNew());
    EXPECT_FALSE(frame->MoveTo(form.grid.RowBookmark(1)));
    EXPECT_EQ(prog(), "1");
    EXPECT_EQ(frame->Status(), statusEditing);
}

TEST_F(LeavingARecord, StaysWhenTheDiscardIsRefused) {
    open(2);
    typeAccount("C9");
    told->answers = {answerNo};
    log->refused = "BeforeUndo";
    EXPECT_FALSE(frame->MoveNext());
    EXPECT_EQ(prog(), "1");
    EXPECT_EQ(form.account.Text(), "C9");
}

TEST_F(LeavingARecord, SavesWithoutAQuestionWhenThatIsThePolicy) {
    open(2, ado::adLockOptimistic, LeavePolicy::Save);
    form.account.TypeFromView("C9");
    EXPECT_TRUE(frame->MoveNext());
    EXPECT_TRUE(told->boxes.empty());
    EXPECT_EQ(database.stored(), "1:C9 2:C2");
}

TEST_F(LeavingARecord, GivesUpANewRecordWithoutContentSilently) {
    open(2);
    EXPECT_TRUE(frame->AddNew());
    log->taken();
    EXPECT_TRUE(frame->MovePrevious());
    EXPECT_TRUE(told->boxes.empty());
    EXPECT_EQ(prog(), "2");
    EXPECT_EQ(frame->Recordset()->RecordCount(), 2);
    EXPECT_EQ(log->taken(), (Lines{"2->0", "0->0"}));
}

TEST_F(LeavingARecord, GoesToABookmarkOfAClone) {
    open(3);
    const auto clone = frame->Recordset()->Clone();
    clone->Filter("PROG = 3");
    EXPECT_TRUE(frame->MoveTo(clone->Bookmark()));
    EXPECT_EQ(prog(), "3");
    log->taken();
    EXPECT_TRUE(frame->MoveTo(clone->Bookmark()));
    EXPECT_TRUE(log->lines.empty());
}

TEST_F(LeavingARecord, FailsOnABookmarkOfOtherRows) {
    open(2);
    const ado::Bookmark old = form.grid.RowBookmark(1);
    frame->Requery();
    EXPECT_FALSE(frame->MoveTo(old));
    EXPECT_EQ(log->failures.size(), 1U);
    EXPECT_EQ(prog(), "1");
}

TEST_F(LeavingARecord, CountsWhatHandlersKnowAsAChange) {
    open(2);
    bool detailChanged = true;
    const auto kept =
        frame->RecordChanged.subscribe([&](bool& changed) { changed = changed || detailChanged; });
    EXPECT_TRUE(frame->IsRecordChanged());
    EXPECT_EQ(frame->Status(), statusBrowsing);
    told->answers = {answerCancel};
    EXPECT_FALSE(frame->MoveNext());
    const auto clean = frame->AfterUpdate.subscribe([&](bool) { detailChanged = false; });
    log->taken();
    EXPECT_TRUE(frame->Update());
    EXPECT_EQ(log->taken(), (Lines{"BeforeUpdate", "AfterUpdate", "7->0"}));
    EXPECT_TRUE(frame->MoveNext());
    EXPECT_EQ(boxes().size(), 1U);
}

TEST_F(LeavingARecord, UndoesChangesThatOnlyHandlersKnow) {
    open(1);
    bool detailChanged = true;
    const auto kept =
        frame->RecordChanged.subscribe([&](bool& changed) { changed = changed || detailChanged; });
    const auto clean = frame->AfterUndo.subscribe([&](bool) { detailChanged = false; });
    EXPECT_TRUE(frame->Undo());
    EXPECT_EQ(log->taken(), (Lines{"BeforeUndo", "AfterUndo", "0->0"}));
    EXPECT_FALSE(frame->IsRecordChanged());
}

TEST_F(LeavingARecord, StaysAfterASaveThatLeftSomethingUnsaved) {
    open(2);
    bool stored = false; // what a handler had to store elsewhere
    const auto kept = frame->RecordChanged.subscribe([&](bool& changed) { changed = changed || !stored; });
    told->answers = {answerYes, answerYes, answerYes};
    EXPECT_FALSE(frame->MoveNext());
    EXPECT_FALSE(frame->AddNew());
    EXPECT_FALSE(frame->QueryUnload(true, false, true));
    EXPECT_EQ(prog(), "1");
    const auto storing = frame->AfterUpdate.subscribe([&](bool) { stored = true; });
    told->answers = {answerYes};
    EXPECT_TRUE(frame->MoveNext());
    EXPECT_EQ(prog(), "2");
}

class QueryUnload : public FrameTest {};

TEST_F(QueryUnload, LeavesAtOnceWhenNothingIsChanged) {
    EXPECT_TRUE(VirtualFrame(messages, "la riga").QueryUnload(true, false, true));
    open(1);
    EXPECT_TRUE(frame->QueryUnload(true, false, true));
    EXPECT_TRUE(frame->AddNew());
    EXPECT_TRUE(frame->QueryUnload(true, false, true));
    EXPECT_TRUE(told->boxes.empty());
}

TEST_F(QueryUnload, AsksAndSavesDiscardsOrStays) {
    open(1);
    typeAccount("C9");
    told->answers = {answerCancel, answerNo};
    EXPECT_FALSE(frame->QueryUnload(true, false, true));
    EXPECT_EQ(form.account.Text(), "C9");
    EXPECT_TRUE(frame->QueryUnload(true, false, true));
    EXPECT_EQ(form.account.Text(), "C1");
    typeAccount("C8");
    told->answers = {answerYes};
    EXPECT_TRUE(frame->QueryUnload(true, false, true));
    EXPECT_EQ(database.stored(), "1:C8");
    EXPECT_EQ(boxes(), (Lines{question, question, question}));
}

TEST_F(QueryUnload, StaysWhenTheSaveIsRefusedOrFails) {
    open(1);
    typeAccount("C9");
    told->answers = {answerYes, answerYes};
    log->refused = "BeforeUpdate";
    EXPECT_FALSE(frame->QueryUnload(true, false, true));
    log->refused.clear();
    database.driver->plan().failContaining("UPDATE");
    EXPECT_FALSE(frame->QueryUnload(true, false, true));
    EXPECT_EQ(frame->Status(), statusEditing);
}

TEST_F(QueryUnload, DiscardsSilentlyOrRefusesSilently) {
    open(1);
    typeAccount("C9");
    EXPECT_FALSE(frame->QueryUnload(false, false, true));
    EXPECT_EQ(form.account.Text(), "C9");
    EXPECT_TRUE(frame->QueryUnload(true, true, true));
    EXPECT_EQ(form.account.Text(), "C1");
    EXPECT_TRUE(told->boxes.empty());
}

TEST_F(QueryUnload, CountsTheDetailOnlyWhenAsked) {
    open(1);
    const auto kept = frame->RecordChanged.subscribe([](bool& changed) { changed = true; });
    EXPECT_TRUE(frame->QueryUnload(true, false, false));
    told->answers = {answerCancel};
    EXPECT_FALSE(frame->QueryUnload(true, false, true));
}

} // namespace
} // namespace veldran::test
