#include "tests/frames/frame_fixture.h"

#include <functional>

namespace veldran::test {
namespace {

using namespace frames;

/// Every statement that an operation sends is made to fail in its turn.
class FrameFailures : public FrameTest {
protected:
    struct Case {
        std::function<void()> prepare;
        std::function<bool()> operate;
        FrameStatus before = statusBrowsing;
        std::string stored;
        Lines events;
    };

    void failAtEveryStatement(const Case& tested) {
        tested.prepare();
        auto& plan = database.driver->plan();
        for (int statement = 1;; ++statement) {
            SCOPED_TRACE("statement " + std::to_string(statement));
            const std::size_t reports = log->failures.size();
            const int raised = plan.failuresRaised();
            log->taken();
            plan.failStatement(statement);
            const bool done = tested.operate();
            plan.heal();
            if (plan.failuresRaised() == raised) {
                EXPECT_TRUE(done);
                EXPECT_GT(statement, 1) << "the operation sends nothing";
                return;
            }
            EXPECT_FALSE(done);
            EXPECT_EQ(log->failures.size(), reports + 1);
            EXPECT_EQ(log->taken(), tested.events);
            EXPECT_EQ(frame->Status(), tested.before);
            EXPECT_EQ(database.stored(), tested.stored);
        }
    }
};

TEST_F(FrameFailures, AFailedSaveOfAnEditKeepsTheEdit) {
    open(2);
    failAtEveryStatement({[this] { typeAccount("C9"); },
                          [this] {
                              EXPECT_EQ(form.account.Text(), "C9");
                              EXPECT_TRUE(frame->IsRecordChanged());
                              return frame->Update();
                          },
                          statusEditing,
                          "1:C1 2:C2",
                          {"BeforeUpdate", "AfterUpdate failed"}});
    EXPECT_EQ(database.stored(), "1:C9 2:C2");
}

TEST_F(FrameFailures, AFailedSaveOfANewRecordKeepsItsValues) {
    open(1);
    failAtEveryStatement({[this] { addRow("2", "C2"); },
                          [this] {
                              EXPECT_EQ(form.account.Text(), "C2");
                              EXPECT_TRUE(frame->HasNewRow());
                              return frame->Update();
                          },
                          statusAddingNew,
                          "1:C1",
                          {"BeforeUpdate", "AfterUpdate failed"}});
    EXPECT_EQ(database.stored(), "1:C1 2:C2");
}

TEST_F(FrameFailures, AFailedDeleteKeepsTheRecord) {
    open(2);
    failAtEveryStatement({[] {},
                          [this] {
                              told->answers = {services::answerYes};
                              EXPECT_EQ(prog(), "1");
                              return frame->Delete();
                          },
                          statusBrowsing,
                          "1:C1 2:C2",
                          {"BeforeDelete", "AfterDelete failed"}});
    EXPECT_EQ(database.stored(), "2:C2");
}

TEST_F(FrameFailures, AFailedDeleteGivesTheUserHisEditBack) {
    open(2);
    failAtEveryStatement({[this] { typeAccount("C9"); },
                          [this] {
                              told->answers = {services::answerYes};
                              EXPECT_EQ(nullSafeText(value("CONTO")), "C9");
                              EXPECT_EQ(form.account.Text(), "C9");
                              EXPECT_TRUE(frame->IsRecordChanged());
                              return frame->Delete();
                          },
                          statusEditing,
                          "1:C1 2:C2",
                          {"BeforeDelete", "AfterDelete failed"}});
    EXPECT_EQ(database.stored(), "2:C2");
}

TEST_F(FrameFailures, AFailedSaveOnLeavingStaysOnTheRecord) {
    open(2, ado::adLockOptimistic, LeavePolicy::Save);
    failAtEveryStatement({[this] { typeAccount("C9"); },
                          [this] {
                              EXPECT_EQ(prog(), "1");
                              return frame->MoveNext();
                          },
                          statusEditing,
                          "1:C1 2:C2",
                          {"BeforeUpdate", "AfterUpdate failed"}});
    EXPECT_EQ(prog(), "2");
}

TEST_F(FrameFailures, AreToldWhileTheirExceptionIsBeingHandled) {
    open(2);
    Lines reports;
    const auto kept = frame->Failed.subscribe([&](const std::exception&) {
        try {
            throw;
        } catch (const ado::AdoError& failure) {
            reports.push_back(failure.first().Description);
        }
    });
    const auto failing = [&](const std::string& fragment, const std::function<bool()>& operation) {
        database.driver->plan().failContaining(fragment, Times::Once, simulatedFailure(fragment));
        EXPECT_FALSE(operation());
    };
    typeAccount("C9");
    failing("UPDATE", [this] { return frame->Update(); });
    EXPECT_TRUE(frame->Undo());
    told->answers = {services::answerYes};
    failing("DELETE", [this] { return frame->Delete(); });
    EXPECT_EQ(reports, (Lines{"UPDATE", "DELETE"}));
}

TEST_F(FrameFailures, AFailedReopeningLeavesEverythingAsItWas) {
    open(2);
    typeAccount("C9");
    log->taken();
    database.driver->plan().failStatement(1);
    EXPECT_THROW(frame->Reopen("SELECT * FROM #RIGHE WHERE 1 = 0"), ado::AdoError);
    database.driver->plan().failStatement(1);
    EXPECT_THROW(frame->Requery(), ado::AdoError);
    EXPECT_EQ(frame->Source(), "SELECT * FROM #RIGHE ORDER BY PROG ASC");
    EXPECT_EQ(frame->Status(), statusEditing);
    EXPECT_EQ(form.account.Text(), "C9");
    EXPECT_TRUE(log->lines.empty());
    EXPECT_TRUE(frame->Update());
    EXPECT_EQ(database.stored(), "1:C9 2:C2");
}

TEST_F(FrameFailures, AFailedOpeningLeavesTheFrameClosed) {
    VirtualFrame closed(messages, "la riga");
    database.driver->plan().failStatement(1);
    EXPECT_THROW(closed.Open("SELECT * FROM #RIGHE", database.connection, ado::adLockOptimistic),
                 ado::AdoError);
    EXPECT_EQ(closed.Recordset(), nullptr);
    closed.Open("SELECT * FROM #RIGHE", database.connection, ado::adLockOptimistic);
    EXPECT_NE(closed.Recordset(), nullptr);
}

TEST_F(FrameFailures, ANewRecordThatTheRecordSetRefusesIsReported) {
    open(1, ado::adLockReadOnly);
    EXPECT_FALSE(frame->AddNew());
    EXPECT_EQ(log->taken(), (Lines{"BeforeAddNew", "AfterAddNew failed"}));
    EXPECT_EQ(log->failures.size(), 1U);
    EXPECT_EQ(frame->Status(), statusBrowsing);
}

TEST_F(FrameFailures, ADuplicateKeyIsReportedAndCanBeMended) {
    open(2);
    addRow("2", "C3");
    EXPECT_FALSE(frame->Update());
    EXPECT_EQ(log->failures.size(), 1U);
    EXPECT_EQ(frame->Status(), statusAddingNew);
    frame->Recordset()->Fields()["PROG"].Value(3);
    EXPECT_TRUE(frame->Update());
    EXPECT_EQ(database.stored(), "1:C1 2:C2 3:C3");
}

TEST_F(FrameFailures, ARecordThatSomebodyElseDeletedIsReported) {
    open(2);
    database.run("DELETE FROM #RIGHE WHERE PROG = 1");
    typeAccount("C9");
    EXPECT_FALSE(frame->Update());
    EXPECT_EQ(log->failures.size(), 1U);
    EXPECT_EQ(frame->Status(), statusEditing);
    EXPECT_TRUE(frame->Undo());
}

TEST_F(FrameFailures, TellTheUserWhereNobodyListens) {
    open(1);
    reported.release();
    typeAccount("C9");
    database.driver->plan().failContaining("UPDATE");
    EXPECT_FALSE(frame->Update());
    ASSERT_EQ(told->boxes.size(), 1U);
    EXPECT_EQ(told->boxes[0].text.find("Operazione non riuscita per la riga.\r\n"), 0U);
    EXPECT_EQ(told->boxes[0].style, services::styleCritical);
}

} // namespace
} // namespace veldran::test
