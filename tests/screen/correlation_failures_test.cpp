// Every statement of correlation mode made to fail in turn: one report under the routine's label, the stated
// after-effects, and an editor that works on.
#include "tests/screen/correlation_areas.h"
#include "tests/screen/expected_correlation_statements.h"
#include "tests/screen/failing_actions.h"

#include <memory>
#include <utility>

namespace veldran::test {

namespace {

const std::string account = editedAccount;
const std::string other = "0102030006";

bool contains(const std::string& text, const std::string& what) {
    return text.find(what) != std::string::npos;
}

void select(Screen& screen, const std::string& code = account) {
    screen.host.user().search(code);
}

void toggle(Screen& screen) {
    Editor(screen).toggleMode();
}

void reenter(Screen& screen) {
    toggle(screen);
    toggle(screen);
}

void answer(Screen& screen, std::deque<services::MessageBoxAnswer> answers) {
    screen.host.messages->answers = std::move(answers);
}

Chart withTwo() {
    Chart chart = withStored();
    return store(chart, account, "VEND", {{"2", "30.00"}});
}

/// An action in the editor over stored rows, entered and with its statements yet to come.
Action inEditor(Chart chart = withStored()) {
    Action action;
    action.chart = std::move(chart);
    action.open = openEditor;
    action.prepare = [](Screen& screen) { Editor(screen).enter(); };
    return action;
}

std::string labelOfEntry(const Message& message) {
    if (message.text == expected::correlatedCausali(account).text()) {
        return "CaricamentoListaCausali:";
    }
    if (message.text == expected::headers().text() || message.text == expected::noRows().text()) {
        return "ConfigurazioneVirtualFrame:";
    }
    return message.text == expected::rowsOf("ACQ ").text() ? "ShowChild:"
                                                           : "PreparazioneTabelleTestataDettaglio:";
}

void expectTheStoredCorrelation(Screen& screen) {
    const Editor editor(screen);
    EXPECT_TRUE(editor.isOpen());
    EXPECT_EQ(editor.causale().Text(), "ACQ");
    EXPECT_EQ(editor.listed(), Texts{"ACQ"});
    ASSERT_NE(editor.list().SelectedItem(), nullptr);
    EXPECT_EQ(editor.list().SelectedItem()->Text(), "ACQ");
    EXPECT_EQ(editor.grid().RowCount(), wholeRows.size());
    EXPECT_TRUE(editor.grid().Enabled());
    EXPECT_EQ(editor.working("ACQ"), wholeRows);
    EXPECT_EQ(editor.workingCausali(), Texts{"ACQ"});
    EXPECT_EQ(editor.stored("ACQ"), wholeRows);
}

void expectNothingToEdit(Screen& screen) {
    const Editor editor(screen);
    EXPECT_EQ(editor.grid().RowCount(), 0U);
    EXPECT_FALSE(editor.grid().Enabled());
    EXPECT_FALSE(editor.sign().Enabled());
}

TEST(EntryFailures, LeaveTheLayoutsSwitchedAndTheNextEntryWorks) {
    Action action = inEditor();
    action.prepare = [](Screen& screen) { select(screen); };
    action.act = toggle;
    action.label = labelOfEntry;
    action.afterFailure = [](Screen& screen, const Message& failed) {
        const Editor editor(screen);
        EXPECT_TRUE(editor.isOpen());
        EXPECT_FALSE(editor.control<controls::Layout>("LAY_ATTIVAZIONE").Visible());
        EXPECT_EQ(editor.listed().empty(), labelOfEntry(failed) == "CaricamentoListaCausali:");
        if (labelOfEntry(failed) != "CaricamentoListaCausali:") {
            expectNothingToEdit(screen);
        }
    };
    action.repeat = reenter;
    action.expectDone = expectTheStoredCorrelation;
    failEachStatement(action);
}

TEST(EntryFailures, AfterWhichATableStandsAllTheSameAreMendedByTheNextEntry) {
    for (const Message& creation : expected::tablesCreated(account)) {
        if (!creation.text.starts_with("CREATE TABLE")) {
            continue;
        }
        const auto screen = openEditor(withStored());
        select(*screen);
        screen->failures().failContaining(creation.text);
        toggle(*screen);
        EXPECT_EQ(screen->host.messages->errors.size(), 1U);
        screen->host.connection().Execute(creation.text); // as a server does whose answer came too late
        reenter(*screen);
        EXPECT_EQ(screen->host.messages->errors.size(), 1U);
        expectTheStoredCorrelation(*screen);
    }
}

TEST(EntryFailures, OfAFurtherEntryLeaveTheTablesToBeRefilled) {
    Action action = inEditor();
    action.prepare = [](Screen& screen) {
        Editor(screen).enter(other);
        toggle(screen);
        select(screen);
    };
    action.act = toggle;
    action.label = labelOfEntry;
    action.repeat = reenter;
    action.expectDone = expectTheStoredCorrelation;
    failEachStatement(action);
}

TEST(EntryFailures, OfAnAccountWithoutCorrelationsAreThoseOfEmptyingTheDetail) {
    Action action = inEditor(costChart());
    action.prepare = [](Screen& screen) { select(screen); };
    action.act = toggle;
    int openings = 0; // of the detail's rows: by the frame, then by the new header
    action.label = [&openings](const Message& message) {
        return message.text == expected::noRows().text() && ++openings == 2 ? "ClearChild:"
                                                                            : labelOfEntry(message);
    };
    action.repeat = reenter;
    action.expectDone = [](Screen& screen) {
        EXPECT_EQ(Editor(screen).focus(), "TXT_CAUSALE");
        EXPECT_TRUE(Editor(screen).causale().Enabled());
        EXPECT_EQ(Editor(screen).grid().RowCount(), 0U);
    };
    failEachStatement(action);
}

TEST(LeavingFailures, LeaveActivationModeOpenAndTheMarkToTheNextTime) {
    Action action = inEditor();
    action.prepare = [](Screen& screen) {
        Editor(screen).enter();
        screen.database.run({"DELETE FROM CI15_CORRCONTICOGE"});
    };
    action.act = toggle;
    action.label = [](const Message&) { return "AfterEnterAttivazione:"; };
    action.afterFailure = [](Screen& screen, const Message&) {
        EXPECT_FALSE(Editor(screen).isOpen());
        EXPECT_TRUE(Editor(screen).control<controls::Layout>("LAY_ATTIVAZIONE").Visible());
    };
    action.repeat = reenter;
    action.expectDone = [](Screen& screen) {
        const Texts unmarked = {"0"};
        const std::string of = " WHERE CONTO = '" + account + "'";
        EXPECT_EQ(screen.query("SELECT CORRELATO FROM #CG24_TABPDC" + of).at(0), unmarked);
        EXPECT_EQ(screen.query("SELECT CORRELATO FROM #CG24_TABPDC_SELECTED" + of).at(0), unmarked);
        EXPECT_EQ(Editor(screen).focus(), "TRW_CONTI");
    };
    failEachStatement(action);
}

TEST(CausaleFailures, LeaveTheRowsOfANewCorrelationLockedUntilACausaleIsChosenAgain) {
    Action action = inEditor(costChart());
    action.act = [](Screen& screen) { Editor(screen).typeCausale("ACQ"); };
    action.label = [](const Message&) { return "RefreshChild:"; };
    action.afterFailure = [](Screen& screen, const Message&) {
        EXPECT_FALSE(Editor(screen).sign().Enabled());
        EXPECT_EQ(Editor(screen).focus(), "INV_TESTATA");
    };
    action.repeat = [act = action.act](Screen& screen) {
        Editor(screen).typeCausale("");
        act(screen);
    };
    action.expectDone = [](Screen& screen) {
        Editor editor(screen);
        EXPECT_TRUE(editor.sign().Enabled());
        for (const Row& row : wholeRows) {
            editor.addRow(row);
        }
        EXPECT_TRUE(editor.save());
        EXPECT_EQ(editor.stored("ACQ"), wholeRows);
    };
    failEachStatement(action);
}

TEST(MoveFailures, ShowNoRowsRatherThanThoseOfTheCausaleThatWasLeft) {
    Action action = inEditor(withTwo());
    action.act = [](Screen& screen) { Editor(screen).clickCausale("VEND"); };
    action.label = [](const Message&) { return "ShowChild:"; };
    action.afterFailure = [](Screen& screen, const Message&) {
        const Editor editor(screen);
        EXPECT_EQ(editor.causale().Text(), "VEND");
        EXPECT_EQ(editor.grid().RowCount(), 0U);
        EXPECT_FALSE(editor.grid().Enabled());
        EXPECT_FALSE(editor.header().CanPress("Conferma"));
    };
    action.repeat = [act = action.act](Screen& screen) {
        Editor(screen).clickCausale("ACQ");
        act(screen);
    };
    action.expectDone = [](Screen& screen) {
        const Editor editor(screen);
        EXPECT_EQ(editor.causale().Text(), "VEND");
        EXPECT_EQ(editor.grid().RowCount(), 1U);
        EXPECT_TRUE(editor.grid().Enabled());
    };
    failEachStatement(action);
}

TEST(NewCorrelationFailures, HideTheRowsThatWereShownBefore) {
    Action action = inEditor();
    action.act = [](Screen& screen) { Editor(screen).header().PressFromView("Nuovo"); };
    action.label = [](const Message&) { return "ClearChild:"; };
    action.afterFailure = [](Screen& screen, const Message&) { expectNothingToEdit(screen); };
    action.repeat = [](Screen& screen) { Editor(screen).typeCausale("VEND"); };
    action.expectDone = [](Screen& screen) {
        Editor editor(screen);
        editor.typeCausale("GIRO");
        editor.addRow({"2", "50"});
        EXPECT_TRUE(editor.save());
        EXPECT_EQ(editor.stored("GIRO"), (Rows{{"2", "50.00"}}));
        EXPECT_EQ(editor.stored("ACQ"), wholeRows);
    };
    failEachStatement(action);
}

/// Labels by what a save writes: rows, header, what is stored. Transactions are told by their place.
std::function<std::string(const Message&)> labelsOfSave(Texts transactions) {
    return [transactions = std::move(transactions), at = std::size_t{0}](const Message& message) mutable {
        if (message.how == Sent::Begin || message.how == Sent::Commit) {
            return transactions.at(at++);
        }
        return std::string(contains(message.text, "#TESTATA]")      ? "gclsFrameTestata_Failed"
                           : contains(message.text, "[#DETTAGLIO]") ? "gclsFrameDettaglio_UpdateBatchAll"
                                                                    : "AggiornamentoDatabase:");
    };
}

const Texts rowsTransaction(2, "gclsFrameDettaglio_UpdateBatchAll");
const Texts headerTransaction(2, "gclsFrameTestata_Failed");
const Texts storeTransaction(2, "AggiornamentoDatabase:");

Texts together(Texts first, const std::vector<Texts>& others) {
    for (const Texts& more : others) {
        first.insert(first.end(), more.begin(), more.end());
    }
    return first;
}

TEST(SaveFailures, OfANewCorrelationLeaveNothingHalfStoredAndTheSameSaveThenSucceeds) {
    Action action = inEditor(costChart());
    action.prepare = [](Screen& screen) {
        Editor(screen).enter();
        Editor(screen).addCorrelation("ACQ", wholeRows);
    };
    action.act = [](Screen& screen) { Editor(screen).save(); };
    action.label = labelsOfSave(together(rowsTransaction, {headerTransaction, storeTransaction}));
    action.afterFailure = [](Screen& screen, const Message&) {
        const Editor editor(screen);
        EXPECT_TRUE(editor.stored("ACQ").empty());
        EXPECT_EQ(editor.grid().RowCount(), wholeRows.size()) << "the rows are shown as they were keyed";
        EXPECT_TRUE(editor.header().CanPress("Conferma")) << "the save is still due";
        EXPECT_EQ(editor.causale().Text(), "ACQ");
    };
    action.repeat = action.act;
    action.expectDone = [](Screen& screen) {
        expectTheStoredCorrelation(screen);
        EXPECT_FALSE(Editor(screen).header().CanPress("Conferma"));
    };
    failEachStatement(action);
}

const Rows changedRows = {wholeRows[0], {"1", "55.00", "CDCPRO0010", "MATPRI"}, wholeRows[2]};

void changeTheSecondRow(Screen& screen) {
    const Editor editor(screen);
    editor.changePercentage(1, "55");
}

Action savingAChange() {
    Action action = inEditor();
    action.prepare = [](Screen& screen) {
        Editor(screen).enter();
        changeTheSecondRow(screen);
    };
    action.act = [](Screen& screen) { Editor(screen).save(); };
    action.label = labelsOfSave(together(rowsTransaction, {storeTransaction}));
    action.repeat = action.act;
    action.expectDone = [](Screen& screen) {
        const Editor editor(screen);
        EXPECT_EQ(editor.stored("ACQ"), changedRows);
        EXPECT_EQ(editor.working("ACQ"), changedRows);
        EXPECT_FALSE(editor.header().CanPress("Conferma"));
    };
    return action;
}

TEST(SaveFailures, OfChangedRowsLeaveTheStoredOnesUntouched) {
    Action action = savingAChange();
    action.afterFailure = [](Screen& screen, const Message&) {
        const Editor editor(screen);
        EXPECT_EQ(editor.stored("ACQ"), wholeRows);
        EXPECT_EQ(editor.shown()[1][3], "55.00%");
        EXPECT_TRUE(editor.header().CanPress("Conferma"));
    };
    failEachStatement(action);
}

TEST(SaveFailures, CanBeUndoneToWhatIsStored) {
    Action action = savingAChange();
    action.repeat = [](Screen& screen) {
        EXPECT_TRUE(Editor(screen).header().PressFromView("Annulla"));
        EXPECT_EQ(Editor(screen).shown()[1][3], "60.00%");
        EXPECT_EQ(Editor(screen).working("ACQ"), wholeRows);
        EXPECT_FALSE(Editor(screen).header().CanPress("Conferma"));
        changeTheSecondRow(screen);
        EXPECT_TRUE(Editor(screen).save());
    };
    failEachStatement(action);
}

TEST(SaveFailures, OfANewCorrelationCanBeUndoneAndItsRowsKeyedAgain) {
    Action action = inEditor(costChart());
    action.prepare = [](Screen& screen) {
        Editor(screen).enter();
        Editor(screen).addCorrelation("ACQ", wholeRows);
    };
    action.act = [](Screen& screen) { Editor(screen).save(); };
    action.label = labelsOfSave(together(rowsTransaction, {headerTransaction, storeTransaction}));
    action.repeat = [](Screen& screen) {
        Editor editor(screen);
        EXPECT_TRUE(editor.header().PressFromView("Annulla"));
        EXPECT_EQ(editor.grid().RowCount(), 0U);
        EXPECT_TRUE(editor.working("ACQ").empty());
        if (editor.listed().empty()) {
            editor.addCorrelation("ACQ", wholeRows);
        } else { // its header had been written before
            for (const Row& row : wholeRows) {
                editor.addRow(row);
            }
        }
        EXPECT_TRUE(editor.save());
    };
    action.expectDone = expectTheStoredCorrelation;
    failEachStatement(action);
}

TEST(SaveFailures, OnTheWayOutKeepTheEditorOpenWithTheRowsAsEdited) {
    Action action = savingAChange();
    action.act = [](Screen& screen) {
        answer(screen, {services::answerYes});
        toggle(screen);
    };
    action.label =
        [save = labelsOfSave(together(rowsTransaction, {storeTransaction}))](const Message& message) mutable {
            const bool saving = message.how == Sent::Begin || message.how == Sent::Commit ||
                                contains(message.text, "[#DETTAGLIO]") ||
                                contains(message.text, "DELETE FROM CI15") ||
                                contains(message.text, "INSERT INTO CI15");
            return saving ? save(message) : std::string("AfterEnterAttivazione:");
        };
    action.afterFailure = [label = action.label](Screen& screen, const Message&) {
        const Editor editor(screen);
        if (screen.host.messages->errors[0].routine == "AfterEnterAttivazione:") {
            EXPECT_FALSE(editor.isOpen());
        } else {
            EXPECT_TRUE(editor.isOpen());
            EXPECT_EQ(editor.shown()[1][3], "55.00%");
            EXPECT_EQ(editor.stored("ACQ"), wholeRows);
        }
    };
    action.repeat = [](Screen& screen) {
        if (Editor(screen).isOpen()) {
            answer(screen, {services::answerYes});
            toggle(screen);
        }
    };
    action.expectDone = [](Screen& screen) {
        EXPECT_FALSE(Editor(screen).isOpen());
        EXPECT_EQ(Editor(screen).stored("ACQ"), changedRows);
    };
    failEachStatement(action);
}

TEST(SaveFailures, OnTheWayToAnotherCausaleKeepTheHeaderWhereItIs) {
    Action action = savingAChange();
    action.chart = withTwo();
    action.act = [](Screen& screen) {
        answer(screen, {services::answerYes});
        Editor(screen).clickCausale("VEND");
    };
    action.label = [save = labelsOfSave(together(rowsTransaction, {storeTransaction}))](
                       const Message& message) mutable {
        return message.text == expected::rowsOf("VEND").text() ? std::string("ShowChild:") : save(message);
    };
    action.afterFailure = [](Screen& screen, const Message& failed) {
        const bool moved = failed.text == expected::rowsOf("VEND").text();
        EXPECT_EQ(Editor(screen).causale().Text(), moved ? "VEND" : "ACQ");
        EXPECT_EQ(Editor(screen).list().SelectedItem()->Text(), moved ? "VEND" : "ACQ");
    };
    action.repeat = [](Screen& screen) {
        Editor(screen).clickCausale("ACQ");
        answer(screen, {services::answerYes});
        Editor(screen).clickCausale("VEND");
    };
    action.expectDone = [](Screen& screen) {
        EXPECT_EQ(Editor(screen).stored("ACQ"), changedRows);
        EXPECT_EQ(Editor(screen).causale().Text(), "VEND");
        EXPECT_EQ(Editor(screen).grid().RowCount(), 1U);
    };
    failEachStatement(action);
}

TEST(DeletionFailures, AreReportedAndTheCorrelationCanStillBeDeleted) {
    Action action = inEditor();
    action.act = [](Screen& screen) {
        answer(screen, {services::answerYes});
        Editor(screen).header().PressFromView("Elimina");
    };
    // Rows are shown twice: of the header that is current then, which is none, and of the new one.
    action.label = [shownBefore = std::make_shared<bool>(false)](const Message& message) {
        if (message.text == expected::deletedWorkingRows("ACQ").text()) {
            return "gclsFrameTestata_BeforeDelete:";
        }
        if (message.text == expected::noRows().text()) {
            return std::exchange(*shownBefore, true) ? "ClearChild:" : "ShowChild:";
        }
        return message.text == expected::deleteCorrelationText("ACQ", account) ? "CancellazioneCorrelazione:"
                                                                               : "gclsFrameTestata_Failed";
    };
    action.afterFailure = [](Screen& screen, const Message& failed) {
        if (failed.text == expected::deleteCorrelationText("ACQ", account)) {
            EXPECT_EQ(Editor(screen).stored("ACQ"), wholeRows);
            EXPECT_TRUE(Editor(screen).listed().empty()) << "the working tables have lost it already";
            EXPECT_TRUE(Editor(screen).working("ACQ").empty());
        } else if (failed.text == expected::noRows().text()) {
            EXPECT_TRUE(Editor(screen).stored("ACQ").empty());
            expectNothingToEdit(screen);
        } else {
            expectTheStoredCorrelation(screen);
        }
    };
    action.repeat = [act = action.act](Screen& screen) {
        reenter(screen);
        if (!Editor(screen).listed().empty()) {
            act(screen);
        }
    };
    action.expectDone = [](Screen& screen) {
        const Editor editor(screen);
        EXPECT_TRUE(editor.stored("ACQ").empty());
        EXPECT_TRUE(editor.working("ACQ").empty());
        EXPECT_TRUE(editor.workingCausali().empty());
        EXPECT_TRUE(editor.listed().empty());
        EXPECT_EQ(editor.grid().RowCount(), 0U);
    };
    failEachStatement(action);
}

TEST(DeletionFailures, OfTheHeaderBringTheRowsBackAndTheSameDeletionThenSucceeds) {
    const auto screen = openEditor(withStored());
    Editor editor(*screen);
    editor.enter();
    screen->failures().failContaining("DELETE FROM [#TESTATA]");
    answer(*screen, {services::answerYes});
    EXPECT_FALSE(editor.header().PressFromView("Elimina"));
    expectTheStoredCorrelation(*screen);
    answer(*screen, {services::answerYes});
    EXPECT_TRUE(editor.header().PressFromView("Elimina"));
    EXPECT_TRUE(editor.stored("ACQ").empty());
    EXPECT_EQ(screen->host.messages->errors.size(), 1U);
}

TEST(UndoFailures, StillGiveUpTheChanges) {
    Action action = inEditor();
    action.prepare = [](Screen& screen) {
        Editor(screen).enter();
        changeTheSecondRow(screen);
    };
    action.act = [](Screen& screen) { Editor(screen).header().PressFromView("Annulla"); };
    int readings = 0; // of the rows: by the undo, then by the status that follows it
    action.label = [&readings](const Message&) {
        return ++readings == 1 ? "gclsFrameTestata_AfterUndo" : "ShowChild:";
    };
    action.afterFailure = [](Screen& screen, const Message&) {
        EXPECT_FALSE(Editor(screen).header().CanPress("Conferma"));
        EXPECT_EQ(Editor(screen).stored("ACQ"), wholeRows);
    };
    action.repeat = reenter;
    action.expectDone = expectTheStoredCorrelation;
    failEachStatement(action);
}

TEST(KindsFailures, AreReportedAndOfferNoAccountUntilTheNextTime) {
    Action action = inEditor();
    action.act = [](Screen& screen) { Editor(screen).account().LookupFromView(); };
    action.label = [](const Message&) { return "GetTipologiaContoIndustriale:"; };
    action.afterFailure = [](Screen& screen, const Message&) {
        EXPECT_EQ(screen.host.lookups.lists.back().tipologie, 0);
    };
    action.repeat = action.act;
    action.expectDone = [](Screen& screen) { EXPECT_EQ(screen.host.lookups.lists.back().tipologie, 1023); };
    failEachStatement(action);
}

TEST(DescriptionFailures, LeaveTheCellEmptyUntilTheRowsAreShownAnew) {
    Action action = inEditor();
    action.act = [](Screen& screen) { Editor(screen).shown(); };
    action.label = [](const Message& message) {
        return contains(message.text, "(201,") ? "DescrizioneVDS:" : "DescrizioneConto:";
    };
    action.repeat = reenter;
    action.expectDone = [](Screen& screen) {
        const auto shown = Editor(screen).shown();
        EXPECT_EQ(shown[0][2], "Costi di acquisto");
        EXPECT_EQ(shown[1][2], "Reparto produzione");
        EXPECT_EQ(shown[1][5], "Materie prime");
        EXPECT_EQ(shown[2][5], "Trasporti");
    };
    failEachStatement(action);
}

TEST(RefreshFailures, AreReportedUnderTheRoutineThatFailed) {
    struct Case {
        const char* failing;
        const char* label;
    };
    for (const Case& tested : {Case{"DELETE FROM #DETTAGLIO", "PreparazioneTabelleTestataDettaglio:"},
                               Case{"SELECT * FROM #TESTATA", "RefreshVirtualFrames:"},
                               Case{"WHERE CAUSALE = 'ACQ ' ORDER BY", "ShowChild:"}}) {
        CorrelationAreas work(withStored());
        work.enter();
        work.screen.failures().failContaining(tested.failing);
        work.areas->frame.RefreshVirtualFrames();
        EXPECT_EQ(work.labels(), Texts{tested.label});
        work.areas->frame.RefreshVirtualFrames();
        EXPECT_EQ(work.errors().size(), 1U);
        EXPECT_EQ(work.controls().GRD_DETTAGLIO.RowCount(), wholeRows.size());
        EXPECT_TRUE(work.controls().GRD_DETTAGLIO.Enabled());
    }
}

TEST(LookupFailures, OfACausaleAreReportedUnderTheEventThatAsked) {
    const auto screen = openEditor(costChart());
    Editor editor(*screen);
    editor.enter();
    screen->host.lookups.failure = simulatedFailure("elenco non disponibile");
    editor.typeCausale("ACQ");
    editor.causale().LookupFromView();
    screen->host.lookups.failure.reset();
    EXPECT_EQ(screen->host.messages->routines(),
              (Texts{"TXT_CAUSALE_StartDecode", "TXT_CAUSALE_StartLookup"}));
    editor.addCorrelation("VEND", {{"2", "10"}});
    EXPECT_TRUE(editor.save());
}

} // namespace

} // namespace veldran::test
