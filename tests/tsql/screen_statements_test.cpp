#include "tests/tsql/invariant.h"
#include "tests/tsql/refusal.h"
#include "tests/tsql/screen_statements.h"

#include <gtest/gtest.h>

namespace veldran::tsql::test {
namespace {

// The account description is asked for with the company marker still in its text; the refusal names the
// marker.
constexpr std::string_view accountDescription =
    " SELECT PC03_DESCR FROM FNPC03_ANAGPDC_COAN(11, '0100', <DITTA>, null) ";

class TsqlScreenStatements : public testing::TestWithParam<ScreenStatement> {};

TEST_P(TsqlScreenStatements, ParsesAsOneStatementWithItsMarkers) {
    const Batch batch = parseBatch(GetParam().text);
    EXPECT_EQ(batch.statements.size(), 1U);
    EXPECT_EQ(batch.parameterCount, GetParam().markers);
}

TEST_P(TsqlScreenStatements, PrintsAsATextThatParsesToTheSameTree) {
    EXPECT_EQ(brokenInvariant(GetParam().text), std::nullopt);
}

TEST_P(TsqlScreenStatements, MeansTheSameWhateverItsLayoutAndCase) {
    std::string oneLine;
    for (const char character : GetParam().text) {
        oneLine += character == '\r' || character == '\n' ? ' ' : character;
    }
    EXPECT_EQ(parseBatch(oneLine), parseBatch(GetParam().text));
}

TEST_P(TsqlScreenStatements, IsUnderstoodOrRefusedInPlaceWhereverItIsCut) {
    constexpr std::size_t cuts = 150;
    const std::string& text = GetParam().text;
    const std::size_t step = text.size() / cuts + 1;
    for (std::size_t length = 1; length < text.size(); length += step) {
        EXPECT_EQ(brokenInvariant(std::string_view(text).substr(0, length)), std::nullopt) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Screen, TsqlScreenStatements, testing::ValuesIn(screenStatements()),
                         [](const auto& instance) { return instance.param.name; });

TEST(TsqlScreenStatementsShape, GivesTheChartItsSeventeenColumns) {
    const auto select = std::get<SelectSpecification>(
        parsed<SelectStatement>(screenStatement("TabellaConti")).query.first.node);
    ASSERT_EQ(select.items.size(), 17U);
    const auto& first = std::get<SelectValue>(select.items.front().node);
    EXPECT_TRUE(std::holds_alternative<IdentityFunction>(first.expression.node));
    EXPECT_EQ(first.alias, "INDICE");
    EXPECT_EQ(select.into->last(), "#CG24_TABPDC");
    const auto& parent = std::get<SelectValue>(select.items[7].node);
    const auto& cast = std::get<Cast>(parent.expression.node);
    EXPECT_EQ(cast.type.name, "NCHAR");
    EXPECT_EQ(std::get<Case>(cast.operand->node).branches.size(), 4U);
}

TEST(TsqlScreenStatementsShape, KeepsTheParenthesisedAccountOfAConditionalDrop) {
    const auto guard = parsed<IfStatement>(screenStatement("EliminazioneSelezione"));
    const auto& test = std::get<IsNull>(guard.condition.node);
    EXPECT_TRUE(test.negated);
    EXPECT_EQ(std::get<FunctionCall>(test.operand->node).name.last(), "OBJECT_ID");
    EXPECT_TRUE(std::holds_alternative<DropStatement>(guard.then->node));
}

TEST(TsqlScreenStatementsShape, ReadsTheTypologyAsOneFlatSumAndOneFlatCondition) {
    const auto select =
        std::get<SelectSpecification>(parsed<SelectStatement>(screenStatement("Tipologia")).query.first.node);
    const auto& sum = std::get<SelectValue>(select.items.at(0).node);
    EXPECT_EQ(sum.alias, "TIPOLOGIA_CONTO_INDUSTRIALE");
    EXPECT_EQ(std::get<Arithmetic>(sum.expression.node).steps.size(), 9U);
    const auto& all = std::get<Case>(std::get<SelectValue>(select.items.at(1).node).expression.node);
    EXPECT_EQ(std::get<Logical>(all.branches.at(0).when->node).operands.size(), 10U);
}

TEST(TsqlScreenStatementsShape, AppliesTheFunctionOfTheCausaliToEachCorrelation) {
    const auto select =
        std::get<SelectSpecification>(parsed<SelectStatement>(screenStatement("Causali")).query.first.node);
    const JoinStep& apply = select.from.at(0).joins.at(0);
    EXPECT_EQ(apply.kind, JoinKind::CrossApply);
    EXPECT_EQ(std::get<TableFunction>(apply.right.node).arguments.size(), 2U);
}

TEST(TsqlScreenStatementsShape, NumbersTheMarkersOfACopyInTheOrderTheyAreBound) {
    const auto insert = parsed<InsertStatement>(screenStatement("CopiaCausale"));
    const auto& select = std::get<SelectSpecification>(std::get<Query>(insert.source).first.node);
    const auto& destination = std::get<SelectValue>(select.items.at(1).node);
    EXPECT_EQ(std::get<ParameterMarker>(destination.expression.node).ordinal, 1U);
    const auto& conditions = std::get<Logical>(select.where->node).operands;
    const auto& account = std::get<Comparison>(conditions.at(2).node);
    const auto& origin = std::get<Comparison>(conditions.at(3).node);
    EXPECT_EQ(std::get<ParameterMarker>(account.right->node).ordinal, 2U);
    EXPECT_EQ(std::get<ParameterMarker>(origin.right->node).ordinal, 3U);
}

TEST(TsqlScreenStatementsShape, RefusesTheCompanyMarkerThatTheAccountDescriptionKeeps) {
    EXPECT_EQ(refusalOf(accountDescription), (Refusal{102, 1, 57}));
    EXPECT_EQ(messageOf(accountDescription), "Sintassi non corretta vicino a '<' (riga 1, colonna 57)");
}

TEST(TsqlScreenStatementsShape, ReadsTheAccountDescriptionOnceTheCompanyIsWrittenIn) {
    std::string text(accountDescription);
    text.replace(text.find("<DITTA>"), std::string_view("<DITTA>").size(), "7");
    EXPECT_EQ(refusalOf(text), Refusal{});
}

} // namespace
} // namespace veldran::tsql::test
