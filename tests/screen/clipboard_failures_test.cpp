// Every statement of the clipboards made to fail in turn: one report under the routine's label, and a screen
// that works on. Their statements run one by one: what one has stored stays.
#include "tests/screen/clipboard_fixture.h"
#include "tests/screen/failing_actions.h"

namespace veldran::test {

namespace {

bool contains(const Message& message, const char* what) {
    return message.text.find(what) != std::string::npos;
}

bool writesCorrelations(const Message& message) {
    return contains(message, "DELETE FROM CI15") || contains(message, "INSERT INTO CI15");
}

bool marksTheSelection(const Message& message) {
    return contains(message, "UPDATE #CG24_TABPDC_SELECTED");
}

void treeKey(Screen& screen, const std::string& account, int key) {
    const ScreenUser user = screen.host.user();
    user.search(account);
    user.click(user.node(accountKey(1, account)));
    user.key(key, controls::shiftCtrl);
}

void listKey(Screen& screen, const std::string& causale, int key) {
    Editor(screen).clickCausale(causale);
    Editor(screen).list().KeyDownFromView(key, controls::shiftCtrl);
}

void consent(Screen& screen) {
    screen.host.messages->answers = {services::answerYes};
}

/// An action of a clipboard over the stored correlations.
Action onStored() {
    Action action;
    action.chart = storedChart();
    action.open = openEditor;
    action.storesRowByRow = true;
    return action;
}

/// The account's correlations onto those of another.
Action pastingAnAccount(int key) {
    Action action = onStored();
    action.prepare = [key](Screen& screen) {
        treeKey(screen, a, key);
        screen.host.user().search(b);
    };
    action.act = [](Screen& screen) {
        consent(screen);
        screen.host.user().key(pasteKey, controls::shiftCtrl);
    };
    return action;
}

TEST(TreePasteFailures, OfACopyAreReportedOnceAndTheSamePasteThenSucceeds) {
    Action action = pastingAnAccount(copyKey);
    action.label = [](const Message& message) {
        return writesCorrelations(message) || marksTheSelection(message) ? "CopiaIncollaCorrelazioneTree:"
                                                                         : "IncollaCorrelazioneTree:";
    };
    action.afterFailure = [](Screen& screen, const Message&) {
        EXPECT_EQ(Editor(screen).stored("ACQ", a), two);
        EXPECT_EQ(Editor(screen).stored("VEND", a), one);
    };
    action.repeat = action.act;
    action.expectDone = [](Screen& screen) {
        for (const std::string& account : {a, b}) {
            EXPECT_EQ(Editor(screen).stored("ACQ", account), two);
            EXPECT_EQ(Editor(screen).stored("VEND", account), one);
        }
        EXPECT_TRUE(Editor(screen).stored("GIRO", b).empty());
    };
    failEachStatement(action);
}

TEST(TreePasteFailures, OfACutAreReportedOnceAndNeverLoseTheCorrelations) {
    Action action = pastingAnAccount(cutKey);
    action.label = [deletions = 0, marks = 0](const Message& message) mutable {
        deletions += contains(message, "DELETE FROM CI15") ? 1 : 0;
        marks += marksTheSelection(message) ? 1 : 0;
        if (!writesCorrelations(message) && !marksTheSelection(message)) {
            return "IncollaCorrelazioneTree:";
        }
        return deletions == 2 || marks == 2 ? "TagliaIncollaCorrelazioneTree:"
                                            : "CopiaIncollaCorrelazioneTree:";
    };
    action.afterFailure = [](Screen& screen, const Message&) {
        const Editor editor(screen);
        EXPECT_TRUE(editor.stored("ACQ", a) == two || editor.stored("ACQ", b) == two);
        EXPECT_TRUE(editor.stored("VEND", a) == one || editor.stored("VEND", b) == one);
    };
    action.repeat = [](Screen& screen) { // the cut has ended
        if (Editor(screen).stored("ACQ", a).empty()) {
            return;
        }
        treeKey(screen, a, cutKey);
        consent(screen);
        treeKey(screen, b, pasteKey);
    };
    action.expectDone = [](Screen& screen) {
        const Editor editor(screen);
        EXPECT_TRUE(editor.stored("ACQ", a).empty());
        EXPECT_TRUE(editor.stored("VEND", a).empty());
        EXPECT_EQ(editor.stored("ACQ", b), two);
        EXPECT_EQ(editor.stored("VEND", b), one);
    };
    failEachStatement(action);
}

/// One causale's rows onto those of another.
Action pastingACausale(int key) {
    Action action = onStored();
    action.prepare = [key](Screen& screen) {
        Editor(screen).enter(a);
        listKey(screen, "ACQ", key);
        Editor(screen).clickCausale("VEND");
    };
    action.act = [](Screen& screen) {
        consent(screen);
        Editor(screen).list().KeyDownFromView(pasteKey, controls::shiftCtrl);
    };
    return action;
}

std::string labelOfShowingAnew(const Message& message) {
    if (contains(message, "CROSS APPLY")) {
        return "CaricamentoListaCausali:";
    }
    if (contains(message, "SELECT * FROM #TESTATA")) {
        return "RefreshVirtualFrames:";
    }
    return contains(message, "SELECT * FROM #DETTAGLIO") ? "ShowChild:"
                                                         : "PreparazioneTabelleTestataDettaglio:";
}

/// Entering again reads everything.
void reenter(Screen& screen) {
    Editor(screen).toggleMode();
    Editor(screen).enter(a);
}

/// Also where the destination has lost its rows, and is no more in the list.
void pasteAgain(Screen& screen) {
    reenter(screen);
    if (Editor(screen).stored("VEND").empty()) {
        Editor(screen).addCorrelation("VEND", two);
        EXPECT_TRUE(Editor(screen).save());
    } else if (Editor(screen).stored("VEND") != two) {
        listKey(screen, "ACQ", copyKey);
        consent(screen);
        listKey(screen, "VEND", pasteKey);
    }
}

TEST(ListPasteFailures, OfACopyAreReportedOnceAndThePasteThenSucceeds) {
    Action action = pastingACausale(copyKey);
    action.label = [](const Message& message) {
        return writesCorrelations(message) ? "CopiaIncollaCorrelazioneList:" : labelOfShowingAnew(message);
    };
    action.afterFailure = [](Screen& screen, const Message&) {
        EXPECT_EQ(Editor(screen).stored("ACQ"), two);
    };
    action.repeat = pasteAgain;
    action.expectDone = [](Screen& screen) {
        EXPECT_EQ(Editor(screen).stored("ACQ"), two);
        EXPECT_EQ(Editor(screen).stored("VEND"), two);
        EXPECT_EQ(Editor(screen).listed(), (Texts{"ACQ", "VEND"}));
    };
    failEachStatement(action);
}

TEST(ListPasteFailures, OfACutAreReportedOnceAndNeverLoseTheCorrelation) {
    Action action = pastingACausale(cutKey);
    action.label = [deletions = 0](const Message& message) mutable {
        deletions += contains(message, "DELETE FROM CI15") ? 1 : 0;
        if (!writesCorrelations(message)) {
            return labelOfShowingAnew(message);
        }
        return std::string(deletions == 2 ? "TagliaIncollaCorrelazioneList:"
                                          : "CopiaIncollaCorrelazioneList:");
    };
    action.afterFailure = [](Screen& screen, const Message&) {
        EXPECT_TRUE(Editor(screen).stored("ACQ") == two || Editor(screen).stored("VEND") == two);
    };
    action.repeat = [](Screen& screen) {
        pasteAgain(screen);
        if (!Editor(screen).stored("ACQ").empty()) {
            Editor(screen).clickCausale("ACQ");
            consent(screen);
            EXPECT_TRUE(Editor(screen).header().PressFromView("Elimina"));
        }
    };
    action.expectDone = [](Screen& screen) {
        EXPECT_TRUE(Editor(screen).stored("ACQ").empty());
        EXPECT_EQ(Editor(screen).stored("VEND"), two);
        EXPECT_EQ(Editor(screen).listed(), Texts{"VEND"});
    };
    failEachStatement(action);
}

TEST(DuplicationFailures, AreReportedOnceAndTheDuplicationThenSucceeds) {
    Action action = onStored();
    action.prepare = [](Screen& screen) {
        Editor(screen).enter(a);
        Editor(screen).clickCausale("ACQ");
    };
    action.act = [](Screen& screen) {
        controls::PopupMenu* shown = nullptr;
        const Subscription menu = screen.host.form().PopupRequested.subscribe(
            [&](controls::PopupMenu& opened, const controls::PopupPlace&) { shown = &opened; });
        screen.host.windows->whileModal = [](controls::Form& dialog) {
            auto& field = dynamic_cast<controls::LookupField&>(*dialog.FindControl("TXT_CAUSALE"));
            field.TypeFromView("GIRO");
            field.LeaveFromView();
            dynamic_cast<controls::Button&>(*dialog.FindControl("CMD_CONFERMA")).ClickFromView();
            dialog.Unload();
        };
        Editor(screen).list().KeyDownFromView(controls::keyApps, controls::shiftNone);
        ASSERT_NE(shown, nullptr);
        shown->ClickFromView("ListDuplica");
    };
    action.label = [](const Message& message) {
        return writesCorrelations(message) ? "DuplicaCorrelazioneList:" : labelOfShowingAnew(message);
    };
    action.repeat = [act = action.act](Screen& screen) {
        reenter(screen);
        if (Editor(screen).stored("GIRO").empty()) {
            Editor(screen).clickCausale("ACQ");
            act(screen);
        }
    };
    action.expectDone = [](Screen& screen) {
        EXPECT_EQ(Editor(screen).stored("ACQ"), two);
        EXPECT_EQ(Editor(screen).stored("VEND"), one);
        EXPECT_EQ(Editor(screen).stored("GIRO"), two);
        EXPECT_EQ(Editor(screen).listed(), (Texts{"ACQ", "GIRO", "VEND"}));
    };
    failEachStatement(action);
}

} // namespace

} // namespace veldran::test
