// The form from its first activation to its unloading.
#include "platform/controls/container.h"
#include "platform/controls/data_grid.h"
#include "platform/controls/edit_controls.h"
#include "tests/screen/screen_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace veldran::test {

namespace {

const char* const warningTitle = "A T T E N Z I O N E ! ! ! ! !";
const char* const warningText = "Per poter utilizzare questo programma è necessario aver abilitato\r\n"
                                "la gestione della contabilità analitica per la ditta corrente\r\n"
                                "ed averne configurato i parametri di gestione.";

/// Opens the screen for a company that must not use it.
void expectRefusal(Company company) {
    Screen screen(smallChart(), std::move(company));
    screen.host.open();
    EXPECT_FALSE(screen.host.isOpen());
    ASSERT_EQ(screen.host.messages->boxes.size(), 1U);
    const ShownBox& box = screen.host.messages->boxes.front();
    EXPECT_EQ(box.title, warningTitle);
    EXPECT_EQ(box.text, warningText);
    EXPECT_EQ(box.style, services::styleCritical);
    EXPECT_TRUE(screen.host.messages->errors.empty());
    EXPECT_TRUE(screen.sent().empty()) << "no working table is created";
    EXPECT_EQ(screen.host.scripts.builtFor.size(), 0U);
    EXPECT_EQ(screen.host.layouts.applied, 0);
    EXPECT_EQ(screen.database.openSessions(), 0);
    screen.host.windows->DoEvents();
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    EXPECT_EQ(screen.host.messages->servicesAlive, 0) << "the form has gone";
}

TEST(FormLifecycle, WarnsAndClosesForACompanyWithoutAnalyticAccounting) {
    Company company;
    company.analyticFlag = "0";
    expectRefusal(company);
}

TEST(FormLifecycle, WarnsAndClosesForAnEmptyAnalyticFlag) {
    Company company;
    company.analyticFlag = "";
    expectRefusal(company);
}

TEST(FormLifecycle, WarnsAndClosesForACompanyWithoutAParameterObject) {
    Company company;
    company.hasParameters = false;
    expectRefusal(company);
}

TEST(FormLifecycle, WarnsAndClosesForACompanyWhoseParametersAreEmptyNullOrBlank) {
    for (const Value& empty : {Value(""), Value(), Value("   ")}) {
        Company company;
        company.parameters = empty;
        expectRefusal(company);
    }
}

TEST(FormLifecycle, OpensInActivationModeWithTheFirstFilterAndItsTree) {
    Screen screen(smallChart());
    screen.host.open();
    ASSERT_TRUE(screen.host.isOpen());
    EXPECT_TRUE(screen.host.messages->errors.empty());
    EXPECT_TRUE(screen.host.messages->boxes.empty());
    const ScreenUser user = screen.host.user();
    EXPECT_TRUE(user.control<controls::Layout>("LAY_ATTIVAZIONE").Visible());
    EXPECT_FALSE(user.control<controls::Layout>("LAY_CORRELAZIONI").Visible());
    EXPECT_EQ(user.filters().SelectedIndex(), 1);
    EXPECT_EQ(user.tree().RootCount(), 4);
    EXPECT_EQ(screen.host.connectionsMade, 1);
    EXPECT_EQ(screen.host.connection().State(), ado::adStateOpen);
}

TEST(FormLifecycle, StartsUpInItsFixedOrder) {
    Screen screen(smallChart());
    screen.host.open();
    EXPECT_EQ(screen.journalWithoutNavigator(), (Journal{"show",
                                                         "message service",
                                                         "bind message service",
                                                         "new connection",
                                                         "open",
                                                         "CG10_NUMLIVELLI",
                                                         "INTO\r\n    #CG24_TABPDC",
                                                         "ALTER TABLE",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "UPDATE #CG24_TABPDC",
                                                         "UPDATE #CG24_TABPDC",
                                                         "DROP TABLE",
                                                         "INTO\r\n    #CG24_TABPDC_SELECTED",
                                                         "ALTER TABLE",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "CREATE NONCLUSTERED INDEX",
                                                         "TOP 1 1 nature 0",
                                                         "TOP 1 1 nature 1",
                                                         "TOP 1 1 nature 2",
                                                         "TOP 1 1 nature 3",
                                                         "TOP 1 1 nature 3",
                                                         "build script",
                                                         "layout",
                                                         "script tsOpen"}));
    EXPECT_EQ(screen.host.messages->boundTo, std::vector<services::Object*>{&screen.host.component()});
}

TEST(FormLifecycle, HasEverythingInPlaceBeforeTheCustomersLayoutAndStartsResizingAfterItsScript) {
    Screen screen(smallChart());
    std::vector<Subscription> kept;
    bool laidOut = false;
    screen.host.windows->beforeShowing = [&](controls::Form& form) {
        kept.push_back(form.FindControl("QRV_RESIZEFORM")->Changed.subscribe([&screen] {
            screen.host.journal->push_back("resize");
        }));
    };
    screen.host.layouts.layout = [&](controls::Form& form) {
        laidOut = true;
        const ScreenUser user(form);
        EXPECT_TRUE(user.control<controls::Layout>("LAY_ATTIVAZIONE").Visible());
        EXPECT_EQ(user.filters().SelectedIndex(), 1);
        EXPECT_EQ(user.tree().RootCount(), 4);
        EXPECT_EQ(user.control<controls::LookupField>("TXT_CONTORICERCA").CodeStructure().codeLength, 10);
        EXPECT_EQ(user.control<controls::ComboBox>("CBO_SEGNO").Items().size(), 2U);
        for (const auto& column : user.control<controls::DataGrid>("GRD_DETTAGLIO").Columns()) {
            EXPECT_NE(column.format, nullptr) << column.caption;
        }
        EXPECT_NE(screen.host.navigator->Script(), nullptr);
        EXPECT_FALSE(user.control<controls::ResizeControl>("QRV_RESIZEFORM").Started());
    };
    screen.host.open();
    EXPECT_TRUE(laidOut);
    const Journal journal = screen.journalWithoutNavigator();
    ASSERT_GE(journal.size(), 4U);
    EXPECT_EQ(Journal(journal.end() - 4, journal.end()),
              (Journal{"build script", "layout", "script tsOpen", "resize"}));
}

TEST(FormLifecycle, TranslatesItsCaptionsOnceAndBeforeItReadsTheChart) {
    Screen screen(smallChart());
    std::vector<Subscription> kept;
    screen.host.windows->beforeShowing = [&](controls::Form& form) {
        kept.push_back(form.FindControl("BUT_RICERCA")->Changed.subscribe([&screen] {
            screen.host.journal->push_back("translated");
        }));
    };
    screen.host.thesaurus.captions = {{"BUT_RICERCA", "Search"}};
    screen.host.open();
    const Journal journal = screen.journalWithoutNavigator();
    const auto opened = std::find(journal.begin(), journal.end(), "open");
    ASSERT_NE(opened, journal.end());
    ASSERT_NE(opened + 1, journal.end());
    EXPECT_EQ(*(opened + 1), "translated");
    screen.host.form().FindControl("BUT_RICERCA")->SetCaption("Trova");
    screen.host.form().Activate();
    EXPECT_EQ(screen.host.form().FindControl("BUT_RICERCA")->Caption(), "Trova");
}

TEST(FormLifecycle, StartsTheResizeControlAndAlwaysLetsItResize) {
    Screen screen(smallChart());
    screen.host.open();
    const auto& resize = screen.host.user().control<controls::ResizeControl>("QRV_RESIZEFORM");
    EXPECT_TRUE(resize.Started());
    EXPECT_NE(resize.Component(), nullptr);
    EXPECT_TRUE(resize.MayResize());
}

TEST(FormLifecycle, HandsItsPlacementToTheHostsContainer) {
    Screen screen(smallChart());
    Cinterface& component = screen.host.component();
    component.LetTop(Value(300));
    component.LetLeft(Value(450));
    component.LetWindowState(controls::windowMaximized);
    screen.host.open();
    const auto& container = screen.host.user().control<controls::MdiContainer>("MDIActiveX1");
    EXPECT_EQ(container.GetPlacement().top, 300);
    EXPECT_EQ(container.GetPlacement().left, 450);
    EXPECT_EQ(container.GetPlacement().windowState, controls::windowMaximized);
    EXPECT_FALSE(container.GetPlacement().modal);
    EXPECT_EQ(container.GetValue(), "Attivazione conti");
}

TEST(FormLifecycle, TakesTheRootCaptionsFromTheThesaurus) {
    Screen screen(smallChart());
    screen.host.thesaurus.entries = {
        {15554, "Order"}, {15588, "Balance"}, {15566, "Income"}, {15556, "Hidden"}};
    screen.host.open();
    const ScreenUser user = screen.host.user();
    EXPECT_EQ(user.root(0).Text(), "Order");
    EXPECT_EQ(user.root(1).Text(), "Balance");
    EXPECT_EQ(user.root(2).Text(), "Income");
    EXPECT_EQ(user.root(3).Text(), "Hidden");
}

TEST(FormLifecycle, KeepsItsOwnRootCaptionsForEntriesThatTheThesaurusLacks) {
    Screen screen(smallChart());
    screen.host.thesaurus.entries = {{15566, "Income"}};
    screen.host.open();
    const ScreenUser user = screen.host.user();
    EXPECT_EQ(user.root(0).Text(), "Conti d'ordine");
    EXPECT_EQ(user.root(1).Text(), "Conti patrimoniali");
    EXPECT_EQ(user.root(2).Text(), "Income");
    EXPECT_EQ(user.root(3).Text(), "Conti non stampati");
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(FormLifecycle, TakesTranslatedCaptionsOfItsControls) {
    Screen screen(smallChart());
    screen.host.thesaurus.captions = {{"BUT_RICERCA", "Search"}};
    screen.host.open();
    EXPECT_EQ(screen.host.user().control<controls::Button>("BUT_RICERCA").Caption(), "Search");
}

TEST(FormLifecycle, TakesTranslatedCaptionsAndToolTipsOfItsTabs) {
    Screen screen(smallChart());
    screen.host.thesaurus.captions = {{"STR_FILTRI.1", "All"}, {"STR_FILTRI.1.ToolTipText", "All accounts"}};
    screen.host.open();
    const auto& tabs = screen.host.user().control<controls::TabStrip>("STR_FILTRI").Tabs();
    EXPECT_EQ(tabs[0].caption, "All");
    EXPECT_EQ(tabs[1].caption, "Att.");
    EXPECT_EQ(screen.host.user().control<controls::Label>("LBL_FILTRO_CORRENTE").Caption(), " All accounts");
}

TEST(FormLifecycle, WorksOnWithTheHostsServicesWhenTheHostTakesItsGlobalObjectBack) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.component().SetClsGlobal(nullptr);
    screen.host.user().filter(3);
    EXPECT_TRUE(screen.host.messages->errors.empty());
    EXPECT_EQ(screen.host.screen.GetMousePointer(), services::mouseDefault);
    EXPECT_TRUE(screen.host.form().Unload());
    EXPECT_EQ(screen.database.openSessions(), 0);
}

TEST(FormLifecycle, LoadsTheSignsAndGivesEachColumnOfTheGridItsFormat) {
    Screen screen(smallChart());
    screen.host.open();
    const auto& segni = screen.host.user().control<controls::ComboBox>("CBO_SEGNO").Items();
    ASSERT_EQ(segni.size(), 2U);
    EXPECT_EQ(segni[0].text, "Avere");
    EXPECT_EQ(segni[0].itemData, 2);
    EXPECT_EQ(segni[1].text, "Dare");
    EXPECT_EQ(segni[1].itemData, 1);
    const auto& columns = screen.host.user().control<controls::DataGrid>("GRD_DETTAGLIO").Columns();
    ASSERT_EQ(columns.size(), 6U);
    EXPECT_EQ(columns[0].format, columns[1].format) << "Avere and Dare share one format";
    std::set<const controls::DataFormat*> formats;
    for (const auto& column : columns) {
        EXPECT_NE(column.format, nullptr) << column.caption;
        formats.insert(column.format.get());
    }
    EXPECT_EQ(formats.size(), 5U);
}

TEST(FormLifecycle, DoesNotStartUpAgainWhenActivatedASecondTime) {
    Screen screen(smallChart());
    const auto frame = std::make_shared<FrameFake>(std::int16_t{2});
    screen.host.component().SetActiveFrame(frame);
    screen.host.open();
    EXPECT_EQ(screen.host.navigator->statuses, std::vector<std::int16_t>{2});
    const Journal before = *screen.host.journal;
    screen.forget();
    frame->status = 5;
    screen.host.form().Activate();
    EXPECT_TRUE(screen.sent().empty());
    EXPECT_EQ(screen.host.connectionsMade, 1);
    EXPECT_EQ(screen.host.scripts.builtFor.size(), 1U);
    EXPECT_EQ(screen.host.navigator->statuses, (std::vector<std::int16_t>{2, 5}))
        << "the navigator is refreshed by every activation";
    Journal expected = before;
    expected.push_back("navigator status");
    EXPECT_EQ(*screen.host.journal, expected);
}

TEST(FormLifecycle, LeavesTheNavigatorAloneWhileNoFrameIsActive) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.form().Activate();
    EXPECT_TRUE(screen.host.navigator->statuses.empty());
}

TEST(FormLifecycle, RefreshesTheNavigatorBeforeItAsksToClose) {
    Screen screen(smallChart());
    screen.host.component().SetActiveFrame(std::make_shared<FrameFake>(std::int16_t{1}));
    screen.host.open();
    screen.host.journal->clear();
    EXPECT_TRUE(screen.host.form().Unload());
    ASSERT_FALSE(screen.host.journal->empty());
    EXPECT_EQ(screen.host.journal->front(), "navigator status");
}

TEST(FormLifecycle, RaisesTheScriptsCloseEventAndGoesWhenItDoesNotObject) {
    Screen screen(smallChart());
    screen.host.open();
    const auto script = screen.host.scripts.script;
    EXPECT_EQ(script->events, std::vector<std::string>{"tsOpen"});
    EXPECT_TRUE(screen.host.form().Unload());
    EXPECT_EQ(script->events, (std::vector<std::string>{"tsOpen", "tsClose"}));
    EXPECT_FALSE(screen.host.isOpen());
}

TEST(FormLifecycle, StaysWholeWhenTheScriptRefusesTheClose) {
    Screen screen(smallChart());
    screen.host.scripts.vetoClose = true;
    screen.host.open();
    EXPECT_FALSE(screen.host.form().Unload());
    ASSERT_TRUE(screen.host.isOpen());
    EXPECT_EQ(screen.host.connection().State(), ado::adStateOpen);
    const ScreenUser user = screen.host.user();
    user.expand(user.root(1));
    EXPECT_EQ(ScreenUser::childKeys(user.root(1)), std::vector<std::string>{"*P0100000000*"});
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(FormLifecycle, BuildsTheScriptAtTheCloseWhenTheNavigatorHasNone) {
    Screen screen(smallChart());
    screen.host.scripts.broken = true;
    screen.host.open();
    EXPECT_EQ(screen.host.navigator->Script(), nullptr);
    const std::size_t built = screen.host.scripts.builtFor.size();
    EXPECT_TRUE(screen.host.form().Unload());
    EXPECT_EQ(screen.host.scripts.builtFor.size(), built + 1);
}

TEST(FormLifecycle, OpensWithoutAScriptWhenTheEngineCannotBuildOne) {
    Screen screen(smallChart());
    screen.host.scripts.broken = true;
    screen.host.open();
    ASSERT_TRUE(screen.host.isOpen());
    EXPECT_TRUE(screen.host.messages->errors.empty());
    EXPECT_EQ(screen.host.layouts.applied, 1);
}

TEST(FormLifecycle, ReleasesItsCommandsAndClosesItsConnectionWhenItUnloads) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.expand(user.root(1));
    user.expand(user.node("*P0100000000*"));
    user.expand(user.node("*P0101000000*"));
    user.expand(user.node("*P0101010000*"));
    user.checkByKeyboard(user.node("*P0101010001*"));
    EXPECT_EQ(screen.database.openSessions(), 1);
    EXPECT_GT(screen.database.livePreparedStatements(), 0);
    const std::weak_ptr<ado::Connection> connection = screen.host.component().GetConnection();
    EXPECT_TRUE(screen.host.form().Unload());
    EXPECT_EQ(screen.database.livePreparedStatements(), 0);
    EXPECT_EQ(screen.database.openSessions(), 0);
    if (const auto kept = connection.lock()) {
        EXPECT_EQ(kept->State(), ado::adStateClosed) << "the host may keep the reference, but it is closed";
    }
    screen.host.windows->DoEvents();
    EXPECT_EQ(screen.host.messages->servicesAlive, 0) << "the form has gone";
}

TEST(FormLifecycle, LeavesATableOfActivationsThatTheNextOpeningShows) {
    Screen screen(smallChart());
    screen.host.open();
    {
        const ScreenUser user = screen.host.user();
        user.search("0102030005");
        user.checkByMouse(user.node("*P0102030005*"));
    }
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    EXPECT_TRUE(user.node("*P0102030005*").Checked());
    EXPECT_FALSE(user.node("*P0102030006*").Checked());
}

TEST(FormLifecycle, ReportsAConnectionThatDoesNotOpenUnderTheNameOfTheActivation) {
    Screen screen(smallChart());
    screen.refuseToOpen("la base dati non risponde");
    screen.host.open();
    ASSERT_EQ(screen.host.messages->errors.size(), 1U);
    const ShownError& shown = screen.host.messages->errors.front();
    EXPECT_EQ(shown.routine, "Form_Activate");
    EXPECT_EQ(shown.style, 4370);
    EXPECT_EQ(shown.applicationTitle, "Contabilità di prova");
    EXPECT_EQ(shown.formCaption, "Attivazione conti");
    EXPECT_EQ(shown.error.Source.substr(0, 2), "\r\n");
    EXPECT_NE(shown.error.Description.find("la base dati non risponde"), std::string::npos);
    ASSERT_TRUE(screen.host.isOpen());
    EXPECT_TRUE(screen.host.form().Unload()) << "a form whose start-up failed closes without asking";
    EXPECT_TRUE(screen.host.scripts.builtFor.empty());
    EXPECT_EQ(screen.database.openSessions(), 0);
}

TEST(FormLifecycle, TriesToStartUpAgainAtTheNextActivationAfterAFailure) {
    Screen screen(smallChart());
    screen.refuseToOpen("occupata");
    screen.host.open();
    ASSERT_EQ(screen.host.messages->errors.size(), 1U);
    screen.allowToOpen();
    screen.host.form().Activate();
    EXPECT_EQ(screen.host.messages->errors.size(), 1U);
    EXPECT_EQ(screen.host.user().tree().RootCount(), 4);
    EXPECT_TRUE(screen.host.form().Unload());
    EXPECT_EQ(screen.database.openSessions(), 0);
}

TEST(FormLifecycle, AppliesTheCustomersLayoutOverItsOwnDesign) {
    Screen screen(smallChart());
    screen.host.layouts.layout = [](controls::Form& form) {
        form.FindControl("BUT_RICERCA")->SetCaption("Trova");
        form.FindControl("CMD_ATTIVAZIONI")->SetVisible(false);
    };
    screen.host.open();
    EXPECT_EQ(screen.host.user().control<controls::Button>("BUT_RICERCA").Caption(), "Trova");
    EXPECT_FALSE(screen.host.form().FindControl("CMD_ATTIVAZIONI")->Visible());
}

} // namespace

} // namespace veldran::test
