// Texts of statements: how lines are joined, markers replaced, and what changes with filter, levels and
// company.
#include "sql/chart_statements.h"
#include "sql/selection_statements.h"
#include "sql/statement.h"
#include "sql/tree_statements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldran::sql {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

TEST(StatementText, JoinsLinesByCarriageReturnAndLineFeed) {
    EXPECT_EQ(lines({"SELECT", "    1"}), "SELECT\r\n    1");
    EXPECT_EQ(lines({"SELECT 1"}), "SELECT 1");
    EXPECT_EQ(lines({}), "");
    EXPECT_EQ(withLines("SELECT 1", {}), "SELECT 1");
    EXPECT_EQ(withLines("SELECT 1", {"FROM", "    A"}), "SELECT 1\r\nFROM\r\n    A");
}

TEST(StatementText, ReplacesEveryOccurrenceOfAMarkerAndAddsNoQuotes) {
    EXPECT_EQ(substituted("@A = 1 AND @A = 2", {{"@A", "X"}}), "X = 1 AND X = 2");
    EXPECT_EQ(substituted("D = <DITTA>", {{"<DITTA>", "O'B"}}), "D = O'B");
    EXPECT_EQ(substituted("@B", {{"@A", "1"}}), "@B");
}

TEST(StatementText, ReplacesMarkersInTheOrderGivenAndNeverTwice) {
    EXPECT_EQ(substituted("@A", {{"@A", "@B"}, {"@B", "2"}}), "2");
    EXPECT_EQ(substituted("@A", {{"@A", "@A@A"}}), "@A@A") << "what replaced a marker is not read again";
}

TEST(ChartStatements, LeaveNoMarkerOfTheirOwnBehind) {
    for (const std::string& text :
         {creazioneTabellaConti(7, 4), impostazioneAttivi("31", 7), impostazioneCorrelati("31")}) {
        EXPECT_THAT(text, Not(HasSubstr("@")));
        EXPECT_THAT(text, Not(HasSubstr("?")));
    }
}

TEST(ChartStatements, CarryTheNumberOfLevelsTheChartAndTheCompanyAsLiterals) {
    EXPECT_THAT(creazioneTabellaConti(7, 3), HasSubstr("CASE 3\r\n"));
    EXPECT_THAT(creazioneTabellaConti(7, 3), Not(HasSubstr("CASE 4\r\n")));
    EXPECT_THAT(creazioneTabellaConti(42, 3), HasSubstr("    CG24_GRUPPO_CG10 = 42\r\n"));
    EXPECT_THAT(impostazioneAttivi("31", 42), HasSubstr("CI35_DITTA_CG18 = 31\r\n"));
    EXPECT_THAT(impostazioneAttivi("31", 42), HasSubstr("CI35_GRUPPO_CG10 = 42\r\n"));
    EXPECT_THAT(impostazioneCorrelati("31"), HasSubstr("CI15_DITTA_CG18 = 31\r\n"));
    EXPECT_THAT(livelliPDC(42), EndsWith("\r\n    CG10_GRUPPO = 42"));
    EXPECT_EQ(codeHeader(4), "SELECT DBO.FNCI_COGE_GETCODEHEADER(4, ?)");
    EXPECT_EQ(codeHeader(0), "SELECT DBO.FNCI_COGE_GETCODEHEADER(0, ?)");
}

struct FilterCondition {
    int filter;
    std::string condition;
};

class SelectionFilter : public testing::TestWithParam<FilterCondition> {};

TEST_P(SelectionFilter, HasTheConditionOfItsIndex) {
    const std::string from = "FROM\r\n    #CG24_TABPDC\r\n";
    const std::string order = "ORDER BY\r\n    INDICE ASC";
    const std::string condition = GetParam().condition.empty() ? "" : GetParam().condition + "\r\n";
    EXPECT_THAT(creazioneSelezione(GetParam().filter), EndsWith(from + condition + order));
}

const std::string analytic = "WHERE\r\n    ISANALITICO = 1";

INSTANTIATE_TEST_SUITE_P(
    AllIndexes, SelectionFilter,
    testing::Values(FilterCondition{1, ""}, FilterCondition{2, analytic + "\r\n    AND ATTIVO = 1"},
                    FilterCondition{3, analytic + "\r\n    AND ATTIVO = 0"},
                    FilterCondition{4, analytic + "\r\n    AND CORRELATO = 1"},
                    FilterCondition{5, analytic + "\r\n    AND CORRELATO = 0"},
                    FilterCondition{6, analytic + "\r\n    AND ATTIVO = 1\r\n    AND CORRELATO = 1"},
                    FilterCondition{7, analytic + "\r\n    AND ATTIVO = 1\r\n    AND CORRELATO = 0"},
                    FilterCondition{8, analytic + "\r\n    AND ATTIVO = 0\r\n    AND CORRELATO = 1"},
                    FilterCondition{9, analytic + "\r\n    AND ATTIVO = 0\r\n    AND CORRELATO = 0"},
                    FilterCondition{0, ""}, FilterCondition{10, ""}, FilterCondition{-1, ""}),
    [](const auto& testCase) {
        return testCase.param.filter < 0 ? std::string("Negative")
                                         : "Index" + std::to_string(testCase.param.filter);
    });

TEST(SelectionStatements, CreateTheIndexesOfAncestorsUpToTheNumberOfLevels) {
    const auto names = [](std::int16_t levels) {
        std::vector<std::string> all;
        for (const std::string& statement : indiciSelezione(levels)) {
            const auto at = statement.find("IDX");
            all.push_back(at == std::string::npos ? "key" : statement.substr(at, 5));
        }
        return all;
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(names(0), (Names{"key", "IDX01", "IDX02"}));
    EXPECT_EQ(names(3),
              (Names{"key", "IDX01", "IDX02", "IDX03", "IDX04", "IDX05", "IDX08", "IDX09", "IDX10"}));
    EXPECT_EQ(names(5).size(), 13U);
    EXPECT_EQ(names(9), names(5)) << "there are five ancestor columns";
    EXPECT_EQ(indiciSelezione(5).back(), "CREATE NONCLUSTERED INDEX IDX12 ON #CG24_TABPDC_SELECTED "
                                         "(CG24_INDTIPOCONTO, ISANALITICO, LIVELLO5)");
}

TEST(SelectionStatements, CompleteOnlyTheChartOfTheCompany) {
    EXPECT_THAT(completamentoSelezione(7), HasSubstr("    GRUPPO = 7\r\n"));
    EXPECT_THAT(completamentoSelezione(7), Not(HasSubstr("@")));
}

TEST(SelectionStatements, WriteOneColumnBackWhereBothTablesShareTheRow) {
    EXPECT_EQ(riportoAttivo(),
              "UPDATE #CG24_TABPDC\r\n    SET #CG24_TABPDC.ATTIVO = #CG24_TABPDC_SELECTED.ATTIVO\r\nFROM\r\n"
              "    #CG24_TABPDC\r\n    INNER JOIN\r\n    #CG24_TABPDC_SELECTED\r\n    ON\r\n"
              "    #CG24_TABPDC.INDICE = #CG24_TABPDC_SELECTED.INDICE");
    EXPECT_THAT(riportoCorrelato(),
                HasSubstr("SET #CG24_TABPDC.CORRELATO = #CG24_TABPDC_SELECTED.CORRELATO"));
    EXPECT_THAT(riportoCorrelato(), Not(HasSubstr("ATTIVO")));
}

TEST(TreeStatements, MarkByPatternAndNature) {
    EXPECT_EQ(attivazioneSelezione(true, "0102%", 2),
              "UPDATE #CG24_TABPDC_SELECTED\r\nSET\r\n    ATTIVO = 1\r\nWHERE\r\n    CONTO LIKE '0102%'\r\n"
              "    AND CG24_INDTIPOCONTO = 2");
    EXPECT_THAT(attivazioneSelezione(false, "0102030005", 0), HasSubstr("    ATTIVO = 0\r\n"));
}

TEST(TreeStatements, AskForInactiveAccountsWithOneConditionMore) {
    EXPECT_EQ(contoInattivoDiNatura(3), contoDiNatura(3) + "\r\nAND ATTIVO = 0");
}

TEST(TreeStatements, SearchAnAnalyticAccountOfTheChartByItsCode) {
    EXPECT_EQ(ricercaConto(7), "SELECT * FROM #CG24_TABPDC_SELECTED WHERE GRUPPO = 7\r\nAND CONTO = ?\r\n"
                               "AND ISANALITICO = 1");
}

} // namespace

} // namespace veldran::sql
