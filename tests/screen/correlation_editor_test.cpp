// The correlation editor as the accountant uses it: enter, key, check, save, come back.
#include "tests/screen/correlation_fixture.h"
#include "tree/cnode_info.h"

namespace veldran::test {

namespace {

class CorrelationEditor : public EditorTest {
protected:
    std::string mark(const std::string& table) {
        return screen->query("SELECT CORRELATO FROM " + table + " WHERE CONTO = '" + editedAccount + "'")
            .at(0)
            .at(0);
    }
};

TEST_F(CorrelationEditor, OpensForAnAccountWithoutCorrelationsOnANewHeaderWithTheFocusOnTheCausale) {
    enter();
    EXPECT_TRUE(e().isOpen());
    EXPECT_FALSE(e().control<controls::Layout>("LAY_ATTIVAZIONE").Visible());
    EXPECT_EQ(e().control<controls::Label>("TXT_CONTOSELEZIONATO").Caption(),
              "01/02/03/0005 - Cassa contanti");
    EXPECT_EQ(e().focus(), "TXT_CAUSALE");
    EXPECT_TRUE(e().causale().Enabled());
    EXPECT_EQ(e().grid().RowCount(), 0U);
    EXPECT_FALSE(e().grid().Enabled());
    EXPECT_FALSE(e().sign().Enabled());
    EXPECT_TRUE(e().listed().empty());
    EXPECT_EQ(e().workingCausali(), Texts{});
    EXPECT_TRUE(messages().errors.empty());
}

TEST_F(CorrelationEditor, ShowsTheStoredRowsThroughTheFormatsOfTheGrid) {
    enter(withStored());
    EXPECT_EQ(e().focus(), "GRD_DETTAGLIO");
    EXPECT_EQ(
        e().shown(),
        (std::vector<Texts>{{"COL.ACQ.0010", "", "Costi di acquisto", "100.00%", "", ""},
                            {"", "CDC.PRO.0010", "Reparto produzione", "60.00%", "MAT.PRI", "Materie prime"},
                            {"", "CDC.PRO.0020", "Reparto verniciatura", "40.00%", "SER.TRA", "Trasporti"}}));
    EXPECT_EQ(e().listed(), Texts{"ACQ"});
    EXPECT_EQ(e().list().Items()[0]->Key(), "*ACQ*");
    EXPECT_EQ(e().list().Items()[0]->SubItem(0), "Acquisti");
    EXPECT_EQ(e().list().SelectedItem(), e().list().Items()[0]);
    EXPECT_EQ(e().causale().Text(), "ACQ");
    EXPECT_FALSE(e().causale().Enabled());
    EXPECT_EQ(e().control<controls::Label>("TXT_DESCRCAUSALE").Caption(), "Acquisti");
    EXPECT_TRUE(messages().errors.empty());
}

TEST_F(CorrelationEditor, StoresAWholeCorrelationKeyedRowAfterRow) {
    enter();
    e().addCorrelation("acq", wholeRows);
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
    EXPECT_EQ(e().working("ACQ"), wholeRows);
    EXPECT_EQ(e().listed(), Texts{"ACQ"});
    EXPECT_EQ(screen->database.rows("SELECT DISTINCT CI15_CODPDC_PC01, CI15_CODVDS_PC01 FROM "
                                    "CI15_CORRCONTICOGE ORDER BY CI15_CODVDS_PC01"),
              (std::vector<Texts>{{"101", "NULL"}, {"101", "201"}}));
    EXPECT_TRUE(messages().errors.empty());
    EXPECT_TRUE(messages().boxes.empty());
}

TEST_F(CorrelationEditor, KeepsTheAccountOfARowInTheColumnOfItsSignOnly) {
    enter();
    e().addCorrelation("ACQ", wholeRows);
    e().save();
    EXPECT_EQ(screen->query("SELECT AVERE, DARE FROM #DETTAGLIO ORDER BY PROG"),
              (std::vector<Texts>{{"COLACQ0010", "NULL"}, {"NULL", "CDCPRO0010"}, {"NULL", "CDCPRO0020"}}));
}

TEST_F(CorrelationEditor, MarksTheAccountWhenItComesBackWithAFirstCorrelation) {
    enter();
    e().addCorrelation("ACQ", wholeRows);
    e().save();
    e().toggleMode();
    EXPECT_FALSE(e().isOpen());
    const auto* info = CNodeInfo::Di(screen->host.user().node(accountKey(1, editedAccount)));
    EXPECT_TRUE(info->IsCorrelato());
    EXPECT_EQ(mark("#CG24_TABPDC"), "1");
    EXPECT_EQ(mark("#CG24_TABPDC_SELECTED"), "1");
    EXPECT_EQ(e().focus(), "TRW_CONTI");
}

TEST_F(CorrelationEditor, ClearsTheMarkWhenTheLastCorrelationIsGone) {
    enter(withStored());
    messages().answers = {services::answerYes};
    e().header().PressFromView("Elimina");
    EXPECT_EQ(messages().boxes.at(0).text, "Eliminare la correlazione?");
    EXPECT_TRUE(e().stored("ACQ").empty());
    EXPECT_TRUE(e().listed().empty());
    EXPECT_TRUE(e().working("ACQ").empty());
    e().toggleMode();
    EXPECT_FALSE(CNodeInfo::Di(screen->host.user().node(accountKey(1, editedAccount)))->IsCorrelato());
    EXPECT_EQ(mark("#CG24_TABPDC"), "0");
    EXPECT_EQ(mark("#CG24_TABPDC_SELECTED"), "0");
    EXPECT_TRUE(messages().errors.empty());
}

TEST_F(CorrelationEditor, BeginsANewCorrelationWhenTheLastOneIsGone) {
    enter(withStored());
    messages().answers = {services::answerYes};
    e().header().PressFromView("Elimina");
    EXPECT_EQ(e().focus(), "TXT_CAUSALE");
    EXPECT_TRUE(e().causale().Enabled());
    EXPECT_FALSE(e().grid().Enabled());
    e().addCorrelation("GIRO", wholeRows);
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("GIRO"), wholeRows);
    EXPECT_TRUE(messages().errors.empty());
}

TEST_F(CorrelationEditor, RefusesToBeLeftWhileTheUserStaysWithHisChanges) {
    enter(withStored());
    e().changePercentage(1, "55");
    messages().answers = {services::answerCancel};
    e().toggleMode();
    EXPECT_TRUE(e().isOpen());
    EXPECT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(e().shown()[1][3], "55.00%");
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
    messages().answers = {services::answerNo};
    e().toggleMode();
    EXPECT_FALSE(e().isOpen());
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
}

TEST_F(CorrelationEditor, SavesOnLeavingWhenTheUserSaysSo) {
    enter(withStored());
    e().typePercentage(1, "55");
    messages().answers = {services::answerYes};
    e().toggleMode();
    EXPECT_FALSE(e().isOpen());
    EXPECT_EQ(e().stored("ACQ")[1].percentage, "55.00");
}

TEST_F(CorrelationEditor, RefillsItsTablesWhenEnteredAgainInsteadOfCreatingThem) {
    enter(withStored());
    e().toggleMode();
    screen->forget();
    e().enter();
    EXPECT_TRUE(screen->log().containing("CREATE TABLE").empty());
    EXPECT_EQ(screen->log().containing("DELETE FROM #DETTAGLIO").size(), 1U);
    EXPECT_EQ(screen->log().containing("DELETE FROM #TESTATA").size(), 1U);
    EXPECT_EQ(e().shown().size(), 3U);
    EXPECT_EQ(screen->log().prepareCount("INSERT INTO #DETTAGLIO"), 0U) << "prepared once for each form";
}

TEST_F(CorrelationEditor, DeletesTheRowsOfACausaleThatIsSavedWithoutRows) {
    enter(withStored());
    messages().answers = {services::answerYes, services::answerYes, services::answerYes};
    for (int row = 0; row < 3; ++row) {
        e().detail().PressFromView("Elimina");
    }
    EXPECT_EQ(e().grid().RowCount(), 0U);
    EXPECT_TRUE(e().save());
    EXPECT_TRUE(e().stored("ACQ").empty());
    EXPECT_EQ(e().workingCausali(), Texts{"ACQ"});
    EXPECT_TRUE(messages().errors.empty());
}

TEST_F(CorrelationEditor, NumbersTheRowsAnewAfterOneWasDeleted) {
    const Rows four = {{"2", "100.00"}, {"1", "10.00"}, {"1", "20.00"}, {"1", "30.00"}};
    enter(withStored(four));
    e().clickRow(1);
    messages().answers = {services::answerYes};
    e().detail().PressFromView("Elimina");
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("ACQ"), (Rows{four[0], four[2], four[3]}));
    EXPECT_EQ(e().working("ACQ"), (Rows{four[0], four[2], four[3]}));
}

TEST_F(CorrelationEditor, RefusesOriginRowsAboveAHundredAndKeepsTheRowsAsEdited) {
    enter();
    const Rows rows = {{"2", "60.00"}, {"2", "40.01"}};
    e().addCorrelation("ACQ", rows);
    EXPECT_FALSE(e().save());
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].title, "Controllo correlazione");
    EXPECT_EQ(messages().boxes[0].style, services::styleExclamation);
    EXPECT_EQ(messages().boxes[0].text,
              "Attenzione, non è ammesso salvare una correlazione con la somma delle percentuali\r\n"
              "attribuite alle righe di origine maggiore di 100");
    EXPECT_TRUE(e().stored("ACQ").empty());
    EXPECT_EQ(e().workingCausali(), Texts{});
    EXPECT_EQ(e().shown().size(), 2U);
    e().typePercentage(1, "40");
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("ACQ"), (Rows{rows[0], {"2", "40.00"}}));
}

TEST_F(CorrelationEditor, RefusesARunOfDestinationRowsAboveAHundred) {
    enter();
    e().addCorrelation("ACQ", {{"2", "100.00"}, {"1", "60.00"}, {"1", "50.00"}});
    EXPECT_FALSE(e().save());
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text,
              "Attenzione, non è ammesso salvare una correlazione con la somma delle percentuali\r\n"
              "attribuite ad un insieme contiguo di righe di destinazione maggiore di 100");
    EXPECT_TRUE(e().stored("ACQ").empty());
}

TEST_F(CorrelationEditor, ProposesAnOriginThenDestinationsUntilTheirRunIsFull) {
    enter();
    e().typeCausale("ACQ");
    const auto nextSign = [&](const char* percentage) {
        e().detail().PressFromView("Nuovo");
        const std::string proposed = e().sign().Text();
        keyInto(e().percentage(), percentage);
        return proposed;
    };
    EXPECT_EQ(nextSign("100"), "Avere");
    EXPECT_EQ(nextSign("60"), "Dare");
    EXPECT_EQ(nextSign("40"), "Dare");
    EXPECT_EQ(nextSign("100"), "Avere");
    EXPECT_EQ(nextSign("33.33"), "Dare");
}

TEST_F(CorrelationEditor, TreatsARunWithAnEmptyPercentageAsFull) {
    enter(withStored({{"2", "100.00"}, {"1", "NULL"}}));
    e().detail().PressFromView("Nuovo");
    EXPECT_EQ(e().sign().Text(), "Avere");
}

TEST_F(CorrelationEditor, MovesARowUpWithItsNumberStayingInPlaceAndStoresTheNewOrder) {
    enter(withStored());
    e().clickRow(1);
    EXPECT_TRUE(e().up().Enabled());
    e().up().ClickFromView();
    EXPECT_EQ(e().grid().CurrentRow(), std::optional<std::size_t>(0))
        << "the moved row stays the current one";
    EXPECT_FALSE(e().up().Enabled());
    EXPECT_TRUE(e().down().Enabled());
    EXPECT_EQ(e().focus(), "GRD_DETTAGLIO");
    EXPECT_EQ(e().stored("ACQ"), wholeRows) << "nothing is written before the header is saved";
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("ACQ"), (Rows{wholeRows[1], wholeRows[0], wholeRows[2]}));
}

TEST_F(CorrelationEditor, MovesARowDownAndBackAgain) {
    enter(withStored());
    e().clickRow(1);
    e().down().ClickFromView();
    EXPECT_EQ(e().grid().CurrentRow(), std::optional<std::size_t>(2));
    EXPECT_FALSE(e().down().Enabled());
    e().up().ClickFromView();
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
}

TEST_F(CorrelationEditor, EmptiesTheAccountWhenTheSignChangesAndLeavesItForTheSameSign) {
    enter(withStored());
    e().clickRow(1);
    e().sign().SetFocus();
    e().sign().ChooseFromView(1);
    EXPECT_EQ(e().account().Text(), "CDCPRO0010");
    e().sign().ChooseFromView(0);
    EXPECT_EQ(e().account().Text(), "");
    EXPECT_EQ(e().control<controls::Label>("TXT_DESCRCONTO").Caption(), "");
}

TEST_F(CorrelationEditor, LeavesTheDetailDisabledForACausaleThatDoesNotDecode) {
    enter();
    e().typeCausale("ZZZ");
    EXPECT_FALSE(e().grid().Enabled());
    EXPECT_FALSE(e().sign().Enabled());
    EXPECT_EQ(e().focus(), "INV_TESTATA");
    EXPECT_EQ(e().header().FocusedButton(), "Nuovo");
    e().typeCausale("ACQ");
    EXPECT_TRUE(e().sign().Enabled());
    EXPECT_EQ(e().focus(), "CBO_SEGNO");
}

TEST_F(CorrelationEditor, KeepsTheCostItemClosedWhereTheCompanyManagesNone) {
    Company company = costCompany();
    company.costItems = false;
    enter(withStored(), company);
    EXPECT_TRUE(e().account().Enabled());
    EXPECT_FALSE(e().item().Enabled());
    EXPECT_EQ(e().shown()[1][4], "MATPRI");
    EXPECT_EQ(e().shown()[1][5], "MATPRI");
}

TEST_F(CorrelationEditor, ShowsTwoDecimalsAndNothingForAnEmptyPercentage) {
    enter(withStored({{"2", "12.5"}, {"2", "NULL"}}));
    EXPECT_EQ(e().shown()[0][3], "12.50%");
    EXPECT_EQ(e().shown()[1][3], "");
}

TEST_F(CorrelationEditor, SavesACorrelationOverARowThatWasBegunAndHasNothing) {
    enter();
    e().typeCausale("ACQ");
    e().detail().PressFromView("Nuovo");
    ASSERT_EQ(e().grid().RowCount(), 1U);
    EXPECT_TRUE(e().save());
    EXPECT_TRUE(messages().boxes.empty()) << "nobody keyed anything into that row";
    EXPECT_TRUE(messages().errors.empty());
    EXPECT_EQ(e().grid().RowCount(), 0U);
    EXPECT_EQ(e().listed(), Texts{"ACQ"});
    EXPECT_TRUE(e().working("ACQ").empty());
    EXPECT_TRUE(e().stored("ACQ").empty());
}

TEST_F(CorrelationEditor, RepeatsASaveThatFailedOverARowThatWasBegunAndHasNothing) {
    enter(withStored());
    e().typePercentage(1, "50");
    screen->failures().failContaining("INSERT INTO CI15_CORRCONTICOGE");
    e().save();
    ASSERT_EQ(messages().errors.size(), 1U);
    e().detail().PressFromView("Nuovo");
    ASSERT_EQ(e().grid().RowCount(), 4U);
    EXPECT_TRUE(e().save());
    EXPECT_TRUE(messages().boxes.empty());
    EXPECT_EQ(messages().errors.size(), 1U);
    EXPECT_EQ(e().grid().RowCount(), 3U);
    EXPECT_EQ(e().stored("ACQ"), (Rows{wholeRows[0], {"1", "50.00", "CDCPRO0010", "MATPRI"}, wholeRows[2]}));
    EXPECT_FALSE(e().header().CanPress("Conferma"));
}

TEST_F(CorrelationEditor, RefusesACausaleThatHasACorrelationAlready) {
    enter(withStored());
    e().header().PressFromView("Nuovo");
    e().typeCausale("ACQ");
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text,
              "La causale è già correlata: selezionarla nell'elenco per modificarne le righe.");
    EXPECT_EQ(e().grid().RowCount(), 0U) << "the rows of the other correlation are not to be touched";
    EXPECT_FALSE(e().sign().Enabled());
    EXPECT_EQ(e().focus(), "TXT_CAUSALE");
    EXPECT_FALSE(e().save());
    EXPECT_EQ(messages().boxes.back().text,
              "Non è possibile salvare la correlazione: ne esiste già una con il codice «ACQ».");
    e().addCorrelation("GIRO", wholeRows);
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("GIRO"), wholeRows);
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
    EXPECT_EQ(e().working("ACQ"), wholeRows);
    EXPECT_TRUE(messages().errors.empty());
}

TEST_F(CorrelationEditor, SavesNothingUnderACausaleThatDoesNotExist) {
    enter();
    e().addCorrelation("ACQ", wholeRows);
    e().typeCausale("ZZZ");
    EXPECT_FALSE(e().save());
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text, "Indicare una causale esistente per salvare la correlazione.");
    EXPECT_EQ(e().focus(), "TXT_CAUSALE");
    EXPECT_EQ(e().workingCausali(), Texts{});
    e().typeCausale("ACQ");
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
}

TEST_F(CorrelationEditor, FindsTheRowOfACausaleThatIsStoredInAnotherCase) {
    Chart chart = costChart();
    store(chart, editedAccount, "acq", wholeRows);
    store(chart, editedAccount, "VEND", wholeRows);
    enter(chart);
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    EXPECT_EQ(e().list().SelectedItem()->Text(), "ACQ");
    e().clickCausale("VEND");
    e().clickCausale("ACQ");
    EXPECT_EQ(e().causale().Text(), "acq");
    messages().answers = {services::answerYes};
    EXPECT_TRUE(e().header().PressFromView("Elimina"));
    EXPECT_EQ(e().listed(), Texts{"VEND"});
    EXPECT_TRUE(e().stored("ACQ").empty());
}

TEST_F(CorrelationEditor, RefusesARowWithoutAccountBeforeAnythingIsStoredOfANewCorrelation) {
    enter();
    e().addCorrelation("ACQ", {wholeRows[0], {"1", "60.00", "", "NULL"}, wholeRows[2]});
    e().clickRow(0);
    EXPECT_FALSE(e().save());
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text,
              "Indicare il conto di contabilità analitica di ogni riga per salvare la correlazione.");
    EXPECT_EQ(messages().boxes[0].title, "Attenzione");
    EXPECT_EQ(messages().boxes[0].style, services::styleExclamation);
    EXPECT_TRUE(reported().empty());
    EXPECT_TRUE(e().stored("ACQ").empty());
    EXPECT_EQ(e().workingCausali(), Texts{});
    EXPECT_TRUE(e().listed().empty());
    EXPECT_EQ(e().grid().CurrentRow(), std::optional<std::size_t>(1)) << "the row that lacks it";
    EXPECT_EQ(e().focus(), "TXT_CONTO");
    e().account().TypeFromView("CDCPRO0010");
    e().account().LeaveFromView();
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("ACQ"), (Rows{wholeRows[0], {"1", "60.00", "CDCPRO0010", "NULL"}, wholeRows[2]}));
}

TEST_F(CorrelationEditor, RefusesARowThatAChangedSignHasEmptiedAndCanUndoIt) {
    enter(withStored());
    e().clickRow(1);
    e().sign().SetFocus();
    e().sign().ChooseFromView(0);
    e().percentage().SetFocus();
    e().percentage().TypeFromView("0");
    EXPECT_FALSE(e().save());
    EXPECT_EQ(messages().boxes.size(), 1U);
    EXPECT_TRUE(reported().empty());
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
    EXPECT_TRUE(e().header().CanPress("Conferma")) << "the save is still due";
    EXPECT_TRUE(e().header().PressFromView("Annulla"));
    EXPECT_EQ(e().working("ACQ"), wholeRows);
}

TEST_F(CorrelationEditor, ChecksThePercentagesBeforeTheAccounts) {
    enter();
    e().addCorrelation("ACQ", {{"2", "60.00"}, {"2", "41.00", "", "NULL"}});
    EXPECT_FALSE(e().save());
    ASSERT_EQ(messages().boxes.size(), 1U) << "one message for each attempt";
    EXPECT_EQ(messages().boxes[0].title, "Controllo correlazione");
}

TEST_F(CorrelationEditor, CarriesRowsAlongThatARefusedSaveHasWrittenAlready) {
    enter();
    e().addCorrelation("ACQ", {{"2", "60.00"}, {"2", "41.00"}});
    EXPECT_FALSE(e().save());
    e().typeCausale("GIRO");
    EXPECT_EQ(e().grid().RowCount(), 2U);
    e().typePercentage(1, "40");
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("GIRO"), (Rows{{"2", "60.00"}, {"2", "40.00"}}));
    EXPECT_TRUE(e().working("ACQ").empty());
}

TEST_F(CorrelationEditor, AsksAgainAboutRowsThatARuleHasRefused) {
    enter(withStored());
    e().changePercentage(1, "90");
    EXPECT_FALSE(e().save());
    messages().clear();
    for (int attempt = 1; attempt <= 2; ++attempt) {
        messages().answers = {services::answerCancel};
        e().toggleMode();
        EXPECT_TRUE(e().isOpen());
        EXPECT_EQ(messages().boxes.size(), static_cast<std::size_t>(attempt));
    }
    EXPECT_TRUE(e().header().PressFromView("Annulla"));
    EXPECT_EQ(e().shown()[1][3], "60.00%");
    EXPECT_EQ(e().working("ACQ"), wholeRows);
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
}

TEST_F(CorrelationEditor, CarriesTheRowsAlongWhenTheCausaleOfANewCorrelationIsCorrected) {
    enter();
    e().addCorrelation("ACQ", wholeRows);
    e().typeCausale("GIRO");
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("GIRO"), wholeRows);
    EXPECT_TRUE(e().stored("ACQ").empty());
}

TEST_F(CorrelationEditor, UndoesToWhatIsStored) {
    enter(withStored());
    e().changePercentage(2, "1");
    EXPECT_TRUE(e().header().PressFromView("Annulla"));
    EXPECT_EQ(e().shown()[2][3], "40.00%");
    EXPECT_FALSE(e().header().CanPress("Conferma"));
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
}

TEST_F(CorrelationEditor, TellsThatAnAnalyticAccountIsNeeded) {
    open();
    screen->host.user().click(screen->host.user().root(1));
    e().toggleMode();
    EXPECT_FALSE(e().isOpen());
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text, "Selezionare un conto analitico per gestirne le correlazioni.");
}

TEST_F(CorrelationEditor, ReportsASaveThatFailsAndOffersItAgain) {
    enter(withStored());
    e().typePercentage(1, "50");
    screen->failures().failContaining("INSERT INTO CI15_CORRCONTICOGE");
    e().save();
    ASSERT_EQ(messages().errors.size(), 1U);
    EXPECT_EQ(messages().errors[0].routine, "AggiornamentoDatabase:");
    EXPECT_EQ(e().stored("ACQ"), wholeRows) << "neither deleted nor half inserted";
    EXPECT_EQ(e().working("ACQ")[1].percentage, "50.00");
    EXPECT_TRUE(e().header().CanPress("Conferma")) << "the save is still due";
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().stored("ACQ")[1].percentage, "50.00");
    EXPECT_FALSE(e().header().CanPress("Conferma"));
}

} // namespace

} // namespace veldran::test
