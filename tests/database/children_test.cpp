#include "sql/chart_statements.h"
#include "sql/selection_statements.h"
#include "tests/database/server_session.h"
#include "tests/support/account_rules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace veldran::test {
namespace {

constexpr const char* procedure = "SPCI_INTERMEDIFIGLI";

// Brings the session's working tables to where the screen's filter leaves them.
void select(ServerSession& session, int levels, int filter) {
    session.run(sql::rimozioneSelezione());
    session.run(sql::creazioneSelezione(filter));
    if (filter != 1) {
        session.run(sql::identitaSelezione());
        while (session.session().execute(sql::completamentoSelezione(1), {}, {}).rowsAffected > 0) {
        }
    }
    for (const std::string& statement : sql::indiciSelezione(static_cast<std::int16_t>(levels))) {
        session.run(statement);
    }
}

void buildWorkingTable(ServerSession& session, int levels) {
    session.run(sql::creazioneTabellaConti(1, static_cast<std::int16_t>(levels)));
    session.run(sql::impostazioneAttivi("1", 1));
    session.run(sql::impostazioneCorrelati("1"));
}

std::map<std::string, Value> arguments(int level, const std::string& parent, int nature) {
    return {{"@LIVELLO_PARENT", level}, {"@GRUPPO", 1}, {"@PARENT", parent}, {"@NATURA", nature}};
}

// A four-level chart whose second group holds accounts of two natures under groupings of the first.
Chart mixedChart() {
    return Chart(4)
        .account("0100000000", "Mastro", 2)
        .account("0101000000", "Tutti attivi", 2)
        .account("0101010000", "Sottogruppo", 2)
        .account("0101010001", "Attivo", 2)
        .account("0102000000", "In parte attivo", 2)
        .account("0102010000", "Sottogruppo", 2)
        .account("0102010001", "Attivo", 2)
        .account("0102010002", "Inattivo", 2)
        .account("0103000000", "Misto", 2)
        .account("0103010000", "Sottogruppo", 2)
        .account("0103010001", "Patrimoniale", 1)
        .account("0104000000", "Senza conti", 2)
        .account("0105000000", "Di altra natura", 0)
        .account("0105010000", "Sottogruppo", 0)
        .account("0105010001", "Ordine", 0)
        .activated("0101010001")
        .activated("0102010001");
}

class Children : public testing::Test {
protected:
    void SetUp() override {
        buildWorkingTable(session_, 4);
        select(session_, 4, 1);
    }

    TestDatabase database_{mixedChart()};
    ServerSession session_{database_};
};

TEST_F(Children, ReportsItsParametersByName) {
    EXPECT_EQ(session_.parametersOf(procedure),
              (std::vector<std::string>{"@livello_parent", "@gruppo", "@parent", "@natura"}));
}

TEST_F(Children, GivesTheColumnsOfTheTextCommandInItsOrder) {
    const auto result = session_.result(procedure, arguments(1, "0100000000", 2));
    std::vector<std::string> names;
    for (const ado::ColumnInfo& column : result.rows->columns()) {
        names.push_back(column.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"CONTO", "CONTOF", "DESCRIZIONE", "ISANALITICO", "ATTIVO",
                                               "CORRELATO", "NRLIVELLO"}));
    EXPECT_EQ(result.rows->columns()[4].type, ado::adBoolean);
}

TEST_F(Children, ChildIsActiveWhenItHasAnalyticAccountsAndAllAreActive) {
    EXPECT_EQ(session_.call(procedure, arguments(1, "0100000000", 2)),
              (TextRows{{"0101000000", "01/01/00/0000", "Tutti attivi", "0", "1", "0", "2"},
                        {"0102000000", "01/02/00/0000", "In parte attivo", "0", "0", "0", "2"},
                        {"0103000000", "01/03/00/0000", "Misto", "0", "0", "0", "2"},
                        {"0104000000", "01/04/00/0000", "Senza conti", "0", "0", "0", "2"}}));
}

TEST_F(Children, GroupingOfAnotherNatureIsGivenWhenItLeadsToTheNature) {
    EXPECT_EQ(session_.call(procedure, arguments(1, "0100000000", 1)),
              (TextRows{{"0103000000", "01/03/00/0000", "Misto", "0", "0", "0", "2"}}));
    EXPECT_EQ(session_.call(procedure, arguments(2, "0103000000", 1)),
              (TextRows{{"0103010000", "01/03/01/0000", "Sottogruppo", "0", "0", "0", "3"}}));
}

TEST_F(Children, ActivationOfTheNatureAskedForDecides) {
    session_.run("UPDATE #CG24_TABPDC_SELECTED SET ATTIVO = 1 WHERE CONTO = N'0103010001'");
    const TextRows rows = session_.call(procedure, arguments(1, "0100000000", 1));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0][4], "1");
}

TEST_F(Children, ReadsTheSelectionAndNotTheWholeChart) {
    select(session_, 4, 3);
    EXPECT_EQ(session_.call(procedure, arguments(1, "0100000000", 2)),
              (TextRows{{"0102000000", "01/02/00/0000", "In parte attivo", "0", "0", "0", "2"},
                        {"0103000000", "01/03/00/0000", "Misto", "0", "0", "0", "2"}}));
    select(session_, 4, 2);
    EXPECT_EQ(session_.call(procedure, arguments(1, "0100000000", 2)),
              (TextRows{{"0101000000", "01/01/00/0000", "Tutti attivi", "0", "1", "0", "2"},
                        {"0102000000", "01/02/00/0000", "In parte attivo", "0", "1", "0", "2"}}));
}

TEST_F(Children, AnotherChartOrAnUnknownParentHasNone) {
    auto other = arguments(1, "0100000000", 2);
    other["@GRUPPO"] = Value(2);
    EXPECT_EQ(session_.call(procedure, other), TextRows{});
    EXPECT_EQ(session_.call(procedure, arguments(1, "0900000000", 2)), TextRows{});
}

TEST_F(Children, ParentLevelsWithoutGroupingChildrenGiveNoRows) {
    for (const int level : {-1, 0, 4, 5}) {
        EXPECT_EQ(session_.call(procedure, arguments(level, "0100000000", 2)), TextRows{}) << level;
    }
}

TEST_F(Children, FailsWithTheServersErrorBeforeTheSelectionExists) {
    session_.run("DROP TABLE #CG24_TABPDC_SELECTED");
    try {
        session_.call(procedure, arguments(1, "0100000000", 2));
        FAIL() << "the missing working table was not noticed";
    } catch (const ado::AdoError& error) {
        EXPECT_TRUE(isNumbered(error.first(), 208)) << error.what();
    }
    select(session_, 4, 1);
    EXPECT_EQ(session_.call(procedure, arguments(1, "0100000000", 2)).size(), 4U);
}

// Natures and activations dealt out at random over every code shape, against the plain reading of the
// contract.
class ChildrenShapes : public testing::TestWithParam<int> {};

TEST_P(ChildrenShapes, FollowTheContractUnderEveryGrouping) {
    const int levels = GetParam();
    std::mt19937 random(19981112);
    std::map<std::string, int> natures;
    std::set<std::string> active;
    Chart chart(levels);
    for (const std::string& code : everyCodeShape()) {
        natures[code] = static_cast<int>(random() % 4);
        chart.account(code, "Conto " + code, natures[code]);
        if (random() % 3 != 0) {
            active.insert(code);
            chart.activated(code);
        }
    }
    const TestDatabase database(chart);
    ServerSession session(database);
    buildWorkingTable(session, levels);
    select(session, levels, 1);

    for (const auto& [parent, ownNature] : natures) {
        const AccountFacts parentFacts = factsOf(levels, parent);
        if (*parentFacts.analytic || levels - *parentFacts.level < 2) {
            continue;
        }
        const int nature = static_cast<int>(random() % 4);
        TextRows expected;
        for (const auto& [code, codeNature] : natures) {
            const AccountFacts facts = factsOf(levels, code);
            if (facts.parent != parent || *facts.analytic) {
                continue;
            }
            // Below a child is what begins with its header, as everywhere else.
            int below = 0;
            int inactive = 0;
            for (const auto& [other, otherNature] : natures) {
                const AccountFacts otherFacts = factsOf(levels, other);
                if (*otherFacts.analytic && otherNature == nature && other.starts_with(*facts.header)) {
                    ++below;
                    inactive += active.contains(other) ? 0 : 1;
                }
            }
            if (codeNature == nature || below > 0) {
                expected.push_back({code, *facts.display, "Conto " + code, "0",
                                    below > 0 && inactive == 0 ? "1" : "0", "0",
                                    std::to_string(*facts.level)});
            }
        }
        ASSERT_EQ(session.call(procedure, arguments(*parentFacts.level, parent, nature)), expected)
            << parent << " of nature " << nature;
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, ChildrenShapes, testing::Values(3, 4, 5));

} // namespace
} // namespace veldran::test
