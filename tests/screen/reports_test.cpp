// What goes wrong beside the database: in the host's objects, in a view, in the clipboard. Each failure is
// reported once, under the routine it happened in, and the screen goes on.
#include "platform/controls/data_grid.h"
#include "tests/screen/broken_tree_view.h"
#include "tests/screen/screen_fixture.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

namespace veldran::test {

namespace {

using Labels = std::vector<std::string>;

Labels reported(const Screen& screen) {
    return screen.host.messages->routines();
}

TEST(Reports, OfAnActiveFrameWithoutAStatusComeWithEveryRefreshOfTheNavigator) {
    class FrameWithoutStatus final : public services::Object {};
    Screen screen(smallChart());
    screen.host.open();
    screen.host.component().SetActiveFrame(std::make_shared<FrameWithoutStatus>());
    screen.host.form().Activate();
    EXPECT_EQ(reported(screen), Labels{"AggiornamentoNavigatore:"});
    EXPECT_TRUE(screen.host.navigator->statuses.empty());
    EXPECT_TRUE(screen.host.form().Unload()) << "the close goes on after the refresh has failed";
    EXPECT_EQ(reported(screen), (Labels{"AggiornamentoNavigatore:", "AggiornamentoNavigatore:"}));
    EXPECT_EQ(screen.host.scripts.script->events, (Labels{"tsOpen", "tsClose"}));
}

TEST(Reports, OfAScriptThatCannotBeBuiltLeaveTheScreenWithoutOne) {
    Screen screen(smallChart());
    screen.host.scripts.failure = "riga 7";
    screen.host.open();
    EXPECT_EQ(reported(screen), Labels{"BuildScript:"});
    EXPECT_EQ(screen.host.messages->errors[0].error.Description, "riga 7");
    EXPECT_EQ(screen.host.navigator->Script(), nullptr);
    EXPECT_EQ(screen.host.layouts.applied, 1) << "the start-up goes on";
    EXPECT_TRUE(screen.host.form().Unload()) << "the close tries to build it again";
    EXPECT_EQ(reported(screen), (Labels{"BuildScript:", "BuildScript:"}));
    EXPECT_EQ(screen.database.openSessions(), 0);
}

TEST(Reports, OfAScriptThatFailsAtTheOpeningLeaveTheScreenOpen) {
    Screen screen(smallChart());
    screen.host.layouts.layout = [&](controls::Form&) {
        screen.host.scripts.script->failure = "tsOpen guasto";
    };
    screen.host.open();
    EXPECT_EQ(reported(screen), Labels{"ExecuteFormEvent:"});
    EXPECT_EQ(screen.host.messages->errors[0].error.Description, "tsOpen guasto");
    EXPECT_TRUE(screen.host.user().control<controls::ResizeControl>("QRV_RESIZEFORM").Started());
    screen.host.user().filter(2);
    EXPECT_EQ(screen.host.messages->errors.size(), 1U);
}

TEST(Reports, OfAScriptThatFailsAtTheCloseDoNotKeepTheFormOpen) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.scripts.script->failure = "tsClose guasto";
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    EXPECT_EQ(reported(screen), Labels{"ExecuteFormEvent:"});
    EXPECT_EQ(screen.host.messages->errors[0].error.Description, "tsClose guasto");
    EXPECT_FALSE(screen.host.isOpen());
    EXPECT_EQ(screen.database.openSessions(), 0);
}

TEST(Reports, OfAThesaurusThatFailsLeaveTheCaptionsOfTheDesign) {
    Screen screen(smallChart());
    screen.host.thesaurus.failure = "dizionario assente";
    screen.host.open();
    EXPECT_EQ(reported(screen), Labels{"GetTraduzioneThesaurus:"});
    const ScreenUser user = screen.host.user();
    EXPECT_EQ(user.root(0).Text(), "Conti d'ordine");
    EXPECT_EQ(user.control<controls::Button>("BUT_RICERCA").Caption(), "&Ricerca");
}

/// A step of the user during which a property that a view shows cannot be shown.
struct BrokenView {
    const char* label;   ///< of the one report
    const char* control; ///< whose view is broken
    std::function<void(Screen&)> before;
    std::function<void(Screen&)> act;
};

void PrintTo(const BrokenView& broken, std::ostream* out) {
    *out << broken.control << " in " << broken.label;
}

class ViewReports : public testing::TestWithParam<BrokenView> {};

TEST_P(ViewReports, ComeOnceUnderTheRoutineThatChangedTheControl) {
    const BrokenView& broken = GetParam();
    Screen screen(smallChart());
    screen.host.lookups.descriptions = {{"0102030005", "Cassa contanti"}};
    screen.host.open();
    broken.before(screen);
    int failures = 0;
    const Subscription view = screen.host.form().FindControl(broken.control)->Changed.subscribe([&failures] {
        if (++failures == 1) {
            throw std::runtime_error("vista guasta");
        }
    });
    broken.act(screen);
    EXPECT_EQ(reported(screen), Labels{broken.label});
    EXPECT_EQ(screen.host.messages->errors.at(0).error.Description, "vista guasta");
    EXPECT_EQ(screen.host.screen.GetMousePointer(), services::mouseDefault);
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    EXPECT_EQ(screen.database.openSessions(), 0);
}

void nothing(Screen&) {}

void searchCash(Screen& screen) {
    screen.host.user().search("0102030005");
}

void typeCash(Screen& screen) {
    auto& field = screen.host.user().control<controls::LookupField>("TXT_CONTORICERCA");
    field.TypeFromView("0102030005");
    field.LeaveFromView();
}

void loadAgain(Screen& screen) {
    screen.host.component().LetTop(Value(100));
    screen.host.user().control<controls::MdiContainer>("MDIActiveX1").FormLoad.raise();
}

void close(Screen& screen) {
    screen.host.form().Unload();
}

INSTANTIATE_TEST_SUITE_P(
    OfControls, ViewReports,
    testing::Values(BrokenView{"MDIActiveX1_FormLoad", "MDIActiveX1", nothing, loadAgain},
                    BrokenView{"STR_FILTRI_Click", "LBL_FILTRO_CORRENTE", nothing,
                               [](Screen& screen) { screen.host.user().filter(2); }},
                    BrokenView{"LoadTree:", "BUT_CORRELAZIONI", searchCash,
                               [](Screen& screen) { screen.host.user().filter(2); }},
                    BrokenView{"SelezioneNodo:", "BUT_EDITCORRELAZIONI", searchCash,
                               [](Screen& screen) { screen.host.user().click(screen.host.user().root(1)); }},
                    BrokenView{"TXT_CONTORICERCA_Changed", "LBB_DESCRCONTORICERCA", nothing, typeCash},
                    BrokenView{"RilascioControllo:", "TXT_CONTO", nothing, close},
                    BrokenView{"Form_Unload", "GRD_DETTAGLIO", nothing, close}),
    [](const auto& testCase) {
        std::string name = testCase.param.label;
        std::erase(name, ':');
        return name;
    });

TEST(Reports, OfASignListThatCannotBeFilledLeaveTheRestOfTheStartUp) {
    Screen screen(smallChart());
    std::vector<Subscription> kept;
    screen.host.windows->beforeShowing = [&](controls::Form& form) {
        kept.push_back(form.FindControl("CBO_SEGNO")->Changed.subscribe([] { failWith("elenco guasto"); }));
    };
    screen.host.open();
    EXPECT_EQ(reported(screen), Labels{"CaricamentoCombo:"});
    EXPECT_EQ(screen.host.scripts.script->events, Labels{"tsOpen"});
}

TEST(Reports, OfAFocusThatCannotMoveComeAfterTheSearch) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    auto& field = user.control<controls::LookupField>("TXT_CONTORICERCA");
    field.TypeFromView("0102030005");
    const Subscription view =
        screen.host.form().FocusMoved.subscribe([](controls::Control*) { failWith("fuoco perso"); });
    field.KeyDownFromView(controls::keyReturn, controls::shiftNone);
    EXPECT_EQ(reported(screen), Labels{"TXT_CONTORICERCA_KeyDown"});
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*P0102030005*");
}

TEST(Reports, OfASearchedTextThatCannotBeACodeLeaveTheTreeAsItIs) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    auto& field = user.control<controls::LookupField>("TXT_CONTORICERCA");
    const services::CodeStructure structure = field.CodeStructure();
    field.SetCodeStructure({-1, structure.groups, structure.separator, true});
    screen.forget();
    user.search("01/02");
    EXPECT_EQ(reported(screen), Labels{"BUT_RICERCA_ButtonClick"});
    EXPECT_TRUE(screen.sent().empty());
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "CONTIORDINE");
    field.SetCodeStructure(structure);
    user.search("0102030005");
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*P0102030005*");
    EXPECT_EQ(screen.host.messages->errors.size(), 1U) << "the screen works on";
}

TEST(Reports, OfANavigatorThatFailsAtTheCloseDoNotKeepTheFormOpen) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.navigator->nextScriptFailure = "navigatore guasto";
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    EXPECT_EQ(reported(screen), Labels{"Form_QueryUnload"});
    EXPECT_EQ(screen.host.messages->errors[0].error.Description, "navigatore guasto");
    EXPECT_FALSE(screen.host.isOpen());
    EXPECT_EQ(screen.database.openSessions(), 0);
    screen.host.open();
    EXPECT_EQ(screen.host.user().tree().RootCount(), 4) << "the next opening works";
    EXPECT_EQ(screen.host.messages->errors.size(), 1U);
}

TEST(Reports, OfAHitTestThatFailsLeaveNoNodePending) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.tree().SetHitTester([](int, int) -> controls::TreeHit { throw std::runtime_error("punto ignoto"); });
    const controls::MouseEvent left{controls::buttonLeft, controls::shiftNone, 150, 120};
    user.tree().MouseDownFromView(left);
    user.root(1).SetChecked(true);
    screen.forget();
    user.tree().MouseUpFromView(left);
    EXPECT_EQ(reported(screen), Labels{"TRW_CONTI_MouseDown"});
    EXPECT_TRUE(screen.sent().empty());
}

struct BrokenTree {
    const char* label;
    BrokenTreeView::Change change;
    const char* key; ///< of the node whose change fails; "" for any
    std::function<void(const ScreenUser&)> act;
};

void PrintTo(const BrokenTree& broken, std::ostream* out) {
    *out << broken.label;
}

class TreeReports : public testing::TestWithParam<BrokenTree> {};

TEST_P(TreeReports, ComeOnceUnderTheRoutineThatChangedTheTree) {
    const BrokenTree& broken = GetParam();
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    {
        const BrokenTreeView view(user.tree(), broken.change, broken.key);
        broken.act(user);
    }
    EXPECT_EQ(reported(screen), Labels{broken.label});
    EXPECT_EQ(screen.host.screen.GetMousePointer(), services::mouseDefault);
    user.filter(1);
    user.search("0301010001");
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*E0301010001*");
    EXPECT_EQ(screen.host.messages->errors.size(), 1U) << "the screen works on";
}

INSTANTIATE_TEST_SUITE_P(
    OfTheTree, TreeReports,
    testing::Values(
        BrokenTree{"RemoveDummyChild:", BrokenTreeView::Removed, "",
                   [](const ScreenUser& user) { user.expand(user.node("*P0101000000*")); }},
        BrokenTree{"EspansioneNodo:", BrokenTreeView::Node, "",
                   [](const ScreenUser& user) { user.expand(user.node("*P0101000000*")); }},
        BrokenTree{"ChiusuraNodo:", BrokenTreeView::Node, "",
                   [](const ScreenUser& user) { user.collapse(user.node("*P0102030000*")); }},
        BrokenTree{"SelezioneConto:", BrokenTreeView::Selection, "",
                   [](const ScreenUser& user) { user.search("0102030006"); }},
        BrokenTree{"AttivazioneNodo", BrokenTreeView::Node, "*P0102030005*",
                   [](const ScreenUser& user) { user.checkByKeyboard(user.node("*P0102030000*")); }},
        BrokenTree{"BubbleCheck:", BrokenTreeView::Node, "*P0102030000*",
                   [](const ScreenUser& user) {
                       user.checkByKeyboard(user.node("*P0102030005*"));
                       user.checkByKeyboard(user.node("*P0102030006*"));
                   }},
        BrokenTree{"TRW_CONTI_Expand", BrokenTreeView::Locked, "",
                   [](const ScreenUser& user) { user.expand(user.node("*P0101000000*")); }},
        BrokenTree{"TRW_CONTI_Expand", BrokenTreeView::Appended, "*P0101000000*",
                   [](const ScreenUser& user) { user.expand(user.node("*P0101000000*")); }},
        BrokenTree{"TRW_CONTI_Collapse", BrokenTreeView::Locked, "",
                   [](const ScreenUser& user) { user.collapse(user.node("*P0102030000*")); }},
        BrokenTree{"TRW_CONTI_NodeCheck", BrokenTreeView::Locked, "",
                   [](const ScreenUser& user) { user.checkByKeyboard(user.node("*P0102030005*")); }}),
    [](const auto& testCase) {
        std::string name = testCase.param.label;
        std::erase(name, ':');
        return testCase.param.change == BrokenTreeView::Appended ? name + "WhichShowsWhatItLoaded" : name;
    });

} // namespace

} // namespace veldran::test
