// Where the focus goes in the correlation editor, so that row after row can be keyed without the mouse.
#include "tests/screen/correlation_areas.h"

namespace veldran::test {

namespace {

namespace keys = controls::navigatorKeys;

class FocusFlow : public EditorTest {
protected:
    /// Leaves the last field forwards, or the navigator backwards, as the Tab key does.
    void tabIntoCatcher() { e().catcher().SetFocus(); }
    std::string statusOfRows() { return std::to_string(e().grid().RowCount()) + " " + e().sign().Text(); }
};

TEST_F(FocusFlow, GoesFromNewRowToItsSignAndFromAConfirmedOneToTheGrid) {
    enter(withStored());
    EXPECT_TRUE(e().detail().PressFromView(keys::nuovo));
    EXPECT_EQ(e().focus(), "CBO_SEGNO");
    e().percentage().TypeFromView("0");
    EXPECT_TRUE(e().detail().PressFromView(keys::conferma));
    EXPECT_EQ(e().focus(), "GRD_DETTAGLIO");
}

TEST_F(FocusFlow, StaysWithTheTextThatIsNoNumberWhenTheRowIsConfirmed) {
    enter(withStored());
    e().percentage().TypeFromView("abc");
    EXPECT_FALSE(e().detail().PressFromView(keys::conferma));
    EXPECT_EQ(e().focus(), "TXT_PERC");
}

TEST_F(FocusFlow, StaysOnTheNavigatorForItsOtherButtons) {
    enter(withStored());
    EXPECT_TRUE(e().detail().PressFromView(keys::ultimo));
    EXPECT_EQ(e().focus(), "GNV_DETTAGLIO");
    EXPECT_EQ(e().detail().FocusedButton(), "Ultimo");
    messages().answers = {services::answerYes};
    EXPECT_TRUE(e().detail().PressFromView(keys::elimina));
    EXPECT_EQ(e().focus(), "GNV_DETTAGLIO");
    EXPECT_TRUE(e().header().PressFromView(keys::annulla));
    EXPECT_EQ(e().focus(), "INV_TESTATA");
}

TEST_F(FocusFlow, GoesFromANewHeaderToItsCausaleAndFromASavedOneToTheGrid) {
    enter(withStored());
    EXPECT_TRUE(e().header().PressFromView(keys::nuovo));
    EXPECT_EQ(e().focus(), "TXT_CAUSALE");
    e().addCorrelation("VEND", {{"2", "100"}});
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().focus(), "GRD_DETTAGLIO");
}

TEST_F(FocusFlow, StaysOnTheDeleteButtonWhileTheCausaleIsLocked) {
    Chart chart = withStored();
    store(chart, editedAccount, "VEND", wholeRows);
    enter(chart);
    messages().answers = {services::answerYes};
    EXPECT_TRUE(e().header().PressFromView(keys::elimina));
    EXPECT_FALSE(e().causale().Enabled());
    EXPECT_EQ(e().focus(), "INV_TESTATA");
    EXPECT_EQ(e().header().FocusedButton(), "Elimina");
}

TEST_F(FocusFlow, StaysWhereItIsWhenAButtonDidNothing) {
    enter(withStored());
    e().header().FocusButton(keys::elimina);
    messages().answers = {services::answerNo};
    EXPECT_FALSE(e().header().PressFromView(keys::elimina));
    EXPECT_EQ(e().focus(), "INV_TESTATA");
    e().clickRow(0);
    e().sign().SetFocus();
    e().percentage().TypeFromView("100.01");
    EXPECT_FALSE(e().save());
    EXPECT_EQ(e().focus(), "INV_TESTATA");
}

TEST(FocusAfterDeleting, GoesToTheCausaleWhileItCanBeTyped) {
    CorrelationAreas work;
    work.enter();
    ASSERT_TRUE(work.controls().TXT_CAUSALE.Enabled());
    work.controls().INV_TESTATA.SetFocus();
    work.areas->dettaglio.INV_TESTATA_AfterButtonClick(false, std::string(keys::elimina));
    EXPECT_TRUE(work.controls().INV_TESTATA.HasFocus());
    work.areas->dettaglio.INV_TESTATA_AfterButtonClick(true, std::string(keys::elimina));
    EXPECT_TRUE(work.controls().TXT_CAUSALE.HasFocus());
}

TEST_F(FocusFlow, GoesFromTheGridToTheSignByDoubleClickAndByEnter) {
    enter(withStored());
    e().grid().SetFocus();
    e().grid().DblClickFromView();
    EXPECT_EQ(e().focus(), "CBO_SEGNO");
    e().grid().SetFocus();
    EXPECT_TRUE(e().grid().KeyDownFromView(controls::keyReturn, controls::shiftNone))
        << "the key is swallowed";
    EXPECT_EQ(e().focus(), "CBO_SEGNO");
}

TEST_F(FocusFlow, LeavesOtherKeysToTheGrid) {
    enter(withStored());
    e().grid().SetFocus();
    EXPECT_FALSE(e().grid().KeyDownFromView(controls::keyReturn, controls::shiftShift));
    EXPECT_FALSE(e().grid().KeyDownFromView(controls::keyReturn, controls::shiftCtrl));
    EXPECT_FALSE(e().grid().KeyDownFromView(controls::keySpace, controls::shiftNone));
    EXPECT_EQ(e().focus(), "GRD_DETTAGLIO");
}

TEST_F(FocusFlow, GoesForwardsFromAnUnchangedRowToTheGrid) {
    enter(withStored());
    for (controls::LookupField* last : {&e().account(), &e().item()}) {
        last->SetFocus();
        tabIntoCatcher();
        EXPECT_EQ(e().focus(), "GRD_DETTAGLIO") << last->Name();
    }
    EXPECT_EQ(e().grid().RowCount(), 3U);
}

TEST_F(FocusFlow, ConfirmsAChangedRowOnItsWayToTheGrid) {
    enter(withStored());
    e().clickRow(1);
    e().percentage().TypeFromView("55");
    e().item().SetFocus();
    tabIntoCatcher();
    EXPECT_EQ(e().focus(), "GRD_DETTAGLIO");
    EXPECT_FALSE(e().detail().CanPress(keys::conferma));
    EXPECT_EQ(e().shown()[1][3], "55.00%");
    EXPECT_EQ(e().stored("ACQ"), wholeRows) << "the row is confirmed, the correlation is not saved";
}

TEST_F(FocusFlow, StartsTheNextRowBehindANewOne) {
    enter();
    e().typeCausale("ACQ");
    e().typeRow({"2", "100", "COLACQ0010", "NULL"});
    tabIntoCatcher();
    EXPECT_EQ(e().focus(), "CBO_SEGNO");
    EXPECT_EQ(statusOfRows(), "2 Dare");
    e().typeRow({"1", "100", "CDCPRO0010", "MATPRI"});
    tabIntoCatcher();
    EXPECT_EQ(statusOfRows(), "3 Avere");
    EXPECT_TRUE(e().save()) << "the row that was begun and not filled is given up";
    EXPECT_EQ(e().stored("ACQ"),
              (Rows{{"2", "100.00", "COLACQ0010", "NULL"}, {"1", "100.00", "CDCPRO0010", "MATPRI"}}));
}

TEST_F(FocusFlow, StaysOnANewRowThatHasNothingYet) {
    enter(withStored());
    e().detail().PressFromView(keys::nuovo);
    e().item().SetFocus();
    tabIntoCatcher();
    EXPECT_EQ(e().focus(), "CBO_SEGNO");
    EXPECT_EQ(e().grid().RowCount(), 4U);
}

TEST_F(FocusFlow, StaysWithTheTextThatKeepsTheRowFromBeingFinished) {
    enter(withStored());
    e().detail().PressFromView(keys::nuovo);
    e().percentage().TypeFromView("abc");
    e().item().SetFocus();
    tabIntoCatcher();
    EXPECT_EQ(e().focus(), "TXT_PERC");
    EXPECT_EQ(e().grid().RowCount(), 4U);
}

TEST_F(FocusFlow, GoesBackwardsFromTheNavigatorToTheLastField) {
    enter(withStored());
    e().item().SetFocus();
    e().detail().SetFocus();
    tabIntoCatcher();
    EXPECT_EQ(e().focus(), "TXT_VDS");
    tabIntoCatcher();
    EXPECT_EQ(e().focus(), "GRD_DETTAGLIO") << "entering the field turned the direction again";
}

TEST_F(FocusFlow, GoesBackwardsToTheAccountWhereTheCompanyManagesNoCostItems) {
    Company company = costCompany();
    company.costItems = false;
    enter(withStored(), company);
    e().detail().SetFocus();
    tabIntoCatcher();
    EXPECT_EQ(e().focus(), "TXT_CONTO");
}

TEST_F(FocusFlow, LeavesTheRowAsItIsOnTheWayBack) {
    enter(withStored());
    e().detail().PressFromView(keys::nuovo);
    e().detail().SetFocus();
    tabIntoCatcher();
    EXPECT_EQ(e().focus(), "TXT_VDS");
    EXPECT_EQ(e().grid().RowCount(), 4U);
}

TEST(FocusAfterTheCausale, GoesToTheGridUnlessTheCorrelationIsNew) {
    CorrelationAreas work(withStored());
    work.enter();
    work.areas->dettaglio.TXT_CAUSALE_AfterItem();
    EXPECT_TRUE(work.controls().GRD_DETTAGLIO.HasFocus());
}

TEST_F(FocusFlow, GoesToTheNewButtonWithoutACausale) {
    enter();
    e().typeCausale("ACQ");
    EXPECT_EQ(e().focus(), "CBO_SEGNO");
    e().typeCausale("");
    EXPECT_EQ(e().focus(), "INV_TESTATA");
    EXPECT_EQ(e().header().FocusedButton(), "Nuovo");
    EXPECT_FALSE(e().grid().Enabled());
}

TEST_F(FocusFlow, RemembersTheSignThatTheComboWasEnteredWith) {
    enter(withStored());
    e().clickRow(1);
    e().sign().SetFocus();
    e().sign().ChooseFromView(0);
    EXPECT_EQ(e().account().Text(), "");
    keyInto(e().account(), "CDCPRO0020");
    e().sign().SetFocus();
    e().sign().ChooseFromView(0);
    EXPECT_EQ(e().account().Text(), "CDCPRO0020") << "the sign of the entry";
    e().sign().ChooseFromView(1);
    EXPECT_EQ(e().account().Text(), "");
}

/// The user closes the form while the screen lets pending messages run.
class ClosingMeanwhile : public FocusFlow {
protected:
    void closeMeanwhile() {
        screen->host.windows->whileEvents = [this] {
            messages().answers = {services::answerNo};
            closed = screen->host.component().CloseForm().toBool();
        };
    }
    void expectClosedCleanly() {
        EXPECT_TRUE(closed);
        EXPECT_FALSE(screen->host.isOpen());
        EXPECT_TRUE(messages().errors.empty());
        EXPECT_EQ(screen->database.openSessions(), 0);
        EXPECT_EQ(screen->database.livePreparedStatements(), 0);
    }
    bool closed = false;
};

TEST_F(ClosingMeanwhile, EndsACausaleThatWasJustTaken) {
    enter();
    closeMeanwhile();
    e().typeCausale("ACQ");
    expectClosedCleanly();
    EXPECT_EQ(messages().boxes.size(), 1U) << "the new correlation was asked about";
}

TEST_F(ClosingMeanwhile, EndsACausaleThatWasRefused) {
    enter();
    closeMeanwhile();
    e().typeCausale("ZZZ");
    expectClosedCleanly();
}

TEST_F(ClosingMeanwhile, EndsTheWayFromTheGridToTheSign) {
    enter(withStored());
    e().grid().SetFocus();
    closeMeanwhile();
    EXPECT_TRUE(e().grid().KeyDownFromView(controls::keyReturn, controls::shiftNone));
    expectClosedCleanly();
    EXPECT_TRUE(messages().boxes.empty());
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
}

} // namespace

} // namespace veldran::test
