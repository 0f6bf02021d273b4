// The filter strip and the selection behind it.
#include "tests/screen/screen_fixture.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

using Row = std::vector<std::string>;
using Rows = std::vector<Row>;

Rows selection(Screen& screen) {
    return screen.query("SELECT CONTO FROM #CG24_TABPDC_SELECTED ORDER BY INDICE");
}

std::string currentFilter(Screen& screen) {
    return screen.host.user().control<controls::Label>("LBL_FILTRO_CORRENTE").Caption();
}

TEST(Filters, OfferThreeTabsWithTheirTexts) {
    Screen screen(smallChart());
    screen.host.open();
    const auto& tabs = screen.host.user().filters().Tabs();
    ASSERT_EQ(tabs.size(), 3U);
    EXPECT_EQ(tabs[0].caption, "Tutti");
    EXPECT_EQ(tabs[0].toolTipText, "Tutti i conti");
    EXPECT_EQ(tabs[1].caption, "Att.");
    EXPECT_EQ(tabs[1].toolTipText, "Conti attivati");
    EXPECT_EQ(tabs[2].caption, "Non att.");
    EXPECT_EQ(tabs[2].toolTipText, "Conti non attivati");
}

TEST(Filters, ShowTheToolTipOfTheCurrentTabBehindABlank) {
    Screen screen(smallChart());
    screen.host.open();
    EXPECT_EQ(currentFilter(screen), " Tutti i conti");
    screen.host.user().filter(2);
    EXPECT_EQ(currentFilter(screen), " Conti attivati");
    screen.host.user().filter(3);
    EXPECT_EQ(currentFilter(screen), " Conti non attivati");
}

TEST(Filters, ComeBackWithTheFirstRootSelected) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.expand(user.root(1));
    user.click(user.node("*P0100000000*"));
    user.filter(3);
    ASSERT_NE(user.tree().SelectedItem(), nullptr);
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "CONTIORDINE");
}

TEST(Filters, LeaveAnEmptySelectionWhenNoAccountIsActivated) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.filter(2);
    EXPECT_TRUE(selection(screen).empty());
    for (int nature = 0; nature < 4; ++nature) {
        EXPECT_FALSE(user.root(nature).Checked());
        user.expand(user.root(nature));
        EXPECT_EQ(user.root(nature).Children(), 0);
    }
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(Filters, CompleteOneInactiveAccountWithItsThreeAncestorsUnderTheirOwnNumbers) {
    const Chart base = smallChart();
    Chart chart = base;
    for (const ChartAccount& account : base.accounts()) {
        if (account.code.substr(6) != "0000" && account.code != "0101020001") {
            chart.activated(account.code);
        }
    }
    Screen screen(chart);
    screen.host.open();
    screen.host.user().filter(3);
    EXPECT_EQ(screen.query("SELECT INDICE, CONTO FROM #CG24_TABPDC_SELECTED ORDER BY INDICE"),
              screen.query("SELECT INDICE, CONTO FROM #CG24_TABPDC WHERE CONTO IN "
                           "('0100000000', '0101000000', '0101020000', '0101020001') ORDER BY INDICE"));
    EXPECT_EQ(selection(screen).size(), 4U);
}

TEST(Filters, ShowTheNewActivationWhenAllAccountsComeBack) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.filter(3);
    user.search("0102030005");
    user.checkByKeyboard(user.node("*P0102030005*"));
    user.filter(1);
    user.search("0102030005");
    EXPECT_TRUE(user.node("*P0102030005*").Checked());
    user.filter(2);
    EXPECT_EQ(selection(screen), (Rows{{"0100000000"}, {"0102000000"}, {"0102030000"}, {"0102030005"}}));
}

TEST(Filters, SelectByActivationAndCorrelationInAllNineWays) {
    Screen screen(Chart(2)
                      .account("0100000000", "Gruppo", 1)
                      .account("0100000001", "Né attivo né correlato", 1)
                      .account("0100000002", "Attivo", 1)
                      .account("0100000003", "Correlato", 1)
                      .account("0100000004", "Attivo e correlato", 1)
                      .account("0200000000", "Gruppo vuoto", 1)
                      .activated("0100000002")
                      .activated("0100000004")
                      .correlated("0100000003")
                      .correlated("0100000004"));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.addFilterTabs();
    const Row group{"0100000000"}, plain{"0100000001"}, active{"0100000002"}, correlated{"0100000003"},
        both{"0100000004"}, empty{"0200000000"};
    const std::vector<std::pair<int, Rows>> expected = {
        {1, {group, plain, active, correlated, both, empty}},
        {2, {group, active, both}},
        {3, {group, plain, correlated}},
        {4, {group, correlated, both}},
        {5, {group, plain, active}},
        {6, {group, both}},
        {7, {group, active}},
        {8, {group, correlated}},
        {9, {group, plain}},
    };
    for (const auto& [filter, rows] : expected) {
        user.filter(filter);
        EXPECT_EQ(selection(screen), rows) << "filter " << filter;
    }
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(Filters, AddNoConditionForATabBeyondTheNinth) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.addFilterTabs();
    user.filters().AddTab("Altro", "Altri conti");
    user.filter(10);
    EXPECT_EQ(selection(screen).size(), smallChart().accounts().size());
    EXPECT_EQ(currentFilter(screen), " Altri conti");
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(Filters, EndEvenWhenAnAncestorIsMissingFromTheChart) {
    Screen screen(Chart(4).account("0100000000", "Attività", 1).account("0102030005", "Cassa", 1));
    screen.host.open();
    screen.host.user().filter(3);
    EXPECT_EQ(selection(screen), (Rows{{"0102030005"}}));
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(Filters, ShowTheBusyPointerWhileTheSelectionIsRebuilt) {
    Screen screen(smallChart());
    screen.host.open();
    EXPECT_EQ(screen.host.screen.GetMousePointer(), services::mouseDefault);
    screen.host.screen.pointers.clear();
    screen.host.user().filter(3);
    EXPECT_EQ(screen.host.screen.pointers,
              (std::vector<int>{services::mouseArrowHourglass, services::mouseDefault}));
}

TEST(Filters, RunAgainWhenTheSelectedTabIsChosenAgain) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.filter(3);
    user.search("0102030005");
    user.checkByKeyboard(user.node("*P0102030005*"));
    EXPECT_NE(user.find("*P0102030005*"), nullptr) << "an activation does not reload the tree";
    user.filter(3);
    user.search("0102030005");
    EXPECT_EQ(user.find("*P0102030005*"), nullptr);
    EXPECT_EQ(screen.host.messages->boxes.size(), 1U);
}

} // namespace

} // namespace veldran::test
