#include "database/generator/demo_check.h"
#include "database/generator/demo_reader.h"
#include "database/generator/demo_script.h"
#include "tests/support/account_rules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace veldran::chartgen {
namespace {

const DemoModel& demo() {
    static const DemoModel model = readDemo(VELDRAN_SOURCE_DIR "/database/demo");
    return model;
}

const Chart& chartOfCompany(int company) {
    return findLedgerChart(demo(), findCompany(demo(), company)->ledgerChart)->chart;
}

TEST(Demo, ObeysItsOwnChecks) {
    EXPECT_NO_THROW(checkDemo(demo()));
}

TEST(Demo, CommittedScriptIsTheOneItsTablesGive) {
    std::ifstream file(VELDRAN_SOURCE_DIR "/database/demo.sql", std::ios::binary);
    std::ostringstream committed;
    committed << file.rdbuf();
    std::ostringstream written;
    writeDemoScript(demo(), written);
    EXPECT_TRUE(committed.str() == written.str())
        << "write it again: veldran_chartgen --demo database/demo --output database/demo.sql";
    EXPECT_LT(committed.str().size(), 1U << 20);
}

TEST(Demo, ManufacturerHasAFullFourLevelChart) {
    const Chart& chart = chartOfCompany(1);
    std::map<int, int> analyticByNature;
    for (const ChartAccount& account : chart.accounts)
        if (chart.isAnalytic(account))
            ++analyticByNature[account.nature];
    EXPECT_EQ(chart.levels, 4);
    EXPECT_GE(chart.accounts.size(), 1500U);
    for (const int nature : {0, 1, 2, 3})
        EXPECT_GE(analyticByNature[nature], 20) << nature;
}

TEST(Demo, CompaniesCoverEveryNumberOfLevels) {
    std::map<int, int> levels;
    for (const Company& company : demo().companies)
        if (company.analytic)
            ++levels[chartOfCompany(company.code).levels];
    EXPECT_EQ(levels, (std::map<int, int>{{2, 1}, {3, 1}, {4, 1}, {5, 1}}));
}

TEST(Demo, HasACompanyWithoutAnalyticAccountingAndOneWithoutCostItems) {
    EXPECT_FALSE(findCompany(demo(), 5)->analytic);
    EXPECT_TRUE(findCompany(demo(), 5)->parameter.empty());
    EXPECT_TRUE(findCompany(demo(), 3)->analytic);
    EXPECT_EQ(findCompany(demo(), 3)->itemChart, 0);
}

TEST(Demo, EveryCodeStandsAtTheLevelOfItsPath) {
    for (const LedgerChart& ledger : demo().ledgerCharts) {
        std::map<std::vector<std::string>, std::string> codes;
        for (const ChartAccount& account : ledger.chart.accounts) {
            const test::AccountFacts facts = test::factsOf(ledger.chart.levels, account.code);
            codes[account.path] = account.code;
            EXPECT_EQ(facts.level, static_cast<int>(account.path.size())) << account.code;
            if (facts.parent) {
                EXPECT_EQ(codes.at({account.path.begin(), account.path.end() - 1}), *facts.parent);
            }
        }
    }
}

TEST(Demo, NoDescriptionIsAFillerOrTooLong) {
    for (const LedgerChart& ledger : demo().ledgerCharts)
        for (const ChartAccount& account : ledger.chart.accounts) {
            EXPECT_EQ(account.description().find("Conto n"), std::string::npos);
            EXPECT_LE(account.description().size(), 80U) << account.description();
            EXPECT_GE(account.description().size(), 3U);
        }
}

TEST(Demo, CostChartHasAccountsOfAllTenKinds) {
    int kinds = 0;
    for (const CostAccount& account : demo().costAccounts)
        if (account.chart == 101)
            kinds |= account.kindBit;
    EXPECT_EQ(kinds, 1023);
}

TEST(Demo, OneSideOfOneCausaleAdmitsEveryKindAndOneCausaleNone) {
    EXPECT_EQ(typologyMask(demo(), "GIRO", Sign::Avere), 1023);
    EXPECT_NE(findCausale(demo(), "APER"), nullptr);
    EXPECT_EQ(typologyMask(demo(), "APER", Sign::Avere), 0);
    EXPECT_EQ(typologyMask(demo(), "APER", Sign::Dare), 0);
}

TEST(Demo, ManufacturerHasActivationsAndCorrelationsToLookAt) {
    std::set<std::string> correlated;
    for (const Correlation& correlation : demo().correlations)
        if (correlation.company == 1)
            correlated.insert(correlation.account);
    const Chart& chart = chartOfCompany(1);
    const auto activated = std::count_if(demo().activations.begin(), demo().activations.end(),
                                         [](const Activation& row) { return row.company == 1; });
    const auto economic =
        std::count_if(chart.accounts.begin(), chart.accounts.end(), [&](const ChartAccount& account) {
            return account.nature == 2 && chart.isAnalytic(account);
        });
    EXPECT_GE(correlated.size(), 40U);
    EXPECT_GT(activated, economic / 4);
    EXPECT_LT(activated, economic);
}

} // namespace
} // namespace veldran::chartgen
