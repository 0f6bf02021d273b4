// The chart's working tables as the screen builds them in its session.
#include "tests/screen/screen_fixture.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

const char* const derivedColumns =
    "CONTOF, CODEHEADER, PARENT, LIVELLO1, LIVELLO2, LIVELLO3, LIVELLO4, LIVELLO5, "
    "NRLIVELLO, ISANALITICO";

/// The derived columns of one account, opened in a chart of that many levels.
std::vector<std::string> derived(int levels, const std::string& code) {
    Screen screen(Chart(levels).account(code, "Conto", 1));
    screen.host.open();
    const auto rows = screen.query(std::string("SELECT ") + derivedColumns +
                                   " FROM #CG24_TABPDC WHERE CONTO = '" + code + "'");
    return rows.size() == 1 ? rows.front() : std::vector<std::string>{};
}

using Row = std::vector<std::string>;

TEST(WorkingTables, DeriveAGroupingAccountOfTheThirdOfFourLevels) {
    EXPECT_EQ(derived(4, "0102030000"), (Row{"01/02/03/0000", "010203", "0102000000", "0100000000",
                                             "0102000000", "0102030000", "0102030000", "NULL", "3", "0"}));
}

TEST(WorkingTables, DeriveAnAnalyticAccountOfFourLevels) {
    EXPECT_EQ(derived(4, "0102030005"), (Row{"01/02/03/0005", "0102030005", "0102030000", "0100000000",
                                             "0102000000", "0102030000", "0102030005", "NULL", "4", "1"}));
}

TEST(WorkingTables, DropThePositionsThatTwoLevelsDoNotUse) {
    EXPECT_EQ(derived(2, "0112300001"), (Row{"01/00001", "0112300001", "0100000000", "0100000000",
                                             "0112300001", "NULL", "NULL", "NULL", "2", "1"}));
}

TEST(WorkingTables, IgnoreTheThirdAndFourthPositionWithThreeLevels) {
    EXPECT_EQ(derived(3, "0199000000"), (Row{"01/00/0000", "01", "NULL", "0100000000", "0199000000",
                                             "0199000000", "NULL", "NULL", "1", "0"}));
}

TEST(WorkingTables, DeriveATopAccountOfFiveLevelsWithoutAParent) {
    EXPECT_EQ(derived(5, "0100000000"), (Row{"01/00/00/00/00", "01", "NULL", "0100000000", "0100000000",
                                             "0100000000", "0100000000", "0100000000", "1", "0"}));
}

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

TEST(WorkingTables, RefuseToBeBuiltTwiceInOneSession) {
    Screen screen(smallChart());
    screen.host.open();
    try {
        screen.host.connection().Execute("SELECT * INTO #CG24_TABPDC FROM CG24_TABPDC", nullptr,
                                         ado::adCmdText | ado::adExecuteNoRecords);
        FAIL() << "the table exists already";
    } catch (const ado::AdoError& error) {
        EXPECT_EQ(error.first().Number, 2714);
    }
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
