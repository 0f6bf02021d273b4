// The frames' events one by one: what a refusal or a failure that is told to them keeps them from doing, and
// what they derive from what was entered.
#include "tests/screen/correlation_areas.h"

namespace veldran::test {

namespace {

class FrameEvents : public ::testing::Test {
protected:
    FrameEvents() : work(withStored()) {
        work.enter();
        work.screen.forget();
    }
    void expectNothingHappened() {
        EXPECT_TRUE(work.screen.log().messages().empty());
        EXPECT_TRUE(work.work.messages->boxes.empty());
        EXPECT_TRUE(work.errors().empty());
        EXPECT_EQ(work.controls().GRD_DETTAGLIO.RowCount(), wholeRows.size());
        EXPECT_EQ(work.controls().LST_CAUSALI.Items().size(), 1U);
        EXPECT_EQ(Editor::storedIn(work.screen.database, "ACQ"), wholeRows);
    }
    EventiTestata& header() { return work.areas->eventiTestata; }
    EventiDettaglio& detail() { return work.areas->eventiDettaglio; }
    ado::Fields& row() { return work.areas->frame.Dettaglio()->Recordset()->Fields(); }
    Texts columns(std::initializer_list<const char*> names) {
        Texts texts;
        for (const char* name : names) {
            texts.push_back(nullSafeText(row()[name].Value()));
        }
        return texts;
    }
    CorrelationAreas work;
};

TEST_F(FrameEvents, LeaveARefusalAsItIs) {
    work.controls().TXT_PERC.TypeFromView("300"); // breaks a rule, which is not asked any more
    bool refused = true;
    header().gclsFrameTestata_BeforeUpdate(refused);
    EXPECT_TRUE(refused);
    header().gclsFrameTestata_BeforeDelete(refused);
    EXPECT_TRUE(refused);
    detail().gclsFrameDettaglio_BeforeUpdate(refused);
    EXPECT_TRUE(refused);
    expectNothingHappened();
}

TEST_F(FrameEvents, DoNothingAfterWhatDidNotSucceed) {
    header().gclsFrameTestata_AfterUpdate(false);
    header().gclsFrameTestata_AfterUndo(false);
    detail().gclsFrameDettaglio_AfterAddNew(false);
    expectNothingHappened();
}

TEST_F(FrameEvents, TakeAChangeThatIsToldToThemForAChange) {
    bool changed = true;
    header().gclsFrameTestata_IsRecordChanged(changed);
    EXPECT_TRUE(changed);
    changed = false;
    header().gclsFrameTestata_IsRecordChanged(changed);
    EXPECT_FALSE(changed);
    work.areas->frame.Dettaglio()->MoveNext();
    row()["PERCENTUALE"].Value(1);
    header().gclsFrameTestata_IsRecordChanged(changed);
    EXPECT_TRUE(changed) << "a row of the detail";
}

TEST_F(FrameEvents, DeriveTheColumnsOfTheSignAndLeaveTheChartOfAnItemThatIsGone) {
    work.areas->frame.Dettaglio()->MoveNext();
    ASSERT_EQ(columns({"SEGNO", "CONTO", "AVERE", "DARE", "CONTOVDS", "PDCVDS"}),
              (Texts{"1", "CDCPRO0010", "", "CDCPRO0010", "MATPRI", "201"}));
    bool refused = false;
    row()["SEGNO"].Value(2);
    row()["CONTOVDS"].Value(Value());
    detail().gclsFrameDettaglio_BeforeUpdate(refused);
    EXPECT_FALSE(refused);
    EXPECT_EQ(columns({"AVERE", "DARE", "CONTOVDS", "PDCVDS"}), (Texts{"CDCPRO0010", "", "", "201"}));
    row()["CONTO"].Value(Value());
    detail().gclsFrameDettaglio_BeforeUpdate(refused);
    EXPECT_EQ(columns({"AVERE", "DARE"}), (Texts{"", ""}));
    row()["PDCVDS"].Value(Value());
    row()["CONTOVDS"].Value("   ");
    detail().gclsFrameDettaglio_BeforeUpdate(refused);
    EXPECT_EQ(columns({"PDCVDS"}), Texts{""}) << "blanks are no item";
    row()["CONTOVDS"].Value("SERTRA");
    detail().gclsFrameDettaglio_BeforeUpdate(refused);
    EXPECT_EQ(columns({"PDCVDS"}), Texts{"201"});
}

TEST(FrameEventsWithoutCostItems, LeaveTheirChartAlone) {
    Company company = costCompany();
    company.costItems = false;
    CorrelationAreas work(withStored(), company);
    work.enter();
    ado::Recordset& rows = *work.areas->frame.Dettaglio()->Recordset();
    rows.Fields()["CONTOVDS"].Value("SERTRA");
    bool refused = false;
    work.areas->eventiDettaglio.gclsFrameDettaglio_BeforeUpdate(refused);
    EXPECT_FALSE(refused);
    EXPECT_TRUE(rows.Fields()["PDCVDS"].Value().isNull());
}

TEST_F(FrameEvents, LetTheCausaleBeTypedOnlyWhileACorrelationIsAdded) {
    for (const auto& [status, open] :
         std::vector<std::pair<std::int16_t, bool>>{{frames::statusEditing, false},
                                                    {frames::statusAddingNew, true},
                                                    {frames::statusBrowsing, false}}) {
        header().gclsFrameTestata_ChangeStatus(status, frames::statusBrowsing);
        EXPECT_EQ(work.controls().TXT_CAUSALE.Enabled(), open) << status;
    }
}

TEST_F(FrameEvents, ReadTheRowsAgainOnComingToRestButNotAfterASave) {
    header().gclsFrameTestata_ChangeStatus(frames::statusBrowsing, frames::statusSaving);
    EXPECT_TRUE(work.screen.log().messages().empty());
    header().gclsFrameTestata_ChangeStatus(frames::statusBrowsing, frames::statusEditing);
    EXPECT_EQ(work.screen.log().texts(),
              Texts{"SELECT * FROM #DETTAGLIO WHERE CAUSALE = 'ACQ ' ORDER BY PROG ASC"});
    EXPECT_TRUE(work.controls().GRD_DETTAGLIO.Enabled());
    work.screen.forget();
    header().gclsFrameTestata_ChangeStatus(frames::statusEditing, frames::statusBrowsing);
    EXPECT_TRUE(work.screen.log().messages().empty()) << "nothing more in any other status";
}

TEST_F(FrameEvents, LeaveTheMoveButtonsAsTheyAreInOtherStatuses) {
    work.areas->frame.Dettaglio()->MoveNext();
    ASSERT_TRUE(work.controls().CMD_SU.Enabled());
    detail().gclsFrameDettaglio_ChangeStatus(frames::statusEditing);
    EXPECT_TRUE(work.controls().CMD_SU.Enabled());
    EXPECT_TRUE(work.controls().CMD_GIU.Enabled());
    detail().gclsFrameDettaglio_ChangeStatus(frames::statusAddingNew);
    EXPECT_FALSE(work.controls().CMD_SU.Enabled());
    EXPECT_FALSE(work.controls().CMD_GIU.Enabled());
}

} // namespace

} // namespace veldran::test
