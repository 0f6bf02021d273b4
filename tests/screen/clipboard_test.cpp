// Copying, cutting, pasting, deleting and duplicating stored correlations, by the keys and menus of the
// screen.
#include "tests/screen/clipboard_fixture.h"

namespace veldran::test {

namespace {

TEST_F(Clipboard, CopiesOneAccountOntoSeveralAndLeavesItAsItIs) {
    treeKey(a, copyKey);
    messages().answers = {services::answerYes};
    treeKey(b, pasteKey);
    treeKey(c, pasteKey);
    for (const std::string& account : {a, b, c}) {
        EXPECT_EQ(stored("ACQ", account), two) << account;
        EXPECT_EQ(stored("VEND", account), one) << account;
        EXPECT_TRUE(marked(account)) << account;
    }
    EXPECT_TRUE(stored("GIRO", b).empty()) << "the destination loses what it had";
    ASSERT_EQ(messages().boxes.size(), 1U) << "only the correlated destination is asked about";
    EXPECT_EQ(messages().boxes[0].text, "Sostituire la correlazione del conto di destinazione?");
    EXPECT_EQ(messages().boxes[0].title, "Attenzione");
    EXPECT_EQ(messages().boxes[0].style, services::styleYesNo | services::styleExclamation);
    EXPECT_EQ(selectionMarks(), (std::vector<Texts>{{c, "1", "1"}, {a, "1", "1"}, {b, "1", "1"}}));
    EXPECT_EQ(screen->host.screen.GetMousePointer(), services::mouseDefault);
}

TEST_F(Clipboard, MovesAnAccountsCorrelationsAndEndsTheCut) {
    treeKey(a, cutKey);
    treeKey(c, pasteKey);
    EXPECT_EQ(stored("ACQ", c), two);
    EXPECT_TRUE(stored("ACQ", a).empty());
    EXPECT_TRUE(stored("VEND", a).empty());
    EXPECT_FALSE(marked(a));
    EXPECT_TRUE(marked(c));
    EXPECT_EQ(selectionMarks(), (std::vector<Texts>{{c, "1", "1"}, {a, "0", "0"}, {b, "1", "1"}}));
    screen->forget();
    treeKey(b, pasteKey);
    EXPECT_EQ(stored("GIRO", b), one) << "the clipboard is empty";
}

TEST_F(Clipboard, ChangesNothingWhenACutIsPastedOntoItselfButEmptiesTheClipboard) {
    treeKey(a, cutKey);
    treeKey(a, pasteKey);
    EXPECT_EQ(stored("ACQ", a), two);
    treeKey(c, pasteKey);
    EXPECT_TRUE(stored("ACQ", c).empty());
}

TEST_F(Clipboard, LeavesTheDestinationWhenTheUserDeclinesAndStillEndsTheCut) {
    treeKey(a, cutKey);
    messages().answers = {services::answerNo};
    treeKey(b, pasteKey);
    EXPECT_EQ(stored("GIRO", b), one);
    EXPECT_EQ(stored("ACQ", a), two);
    treeKey(c, pasteKey);
    EXPECT_TRUE(stored("ACQ", c).empty());
}

TEST_F(Clipboard, FindsTheSourceNodeAgainAfterTheTreeWasReloaded) {
    treeKey(a, cutKey);
    user().filter(2);
    user().filter(1);
    treeKey(c, pasteKey);
    select(a);
    EXPECT_FALSE(marked(a));
    EXPECT_EQ(stored("ACQ", c), two);
}

TEST_F(Clipboard, MovesACutWhoseSourceAFilterHasTakenFromTheTree) {
    Chart chart = storedChart();
    openOver(chart.activated(c));
    treeKey(a, cutKey);
    user().filter(2);
    treeKey(c, pasteKey);
    EXPECT_EQ(user().find(accountKey(1, a)), nullptr);
    EXPECT_EQ(stored("ACQ", c), two);
    EXPECT_EQ(stored("VEND", c), one);
    EXPECT_TRUE(stored("ACQ", a).empty());
    EXPECT_TRUE(stored("VEND", a).empty());
    EXPECT_TRUE(marked(c));
    EXPECT_TRUE(messages().errors.empty());
    treeKey(c, pasteKey);
    EXPECT_TRUE(messages().boxes.empty()) << "the cut has ended";
    user().filter(1);
    select(a);
    EXPECT_TRUE(marked(a)) << "marks are written back for accounts that the filter lets through alone";
    e().enter(a);
    e().toggleMode();
    EXPECT_FALSE(marked(a)) << "counted again on coming back from its correlations";
}

TEST_F(Clipboard, PastesOntoAnAccountOnlyWhileItIsNotCollapsedAway) {
    treeKey(a, copyKey);
    select(c);
    user().collapse(*node(c).Parent());
    screen->forget();
    user().key(pasteKey, controls::shiftCtrl);
    EXPECT_TRUE(screen->sent().empty()) << "the group is selected in its place, and groups take nothing";
    EXPECT_TRUE(stored("ACQ", c).empty());
    treeKey(c, pasteKey);
    EXPECT_EQ(stored("ACQ", c), two) << "the copy is still there";
    EXPECT_TRUE(marked(c));
}

TEST_F(Clipboard, MovesACutWhoseSourceIsCollapsedAway) {
    treeKey(a, cutKey);
    user().collapse(*node(a).Parent());
    treeKey(c, pasteKey);
    EXPECT_EQ(stored("ACQ", c), two);
    EXPECT_TRUE(stored("ACQ", a).empty());
    select(a);
    EXPECT_FALSE(marked(a));
}

TEST_F(Clipboard, NeverOpensAMenuOverTheTree) {
    select(a);
    user().key(controls::keyApps);
    user().key(controls::keyF10, controls::shiftShift);
    user().tree().MouseDownFromView({controls::buttonRight, 0, 10, 10});
    EXPECT_EQ(shownMenu, nullptr);
}

TEST_F(Clipboard, RefusesKeysOnNodesThatAreNotAnalyticOrNotCorrelated) {
    treeKey(c, copyKey); // not correlated
    treeKey(b, pasteKey);
    EXPECT_EQ(stored("GIRO", b), one);
    treeKey(a, copyKey);
    user().click(user().root(1));
    screen->forget();
    user().key(pasteKey, controls::shiftCtrl);
    EXPECT_TRUE(screen->sent().empty());
}

TEST_F(Clipboard, ReplacesACausaleByACopyOfAnotherAndShowsIt) {
    e().enter(a);
    listKey("ACQ", copyKey);
    messages().answers = {services::answerYes};
    listKey("VEND", pasteKey);
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text, "Sostituire la correlazione della causale di destinazione?");
    EXPECT_EQ(stored("VEND", a), two);
    EXPECT_EQ(stored("ACQ", a), two);
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    EXPECT_EQ(e().list().SelectedItem()->Text(), e().causale().Text());
    EXPECT_EQ(e().causale().Text(), "VEND") << "the header stays on the causale pasted onto";
    EXPECT_EQ(e().shown().size(), 2U);
    EXPECT_EQ(e().focus(), "LST_CAUSALI");
}

TEST_F(Clipboard, MovesACausaleOntoAnother) {
    e().enter(a);
    listKey("ACQ", cutKey);
    messages().answers = {services::answerYes};
    listKey("VEND", pasteKey);
    EXPECT_EQ(stored("VEND", a), two);
    EXPECT_TRUE(stored("ACQ", a).empty());
    EXPECT_EQ(e().listed(), Texts{"VEND"});
    screen->forget();
    e().list().KeyDownFromView(pasteKey, controls::shiftCtrl);
    EXPECT_TRUE(screen->sent().empty()) << "the cut has ended";
}

TEST_F(Clipboard, PastesTheRememberedCausaleOfTheAccountThatIsEditedNow) {
    e().enter(a);
    listKey("ACQ", copyKey);
    e().toggleMode();
    e().enter(b);
    messages().answers = {services::answerYes};
    listKey("GIRO", pasteKey);
    EXPECT_TRUE(stored("GIRO", b).empty()) << "this account has no rows of that causale";
    EXPECT_TRUE(e().listed().empty());
    EXPECT_TRUE(messages().errors.empty());
}

TEST_F(Clipboard, SettlesPendingEditsBeforeItCopies) {
    e().enter(a);
    e().clickCausale("ACQ");
    e().changePercentage(1, "10");
    messages().answers = {services::answerCancel};
    e().list().SetFocus();
    e().list().KeyDownFromView(copyKey, controls::shiftCtrl);
    e().list().KeyDownFromView(controls::keyApps, controls::shiftNone);
    EXPECT_EQ(menuTexts()[2], "ListIncolla: Incolla correlazione (no)") << "nothing was copied";
}

TEST_F(Clipboard, TellsInTheMenuWhatWillBePasted) {
    e().enter(a);
    e().clickCausale("ACQ");
    e().list().KeyDownFromView(controls::keyF10, controls::shiftShift);
    EXPECT_EQ(menuTexts(), (Texts{"ListCopia: Copia correlazione", "ListTaglia: Taglia correlazione",
                                  "ListIncolla: Incolla correlazione (no)", "ListSep1: -",
                                  "ListAnnulla: Annulla (no)", "ListSep2: -",
                                  "ListDuplica: DuplicaCorrelazione", "ListElimina: Elimina correlazione"}));
    EXPECT_EQ(shownMenu->Name(), "PopupList");
    EXPECT_EQ(shownAt.anchor, &e().list());
    choose("ListCopia");
    EXPECT_EQ(locked_, (std::vector<bool>{true, false})) << "the window is not painted half-way";
    e().list().KeyDownFromView(controls::keyApps, controls::shiftNone);
    EXPECT_EQ(menuTexts()[2], "ListIncolla: Incolla corr. ACQ - Acquisti");
    EXPECT_EQ(menuTexts()[4], "ListAnnulla: Annulla copia correlazione");
    choose("ListTaglia");
    e().list().KeyDownFromView(controls::keyApps, controls::shiftNone);
    EXPECT_EQ(menuTexts()[4], "ListAnnulla: Annulla taglia correlazione");
    choose("ListAnnulla");
    e().list().KeyDownFromView(controls::keyApps, controls::shiftNone);
    EXPECT_EQ(menuTexts()[4], "ListAnnulla: Annulla (no)");
    EXPECT_EQ(stored("ACQ", a), two) << "an undone cut changes nothing";
}

TEST_F(Clipboard, OpensTheMenuAtThePointerOnTheScreen) {
    e().enter(a);
    e().list().SetHitTester([](int, int) { return controls::ListHit{0, controls::listHitLabel}; });
    e().list().SetScreenOrigin([] { return controls::ListView::ScreenPoint{100, 200}; });
    e().list().MouseDownFromView({controls::buttonRight, 0, 150, 240});
    ASSERT_NE(shownMenu, nullptr);
    EXPECT_EQ(shownAt.anchor, nullptr);
    EXPECT_EQ(shownAt.x, 110) << "15 twips are a pixel across";
    EXPECT_EQ(shownAt.y, 220) << "12 twips are a pixel down";
}

TEST_F(Clipboard, DeletesTheSelectedCausaleWithTheFramesOwnQuestion) {
    e().enter(a);
    e().clickCausale("ACQ");
    messages().answers = {services::answerYes};
    choose("ListElimina");
    EXPECT_EQ(messages().boxes.at(0).text, "Eliminare la correlazione?");
    EXPECT_TRUE(stored("ACQ", a).empty());
    EXPECT_EQ(e().listed(), Texts{"VEND"});
    EXPECT_EQ(e().focus(), "LST_CAUSALI");
}

TEST_F(Duplication, GivesTheRowsToACausaleThatHasNone) {
    confirm("giro ");
    EXPECT_EQ(caption, "Causale di destinazione");
    EXPECT_FALSE(stillOpen);
    EXPECT_EQ(stored("GIRO", a), two);
    EXPECT_EQ(stored("ACQ", a), two);
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "GIRO", "VEND"}));
    EXPECT_EQ(e().list().SelectedItem()->Text(), e().causale().Text());
    EXPECT_TRUE(messages().errors.empty());
}

TEST_F(Duplication, RefusesACausaleThatIsCorrelatedAlreadyTheSourceIncluded) {
    for (const char* causale : {"ACQ", "VEND"}) {
        messages().clear();
        confirm(causale);
        ASSERT_EQ(messages().boxes.size(), 1U) << causale;
        EXPECT_EQ(messages().boxes[0].text, "La causale di destinazione è già correlata");
        EXPECT_EQ(messages().boxes[0].title, "Attenzione");
        EXPECT_EQ(messages().boxes[0].style, services::styleExclamation);
    }
    EXPECT_EQ(stored("ACQ", a), two);
    EXPECT_EQ(stored("VEND", a), one);
}

TEST_F(Duplication, StaysOpenSilentlyForACausaleThatDoesNotDecode) {
    for (const char* causale : {"ZZZ", ""}) {
        confirm(causale);
        EXPECT_TRUE(stillOpen) << causale;
    }
    EXPECT_TRUE(messages().boxes.empty());
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
}

TEST_F(Duplication, ClosesByEscapeByControlF4AndByAnnullaWithoutCopying) {
    const auto leave = [&](const std::function<void(controls::Form&)>& how) {
        screen->host.windows->whileModal = [&](controls::Form& dialog) {
            auto& field = in<controls::LookupField>(dialog, "TXT_CAUSALE");
            field.TypeFromView("GIRO");
            field.LeaveFromView();
            how(dialog);
            EXPECT_FALSE(dialog.IsLoaded());
        };
        choose("ListDuplica");
        EXPECT_TRUE(stored("GIRO", a).empty());
    };
    leave([](controls::Form& dialog) {
        dialog.FormKeyDownFromView(controls::keyEscape, controls::shiftShift);
    });
    leave([](controls::Form& dialog) { dialog.FormKeyDownFromView(controls::keyF4, controls::shiftCtrl); });
    leave([](controls::Form& dialog) { in<controls::Button>(dialog, "CMD_ANNULLA").ClickFromView(); });
}

TEST_F(Duplication, DecodesAndListsThroughTheFormsOwnConnection) {
    screen->host.windows->whileModal = [&](controls::Form& dialog) {
        auto& field = in<controls::LookupField>(dialog, "TXT_CAUSALE");
        lookups().decodes.clear();
        field.TypeFromView("GIRO");
        field.LeaveFromView();
        field.LookupFromView();
        EXPECT_EQ(in<controls::Label>(dialog, "TXT_DESCRCAUSALE").Caption(), "Giroconto");
        dialog.Unload();
    };
    choose("ListDuplica");
    ASSERT_FALSE(lookups().decodes.empty());
    EXPECT_EQ(lookups().decodes[0].kind, services::LookupKind::Causali);
    EXPECT_EQ(lookups().decodes[0].connection.get(), &screen->host.connection());
    EXPECT_EQ(lookups().decodes[0].connectionString, screen->database.connectionString());
    EXPECT_EQ(lookups().lists.back().title, "Causale correlata");
}

TEST_F(Duplication, ReportsADecodeThatFailsAndStaysOpen) {
    screen->host.windows->whileModal = [&](controls::Form& dialog) {
        auto& field = in<controls::LookupField>(dialog, "TXT_CAUSALE");
        lookups().failure = simulatedFailure();
        field.TypeFromView("GIRO");
        field.LeaveFromView();
        lookups().failure.reset();
        EXPECT_TRUE(dialog.IsLoaded());
        dialog.Unload();
    };
    choose("ListDuplica");
    ASSERT_EQ(messages().errors.size(), 1U);
    EXPECT_EQ(messages().errors[0].routine, "TXT_CAUSALE_StartDecode");
}

struct Failing {
    const char* fragment;
    const char* label;
};

TEST_F(Clipboard, ReportsEachStatementOfAnAccountsPasteOnceUnderItsRoutine) {
    for (const Failing& failing : {Failing{"DELETE FROM CI15", "CopiaIncollaCorrelazioneTree:"},
                                   Failing{"INSERT INTO CI15", "CopiaIncollaCorrelazioneTree:"},
                                   Failing{"UPDATE #CG24_TABPDC_SELECTED", "CopiaIncollaCorrelazioneTree:"},
                                   Failing{"SET #CG24_TABPDC.CORRELATO", "IncollaCorrelazioneTree:"}}) {
        treeKey(a, copyKey);
        select(c);
        messages().clear();
        messages().answers = {services::answerYes, services::answerYes};
        screen->failures().failContaining(failing.fragment);
        user().key(pasteKey, controls::shiftCtrl);
        ASSERT_EQ(messages().errors.size(), 1U) << failing.fragment;
        EXPECT_EQ(messages().errors[0].routine, failing.label) << failing.fragment;
        EXPECT_EQ(screen->host.screen.GetMousePointer(), services::mouseDefault);
        screen->failures().heal();
        messages().answers = {services::answerYes};
        user().key(pasteKey, controls::shiftCtrl);
        EXPECT_EQ(messages().errors.size(), 1U) << "the screen works on";
        EXPECT_EQ(stored("ACQ", c), two);
    }
}

TEST_F(Clipboard, LeavesTheDestinationWithoutCorrelationWhenTheCopyOfAnAccountFails) {
    treeKey(a, cutKey);
    select(b);
    messages().answers = {services::answerYes};
    screen->failures().failContaining("INSERT INTO CI15_CORRCONTICOGE");
    user().key(pasteKey, controls::shiftCtrl);
    EXPECT_EQ(reported(), Texts{"CopiaIncollaCorrelazioneTree:"});
    EXPECT_TRUE(stored("GIRO", b).empty()) << "nothing is undone";
    EXPECT_EQ(stored("ACQ", a), two) << "the source of a cut stays";
    EXPECT_TRUE(marked(a));
    messages().clear();
    treeKey(c, pasteKey);
    EXPECT_TRUE(stored("ACQ", c).empty()) << "the cut has ended";
}

/// The n-th deletion of stored rows from now on fails.
void failDeletion(Screen& screen, int n) {
    screen.failures().failWhere([n, times = 0](const Message& message) mutable {
        return message.text.find("DELETE FROM CI15") != std::string::npos && ++times == n;
    });
}

TEST_F(Clipboard, LeavesTheSourceOfACutWhoseDeletionFailsAndEndsTheCut) {
    treeKey(a, cutKey);
    select(c);
    failDeletion(*screen, 2);
    user().key(pasteKey, controls::shiftCtrl);
    EXPECT_EQ(reported(), Texts{"TagliaIncollaCorrelazioneTree:"});
    EXPECT_EQ(stored("ACQ", c), two) << "the copy stands";
    EXPECT_EQ(stored("ACQ", a), two);
    EXPECT_TRUE(marked(a));
    EXPECT_TRUE(marked(c));
    EXPECT_EQ(selectionMarks(), (std::vector<Texts>{{c, "1", "1"}, {a, "1", "1"}, {b, "1", "1"}}));
    treeKey(b, pasteKey);
    EXPECT_EQ(stored("GIRO", b), one) << "the clipboard is empty";
}

TEST_F(Clipboard, EndsACutThatHasMovedTheCorrelationsAlthoughTheirMarksCouldNotBeCarriedBack) {
    treeKey(a, cutKey);
    select(c);
    screen->failures().failContaining("SET #CG24_TABPDC.CORRELATO");
    user().key(pasteKey, controls::shiftCtrl);
    EXPECT_EQ(reported(), Texts{"IncollaCorrelazioneTree:"});
    EXPECT_EQ(stored("ACQ", c), two);
    EXPECT_TRUE(stored("ACQ", a).empty());
    messages().answers = {services::answerYes};
    treeKey(b, pasteKey);
    EXPECT_EQ(stored("GIRO", b), one) << "nothing is replaced by the rows of a source that has none any more";
}

TEST_F(Clipboard, LeavesTheSourceOfACutCausaleWhoseDeletionFailsAndEndsTheCut) {
    e().enter(a);
    listKey("ACQ", cutKey);
    e().clickCausale("VEND");
    failDeletion(*screen, 2);
    messages().answers = {services::answerYes};
    listKey(pasteKey);
    EXPECT_EQ(reported(), Texts{"TagliaIncollaCorrelazioneList:"});
    EXPECT_EQ(stored("VEND"), two);
    EXPECT_EQ(stored("ACQ"), two);
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    EXPECT_EQ(e().shown().size(), 2U);
    screen->forget();
    listKey("ACQ", pasteKey);
    EXPECT_TRUE(screen->log().containing("CI15_CORRCONTICOGE").empty()) << "the clipboard is empty";
}

TEST_F(Duplication, ReportsACopyThatFailsAndCopiesNothing) {
    screen->failures().failContaining("INSERT INTO CI15_CORRCONTICOGE");
    confirm("GIRO");
    EXPECT_EQ(reported(), Texts{"DuplicaCorrelazioneList:"});
    EXPECT_TRUE(stored("GIRO").empty());
    EXPECT_EQ(stored("ACQ"), two);
    EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    confirm("GIRO");
    EXPECT_EQ(stored("GIRO"), two);
    EXPECT_EQ(reported().size(), 1U);
}

TEST_F(Clipboard, ReportsEachStatementOfACausalesPasteOnceUnderItsRoutine) {
    e().enter(a);
    for (const Failing& failing : {Failing{"DELETE FROM CI15", "CopiaIncollaCorrelazioneList:"},
                                   Failing{"INSERT INTO CI15", "CopiaIncollaCorrelazioneList:"},
                                   Failing{"DELETE FROM #DETTAGLIO", "PreparazioneTabelleTestataDettaglio:"},
                                   Failing{"CROSS APPLY", "CaricamentoListaCausali:"}}) {
        listKey("ACQ", copyKey);
        e().clickCausale("VEND");
        messages().clear();
        messages().answers = {services::answerYes, services::answerYes};
        screen->failures().failContaining(failing.fragment);
        e().list().KeyDownFromView(pasteKey, controls::shiftCtrl);
        ASSERT_EQ(messages().errors.size(), 1U) << failing.fragment;
        EXPECT_EQ(messages().errors[0].routine, failing.label);
        screen->failures().heal();
        e().toggleMode(); // the list may lack a causale that lost its rows: entering again reads everything
        screen->database.run({"DELETE FROM CI15_CORRCONTICOGE WHERE CI15_CODCAUS_CI03 = 'VEND'",
                              "INSERT INTO CI15_CORRCONTICOGE VALUES (1, 'VEND', 1, '" + a +
                                  "', 1, 101, 'COLACQ0010', NULL, NULL, 2, 50)"});
        e().enter(a);
        EXPECT_EQ(e().listed(), (Texts{"ACQ", "VEND"}));
    }
}

} // namespace

} // namespace veldran::test
