// The chart's working tables as the screen builds them in its session.
#include "tests/screen/screen_fixture.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

using Row = std::vector<std::string>;

TEST(WorkingTables, NumberTheAccountsInChartOrderAndCopyThemUnchanged) {
    Screen screen(Chart(4)
                      .account("0200000000", "Passività e città", 3)
                      .account("0100000000", "Attività", 0)
                      .account("0101010001", "L'avviamento", 2));
    screen.host.open();
    EXPECT_EQ(screen.query("SELECT INDICE, GRUPPO, CONTO, DESCRIZIONE, CG24_INDTIPOCONTO, ATTIVO, CORRELATO "
                           "FROM #CG24_TABPDC ORDER BY INDICE"),
              (std::vector<Row>{{"1", "1", "0100000000", "Attività", "0", "0", "0"},
                                {"2", "1", "0101010001", "L'avviamento", "2", "0", "0"},
                                {"3", "1", "0200000000", "Passività e città", "3", "0", "0"}}));
}

TEST(WorkingTables, HoldOnlyTheChartOfTheCompany) {
    Chart chart = smallChart();
    chart.script("INSERT INTO CG24_TABPDC (CG24_GRUPPO_CG10, CG24_CONTO, CG24_DESCR, CG24_INDTIPOCONTO) "
                 "VALUES (2, N'0100000000', N'Altro piano', 1)");
    Screen screen(chart);
    screen.host.open();
    EXPECT_EQ(screen.query("SELECT DISTINCT GRUPPO FROM #CG24_TABPDC"), (std::vector<Row>{{"1"}}));
    EXPECT_EQ(screen.query("SELECT COUNT(*) FROM #CG24_TABPDC"),
              (std::vector<Row>{{std::to_string(chart.accounts().size())}}));
}

TEST(WorkingTables, LeaveAnAccountInactiveThatAnotherCompanyActivated) {
    Screen screen(smallChart().activated("0102030005", "2").activated("0102030006"));
    screen.host.open();
    EXPECT_EQ(screen.query("SELECT CONTO FROM #CG24_TABPDC WHERE ATTIVO = 1"),
              (std::vector<Row>{{"0102030006"}}));
}

TEST(WorkingTables, MarkAnIntermediateAccountThatAnActivationNames) {
    Screen screen(smallChart().activated("0102000000"));
    screen.host.open();
    EXPECT_EQ(screen.query("SELECT CONTO FROM #CG24_TABPDC WHERE ATTIVO = 1"),
              (std::vector<Row>{{"0102000000"}}));
}

TEST(WorkingTables, MarkAnAccountCorrelatedUnderAnyCausaleOfTheCompanyAndItsOwnChartOnly) {
    Screen screen(smallChart()
                      .correlated("0102030005", "ZZ9")
                      .correlated("0102030005", "VEND")
                      .correlated("0102030006", "VEND", "2")
                      .correlatedInChart(2, "0101010001"));
    screen.host.open();
    EXPECT_EQ(screen.query("SELECT CONTO FROM #CG24_TABPDC WHERE CORRELATO = 1"),
              (std::vector<Row>{{"0102030005"}}));
}

TEST(WorkingTables, GiveTheSelectionOfThreeLevelsTheIndexesOfThreeLevelsOnly) {
    Screen screen(Chart(3).account("0100000000", "Attività", 1).account("0100010001", "Cassa", 1));
    screen.host.open();
    std::vector<std::string> names;
    for (const Message& message : screen.sent()) {
        const std::string prefix = "CREATE NONCLUSTERED INDEX ";
        const auto on = message.text.find(" ON #CG24_TABPDC_SELECTED");
        if (message.text.rfind(prefix, 0) == 0 && on != std::string::npos) {
            names.push_back(message.text.substr(prefix.size(), on - prefix.size()));
        }
    }
    EXPECT_EQ(names, (std::vector<std::string>{"IDX01", "IDX02", "IDX03", "IDX04", "IDX05", "IDX08", "IDX09",
                                               "IDX10"}));
}

TEST(WorkingTables, ReportAChartThatHasNoRowOfItsOwnAndGoOnWithNoLevels) {
    Chart chart = smallChart();
    chart.script("DELETE FROM CG10_DESPDC");
    Screen screen(chart);
    screen.host.open();
    ASSERT_EQ(screen.host.messages->errors.size(), 1U);
    EXPECT_EQ(screen.host.messages->errors.front().routine, "GetLivelliPDC:");
    EXPECT_EQ(screen.query("SELECT COUNT(*) FROM #CG24_TABPDC WHERE NRLIVELLO IS NULL"),
              (std::vector<Row>{{std::to_string(chart.accounts().size())}}));
    EXPECT_EQ(screen.host.user().tree().RootCount(), 4);
}

TEST(WorkingTables, OfTwoScreensOnOneDatabaseDoNotMeet) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.user().filter(2);
    const auto other = screen.host.newComponent();
    other->ShowForm();
    EXPECT_TRUE(screen.host.messages->errors.empty());
    EXPECT_EQ(screen.query("SELECT COUNT(*) FROM #CG24_TABPDC_SELECTED"), (std::vector<Row>{{"0"}}));
    const auto count = other->GetConnection()->Execute("SELECT COUNT(*) FROM #CG24_TABPDC_SELECTED");
    EXPECT_EQ(count->Fields()[0].Value().toInteger(),
              static_cast<std::int64_t>(smallChart().accounts().size()));
}

} // namespace

} // namespace veldran::test
