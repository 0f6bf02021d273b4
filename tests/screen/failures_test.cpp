// Every statement of every routine made to fail in turn: one report under the routine's label, the stated
// after-effects, and a screen that works on.
#include "platform/controls/container.h"
#include "tests/screen/expected_statements.h"
#include "tests/screen/failing_actions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace veldran::test {

namespace {

bool contains(const std::string& text, const std::string& what) {
    return text.find(what) != std::string::npos;
}

std::vector<std::vector<std::string>> activated(Screen& screen) {
    return screen.database.rows("SELECT CI35_CONTO_CG24 FROM CI35_CONTIATTIVI ORDER BY CI35_CONTO_CG24");
}

std::vector<std::vector<std::string>> marked(Screen& screen, const std::string& table) {
    return screen.query("SELECT CONTO FROM " + table +
                        " WHERE ATTIVO = 1 AND ISANALITICO = 1 ORDER BY INDICE");
}

std::vector<std::vector<std::string>> rowsOf(std::initializer_list<const char*> codes) {
    std::vector<std::vector<std::string>> rows;
    for (const char* code : codes) {
        rows.push_back({code});
    }
    return rows;
}

bool readsTheStateOfARoot(const std::string& text) {
    for (int nature = 0; nature < 4; ++nature) {
        if (text == expected::anyInactive(nature) || text == expected::anyAnalytic(nature)) {
            return true;
        }
    }
    return false;
}

std::string labelOfFilterChange(const Message& message) {
    return readsTheStateOfARoot(message.text) ? "PrimoLivelloChecked:" : "CaricamentoConti:";
}

/// Rows of a working table of the form; none when there is no such table.
std::optional<int> rowCount(Screen& screen, const std::string& table) {
    try {
        return std::stoi(screen.query("SELECT COUNT(*) FROM " + table).at(0).at(0));
    } catch (const ado::AdoError& error) {
        EXPECT_TRUE(isNumbered(error.first(), 208)) << error.what();
        return std::nullopt;
    }
}

/// What a change from "Tutti" to "Non att." has left of the selection when that message fails: nine analytic
/// accounts of which one is active, then seven, six and four grouping accounts level by level.
std::optional<int> rowsSelectedUntil(Screen& screen, const Message& failed) {
    if (failed.text == expected::dropSelection()) {
        return 26; // the whole chart, as before
    }
    if (failed.text == expected::select(3)) {
        return std::nullopt;
    }
    if (failed.text == expected::identityInsertOn()) {
        return 8;
    }
    if (failed.text == expected::completeSelection(1)) {
        const int rows[] = {8, 15, 21, 25};
        return rows[screen.log().containing(failed.text).size() - 1];
    }
    return 25;
}

TEST(FilterFailures, AreReportedOnceAndTheNextFilterChangeRebuildsEverything) {
    Action action;
    action.chart.activated("0101010001");
    action.prepare = [](Screen& screen) { screen.host.user().expand(screen.host.user().root(1)); };
    action.act = [](Screen& screen) { screen.host.user().filter(3); };
    action.label = labelOfFilterChange;
    action.afterFailure = [](Screen& screen, const Message& failed) {
        const ScreenUser user = screen.host.user();
        EXPECT_EQ(rowCount(screen, "#CG24_TABPDC"), 26);
        EXPECT_EQ(rowCount(screen, "#CG24_TABPDC_SELECTED"), rowsSelectedUntil(screen, failed));
        EXPECT_EQ(user.control<controls::Label>("LBL_FILTRO_CORRENTE").Caption(), " Conti non attivati");
        const bool rebuilt = readsTheStateOfARoot(failed.text);
        EXPECT_EQ(user.find("*P0100000000*") == nullptr, rebuilt) << "the old tree stands until the new one";
        EXPECT_EQ(user.tree().RootCount(), 4);
        EXPECT_EQ(ScreenUser::hasPlaceholder(user.root(1)), rebuilt);
    };
    action.repeat = action.act;
    action.expectDone = [](Screen& screen) {
        EXPECT_EQ(screen.query("SELECT COUNT(*) FROM #CG24_TABPDC_SELECTED"),
                  (std::vector<std::vector<std::string>>{{"25"}}));
        const ScreenUser user = screen.host.user();
        user.expand(user.root(2));
        EXPECT_EQ(ScreenUser::childKeys(user.root(2)),
                  (std::vector<std::string>{"*E0300000000*", "*E0400000000*"}));
        EXPECT_FALSE(user.root(2).Checked());
        EXPECT_EQ(user.tree().RootCount(), 4);
    };
    failEachStatement(action);
}

TEST(FilterFailures, LeaveTheRootUncheckedWhoseStateCouldNotBeRead) {
    Screen screen(smallChart().activated("0901010001"));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    EXPECT_TRUE(user.root(0).Checked());
    screen.failures().failContaining("CG24_INDTIPOCONTO = 0");
    user.filter(1);
    EXPECT_FALSE(user.root(0).Checked());
    EXPECT_EQ(user.tree().RootCount(), 4);
    ASSERT_EQ(screen.host.messages->errors.size(), 1U);
    EXPECT_EQ(screen.host.messages->errors[0].routine, "PrimoLivelloChecked:");
}

TEST(ExpansionFailures, OfARootAreReportedOnceAndTheRootOpensWhenExpandedAgain) {
    Action action;
    action.act = [](Screen& screen) { screen.host.user().expand(screen.host.user().root(1)); };
    action.label = [](const Message&) { return "CaricaChildren:"; };
    action.afterFailure = [](Screen& screen, const Message&) {
        EXPECT_EQ(ScreenUser::childKeys(screen.host.user().root(1)),
                  std::vector<std::string>{"CONTIPATRIMONIALIDummyChild"});
        EXPECT_FALSE(screen.host.user().root(1).Expanded());
    };
    action.repeat = action.act;
    action.expectDone = [](Screen& screen) {
        EXPECT_EQ(ScreenUser::childKeys(screen.host.user().root(1)),
                  std::vector<std::string>{"*P0100000000*"});
    };
    failEachStatement(action);
}

TEST(ExpansionFailures, OfIntermediateAccountsAreReportedOnceAndASearchOpensThemStill) {
    for (const char* key : {"*P0102000000*", "*P0102030000*"}) { // the procedure, then the prepared text
        Action action;
        action.prepare = [key](Screen& screen) {
            const ScreenUser user = screen.host.user();
            for (const char* above : {"CONTIPATRIMONIALI", "*P0100000000*", "*P0102000000*"}) {
                if (above != std::string(key)) {
                    user.expand(user.node(above));
                } else {
                    break;
                }
            }
        };
        action.act = [key](Screen& screen) { screen.host.user().expand(screen.host.user().node(key)); };
        action.label = [](const Message&) { return "CaricaChildren:"; };
        action.repeat = [](Screen& screen) { screen.host.user().search("0102030005"); };
        action.expectDone = [key](Screen& screen) {
            EXPECT_GT(screen.host.user().node(key).Children(), 0);
            EXPECT_NE(screen.host.user().node(key).Child()->Tag(), nullptr);
        };
        failEachStatement(action);
    }
}

TEST(SearchFailures, AreReportedOnceAndTheNextSearchFindsTheAccount) {
    Action action;
    action.act = [](Screen& screen) { screen.host.user().search("0102030005"); };
    action.label = [](const Message& message) {
        return message.text == expected::search(1) ? "EsecuzioneRicerca:" : "CaricaChildren:";
    };
    action.afterFailure = [](Screen& screen, const Message&) {
        EXPECT_EQ(screen.host.user().tree().SelectedItem()->Key(), "CONTIORDINE");
        EXPECT_TRUE(screen.host.messages->boxes.empty());
    };
    action.repeat = action.act;
    action.expectDone = [](Screen& screen) {
        ASSERT_NE(screen.host.user().tree().SelectedItem(), nullptr);
        EXPECT_EQ(screen.host.user().tree().SelectedItem()->Key(), "*P0102030005*");
        EXPECT_TRUE(screen.host.user().control<controls::Button>("BUT_CORRELAZIONI").Enabled());
    };
    failEachStatement(action);
}

std::string labelOfActivation(const Message& message) {
    if (message.text == "SPCI_VELDRANACT") {
        return "AttivazioneConto:";
    }
    if (message.text == expected::header(4)) {
        return "GetCodeHeader:";
    }
    if (contains(message.text, "UPDATE #CG24")) {
        return "AggiornamentoAttivazione:";
    }
    return "CaricaChildren:";
}

TEST(ActivationFailures, OfAnAccountLeaveWhatWasDoneBeforeAndTheBoxAsTheUserSetIt) {
    Action action;
    action.prepare = [](Screen& screen) { screen.host.user().search("0102030005"); };
    action.act = [](Screen& screen) {
        screen.host.user().checkByMouse(screen.host.user().node("*P0102030005*"));
    };
    action.label = labelOfActivation;
    action.afterFailure = [](Screen& screen, const Message& failed) {
        EXPECT_TRUE(screen.host.user().node("*P0102030005*").Checked());
        const auto one = rowsOf({"0102030005"});
        const auto none = rowsOf({});
        if (failed.text == "SPCI_VELDRANACT") {
            EXPECT_EQ(activated(screen), none) << "the database is unchanged";
            return;
        }
        EXPECT_EQ(activated(screen), one) << "the database stays changed";
        EXPECT_EQ(marked(screen, "#CG24_TABPDC"), none) << "the working table is stale";
        const bool onlyWriteBack = failed.text == expected::writeBack("ATTIVO");
        EXPECT_EQ(marked(screen, "#CG24_TABPDC_SELECTED"), onlyWriteBack ? one : none);
    };
    action.repeat = [](Screen& screen) {
        const ScreenUser user = screen.host.user();
        user.checkByMouse(user.node("*P0102030005*"));
        EXPECT_EQ(activated(screen), rowsOf({}));
        user.checkByMouse(user.node("*P0102030005*"));
    };
    action.expectDone = [](Screen& screen) {
        const auto one = rowsOf({"0102030005"});
        EXPECT_EQ(activated(screen), one);
        EXPECT_EQ(marked(screen, "#CG24_TABPDC_SELECTED"), one);
        EXPECT_EQ(marked(screen, "#CG24_TABPDC"), one);
        EXPECT_TRUE(screen.host.user().node("*P0102030005*").Checked());
    };
    failEachStatement(action);
}

TEST(ActivationFailures, OfAGroupCanBeRepairedByClearingAndCheckingItAgain) {
    Action action;
    action.prepare = [](Screen& screen) { screen.host.user().search("0102030005"); };
    action.act = [](Screen& screen) {
        screen.host.user().checkByKeyboard(screen.host.user().node("*P0102000000*"));
    };
    action.label = labelOfActivation;
    action.repeat = [act = action.act](Screen& screen) {
        act(screen);
        act(screen);
    };
    action.expectDone = [](Screen& screen) {
        const auto both = rowsOf({"0102030005", "0102030006"});
        EXPECT_EQ(activated(screen), both);
        EXPECT_EQ(marked(screen, "#CG24_TABPDC_SELECTED"), both);
        EXPECT_EQ(marked(screen, "#CG24_TABPDC"), both);
        for (const char* key : {"*P0102000000*", "*P0102030000*", "*P0102030005*", "*P0102030006*"}) {
            EXPECT_TRUE(screen.host.user().node(key).Checked());
        }
    };
    failEachStatement(action);
}

TEST(ActivationFailures, OfARootStopOnlyTheTopAccountThatFailed) {
    Action action;
    action.act = [](Screen& screen) { screen.host.user().checkByKeyboard(screen.host.user().root(2)); };
    action.label = labelOfActivation;
    action.afterFailure = [](Screen& screen, const Message& failed) {
        if (failed.how == Sent::Procedure && valueOf(failed, "@CONTO") == Value("0300000000")) {
            EXPECT_EQ(activated(screen), rowsOf({"0401010001"}));
        }
    };
    action.repeat = [act = action.act](Screen& screen) {
        act(screen);
        act(screen);
    };
    action.expectDone = [](Screen& screen) {
        EXPECT_EQ(activated(screen), rowsOf({"0301010001", "0302010001", "0401010001"}));
        EXPECT_EQ(marked(screen, "#CG24_TABPDC"), rowsOf({"0301010001", "0302010001", "0401010001"}));
        EXPECT_TRUE(screen.host.user().root(2).Checked());
    };
    failEachStatement(action);
}

/// Reports of a start-up whose message of that text fails.
std::vector<std::string> labelsOfStartUp(const std::string& text) {
    if (text == expected::levels(1)) {
        return {"GetLivelliPDC:"};
    }
    if (text == expected::workingTable(1, 4)) {
        return {"ConfigurazioneTabelleTemporanee:", "CaricamentoConti:"}; // nothing to select from
    }
    if (readsTheStateOfARoot(text)) {
        return {"PrimoLivelloChecked:"};
    }
    return {contains(text, "_SELECTED") ? "CaricamentoConti:" : "ConfigurazioneTabelleTemporanee:"};
}

/// Also the routines that come after the first to report: they have no connection either.
void expectReportsOfALostStartUp(const std::vector<ShownError>& errors, const std::string& label) {
    ASSERT_FALSE(errors.empty());
    std::vector<std::string> labels;
    for (const ShownError& shown : errors) {
        expectReportOfLoss(shown, shown.routine);
        labels.push_back(shown.routine);
    }
    EXPECT_EQ(labels[0], label);
    if (label == "PrimoLivelloChecked:") {
        EXPECT_LE(labels.size(), 4U) << "one for each root";
    } else {
        const std::vector<std::string> all = {
            "GetLivelliPDC:", "ConfigurazioneTabelleTemporanee:", "CaricamentoConti:"};
        EXPECT_EQ(labels, std::vector<std::string>(std::find(all.begin(), all.end(), label), all.end()));
    }
}

/// What a start-up sends when nothing fails.
struct StartUp {
    std::vector<Message> messages;
    std::vector<int> requests; ///< of each message through the network
};

StartUp courseOfStartUp() {
    Screen screen(smallChart());
    RequestCount requests(screen);
    screen.host.open();
    return {screen.log().messages(), requests.ofEachMessage()};
}

void expectCleanClosingAndOpening(Screen& screen) {
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    EXPECT_EQ(screen.database.openSessions(), 0);
    screen.host.messages->clear();
    screen.host.open();
    EXPECT_TRUE(screen.host.messages->errors.empty()) << "the next form has a connection of its own";
    EXPECT_EQ(screen.host.user().tree().RootCount(), 4);
}

void loseStartUpAt(std::size_t i, const Fault& fault, int timeLimit, const std::string& label) {
    Screen screen(smallChart());
    screen.host.commandTimeout = timeLimit;
    failNetworkAt(screen, i, fault);
    screen.host.open();
    expectReportsOfALostStartUp(screen.host.messages->errors, label);
    ASSERT_TRUE(screen.host.isOpen());
    screen.database.server()->network().resume();
    screen.host.messages->clear();
    screen.host.user().filter(2);
    EXPECT_EQ(screen.host.messages->errors.size(), 1U) << "the connection does not come back";
    expectCleanClosingAndOpening(screen);
}

/// The network holds the message back until its time is up, and goes on before the connection is given up.
void outwaitTheLimitOfStartUpAt(std::size_t i, int request, const std::string& label) {
    Screen screen(smallChart());
    Stalls stalls(screen);
    screen.host.commandTimeout = shortLimit;
    failNetworkAt(screen, i, [&](TcpProxy&) { stalls.hold(request, beyondTheLimit); });
    screen.host.open();
    stalls.await();
    screen.failures().heal();
    ASSERT_FALSE(screen.host.messages->errors.empty());
    expectReportOfTimeLimit(screen.host.messages->errors[0], label);
    EXPECT_EQ(screen.host.screen.GetMousePointer(), services::mouseDefault);
    ASSERT_TRUE(screen.host.isOpen());
    expectCleanClosingAndOpening(screen);
}

/// Everything that a network does to a start-up, at each of its messages.
void failTheNetworkAtEachStartUp(const StartUp& startUp) {
    for (std::size_t i = 0; i < startUp.messages.size(); ++i) {
        const Message& message = startUp.messages[i];
        SCOPED_TRACE("network, message " + std::to_string(i + 1) + ": " + message.text);
        const std::string label = labelsOfStartUp(message.text).front();
        const auto stall = [&](TcpProxy& network) { network.stallAtRequest(startUp.requests[i]); };
        ASSERT_TRUE(isLimited(message));
        constexpr int noLimit = 0;
        loseStartUpAt(i, &TcpProxy::cut, noLimit, label);
        loseStartUpAt(i, &TcpProxy::cutAtNextAnswer, noLimit, label);
        loseStartUpAt(i, stall, shortLimit, label);
        outwaitTheLimitOfStartUpAt(i, startUp.requests[i], label);
    }
}

TEST(StartUpFailures, AreReportedUnderTheirRoutineAndTheScreenClosesCleanly) {
    const StartUp startUp = courseOfStartUp();
    const std::vector<Message>& messages = startUp.messages;
    ASSERT_GT(messages.size(), 20U);
    for (std::size_t i = 0; i < messages.size(); ++i) {
        SCOPED_TRACE("message " + std::to_string(i + 1) + ": " + messages[i].text);
        Screen screen(smallChart());
        screen.failures().failStatement(static_cast<int>(i) + 1);
        screen.host.open();
        const std::vector<std::string> labels = screen.host.messages->routines();
        EXPECT_EQ(labels, labelsOfStartUp(messages[i].text));
        ASSERT_FALSE(screen.host.messages->errors.empty());
        expectReport(screen.host.messages->errors[0], labels[0]);
        EXPECT_EQ(screen.host.screen.GetMousePointer(), services::mouseDefault);
        ASSERT_TRUE(screen.host.isOpen());
        const std::size_t reports = screen.host.messages->errors.size();
        EXPECT_TRUE(screen.host.component().CloseForm().toBool());
        EXPECT_EQ(screen.database.openSessions(), 0);
        EXPECT_EQ(screen.database.livePreparedStatements(), 0);
        screen.host.open();
        EXPECT_EQ(screen.host.messages->errors.size(), reports) << "the next opening works";
        EXPECT_EQ(screen.host.user().tree().RootCount(), 4);
    }
    if (TestServer::chosen() != nullptr) {
        failTheNetworkAtEachStartUp(startUp);
    }
}

/// What stands after a start-up one message of which failed.
struct StartUpState {
    std::optional<int> chart = 26;    ///< rows of the chart's working table
    std::optional<int> selected = 26; ///< rows of the selection
    int active = 1;                   ///< marked in the chart's working table
    int correlated = 1;
    int roots = 4;
};

StartUpState stateWithout(const std::string& text) {
    StartUpState state;
    if (text == expected::workingTable(1, 4)) {
        return {std::nullopt, std::nullopt, 0, 0, 0};
    }
    if (text == expected::levels(1) || readsTheStateOfARoot(text)) {
        return state;
    }
    if (text == expected::dropSelection() || text == expected::select(1)) {
        state.selected = std::nullopt;
    }
    if (contains(text, "_SELECTED")) {
        state.roots = 0;
        return state;
    }
    state.correlated = 0;
    if (text != expected::correlationFlags("1")) {
        state.active = 0;
    }
    return state;
}

TEST(StartUpFailures, LeaveWhatWasBuiltBeforeThemAndASelectionCanBeMadeFromIt) {
    const Chart chart = smallChart().activated("0102030005").correlated("0102030006");
    std::vector<Message> messages;
    {
        Screen screen(chart);
        screen.host.open();
        messages = screen.log().messages();
    }
    for (std::size_t i = 0; i < messages.size(); ++i) {
        SCOPED_TRACE("message " + std::to_string(i + 1) + ": " + messages[i].text);
        const StartUpState state = stateWithout(messages[i].text);
        Screen screen(chart);
        screen.failures().failStatement(static_cast<int>(i) + 1);
        screen.host.open();
        const ScreenUser user = screen.host.user();
        EXPECT_TRUE(user.control<controls::Layout>("LAY_ATTIVAZIONE").Visible());
        EXPECT_EQ(user.control<controls::Label>("LBL_FILTRO_CORRENTE").Caption(), " Tutti i conti");
        EXPECT_EQ(user.tree().RootCount(), state.roots);
        EXPECT_EQ(rowCount(screen, "#CG24_TABPDC"), state.chart);
        EXPECT_EQ(rowCount(screen, "#CG24_TABPDC_SELECTED"), state.selected);
        if (state.chart) {
            EXPECT_EQ(rowCount(screen, "#CG24_TABPDC WHERE ATTIVO = 1"), state.active);
            EXPECT_EQ(rowCount(screen, "#CG24_TABPDC WHERE CORRELATO = 1"), state.correlated);
        }
        screen.host.messages->clear();
        user.filter(1);
        EXPECT_EQ(screen.host.messages->errors.size(), state.chart ? 0U : 1U);
        EXPECT_EQ(user.tree().RootCount(), state.chart ? 4 : 0);
    }
}

TEST(StartUpFailures, ThatGoOnAreReportedEachAndTheScreenStillCloses) {
    Screen screen(smallChart());
    screen.failures().failStatement(1, Times::Always);
    screen.host.open();
    EXPECT_EQ(screen.host.messages->routines(),
              (std::vector<std::string>{
                  "GetLivelliPDC:", "ConfigurazioneTabelleTemporanee:", "CaricamentoConti:"}));
    EXPECT_TRUE(screen.host.component().CloseForm().toBool());
    EXPECT_EQ(screen.database.openSessions(), 0);
}

TEST(StartUpFailures, OfACustomerLayoutAreReportedAndTheScreenOpens) {
    Screen screen(smallChart());
    screen.host.layouts.layout = [](controls::Form&) {
        throw std::runtime_error("riga 3: controllo sconosciuto");
    };
    screen.host.open();
    ASSERT_EQ(screen.host.messages->errors.size(), 1U);
    EXPECT_EQ(screen.host.messages->errors[0].routine, "ApplicaLayOut:");
    EXPECT_EQ(screen.host.messages->errors[0].error.Description, "riga 3: controllo sconosciuto");
    EXPECT_EQ(screen.host.scripts.script->events, std::vector<std::string>{"tsOpen"});
    EXPECT_EQ(screen.host.user().tree().RootCount(), 4);
}

TEST(ErrorReport, ShowsAFailureOfTheLookupServiceUnderTheEventThatAsked) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.lookups.failure = simulatedFailure("elenco non disponibile");
    auto& field = screen.host.user().control<controls::LookupField>("TXT_CONTORICERCA");
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    field.LookupFromView();
    ASSERT_EQ(screen.host.messages->errors.size(), 2U);
    EXPECT_EQ(screen.host.messages->errors[0].routine, "TXT_CONTORICERCA_StartDecode");
    EXPECT_EQ(screen.host.messages->errors[1].routine, "TXT_CONTORICERCA_StartLookup");
    screen.host.lookups.failure.reset();
    screen.host.lookups.descriptions = {{"0102030005", "Cassa contanti"}};
    EXPECT_TRUE(field.Decode());
}

} // namespace

} // namespace veldran::test
