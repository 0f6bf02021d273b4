#include "tests/database/server_session.h"
#include "tests/support/account_rules.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace veldran::test {
namespace {

constexpr const char* procedure = "SPCI_VELDRANACT";
constexpr const char* activeOfCompany1 =
    "SELECT CI35_CONTO_CG24 FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = 1 AND CI35_GRUPPO_CG10 = 1 "
    "ORDER BY CI35_CONTO_CG24";

std::map<std::string, Value> arguments(bool on, const std::string& conto, int nature, int correlati = 2) {
    return {{"@ON", on},       {"@DITTA", "1"},     {"@GRUPPO", 1},
            {"@CONTO", conto}, {"@NATURA", nature}, {"@CORRELATI", correlati}};
}

TextRows listed(const std::set<std::string>& codes) {
    TextRows rows;
    for (const std::string& code : codes) {
        rows.push_back({code});
    }
    return rows;
}

// A small four-level chart: two branches, mixed natures under the second, one correlated account.
Chart smallChart() {
    return Chart(4)
        .account("0100000000", "Mastro", 2)
        .account("0101000000", "Gruppo", 2)
        .account("0101010000", "Sottogruppo", 2)
        .account("0101010001", "Uno", 2)
        .account("0101010002", "Due", 2)
        .account("0102000000", "Gruppo misto", 2)
        .account("0102010000", "Sottogruppo misto", 2)
        .account("0102010001", "Economico", 2)
        .account("0102010002", "Patrimoniale", 1)
        .correlated("0101010001");
}

class Activation : public testing::Test {
protected:
    TestDatabase database_{smallChart()};
    ServerSession session_{database_};

    TextRows active() { return session_.rows(activeOfCompany1); }
};

TEST_F(Activation, ReportsItsParametersInTheOrderOfTheirDeclaration) {
    EXPECT_EQ(session_.parametersOf(procedure),
              (std::vector<std::string>{"@on", "@ditta", "@gruppo", "@conto", "@natura", "@correlati"}));
}

TEST_F(Activation, ReachesEveryAnalyticAccountOfTheNatureBelow) {
    session_.call(procedure, arguments(true, "0100000000", 2));
    EXPECT_EQ(active(), listed({"0101010001", "0101010002", "0102010001"}));
    session_.call(procedure, arguments(false, "0101000000", 2));
    EXPECT_EQ(active(), listed({"0102010001"}));
}

TEST_F(Activation, ReachesAnAnalyticAccountAlone) {
    session_.call(procedure, arguments(true, "0101010002", 2));
    EXPECT_EQ(active(), listed({"0101010002"}));
}

TEST_F(Activation, LeavesOtherNaturesAlone) {
    session_.call(procedure, arguments(true, "0102000000", 1));
    EXPECT_EQ(active(), listed({"0102010002"}));
    session_.call(procedure, arguments(false, "0102000000", 2));
    EXPECT_EQ(active(), listed({"0102010002"}));
    session_.call(procedure, arguments(true, "0101010001", 3));
    EXPECT_EQ(active(), listed({"0102010002"}));
}

TEST_F(Activation, ASecondCallChangesNothing) {
    session_.call(procedure, arguments(true, "0101010001", 2));
    session_.call(procedure, arguments(true, "0101000000", 2));
    session_.call(procedure, arguments(true, "0101000000", 2));
    EXPECT_EQ(active(), listed({"0101010001", "0101010002"}));
    session_.call(procedure, arguments(false, "0101000000", 2));
    session_.call(procedure, arguments(false, "0101000000", 2));
    EXPECT_EQ(active(), listed({}));
}

TEST_F(Activation, CanBeLimitedToCorrelatedOrUncorrelatedAccounts) {
    session_.call(procedure, arguments(true, "0101000000", 2, 1));
    EXPECT_EQ(active(), listed({"0101010001"}));
    session_.call(procedure, arguments(true, "0101000000", 2, 0));
    EXPECT_EQ(active(), listed({"0101010001", "0101010002"}));
    session_.call(procedure, arguments(false, "0101000000", 2, 0));
    EXPECT_EQ(active(), listed({"0101010001"}));
    session_.call(procedure, arguments(false, "0101000000", 2, 1));
    EXPECT_EQ(active(), listed({}));
}

TEST_F(Activation, CorrelationsOfAnotherCompanyOrChartDoNotCount) {
    session_.run("INSERT INTO CI15_CORRCONTICOGE (CI15_DITTA_CG18, CI15_CODCAUS_CI03, CI15_CODPDC_CG10, "
                 "CI15_CONTO_CG24, "
                 "CI15_PROG, CI15_CODPDC_PC01, CI15_CONTO_PC03, CI15_INDSEGNO) VALUES "
                 "(2, N'FTAC', 1, N'0101010002', 1, 101, N'COL', 2), (1, N'FTAC', 9, N'0101010002', 1, 101, "
                 "N'COL', 2)");
    session_.call(procedure, arguments(true, "0101000000", 2, 1));
    EXPECT_EQ(active(), listed({"0101010001"}));
}

TEST_F(Activation, TouchesOneCompanyAndOneChartOnly) {
    session_.run(
        "INSERT INTO CG10_DESPDC (CG10_GRUPPO, CG10_DESCR, CG10_NUMLIVELLI) VALUES (2, N'Altro', 4)");
    session_.run("INSERT INTO CG24_TABPDC (CG24_GRUPPO_CG10, CG24_CONTO, CG24_DESCR, CG24_INDTIPOCONTO) "
                 "VALUES (2, N'0101010001', N'Altro', 2)");
    const std::string others =
        "SELECT CI35_DITTA_CG18, CI35_GRUPPO_CG10, CI35_CONTO_CG24 FROM CI35_CONTIATTIVI "
        "WHERE CI35_DITTA_CG18 <> 1 OR CI35_GRUPPO_CG10 <> 1 ORDER BY CI35_DITTA_CG18";
    session_.run("INSERT INTO CI35_CONTIATTIVI (CI35_DITTA_CG18, CI35_GRUPPO_CG10, CI35_CONTO_CG24) "
                 "VALUES (2, 1, N'0101010001'), (1, 2, N'0101010001')");
    const TextRows before = session_.rows(others);
    session_.call(procedure, arguments(true, "0100000000", 2));
    EXPECT_EQ(session_.rows(others), before);
    session_.call(procedure, arguments(false, "0100000000", 2));
    EXPECT_EQ(session_.rows(others), before);
    EXPECT_EQ(active(), listed({}));
}

TEST_F(Activation, LeavesGroupingsThatWereActivatedByHand) {
    session_.run("INSERT INTO CI35_CONTIATTIVI (CI35_DITTA_CG18, CI35_GRUPPO_CG10, CI35_CONTO_CG24) "
                 "VALUES (1, 1, N'0101000000')");
    session_.call(procedure, arguments(false, "0100000000", 2));
    EXPECT_EQ(active(), listed({"0101000000"}));
}

TEST_F(Activation, AnUnknownChartOrAccountChangesNothing) {
    auto unknown = arguments(true, "0100000000", 2);
    unknown["@GRUPPO"] = Value(9);
    session_.call(procedure, unknown);
    session_.call(procedure, arguments(true, "0900000000", 2));
    EXPECT_EQ(session_.value("SELECT COUNT(*) FROM CI35_CONTIATTIVI"), "0");
}

TEST_F(Activation, NullArgumentsChangeNothing) {
    session_.call(procedure, arguments(true, "0101010001", 2));
    for (const char* name : {"@ON", "@GRUPPO", "@CONTO", "@NATURA", "@CORRELATI"}) {
        for (const bool on : {true, false}) {
            auto missing = arguments(on, "0101000000", 2);
            missing[name] = Value();
            session_.call(procedure, missing);
            EXPECT_EQ(active(), listed({"0101010001"})) << name;
        }
    }
}

TEST_F(Activation, ActivatingForNoCompanyIsRefused) {
    auto missing = arguments(true, "0101000000", 2);
    missing["@DITTA"] = Value();
    try {
        session_.call(procedure, missing);
        FAIL() << "a row without a company was accepted";
    } catch (const ado::AdoError& error) {
        EXPECT_TRUE(isNumbered(error.first(), 515)) << error.what();
    }
    EXPECT_EQ(session_.value("SELECT COUNT(*) FROM CI35_CONTIATTIVI"), "0");
}

// Every code shape as an account, with natures and correlations dealt out at random, against the plain
// reading of the rules.
class ActivationShapes : public testing::TestWithParam<int> {};

TEST_P(ActivationShapes, FollowTheRulesFromEveryKindOfAccount) {
    std::mt19937 random(20240607);
    const std::vector<std::string> codes = everyCodeShape();
    std::map<std::string, int> natures;
    std::set<std::string> correlated;
    Chart chart(GetParam());
    for (const std::string& code : codes) {
        natures[code] = static_cast<int>(random() % 4);
        chart.account(code, "Conto " + code, natures[code]);
        if (random() % 5 == 0) {
            correlated.insert(code);
            chart.correlated(code);
        }
    }
    const TestDatabase database(chart);
    ServerSession session(database);

    std::set<std::string> expected;
    for (int step = 0; step < 120; ++step) {
        // Mostly accounts high in the chart, which reach many others.
        const std::string& conto = codes[step % 3 == 0 ? random() % codes.size() : (random() % 32) * 32];
        const int nature = static_cast<int>(random() % 4);
        const int correlati = static_cast<int>(random() % 3);
        const bool on = random() % 3 != 0;
        const auto header = factsOf(GetParam(), conto).header;
        for (const std::string& code : codes) {
            const bool reached =
                header && code.starts_with(*header) && factsOf(GetParam(), code).analytic.value_or(false) &&
                natures[code] == nature && (correlati == 2 || correlated.contains(code) == (correlati == 1));
            if (reached && on) {
                expected.insert(code);
            } else if (reached) {
                expected.erase(code);
            }
        }
        session.call(procedure, arguments(on, conto, nature, correlati));
        ASSERT_EQ(session.rows(activeOfCompany1), listed(expected))
            << "step " << step << ", account " << conto;
    }
    EXPECT_EQ(expected.empty(), GetParam() < 2 || GetParam() > 5);
}

INSTANTIATE_TEST_SUITE_P(Levels, ActivationShapes, testing::Values(0, 1, 2, 3, 4, 5, 6));

} // namespace
} // namespace veldran::test
