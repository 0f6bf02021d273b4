#include "sql/chart_statements.h"
#include "tests/database/server_session.h"
#include "tests/support/account_rules.h"

#include <gtest/gtest.h>

namespace veldran::test {
namespace {

std::string textOf(const std::optional<std::string>& text) {
    return text.value_or("NULL");
}

// A chart that holds every code shape.
Chart chartOfShapes(int levels) {
    Chart chart(levels);
    for (const std::string& code : everyCodeShape()) {
        chart.account(code, "Conto " + code, 1);
    }
    return chart;
}

class CodeRules : public testing::TestWithParam<int> {};

TEST_P(CodeRules, TheWorkingTableDerivesWhatTheRulesSayForEveryCodeShape) {
    const TestDatabase database(chartOfShapes(4));
    ServerSession session(database);
    // The number of levels is written into the statement, so one chart serves for all of them.
    session.run(sql::creazioneTabellaConti(1, static_cast<std::int16_t>(GetParam())));
    const TextRows rows =
        session.rows("SELECT CONTO, CONTOF, CODEHEADER, PARENT, LIVELLO1, LIVELLO2, LIVELLO3, "
                     "LIVELLO4, LIVELLO5, NRLIVELLO, ISANALITICO FROM #CG24_TABPDC ORDER BY INDICE");
    const std::vector<std::string> codes = everyCodeShape();
    ASSERT_EQ(rows.size(), codes.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const AccountFacts facts = factsOf(GetParam(), codes[row]);
        std::vector<std::string> expected = {codes[row], textOf(facts.display), textOf(facts.header),
                                             textOf(facts.parent)};
        for (const auto& ancestor : facts.ancestors) {
            expected.push_back(textOf(ancestor));
        }
        expected.push_back(facts.level ? std::to_string(*facts.level) : "NULL");
        expected.push_back(!facts.analytic ? "NULL" : *facts.analytic ? "1" : "0");
        EXPECT_EQ(rows[row], expected);
    }
}

TEST_P(CodeRules, TheServerGivesTheSameHeaderForEveryCodeShape) {
    const TestDatabase database(chartOfShapes(4));
    ServerSession session(database);
    const TextRows rows =
        session.rows("SELECT CG24_CONTO, DBO.FNCI_COGE_GETCODEHEADER(" + std::to_string(GetParam()) +
                     ", CG24_CONTO) FROM CG24_TABPDC WHERE CG24_GRUPPO_CG10 = 1");
    ASSERT_EQ(rows.size(), 1024U);
    for (const auto& row : rows) {
        EXPECT_EQ(row[1], textOf(factsOf(GetParam(), row[0]).header)) << row[0];
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, CodeRules, testing::Values(-1, 0, 1, 2, 3, 4, 5, 6, 32767));

TEST(HeaderFunction, KnowsNoHeaderWithoutANumberOfLevels) {
    const TestDatabase database{Chart(4)};
    ServerSession session(database);
    EXPECT_EQ(session.value("SELECT DBO.FNCI_COGE_GETCODEHEADER(NULL, N'0102030005')"), "NULL");
}

TEST(HeaderFunction, AnswersThePreparedQuestionOfTheScreen) {
    const TestDatabase database{Chart(4)};
    ServerSession session(database);
    const ado::ParameterInfo conto{"@CONTO", ado::adWChar, ado::adParamInput, 10, 0, 0};
    const auto question = session.session().prepare(sql::codeHeader(4), std::vector{conto});
    for (const std::string& code :
         {std::string("0102030000"), std::string("0102030005"), std::string("0100000000")}) {
        const auto answer = question->execute(std::vector<ado::BoundParameter>{{conto, Value(code)}}, {});
        EXPECT_EQ(asText(*answer.rows), (TextRows{{*factsOf(4, code).header}}));
    }
}

} // namespace
} // namespace veldran::test
