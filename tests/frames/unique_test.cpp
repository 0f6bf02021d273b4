#include "tests/frames/frame_fixture.h"

namespace veldran::test {
namespace {

using namespace frames;

/// A frame in which no two rows may hold the same account.
class UniqueRecords : public FrameTest {
protected:
    void open(int rows) {
        FrameTest::open(rows);
        frame->Unique("CONTO");
        log->taken();
    }
    static std::string refusal(const std::string& code) {
        return "Non è possibile salvare la riga: ne esiste già una con il codice «" + code + "».";
    }
};

TEST_F(UniqueRecords, AreRefusedWithAMessageBeforeAnybodyElseIsAsked) {
    open(2);
    addRow("3", "C2");
    log->taken();
    EXPECT_FALSE(frame->Update());
    EXPECT_EQ(boxes(), Lines{refusal("C2")});
    EXPECT_EQ(told->boxes[0].style, services::styleExclamation);
    EXPECT_TRUE(log->taken().empty());
    EXPECT_EQ(frame->Status(), statusAddingNew);
    EXPECT_EQ(form.account.Text(), "C2") << "the user corrects what he typed";
    EXPECT_EQ(database.stored(), "1:C1 2:C2");
    typeAccount("C3");
    EXPECT_TRUE(frame->Update());
    EXPECT_EQ(database.stored(), "1:C1 2:C2 3:C3");
}

TEST_F(UniqueRecords, AreComparedBlindToCaseAndTrailingBlanks) {
    open(1);
    addRow("2", "c1");
    EXPECT_FALSE(frame->Update());
    typeAccount("C1  ");
    EXPECT_FALSE(frame->Update());
    EXPECT_EQ(boxes(), (Lines{refusal("c1"), refusal("C1")}));
    typeAccount("C11");
    EXPECT_TRUE(frame->Update());
}

TEST_F(UniqueRecords, AreAskedForNewRecordsAlone) {
    open(2);
    typeAccount("C2");
    EXPECT_TRUE(frame->Update());
    EXPECT_EQ(database.stored(), "1:C2 2:C2");
    EXPECT_TRUE(told->boxes.empty());
}

TEST_F(UniqueRecords, AreFoundAmongRowsThatAreNotWrittenYet) {
    FrameTest::open(1, ado::adLockBatchOptimistic, LeavePolicy::Save);
    frame->Unique("CONTO");
    addRow("2", "C2");
    EXPECT_TRUE(frame->Update());
    addRow("3", "C2");
    EXPECT_FALSE(frame->Update());
    EXPECT_EQ(boxes(), Lines{refusal("C2")});
}

TEST_F(UniqueRecords, KeepTheUserOnARecordThatHeWantsToLeave) {
    open(2);
    addRow("3", "C1");
    told->answers = {services::answerYes};
    EXPECT_FALSE(frame->MoveFirst());
    EXPECT_EQ(frame->Status(), statusAddingNew);
    EXPECT_EQ(boxes().back(), refusal("C1"));
    told->answers = {services::answerNo};
    EXPECT_TRUE(frame->MoveFirst());
    EXPECT_EQ(database.stored(), "1:C1 2:C2");
}

} // namespace
} // namespace veldran::test
