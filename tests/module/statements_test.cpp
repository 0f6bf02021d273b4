// Texts of statements: how lines are joined, markers replaced, and what no chart and no tab strip ask for.
#include "sql/selection_statements.h"
#include "sql/statement.h"

#include <gtest/gtest.h>

namespace veldran::sql {

namespace {

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

TEST(SelectionStatements, HaveNoConditionForAnIndexThatNoTabCanHave) {
    for (const int filter : {-1, 0}) {
        EXPECT_EQ(creazioneSelezione(filter), creazioneSelezione(1));
    }
}

TEST(SelectionStatements, CreateTheIndexesOfFiveAncestorsAtTheMost) {
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
    EXPECT_EQ(names(5).size(), 13U);
    EXPECT_EQ(names(9), names(5)) << "there are five ancestor columns";
}

} // namespace

} // namespace veldran::sql
