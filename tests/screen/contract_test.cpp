// The component as its host sees it: created by the class factory, driven through the contract alone.
#include "tests/screen/screen_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace veldran::test {

namespace {

class HostObject final : public services::Object {};

TEST(ComponentContract, StartsWithItselfAsActiveComponentAndEverythingElseEmpty) {
    Screen screen(smallChart());
    const auto component = ComponentLibrary::instance().factory().CreateInstance("clsci_veldran");
    ASSERT_NE(component, nullptr);
    EXPECT_EQ(component->GetActiveDll().get(), component.get());
    EXPECT_EQ(component->GetClsGlobal(), nullptr);
    EXPECT_EQ(component->GetActiveFrame(), nullptr);
    EXPECT_EQ(component->GetActiveNavigator(), nullptr);
    EXPECT_EQ(component->GetStatusBar(), nullptr);
    EXPECT_EQ(component->GetConnection(), nullptr);
    EXPECT_EQ(component->GetClsVoceMenu(), nullptr);
    EXPECT_EQ(component->GetCanInsert(), variantFalse);
    EXPECT_EQ(component->GetCanDelete(), variantFalse);
    EXPECT_EQ(component->GetCanUpdate(), variantFalse);
    EXPECT_EQ(component->GetCanQbe(), variantFalse);
    EXPECT_EQ(component->GetWindowState(), 0);
    EXPECT_EQ(component->GetWindowModal(), variantFalse);
    EXPECT_TRUE(component->GetProgramMode().isNull());
    EXPECT_TRUE(component->GetMenuModulo().isNull());
    EXPECT_TRUE(component->GetMenuPadre().isNull());
    EXPECT_TRUE(component->GetMenuProg().isNull());
    EXPECT_EQ(component->GetCaption().toText(), "");
    EXPECT_EQ(component->GethwndParent(), 0);
    EXPECT_EQ(component->GetTop().toInteger(), 0);
    EXPECT_EQ(component->GetLeft().toInteger(), 0);
    EXPECT_EQ(component->GetIsActive(), variantFalse);
    EXPECT_EQ(component->GetIsCalled(), variantFalse);
    EXPECT_TRUE(component->GetFiltro().isNull());
}

TEST(ComponentContract, KnowsNoOtherClassName) {
    EXPECT_EQ(ComponentLibrary::instance().factory().CreateInstance("CLSCI_ALTRO"), nullptr);
    EXPECT_EQ(ComponentLibrary::instance().factory().CreateInstance(""), nullptr);
}

TEST(ComponentContract, GivesBackEveryValueUnchanged) {
    Screen screen(smallChart());
    Cinterface& component = screen.host.component();
    const auto frame = std::make_shared<HostObject>();
    const auto statusBar = std::make_shared<HostObject>();
    const auto menuEntry = std::make_shared<HostObject>();
    component.SetActiveFrame(frame);
    component.SetStatusBar(statusBar);
    component.SetClsVoceMenu(menuEntry);
    component.LetCanInsert(7);
    component.LetCanDelete(-1);
    component.LetCanUpdate(0);
    component.LetCanQbe(-1);
    component.LetWindowState(2);
    component.LetWindowModal(1);
    component.LetProgramMode(Value("Q"));
    component.LetMenuModulo(Value("CI"));
    component.LetMenuPadre(Value(12));
    component.LetMenuProg(Value(Decimal{35, 1}));
    component.LetCaption(Value("Attivazione "));
    component.LethwndParent(0x1234);
    component.LetIsActive(-1);
    component.LetIsCalled(-1);
    component.LetFiltro(Value("CONTO = '01'"));
    EXPECT_EQ(component.GetActiveFrame(), frame);
    EXPECT_EQ(component.GetStatusBar(), statusBar);
    EXPECT_EQ(component.GetClsVoceMenu(), menuEntry);
    EXPECT_EQ(component.GetCanInsert(), 7);
    EXPECT_EQ(component.GetCanDelete(), -1);
    EXPECT_EQ(component.GetCanUpdate(), 0);
    EXPECT_EQ(component.GetCanQbe(), -1);
    EXPECT_EQ(component.GetWindowState(), 2);
    EXPECT_EQ(component.GetWindowModal(), 1);
    EXPECT_EQ(component.GetProgramMode(), Value("Q"));
    EXPECT_EQ(component.GetMenuModulo(), Value("CI"));
    EXPECT_EQ(component.GetMenuPadre(), Value(12));
    EXPECT_EQ(component.GetMenuProg(), Value(Decimal{35, 1}));
    EXPECT_EQ(component.GetCaption(), Value("Attivazione "));
    EXPECT_EQ(component.GethwndParent(), 0x1234);
    EXPECT_EQ(component.GetIsActive(), -1);
    EXPECT_EQ(component.GetIsCalled(), -1);
    EXPECT_EQ(component.GetFiltro(), Value("CONTO = '01'"));
}

TEST(ComponentContract, StoresTopAndLeftGivenAsTextAsWholeNumbers) {
    Screen screen(smallChart());
    Cinterface& component = screen.host.component();
    component.LetTop(Value("1440"));
    component.LetLeft(Value(" -720 "));
    EXPECT_EQ(component.GetTop(), Value(1440));
    EXPECT_EQ(component.GetLeft(), Value(-720));
    component.LetTop(Value(Decimal{25, 1}));
    EXPECT_EQ(component.GetTop(), Value(2));
}

TEST(ComponentContract, FailsTheAssignmentOfATopOrLeftThatIsNoNumberAndKeepsTheOldOne) {
    Screen screen(smallChart());
    Cinterface& component = screen.host.component();
    component.LetTop(Value(100));
    component.LetLeft(Value(200));
    EXPECT_THROW(component.LetTop(Value("in alto")), std::invalid_argument);
    EXPECT_THROW(component.LetLeft(Value()), std::invalid_argument);
    EXPECT_THROW(component.LetLeft(Value("4294967296")), std::overflow_error);
    EXPECT_EQ(component.GetTop(), Value(100));
    EXPECT_EQ(component.GetLeft(), Value(200));
}

TEST(ComponentContract, ShowsTheFormWithTheStateCaptionAndParentItWasGiven) {
    Screen screen(smallChart());
    Cinterface& component = screen.host.component();
    component.LetWindowState(controls::windowMaximized);
    component.LetCaption(Value("Conti coge per COIN"));
    component.LethwndParent(77);
    EXPECT_TRUE(component.ShowForm().isNull());
    ASSERT_EQ(screen.host.windows->showings().size(), 1U);
    const auto& showing = screen.host.windows->showings().front();
    EXPECT_FALSE(showing.modal);
    EXPECT_EQ(showing.state, controls::windowMaximized);
    EXPECT_EQ(showing.caption, "Conti coge per COIN");
    EXPECT_EQ(screen.host.form().Caption(), "Conti coge per COIN");
    EXPECT_EQ(screen.host.form().Name(), "FRMCI_VELDRAN");
}

TEST(ComponentContract, ShowsTheFormModalWhenToldSoAndComesBackWhenItHasBeenClosed) {
    Screen screen(smallChart());
    screen.host.component().LetWindowModal(variantTrue);
    bool stood = false;
    screen.host.windows->whileModal = [&](controls::Form& form) {
        stood = form.IsLoaded();
        EXPECT_TRUE(form.Unload());
    };
    screen.host.open();
    EXPECT_TRUE(stood);
    EXPECT_TRUE(screen.host.windows->showings().front().modal);
    EXPECT_FALSE(screen.host.isOpen());
}

TEST(ComponentContract, ShowFormCalledTwiceCreatesASecondFormAndForgetsTheFirst) {
    Screen screen(smallChart());
    screen.host.open();
    controls::Form* first = &screen.host.form();
    screen.host.open();
    controls::Form* second = &screen.host.form();
    ASSERT_NE(first, second);
    EXPECT_EQ(screen.host.windows->forms().size(), 2U);
    EXPECT_EQ(screen.host.component().CloseForm().toBool(), true);
    ASSERT_EQ(screen.host.windows->forms().size(), 1U) << "only the second form belongs to the component";
    EXPECT_EQ(&screen.host.form(), first);
    EXPECT_TRUE(first->Unload());
    EXPECT_EQ(screen.database.openSessions(), 0) << "each form closes the connection it opened";
}

TEST(ComponentContract, CloseFormTellsGlobalObjectThenNavigatorThenUnloads) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.journal->clear();
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    const Journal& journal = *screen.host.journal;
    const auto at = [&](const std::string& what) {
        return std::find(journal.begin(), journal.end(), what) - journal.begin();
    };
    const auto missing = static_cast<std::ptrdiff_t>(journal.size());
    EXPECT_LT(at("global object told"), at("navigator told"));
    EXPECT_LT(at("navigator told"), at("form unloaded"));
    EXPECT_LT(at("form unloaded"), missing);
    EXPECT_EQ(screen.host.globalClosings, 1);
    EXPECT_EQ(screen.host.navigator->closings, 1);
}

TEST(ComponentContract, CloseFormReturnsFalseWhileAScriptKeepsTheFormOpen) {
    Screen screen(smallChart());
    screen.host.scripts.vetoClose = true;
    screen.host.open();
    EXPECT_FALSE(screen.host.component().CloseForm().toBool());
    ASSERT_TRUE(screen.host.isOpen());
    EXPECT_EQ(screen.database.openSessions(), 1);
    screen.host.scripts.script->vetoClose = false;
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    EXPECT_FALSE(screen.host.isOpen());
    EXPECT_EQ(screen.database.openSessions(), 0);
}

TEST(ComponentContract, RefusesAChangeOfCompanyWithTheHostsMessage) {
    Screen screen(smallChart());
    Value cancel = false;
    screen.host.navigator->BeforeChangeDitta.raise(cancel);
    EXPECT_TRUE(cancel.toBool()) << "even before the form exists";
    EXPECT_EQ(screen.host.messages->catalogue, std::vector<std::int32_t>{30179});
}

TEST(ComponentContract, RefusesAnExportOnlyWhileTheFormExists) {
    Screen screen(smallChart());
    Value cancel;
    screen.host.navigator->BeforeExportToOffice.raise(cancel, Value("Foglio"));
    EXPECT_FALSE(nullSafeNumber(cancel) != 0);
    EXPECT_TRUE(screen.host.messages->catalogue.empty());
    screen.host.open();
    screen.host.navigator->BeforeExportToOffice.raise(cancel, Value());
    EXPECT_TRUE(cancel.toBool());
    EXPECT_EQ(screen.host.messages->catalogue, std::vector<std::int32_t>{69054});
}

TEST(ComponentContract, RefusesOnlyTheButtonOfIndex25AndOnlyWhenNobodyElseHasRefusedIt) {
    Screen screen(smallChart());
    Value cancel;
    const auto press = [&](const Value& index) { screen.host.navigator->ButtonPressed.raise(cancel, index); };
    press(Value(25));
    EXPECT_TRUE(screen.host.messages->catalogue.empty()) << "no form yet";
    screen.host.open();
    for (const Value& other : {Value(24), Value(26), Value(0), Value(), Value("  "), Value("1")}) {
        cancel = Value(false);
        press(other);
        EXPECT_FALSE(cancel.toBool());
    }
    EXPECT_TRUE(screen.host.messages->catalogue.empty());
    cancel = Value(true);
    press(Value(25));
    EXPECT_TRUE(screen.host.messages->catalogue.empty()) << "already refused";
    cancel = Value("   ");
    press(Value("25"));
    EXPECT_TRUE(cancel.toBool());
    EXPECT_EQ(screen.host.messages->catalogue, std::vector<std::int32_t>{45614});
}

TEST(ComponentContract, HandsTheRunningFormToTheHostsEngines) {
    Screen screen(smallChart());
    services::ObjectModel model;
    screen.host.navigator->InitializeLayoutObjectModel.raise(model);
    screen.host.navigator->InitializeScriptObjectModel.raise(model);
    EXPECT_EQ(model.form, nullptr) << "no form yet";
    screen.host.open();
    screen.host.navigator->InitializeLayoutObjectModel.raise(model);
    EXPECT_EQ(model.form.get(), &screen.host.form());
    services::ObjectModel other;
    screen.host.navigator->InitializeScriptObjectModel.raise(other);
    EXPECT_EQ(other.form.get(), &screen.host.form());
}

TEST(ComponentContract, HearsNothingOfANavigatorThatWasTakenAway) {
    Screen screen(smallChart());
    screen.host.component().SetActiveNavigator(nullptr);
    Value cancel = false;
    screen.host.navigator->BeforeChangeDitta.raise(cancel);
    EXPECT_FALSE(cancel.toBool());
    EXPECT_FALSE(screen.host.navigator->BeforeChangeDitta.hasHandlers());
    const auto other = std::make_shared<NavigatorFake>(screen.host.journal);
    screen.host.component().SetActiveNavigator(other);
    other->BeforeChangeDitta.raise(cancel);
    EXPECT_TRUE(cancel.toBool());
}

TEST(ComponentContract, ReleasesHostObjectsThenGlobalObjectThenNavigator) {
    Screen screen(smallChart());
    auto released = std::make_shared<std::vector<std::string>>();
    struct Witness final : services::Object {
        Witness(std::shared_ptr<std::vector<std::string>> theLog, std::string theName)
            : log(std::move(theLog)), name(std::move(theName)) {}
        ~Witness() override { log->push_back(name); }
        std::shared_ptr<std::vector<std::string>> log; // shared with the test
        std::string name;
    };
    auto component = screen.host.newComponent();
    component->SetActiveFrame(std::make_shared<Witness>(released, "frame"));
    component->SetStatusBar(std::make_shared<Witness>(released, "status bar"));
    component->SetClsVoceMenu(std::make_shared<Witness>(released, "menu entry"));
    const std::weak_ptr<Cinterface> gone = component;
    const bool listened = screen.host.navigator->BeforeChangeDitta.hasHandlers();
    component.reset();
    EXPECT_TRUE(listened);
    EXPECT_TRUE(gone.expired()) << "the reference to itself does not keep the component alive";
    EXPECT_EQ(released->size(), 3U);
    EXPECT_EQ(released->front(), "frame");
}

TEST(ComponentContract, LivesOnWhileItsFormIsShownAlthoughTheHostLetGoOfIt) {
    Screen screen(smallChart());
    screen.host.open();
    const std::weak_ptr<Cinterface> component = screen.host.componentRef();
    screen.host.releaseComponent();
    EXPECT_FALSE(component.expired()) << "the form reaches the host through it";
    EXPECT_TRUE(screen.host.form().Unload());
    screen.host.windows->DoEvents();
    EXPECT_TRUE(component.expired());
}

} // namespace

} // namespace veldran::test
