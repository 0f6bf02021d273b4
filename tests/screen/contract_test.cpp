// The component as its host sees it: created by the class factory, driven through the contract alone.
#include "platform/controls/data_grid.h"
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
    const auto navigator = std::make_shared<NavigatorFake>(screen.host.journal);
    const auto other = screen.host.newComponent();
    const auto global = other->GetClsGlobal();
    const auto connection = ado::Connection::create(screen.failing);
    component.SetClsGlobal(nullptr);
    EXPECT_EQ(component.GetClsGlobal(), nullptr);
    component.SetClsGlobal(global);
    component.SetActiveNavigator(navigator);
    component.SetActiveDll(other);
    component.SetConnection(connection);
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
    EXPECT_EQ(component.GetClsGlobal(), global);
    EXPECT_EQ(component.GetActiveNavigator(), navigator);
    EXPECT_EQ(component.GetActiveDll(), other);
    EXPECT_EQ(component.GetConnection(), connection);
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
    EXPECT_EQ(showing.parent, 77);
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

TEST(ComponentContract, LeavesAButtonToTheHostWhoseIndexIsNoWholeNumber) {
    Screen screen(smallChart());
    screen.host.open();
    for (const char* other : {"Stampa", "25x", "99999999999999999999"}) {
        Value cancel = false;
        EXPECT_NO_THROW(screen.host.navigator->ButtonPressed.raise(cancel, Value(other))) << other;
        EXPECT_FALSE(cancel.toBool()) << other;
    }
    EXPECT_TRUE(screen.host.messages->catalogue.empty());
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

/// A reference to `object` that writes `name` into the journal when its last copy goes.
template<class Target>
std::shared_ptr<Target> watched(const SharedJournal& journal, const std::string& name, Target* object) {
    return {object, [journal, name](Target*) { journal->push_back(name); }};
}

TEST(ComponentContract, ReleasesFormHostObjectsGlobalObjectNavigatorAndLastTheActiveComponent) {
    Screen screen(smallChart());
    HostObject frame;
    HostObject statusBar;
    HostObject menuEntry;
    const auto connection = ado::Connection::create(screen.failing);
    const auto released = std::make_shared<Journal>();
    auto component = screen.host.newComponent();
    component->ShowForm();
    controls::Form& form = screen.host.form();
    const Subscription kept =
        form.Activated.subscribe([token = watched(released, "form", &form)] { (void)token; });
    EXPECT_TRUE(form.Unload());
    screen.host.windows->DoEvents();
    ASSERT_TRUE(released->empty()) << "the component keeps its form";

    component->SetActiveFrame(watched<services::Object>(released, "frame", &frame));
    component->SetStatusBar(watched<services::Object>(released, "status bar", &statusBar));
    component->SetClsVoceMenu(watched<services::Object>(released, "menu entry", &menuEntry));
    component->SetConnection(watched(released, "connection", connection.get()));
    component->SetClsGlobal(watched(released, "global object", component->GetClsGlobal().get()));
    NavigatorFake navigator(screen.host.journal);
    component->SetActiveNavigator(
        std::shared_ptr<services::Navigator>(&navigator, [released](services::Navigator* gone) {
            released->push_back(gone->BeforeChangeDitta.hasHandlers() ? "navigator, still heard"
                                                                      : "navigator");
        }));
    ASSERT_TRUE(navigator.BeforeChangeDitta.hasHandlers());
    component->SetActiveDll(watched(released, "active component", component.get()));
    ASSERT_TRUE(released->empty());

    const std::weak_ptr<Cinterface> gone = component;
    component.reset();
    EXPECT_TRUE(gone.expired());
    EXPECT_EQ(*released, (Journal{"form", "frame", "status bar", "menu entry", "connection", "global object",
                                  "navigator", "active component"}));
}

TEST(ComponentContract, IsNotKeptAliveByTheReferenceToItself) {
    Screen screen(smallChart());
    auto component = screen.host.newComponent();
    const std::weak_ptr<Cinterface> gone = component;
    component.reset();
    EXPECT_TRUE(gone.expired());
}

/// A component that `showForm` must not keep alive after it has failed.
void expectNothingShown(Screen& screen, std::shared_ptr<Cinterface> component) {
    EXPECT_FALSE(screen.host.isOpen());
    EXPECT_EQ(screen.host.connectionsMade, 0);
    EXPECT_TRUE(screen.host.messages->errors.empty()) << "the host is told by the exception alone";
    const std::weak_ptr<Cinterface> gone = component;
    component.reset();
    EXPECT_TRUE(gone.expired()) << "the form that was never shown has let go of its component";
}

TEST(ComponentContract, RaisesToTheHostThatItHasNoGlobalObjectToShowAFormThrough) {
    Screen screen(smallChart());
    auto component = screen.host.newComponent();
    component->SetClsGlobal(nullptr);
    EXPECT_THROW(component->ShowForm(), std::logic_error);
    expectNothingShown(screen, std::move(component));
}

TEST(ComponentContract, RaisesAWindowStateThatNoFormHasToTheHost) {
    for (const std::int16_t state : {std::int16_t{-1}, std::int16_t{3}}) {
        Screen screen(smallChart());
        auto component = screen.host.newComponent();
        component->LetWindowState(state);
        EXPECT_THROW(component->ShowForm(), std::invalid_argument) << state;
        EXPECT_TRUE(screen.host.windows->showings().empty());
        expectNothingShown(screen, std::move(component));
    }
}

TEST(ComponentContract, RaisesTheErrorOfAWindowServiceToTheHost) {
    Screen screen(smallChart());
    screen.host.windows->beforeShowing = [](controls::Form&) { failWith("finestre esaurite"); };
    auto component = screen.host.newComponent();
    try {
        component->ShowForm();
        FAIL() << "the window service failed";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "finestre esaurite");
    }
    expectNothingShown(screen, std::move(component));
}

TEST(ComponentContract, ShowsAFormAfterAFailureOnceTheHostHasMendedIt) {
    Screen screen(smallChart());
    screen.host.component().LetWindowState(7);
    EXPECT_THROW(screen.host.component().ShowForm(), std::invalid_argument);
    EXPECT_TRUE(screen.host.component().CloseForm().toBool()) << "that form has released its component";
    screen.host.component().LetWindowState(controls::windowMinimized);
    screen.host.open();
    EXPECT_EQ(screen.host.form().WindowState(), controls::windowMinimized);
    EXPECT_EQ(screen.host.user().tree().RootCount(), 4);
}

TEST(ComponentContract, KeepsAFormThatWasLoadedBeforeTheWindowServiceFailedUntilItIsClosed) {
    Screen screen(smallChart());
    screen.host.windows->beforeShowing = [](controls::Form& form) {
        form.Load();
        failWith("finestre esaurite");
    };
    auto component = screen.host.newComponent();
    EXPECT_THROW(component->ShowForm(), std::runtime_error);
    EXPECT_TRUE(component->CloseForm().toBool());
    expectNothingShown(screen, std::move(component));
}

TEST(ComponentContract, RaisesACloseNotificationThatFailsToTheHostAndKeepsTheFormOpen) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.closingFailure = "azienda in chiusura";
    EXPECT_THROW(screen.host.component().CloseForm(), std::runtime_error);
    EXPECT_EQ(screen.host.navigator->closings, 0) << "the navigator is told after the global object";
    ASSERT_TRUE(screen.host.isOpen());
    screen.host.closingFailure.clear();
    screen.host.navigator->closingFailure = "barra assente";
    EXPECT_THROW(screen.host.component().CloseForm(), std::runtime_error);
    ASSERT_TRUE(screen.host.isOpen());
    EXPECT_EQ(screen.database.openSessions(), 1);
    screen.host.user().filter(2);
    EXPECT_TRUE(screen.host.messages->errors.empty()) << "the screen works on";
    screen.host.navigator->closingFailure.clear();
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    EXPECT_EQ(screen.database.openSessions(), 0);
}

TEST(ComponentContract, ClosesTrulyWithoutAFormAndTellsTheHostAllTheSame) {
    Screen screen(smallChart());
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    EXPECT_EQ(screen.host.globalClosings, 1);
    EXPECT_EQ(screen.host.navigator->closings, 1);
}

TEST(ComponentContract, ShowsAFormThatStandsStillWhenItHasNoActiveComponent) {
    Screen screen(smallChart());
    screen.host.component().SetActiveDll(nullptr);
    screen.host.open();
    ASSERT_TRUE(screen.host.isOpen());
    screen.host.form().Activate();
    EXPECT_EQ(screen.host.connectionsMade, 0) << "the host cannot be reached, so nothing starts up";
    EXPECT_EQ(screen.host.messages->servicesCreated, 0);
    const auto& container = screen.host.user().control<controls::MdiContainer>("MDIActiveX1");
    EXPECT_EQ(container.GetValue(), "") << "nothing was handed over that could place the form";
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    EXPECT_EQ(screen.host.globalClosings, 0);
    EXPECT_EQ(screen.host.navigator->closings, 0);
    EXPECT_FALSE(screen.host.isOpen());
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
