// The clipboard, the menu and the duplication of the list of causali where something else is going on:
// pending edits, a new correlation, a refusal, an empty list.
#include "tests/screen/clipboard_fixture.h"
#include "tests/screen/correlation_areas.h"

namespace veldran::test {

namespace {

const std::string question = "Sostituire la correlazione della causale di destinazione?";
const std::string pending = "Ci sono modifiche non salvate.\r\nSalvare la correlazione prima di proseguire?";
const Rows changed = {{"2", "10.00"}, two[1]};

class ListClipboard : public Clipboard {
protected:
    ListClipboard() {
        e().enter(a);
        e().clickCausale("ACQ");
    }
    Texts asked() { return messages().boxTexts(); }
    bool clipboardIsEmpty() {
        e().list().KeyDownFromView(controls::keyApps, controls::shiftNone);
        return menuTexts().at(2) == "ListIncolla: Incolla correlazione (no)";
    }
    /// Begins a correlation of GIRO while the highlight stays where it is.
    void keyANewOne() {
        e().addCorrelation("GIRO", one);
        e().list().SetFocus();
    }
};

TEST_F(ListClipboard, LeavesTheDestinationWhenTheUserDeclinesAndKeepsTheCopy) {
    listKey(copyKey);
    messages().answers = {services::answerNo};
    listKey("VEND", pasteKey);
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text, question);
    EXPECT_EQ(messages().boxes[0].title, "Attenzione");
    EXPECT_EQ(messages().boxes[0].style, services::styleYesNo | services::styleExclamation);
    EXPECT_EQ(stored("VEND"), one);
    EXPECT_EQ(stored("ACQ"), two);
    EXPECT_EQ(highlighted(), "VEND");
    EXPECT_EQ(e().causale().Text(), "VEND");
    EXPECT_FALSE(clipboardIsEmpty());
}

TEST_F(ListClipboard, EndsACutThatTheUserDeclines) {
    listKey(cutKey);
    messages().answers = {services::answerNo};
    listKey("VEND", pasteKey);
    EXPECT_EQ(stored("ACQ"), two);
    EXPECT_EQ(stored("VEND"), one);
    EXPECT_TRUE(clipboardIsEmpty());
}

TEST_F(ListClipboard, ChangesNothingWhenACutIsPastedOntoItselfButEmptiesTheClipboard) {
    listKey(cutKey);
    screen->forget();
    listKey(pasteKey);
    EXPECT_TRUE(screen->log().messages().empty());
    EXPECT_TRUE(messages().boxes.empty());
    EXPECT_EQ(stored("ACQ"), two);
    EXPECT_TRUE(clipboardIsEmpty());
    EXPECT_EQ(e().focus(), "LST_CAUSALI");
}

TEST_F(ListClipboard, ShowsTheBusyPointerWhileItPastesAndTheDefaultOneAfterwards) {
    const std::vector<int> whole = {services::mouseArrowHourglass, services::mouseDefault};
    listKey(copyKey);
    screen->host.screen.pointers.clear();
    listKey(pasteKey); // onto itself
    EXPECT_EQ(screen->host.screen.pointers, whole);
    messages().answers = {services::answerYes};
    e().clickCausale("VEND");
    screen->host.screen.pointers.clear();
    listKey(pasteKey);
    ASSERT_GE(screen->host.screen.pointers.size(), 2U);
    EXPECT_EQ(screen->host.screen.pointers.front(), services::mouseArrowHourglass);
    EXPECT_EQ(screen->host.screen.pointers.back(), services::mouseDefault);
}

TEST_F(ListClipboard, ShowsTheBusyPointerAroundAnAccountsPasteToo) {
    e().toggleMode();
    treeKey(a, copyKey);
    select(c);
    screen->host.screen.pointers.clear();
    user().key(pasteKey, controls::shiftCtrl);
    EXPECT_EQ(screen->host.screen.pointers,
              (std::vector<int>{services::mouseArrowHourglass, services::mouseDefault}));
    EXPECT_TRUE(screen->sent().size() >= 4U);
}

TEST_F(ListClipboard, SavesPendingEditsBeforeItPastesWhenTheUserSaysSo) {
    listKey(copyKey);
    e().clickCausale("VEND");
    change(0, "20");
    messages().answers = {services::answerYes, services::answerYes};
    listKey(pasteKey);
    EXPECT_EQ(asked(), (Texts{pending, question}));
    EXPECT_EQ(stored("VEND"), two) << "the destination was saved, then replaced";
    EXPECT_EQ(e().shown().size(), 2U);
    EXPECT_FALSE(e().header().CanPress("Conferma"));
}

TEST_F(ListClipboard, PastesTheSourceAsItIsSavedOnTheWay) {
    e().clickCausale("VEND");
    listKey(copyKey);
    change(0, "20");
    messages().answers = {services::answerYes};
    e().clickCausale("ACQ");
    EXPECT_EQ(asked(), Texts{pending});
    messages().answers = {services::answerYes};
    listKey(pasteKey);
    EXPECT_EQ(stored("ACQ"), (Rows{{"2", "20.00"}}));
}

TEST_F(ListClipboard, PastesNothingWhileTheUserStaysWithHisEditsAndStillEndsACut) {
    listKey(cutKey);
    e().clickCausale("VEND");
    change(0, "20");
    messages().answers = {services::answerCancel};
    listKey(pasteKey);
    EXPECT_EQ(asked(), Texts{pending});
    EXPECT_EQ(stored("VEND"), one);
    EXPECT_EQ(stored("ACQ"), two);
    EXPECT_EQ(e().shown().at(0).at(3), "20.00%") << "the edits stand";
    EXPECT_TRUE(e().header().CanPress("Conferma"));
}

TEST_F(ListClipboard, PastesOntoTheHighlightedCausaleWhenANewCorrelationIsSavedOnTheWay) {
    listKey(copyKey);
    e().clickCausale("VEND");
    keyANewOne();
    ASSERT_EQ(highlighted(), "VEND");
    messages().answers = {services::answerYes, services::answerYes};
    listKey(pasteKey);
    EXPECT_EQ(asked(), (Texts{pending, question}));
    EXPECT_EQ(stored("GIRO"), one) << "saved, and not the one that was pasted onto";
    EXPECT_EQ(stored("VEND"), two);
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "GIRO", "VEND"}));
    EXPECT_EQ(highlighted(), "VEND");
    EXPECT_EQ(e().causale().Text(), "VEND");
    EXPECT_TRUE(reported().empty());
}

TEST_F(ListClipboard, PastesOntoTheHighlightedCausaleWhenANewCorrelationIsGivenUp) {
    listKey(copyKey);
    e().clickCausale("VEND");
    keyANewOne();
    messages().answers = {services::answerNo, services::answerYes};
    listKey(pasteKey);
    EXPECT_TRUE(stored("GIRO").empty());
    EXPECT_EQ(stored("VEND"), two);
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    EXPECT_EQ(highlighted(), "VEND");
}

TEST_F(ListClipboard, DeletesTheHighlightedCausaleThoughANewCorrelationWasBegun) {
    e().header().PressFromView("Nuovo");
    e().list().SetFocus();
    ASSERT_EQ(highlighted(), "ACQ");
    messages().answers = {services::answerYes};
    choose("ListElimina");
    EXPECT_EQ(asked(), Texts{"Eliminare la correlazione?"});
    EXPECT_TRUE(stored("ACQ").empty());
    EXPECT_EQ(stored("VEND"), one);
    EXPECT_EQ(e().listed(), Texts{"VEND"});
}

TEST_F(ListClipboard, DeletesNothingWhileTheUserStaysWithANewCorrelation) {
    keyANewOne();
    messages().answers = {services::answerCancel};
    choose("ListElimina");
    EXPECT_EQ(asked(), Texts{pending});
    EXPECT_EQ(stored("ACQ"), two);
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    EXPECT_EQ(e().causale().Text(), "GIRO");
    EXPECT_EQ(e().shown().size(), 1U);
}

TEST_F(ListClipboard, SavesANewCorrelationBeforeItDeletesTheHighlightedOne) {
    keyANewOne();
    messages().answers = {services::answerYes, services::answerYes};
    choose("ListElimina");
    EXPECT_EQ(asked(), (Texts{pending, "Eliminare la correlazione?"}));
    EXPECT_EQ(stored("GIRO"), one);
    EXPECT_TRUE(stored("ACQ").empty());
    EXPECT_EQ(e().listed(), (Texts{"VEND", "GIRO"}));
}

TEST_F(ListClipboard, DeletesNoOtherCausaleThanOneThatIsListedButNotEdited) {
    // As a reload of the list leaves it that the frames could not follow.
    e().list().Add("*GIRO*", "GIRO")->SetTag("GIRO");
    e().list().SetSelectedItem(e().list().Find("*GIRO*"));
    messages().answers = {services::answerYes};
    choose("ListElimina");
    EXPECT_EQ(reported(), Texts{"EliminaCorrelazioneList:"});
    EXPECT_EQ(messages().errors.at(0).error.Description,
              "La causale GIRO non è tra quelle in modifica: uscire dalle correlazioni e rientrarvi");
    EXPECT_EQ(stored("ACQ"), two);
    EXPECT_EQ(stored("VEND"), one);
}

TEST_F(ListClipboard, GoesToTheCausaleOfANewCorrelationWhenTheLastOneWasDeleted) {
    for (const char* expectedFocus : {"LST_CAUSALI", "TXT_CAUSALE"}) {
        messages().answers = {services::answerYes};
        choose("ListElimina");
        EXPECT_EQ(e().focus(), expectedFocus);
    }
    EXPECT_TRUE(e().listed().empty());
    EXPECT_TRUE(e().causale().Enabled());
    EXPECT_TRUE(screen->database.rows("SELECT 1 FROM CI15_CORRCONTICOGE WHERE CI15_CONTO_CG24 = '" + a + "'")
                    .empty());
    EXPECT_TRUE(reported().empty());
}

TEST_F(ListClipboard, LeavesFocusAndRowsWhenTheDeletionIsDeclined) {
    messages().answers = {services::answerNo};
    choose("ListElimina");
    EXPECT_EQ(e().focus(), "LST_CAUSALI");
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    EXPECT_EQ(stored("ACQ"), two);
}

TEST_F(ListClipboard, PastesNothingAfterACorrelationWasDeleted) {
    listKey(copyKey);
    e().clickCausale("VEND");
    messages().answers = {services::answerYes};
    choose("ListElimina");
    e().list().KeyDownFromView(controls::keyApps, controls::shiftNone);
    EXPECT_EQ(menuTexts().at(2), "ListIncolla: Incolla corr. ") << "what was copied is forgotten";
    EXPECT_EQ(menuTexts().at(4), "ListAnnulla: Annulla copia correlazione");
    messages().clear();
    listKey("ACQ", pasteKey);
    EXPECT_TRUE(messages().boxes.empty());
    EXPECT_EQ(stored("ACQ"), two);
    choose("ListAnnulla");
    EXPECT_TRUE(clipboardIsEmpty());
}

TEST_F(ListClipboard, KeepsAnEmptyClipboardEmptyWhenACorrelationIsDeleted) {
    messages().answers = {services::answerYes};
    choose("ListElimina");
    EXPECT_TRUE(clipboardIsEmpty());
}

TEST_F(ListClipboard, BeginsANewCorrelationWhenAPasteHasLeftTheAccountWithout) {
    listKey(copyKey);
    e().toggleMode();
    e().enter(b);
    messages().answers = {services::answerYes};
    listKey("GIRO", pasteKey);
    EXPECT_TRUE(e().listed().empty());
    EXPECT_TRUE(e().causale().Enabled());
    EXPECT_FALSE(e().sign().Enabled());
    e().addCorrelation("VEND", one);
    EXPECT_TRUE(e().save());
    EXPECT_EQ(stored("VEND", b), one);
}

TEST_F(ListClipboard, PastesOneCopyOntoSeveralCausali) {
    Chart chart = storedChart();
    openOver(store(chart, a, "GIRO", one));
    e().enter(a);
    listKey("ACQ", copyKey);
    messages().answers = {services::answerYes, services::answerYes};
    listKey("VEND", pasteKey);
    listKey("GIRO", pasteKey);
    EXPECT_EQ(stored("VEND"), two);
    EXPECT_EQ(stored("GIRO"), two);
    EXPECT_EQ(stored("ACQ"), two);
}

TEST_F(ListClipboard, PastesTheRowsThatTheAccountOfThePasteHasUnderTheRememberedCausale) {
    const Rows ofB = {{"2", "11.00"}, {"1", "7.00", "CDCPRO0020", "SERTRA"}};
    Chart chart = storedChart();
    openOver(store(chart, b, "ACQ", ofB));
    e().enter(a);
    listKey("ACQ", copyKey);
    e().toggleMode();
    e().enter(b);
    messages().answers = {services::answerYes};
    listKey("GIRO", pasteKey);
    EXPECT_EQ(stored("GIRO", b), ofB);
    EXPECT_EQ(stored("ACQ", b), ofB);
    EXPECT_EQ(stored("ACQ", a), two);
}

TEST_F(ListClipboard, ForgetsWhatItHeldWhenAnotherCausaleIsTaken) {
    listKey(copyKey);
    listKey("VEND", cutKey);
    e().list().KeyDownFromView(controls::keyApps, controls::shiftNone);
    EXPECT_EQ(menuTexts().at(2), "ListIncolla: Incolla corr. VEND - Vendite");
    EXPECT_EQ(menuTexts().at(4), "ListAnnulla: Annulla taglia correlazione");
    messages().answers = {services::answerYes};
    listKey("ACQ", pasteKey);
    EXPECT_EQ(stored("ACQ"), one);
    EXPECT_TRUE(stored("VEND").empty());
}

TEST_F(ListClipboard, LeavesTheDestinationWithoutCorrelationWhenTheCopyFails) {
    listKey(cutKey);
    e().clickCausale("VEND");
    messages().answers = {services::answerYes};
    screen->failures().failContaining("INSERT INTO CI15_CORRCONTICOGE");
    listKey(pasteKey);
    EXPECT_EQ(reported(), Texts{"CopiaIncollaCorrelazioneList:"});
    EXPECT_TRUE(stored("VEND").empty()) << "nothing is undone";
    EXPECT_EQ(stored("ACQ"), two) << "the source of a cut stays";
    EXPECT_EQ(e().listed(), Texts{"ACQ"});
    EXPECT_EQ(highlighted(), "ACQ");
    EXPECT_EQ(e().causale().Text(), "ACQ");
    EXPECT_TRUE(clipboardIsEmpty());
}

TEST_F(ListClipboard, TakesCausaliThatDifferInCaseForOne) {
    Chart chart = costChart();
    store(chart, a, "acq", two); // as another program has written it
    store(chart, a, "VEND", one);
    store(chart, b, "ACQ", one);
    openOver(chart);
    e().enter(b);
    e().clickCausale("ACQ");
    listKey(cutKey);
    e().toggleMode();
    e().enter(a);
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    EXPECT_EQ(highlighted(), "ACQ") << "the row of the header's causale";
    e().list().SetFocus();
    listKey(pasteKey);
    EXPECT_TRUE(messages().boxes.empty()) << "a causale is not pasted onto itself";
    EXPECT_EQ(e().stored("acq"), two);
}

TEST(ListMenu, DoesNotOpenWithoutARowAndDoesNothingForAnUnknownKey) {
    CorrelationAreas work(storedChart());
    work.enter();
    int opened = 0;
    const Subscription menu = work.work.form.PopupRequested.subscribe(
        [&](controls::PopupMenu&, const controls::PopupPlace&) { ++opened; });
    work.areas->appuntiLista.PopupListMenu(nullptr, 0, 0, nullptr);
    work.areas->appuntiLista.PopupListMenu(nullptr, 0, 0, &work.controls().LST_CAUSALI);
    EXPECT_EQ(opened, 0);
    work.screen.forget();
    work.areas->appuntiLista.gclsPopupList_AfterItemClick("ListQualcosa");
    work.areas->appuntiLista.gclsPopupList_AfterItemClick("");
    EXPECT_TRUE(work.screen.log().messages().empty());
    EXPECT_FALSE(work.areas->appuntiLista.CorrelazioneInSospeso());
    EXPECT_TRUE(work.work.messages->boxes.empty());
    EXPECT_TRUE(work.errors().empty());
}

TEST_F(Duplication, OntoACausaleThatIsListedInAnotherCaseIsRefused) {
    Chart chart = costChart();
    chart.script("INSERT INTO CI03_CAUSALI (CI03_CODCAUS, CI03_DITTA_CG18, CI03_DESCR) VALUES ('mix', 0, "
                 "'Misto')");
    store(chart, a, "ACQ", two);
    store(chart, a, "mix", one);
    openOver(chart);
    lookups().descriptions["MIX"] = "Misto";
    e().enter(a);
    e().clickCausale("ACQ");
    confirm("mix");
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text, "La causale di destinazione è già correlata");
    EXPECT_EQ(stored("mix"), one);
    EXPECT_TRUE(reported().empty());
}

TEST_F(Duplication, AsksAboutPendingEditsAfterTheDialogAndCopiesWhatIsSaved) {
    change(0, "10");
    messages().answers = {services::answerYes};
    confirm("GIRO");
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text, pending);
    EXPECT_EQ(stored("ACQ"), changed);
    EXPECT_EQ(stored("GIRO"), changed);
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "GIRO", "VEND"}));
}

TEST_F(Duplication, CopiesWhatIsStoredWhenTheEditsAreGivenUp) {
    change(0, "10");
    messages().answers = {services::answerNo};
    confirm("GIRO");
    EXPECT_EQ(stored("ACQ"), two);
    EXPECT_EQ(stored("GIRO"), two);
    EXPECT_EQ(e().shown().at(0).at(3), "100.00%");
}

TEST_F(Duplication, CopiesNothingWhileTheUserStaysWithHisEdits) {
    change(0, "10");
    messages().answers = {services::answerCancel};
    confirm("GIRO");
    EXPECT_TRUE(stored("GIRO").empty());
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    EXPECT_EQ(e().shown().at(0).at(3), "10.00%");
}

TEST_F(Duplication, OntoTheCausaleOfThePendingCorrelationIsRefusedOnceThatIsSaved) {
    e().addCorrelation("GIRO", one);
    e().list().SetFocus();
    messages().answers = {services::answerYes};
    confirm("GIRO");
    ASSERT_EQ(messages().boxes.size(), 2U);
    EXPECT_EQ(messages().boxes[0].text, pending);
    EXPECT_EQ(messages().boxes[1].text, "La causale di destinazione è già correlata");
    EXPECT_EQ(stored("GIRO"), one);
}

TEST_F(Duplication, GivesTheRowsOfTheHighlightedCausaleThoughANewCorrelationIsSavedOnTheWay) {
    Chart chart = storedChart();
    chart.script("INSERT INTO CI03_CAUSALI (CI03_CODCAUS, CI03_DITTA_CG18, CI03_DESCR) VALUES ('NOTE', 0, "
                 "'Note')");
    openOver(chart);
    lookups().descriptions["NOTE"] = "Note";
    e().enter(a);
    e().clickCausale("ACQ");
    e().addCorrelation("GIRO", one);
    e().list().SetFocus();
    ASSERT_EQ(highlighted(), "ACQ");
    messages().answers = {services::answerYes};
    confirm("NOTE");
    EXPECT_EQ(stored("GIRO"), one);
    EXPECT_EQ(stored("NOTE"), two);
}

} // namespace

} // namespace veldran::test
