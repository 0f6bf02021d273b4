// The editor after a failure that has left its tables, its frames or its list behind what is stored: nothing
// can be edited or stored from there, nothing is lost, and the next attempt that succeeds brings everything
// back.
#include "tests/screen/correlation_areas.h"

namespace veldran::test {

namespace {

const Rows other = {{"2", "30.00"}};

Chart withTwo() {
    Chart chart = withStored();
    return store(chart, editedAccount, "VEND", other);
}

class Recovery : public EditorTest {
protected:
    Recovery() { enter(withTwo()); }

    /// Copies ACQ onto VEND.
    void paste() {
        e().clickCausale("ACQ");
        e().listKey(copyKey);
        e().clickCausale("VEND");
        messages().answers = {services::answerYes};
        e().listKey(pasteKey);
    }
    void expectNoRowsToEdit() {
        EXPECT_EQ(e().grid().RowCount(), 0U);
        EXPECT_FALSE(e().grid().Enabled());
        EXPECT_FALSE(e().sign().Enabled());
        EXPECT_FALSE(e().percentage().Enabled());
        EXPECT_FALSE(e().account().Enabled());
        EXPECT_FALSE(e().item().Enabled());
        EXPECT_FALSE(e().detail().Enabled());
        EXPECT_FALSE(e().up().Enabled());
        EXPECT_FALSE(e().down().Enabled());
        EXPECT_FALSE(e().header().CanPress("Conferma"));
    }
    void expectSuspended() {
        expectNoRowsToEdit();
        EXPECT_FALSE(e().header().Enabled());
        EXPECT_FALSE(e().causale().Enabled());
        EXPECT_EQ(e().causale().Text(), "");
        EXPECT_EQ(e().control<controls::Label>("TXT_DESCRCAUSALE").Caption(), "");
    }
    /// The causale is shown with its rows, and a change of one of them can be stored.
    void expectEditable(const std::string& causale, const Rows& rows) {
        EXPECT_EQ(e().causale().Text(), causale);
        EXPECT_EQ(e().list().SelectedItem()->Text(), causale);
        EXPECT_EQ(e().working(causale), rows);
        ASSERT_EQ(e().grid().RowCount(), rows.size());
        EXPECT_TRUE(e().grid().Enabled());
        e().changePercentage(0, "12");
        EXPECT_TRUE(e().save());
        Rows saved = rows;
        saved[0].percentage = "12.00";
        EXPECT_EQ(e().stored(causale), saved);
    }
};

TEST_F(Recovery, SuspendsEditingWhenTheTablesCannotBeRefilledAndTakesItUpByAClick) {
    for (const char* failing : {"DELETE FROM #DETTAGLIO", "DELETE FROM #TESTATA", "INSERT INTO #TESTATA",
                                "INSERT INTO #DETTAGLIO", "SELECT * FROM #TESTATA"}) {
        SCOPED_TRACE(failing);
        enter(withTwo());
        e().clickCausale("ACQ");
        e().listKey(copyKey);
        e().clickCausale("VEND");
        e().clickRow(0);
        e().list().SetFocus();
        messages().answers = {services::answerYes};
        screen->failures().failContaining(failing);
        e().listKey(pasteKey);
        EXPECT_EQ(reported().size(), 1U);
        expectSuspended();
        EXPECT_EQ(e().stored("ACQ"), wholeRows);
        EXPECT_EQ(e().stored("VEND"), wholeRows) << "what was pasted stays";
        EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
        e().clickCausale("VEND");
        EXPECT_EQ(reported().size(), 1U);
        expectEditable("VEND", wholeRows);
        EXPECT_EQ(e().stored("ACQ"), wholeRows);
    }
}

TEST_F(Recovery, KeepsEditingSuspendedAsLongAsTheTablesCannotBeRefilled) {
    screen->failures().failContaining("INSERT INTO #DETTAGLIO", Times::Always);
    paste();
    e().clickCausale("ACQ");
    e().clickCausale("VEND");
    EXPECT_EQ(reported(), Texts(3, "PreparazioneTabelleTestataDettaglio:"));
    expectSuspended();
    EXPECT_EQ(e().stored("VEND"), wholeRows);
    screen->failures().heal();
    e().clickCausale("ACQ");
    expectEditable("ACQ", wholeRows);
}

TEST_F(Recovery, LeavesSuspendedEditingWithoutAQuestionAndTakesItUpByTheNextEntry) {
    screen->failures().failContaining("INSERT INTO #DETTAGLIO");
    paste();
    messages().clear();
    e().toggleMode();
    EXPECT_FALSE(e().isOpen());
    EXPECT_TRUE(messages().boxes.empty());
    e().enter();
    EXPECT_TRUE(reported().empty());
    e().clickCausale("VEND");
    expectEditable("VEND", wholeRows);
}

TEST_F(Recovery, TakesSuspendedEditingUpByTheNextPaste) {
    screen->failures().failContaining("INSERT INTO #DETTAGLIO");
    paste();
    e().list().SetSelectedItem(e().list().Find("*VEND*"));
    EXPECT_EQ(e().list().SelectedItem()->Text(), "VEND");
    EXPECT_EQ(e().grid().RowCount(), wholeRows.size());
    EXPECT_EQ(reported().size(), 1U);
}

TEST_F(Recovery, SuspendsEditingWhenAnEntryFailsAndTakesItUpByAClick) {
    e().toggleMode();
    screen->failures().failContaining("INSERT INTO #TESTATA");
    e().enter();
    EXPECT_EQ(reported(), Texts{"PreparazioneTabelleTestataDettaglio:"});
    expectSuspended();
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    e().clickCausale("VEND");
    expectEditable("VEND", other);
}

TEST_F(Recovery, FetchesTheRowsAgainAtOnceWhenAnUndoCouldNot) {
    e().changePercentage(1, "90");
    EXPECT_FALSE(e().save()) << "130 in one run";
    messages().clear();
    screen->failures().failContaining("INSERT INTO #DETTAGLIO");
    EXPECT_TRUE(e().header().PressFromView("Annulla"));
    EXPECT_EQ(reported(), Texts{"PreparazioneTabelleTestataDettaglio:"});
    expectEditable("ACQ", wholeRows);
    EXPECT_EQ(e().working("VEND"), other);
}

TEST_F(Recovery, ShowsNoRowsOfAnyCausaleUntilThoseAnUndoHasGivenUpAreFetchedAgain) {
    e().changePercentage(1, "90");
    EXPECT_FALSE(e().save());
    messages().clear();
    screen->failures().failContaining("INSERT INTO #DETTAGLIO", Times::Always);
    EXPECT_TRUE(e().header().PressFromView("Annulla"));
    expectNoRowsToEdit();
    EXPECT_EQ(e().causale().Text(), "ACQ");
    e().clickCausale("VEND");
    expectNoRowsToEdit();
    EXPECT_FALSE(reported().empty());
    EXPECT_EQ(Texts(reported().size(), "PreparazioneTabelleTestataDettaglio:"), reported());
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
    EXPECT_EQ(e().stored("VEND"), other);
    screen->failures().heal();
    e().clickCausale("ACQ");
    expectEditable("ACQ", wholeRows);
    e().clickCausale("VEND");
    expectEditable("VEND", other);
}

TEST_F(Recovery, KeepsTheRowsOfANewCorrelationLockedUntilLostRowsAreFetchedAgain) {
    e().changePercentage(1, "90");
    EXPECT_FALSE(e().save());
    screen->failures().failContaining("INSERT INTO #DETTAGLIO", Times::Always);
    EXPECT_TRUE(e().header().PressFromView("Annulla"));
    EXPECT_TRUE(e().header().PressFromView("Nuovo"));
    e().typeCausale("GIRO");
    EXPECT_FALSE(e().sign().Enabled());
    screen->failures().heal();
    e().typeCausale("");
    e().typeCausale("GIRO");
    e().addRow(other[0]);
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("GIRO"), other);
    EXPECT_EQ(e().working("ACQ"), wholeRows);
}

TEST_F(Recovery, ShowsNoRowsWhenThoseOfARefusedDeletionCannotBeFetchedBack) {
    screen->failures().failWhere(
        [](const Message& message) {
            return message.text.find("DELETE FROM [#TESTATA]") != std::string::npos ||
                   message.text.find("INSERT INTO #DETTAGLIO") != std::string::npos;
        },
        Times::Always);
    messages().answers = {services::answerYes};
    EXPECT_FALSE(e().header().PressFromView("Elimina"));
    EXPECT_EQ(reported().at(0), "gclsFrameTestata_Failed");
    expectNoRowsToEdit();
    EXPECT_EQ(e().causale().Text(), "ACQ");
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
    screen->failures().heal();
    e().clickCausale("VEND");
    e().clickCausale("ACQ");
    expectEditable("ACQ", wholeRows);
    messages().answers = {services::answerYes};
    EXPECT_TRUE(e().header().PressFromView("Elimina"));
    EXPECT_TRUE(e().stored("ACQ").empty());
    EXPECT_EQ(e().stored("VEND"), other);
}

TEST_F(Recovery, DoesNotCloseOverEditsThatItCouldNotAskAbout) {
    e().changePercentage(1, "55");
    messages().boxFailure = "finestra guasta";
    e().toggleMode();
    EXPECT_EQ(reported(), Texts{"QueryUnloadFrames:"});
    EXPECT_EQ(messages().errors.at(0).error.Description, "finestra guasta");
    EXPECT_TRUE(e().isOpen());
    EXPECT_FALSE(screen->host.component().CloseForm().toBool());
    EXPECT_TRUE(screen->host.isOpen());
    EXPECT_EQ(e().shown()[1][3], "55.00%");
    EXPECT_TRUE(e().header().PressFromView("Annulla"));
    EXPECT_TRUE(screen->host.component().CloseForm().toBool()) << "nothing is left to ask about";
    EXPECT_EQ(reported().size(), 2U);
}

TEST_F(Recovery, ListsNoCausaliOfTheAccountThatWasLeft) {
    e().toggleMode();
    screen->failures().failContaining("FNCI03_CAUSALI");
    e().enter("0102030006");
    EXPECT_EQ(reported(), Texts{"CaricamentoListaCausali:"});
    EXPECT_TRUE(e().listed().empty());
    e().addCorrelation("ACQ", other);
    EXPECT_TRUE(e().save()) << "the account has none: that of another does not stand in the way";
    EXPECT_EQ(e().listed(), Texts{"ACQ"});
    EXPECT_EQ(e().stored("ACQ", "0102030006"), other);
}

TEST_F(Recovery, KeepsTheListOfTheSameAccountWhenItCannotBeReadAgain) {
    e().toggleMode();
    screen->failures().failContaining("FNCI03_CAUSALI");
    e().enter();
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    EXPECT_EQ(e().list().SelectedItem()->Text(), "ACQ");
}

/// Routines one by one.
class RecoveryRoutines : public ::testing::Test {
protected:
    RecoveryRoutines() : work(withTwo()) { work.enter(); }
    frames::VirtualFrame& header() { return *work.areas->frame.Testata(); }
    frames::VirtualFrame& detail() { return *work.areas->frame.Dettaglio(); }
    void goTo(const std::string& causale) { header().MoveTo(*work.areas->frame.RecordDiCausale(causale)); }
    CorrelationAreas work;
};

TEST_F(RecoveryRoutines, StoreNothingFromTablesThatARefillHasLeftEmpty) {
    for (const char* failing : {"INSERT INTO #TESTATA", "INSERT INTO #DETTAGLIO", "DELETE FROM #TESTATA"}) {
        work.screen.failures().failContaining(failing);
        EXPECT_FALSE(work.areas->archivio.PreparazioneTabelleTestataDettaglio());
        EXPECT_FALSE(work.areas->archivio.RigheIntere());
        EXPECT_FALSE(work.areas->archivio.AggiornamentoDatabase("ACQ", 0)) << failing;
        EXPECT_EQ(Editor::storedIn(work.screen.database, "ACQ"), wholeRows);
    }
    EXPECT_EQ(work.labels().back(), "AggiornamentoDatabase:");
    EXPECT_EQ(work.errors().back().error.Description,
              "Le righe della correlazione non sono più quelle mostrate: uscire dalle correlazioni e "
              "rientrarvi");
    EXPECT_TRUE(work.areas->archivio.PreparazioneTabelleTestataDettaglio());
    EXPECT_TRUE(work.areas->archivio.AggiornamentoDatabase("ACQ", 3));
    EXPECT_EQ(Editor::storedIn(work.screen.database, "ACQ"), wholeRows);
}

TEST_F(RecoveryRoutines, OweNoSaveAnyMoreOnceTheTablesAreRefilled) {
    work.areas->archivio.RigheScritte();
    EXPECT_TRUE(header().IsRecordChanged());
    work.areas->frame.RefreshVirtualFrames();
    EXPECT_FALSE(header().IsRecordChanged());
    EXPECT_FALSE(work.areas->archivio.DaArchiviare());
    EXPECT_TRUE(work.errors().empty());
}

TEST_F(RecoveryRoutines, ReadTheRowsOfTheShownCausaleAfterAReadingThatFailed) {
    work.screen.failures().failContaining("WHERE CAUSALE = 'VEND' ORDER BY");
    goTo("VEND");
    EXPECT_EQ(work.labels(), Texts{"ShowChild:"});
    EXPECT_EQ(detail().Source(), "SELECT * FROM #DETTAGLIO WHERE CAUSALE = 'VEND' ORDER BY PROG ASC");
    detail().Requery();
    ASSERT_EQ(detail().Recordset()->RecordCount(), 1);
    EXPECT_EQ(nullSafeText(detail().Recordset()->Fields()["CAUSALE"].Value()), "VEND");
}

TEST_F(RecoveryRoutines, ReadNoRowsForANewHeaderAfterAReadingThatFailed) {
    work.screen.failures().failContaining("WHERE 1 = 0");
    header().AddNew();
    EXPECT_EQ(work.labels(), Texts{"ClearChild:"});
    EXPECT_EQ(detail().Source(), "SELECT * FROM #DETTAGLIO WHERE 1 = 0");
    detail().Requery();
    EXPECT_EQ(detail().Recordset()->RecordCount(), 0);
}

TEST_F(RecoveryRoutines, RefreshNothingOutsideCorrelationMode) {
    work.areas->frame.RimozioneVirtualFrame();
    work.screen.forget();
    work.areas->frame.RefreshVirtualFrames();
    EXPECT_TRUE(work.screen.log().messages().empty());
    EXPECT_FALSE(work.areas->frame.Sospesa());
    EXPECT_TRUE(work.errors().empty());
}

} // namespace

} // namespace veldran::test
