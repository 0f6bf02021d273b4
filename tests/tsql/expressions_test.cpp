#include "adapters/tsql/printer.h"
#include "tests/tsql/refusal.h"

namespace veldran::tsql::test {
namespace {

// The canonical text shows the tree's shape: parentheses stand where operands are grouped.
std::string shape(std::string_view text) {
    return toText(parseExpression(text));
}

template<typename Kind>
Kind node(std::string_view text) {
    return std::get<Kind>(parseExpression(text).node);
}

TEST(TsqlExpressions, RefusesWhatFollowsALoneExpression) {
    EXPECT_THROW(parseExpression("1 2"), SyntaxError);
    EXPECT_THROW(parseExpression(""), SyntaxError);
}

TEST(TsqlExpressions, RefusesAComparisonOfAComparison) {
    EXPECT_THROW(parseExpression("A = B = C"), SyntaxError);
}

TEST(TsqlExpressions, RefusesAnUnfinishedCase) {
    EXPECT_THROW(parseExpression("CASE END"), SyntaxError);
    EXPECT_THROW(parseExpression("CASE A END"), SyntaxError);
    EXPECT_THROW(parseExpression("CASE WHEN A = 1 THEN 2"), SyntaxError);
    EXPECT_THROW(parseExpression("CASE WHEN A THEN 2 END"), SyntaxError);
    EXPECT_THROW(parseExpression("CASE A WHEN A = 1 THEN 2 END"), SyntaxError);
}

TEST(TsqlExpressions, RefusesAnEmptyList) {
    EXPECT_THROW(parseExpression("A IN ()"), SyntaxError);
}

TEST(TsqlExpressions, RefusesReservedWordsAsFunctions) {
    EXPECT_THROW(parseExpression("PLAN(1)"), SyntaxError);
    EXPECT_THROW(parseExpression("COALESCE"), SyntaxError);
}

TEST(TsqlExpressions, KeepsLiteralsAsWritten) {
    EXPECT_EQ(node<Literal>("12.50"), (Literal{LiteralKind::Decimal, "12.50"}));
    EXPECT_EQ(node<Literal>("'dell''anno'"), (Literal{LiteralKind::String, "dell'anno"}));
    EXPECT_EQ(node<Literal>("N'a'"), (Literal{LiteralKind::NationalString, "a"}));
    EXPECT_EQ(node<Literal>("null"), (Literal{LiteralKind::Null, ""}));
    EXPECT_EQ(node<Literal>("0x0A"), (Literal{LiteralKind::Binary, "0x0A"}));
    EXPECT_EQ(node<Literal>("1E2"), (Literal{LiteralKind::Float, "1E2"}));
}

TEST(TsqlExpressions, KeepsTheSpanOfEachNode) {
    const Expression sum = parseExpression(" A +\n B");
    EXPECT_EQ(sum.span.begin, (SourcePosition{1, 1, 2}));
    EXPECT_EQ(sum.span.end, (SourcePosition{7, 2, 3}));
    const auto& chain = std::get<Arithmetic>(sum.node);
    EXPECT_EQ(chain.steps[0].operand->span.begin, (SourcePosition{6, 2, 2}));
}

TEST(TsqlExpressions, CountsParenthesesIntoTheSpan) {
    EXPECT_EQ(parseExpression("(1)").span.end.offset, 3U);
}

TEST(TsqlExpressions, ComparesTreesWithoutRegardToPlaces) {
    EXPECT_EQ(parseExpression("A+1"), parseExpression("  A\n + 1"));
    EXPECT_NE(parseExpression("A + 1"), parseExpression("A + 2"));
}

TEST(TsqlExpressions, MultipliesBeforeItAdds) {
    EXPECT_EQ(shape("1 + 2 * 3"), "1 + 2 * 3");
    EXPECT_EQ(shape("(1 + 2) * 3"), "(1 + 2) * 3");
    const auto chain = node<Arithmetic>("1 + 2 * 3");
    ASSERT_EQ(chain.steps.size(), 1U);
    EXPECT_TRUE(std::holds_alternative<Arithmetic>(chain.steps[0].operand->node));
}

TEST(TsqlExpressions, TakesOperatorsOfOnePrecedenceFromLeftToRight) {
    const auto chain = node<Arithmetic>("1 - 2 + 3 & 4");
    ASSERT_EQ(chain.steps.size(), 3U);
    EXPECT_EQ(chain.steps[0].op, ArithmeticOperator::Subtract);
    EXPECT_EQ(chain.steps[1].op, ArithmeticOperator::Add);
    EXPECT_EQ(chain.steps[2].op, ArithmeticOperator::BitAnd);
}

TEST(TsqlExpressions, KeepsAGroupedOperandApart) {
    EXPECT_EQ(shape("1 - (2 - 3)"), "1 - (2 - 3)");
    EXPECT_EQ(shape("((1))"), "1");
}

// The server reads -100.0 / -100.0 * 10.0 as 0.1: a sign takes the whole product behind it.
TEST(TsqlExpressions, LetsASignReachOverTheProductBehindIt) {
    EXPECT_EQ(shape("A / -B * C"), "A / -B * C");
    EXPECT_EQ(shape("-A + B"), "-A + B");
    EXPECT_EQ(shape("(-A) * B"), "(-A) * B");
    EXPECT_EQ(shape("- -A"), "- -A");
    const auto chain = node<Arithmetic>("A / -B * C");
    ASSERT_EQ(chain.steps.size(), 1U);
    EXPECT_EQ(shape(toText(*std::get<Unary>(chain.steps[0].operand->node).operand)), "B * C");
}

TEST(TsqlExpressions, InvertsBitsBeforeItMultiplies) {

    EXPECT_EQ(node<Arithmetic>("~A * B").steps.size(), 1U);
    EXPECT_EQ(shape("~(A * B)"), "~(A * B)");
    EXPECT_EQ(shape("~-A * B"), "~-A * B");
    EXPECT_EQ(shape("(~-A) * B"), "(~-A) * B");
}

TEST(TsqlExpressions, BindsAndMoreTightlyThanOr) {
    EXPECT_EQ(shape("A = 1 OR B = 2 AND C = 3"), "A = 1 OR B = 2 AND C = 3");
    EXPECT_EQ(shape("(A = 1 OR B = 2) AND C = 3"), "(A = 1 OR B = 2) AND C = 3");
    const auto chain = node<Logical>("A = 1 OR B = 2 AND C = 3");
    EXPECT_EQ(chain.op, LogicalOperator::Or);
    EXPECT_EQ(chain.operands.size(), 2U);
}

TEST(TsqlExpressions, NegatesOneConditionOnly) {
    EXPECT_EQ(shape("NOT A = 1 AND B = 2"), "NOT A = 1 AND B = 2");
    EXPECT_EQ(node<Logical>("NOT A = 1 AND B = 2").op, LogicalOperator::And);
    EXPECT_EQ(shape("NOT (A = 1 AND B = 2)"), "NOT (A = 1 AND B = 2)");
}

TEST(TsqlExpressions, ReadsEverySpellingOfTheComparisons) {
    EXPECT_EQ(shape("A <> B"), "A <> B");
    EXPECT_EQ(shape("A != B"), "A <> B");
    EXPECT_EQ(shape("A !> B"), "A <= B");
    EXPECT_EQ(shape("A !< B"), "A >= B");
    EXPECT_EQ(shape("A<B"), "A < B");
}

TEST(TsqlExpressions, ReadsRangesWithTheirOwnAnd) {
    EXPECT_EQ(shape("A BETWEEN 1 AND 2 AND B = 3"), "A BETWEEN 1 AND 2 AND B = 3");
    EXPECT_EQ(node<Logical>("A BETWEEN 1 AND 2 AND B = 3").operands.size(), 2U);
    EXPECT_TRUE(node<Between>("A NOT BETWEEN 1 AND 2").negated);
}

TEST(TsqlExpressions, TellsAListFromASubquery) {
    EXPECT_EQ(node<InList>("A IN (1, 2, 3)").values.size(), 3U);
    EXPECT_TRUE(node<InQuery>("A NOT IN (SELECT B FROM T)").negated);
    EXPECT_FALSE(node<InQuery>("A IN ((SELECT 1) UNION SELECT 2)").negated);
}

TEST(TsqlExpressions, ReadsPatternsWithTheirEscape) {
    EXPECT_EQ(shape("A LIKE '01%'"), "A LIKE '01%'");
    EXPECT_EQ(shape("A NOT LIKE 'x!%' ESCAPE '!'"), "A NOT LIKE 'x!%' ESCAPE '!'");
}

TEST(TsqlExpressions, ReadsTestsForNull) {
    EXPECT_FALSE(node<IsNull>("A IS NULL").negated);
    EXPECT_TRUE(node<IsNull>("A IS NOT NULL").negated);
}

TEST(TsqlExpressions, ReadsSubqueriesAsValuesAndAsTests) {
    EXPECT_EQ(shape("EXISTS (SELECT 1 FROM T)"), "EXISTS (SELECT 1 FROM T)");
    EXPECT_EQ(shape("NOT EXISTS(SELECT 1)"), "NOT EXISTS (SELECT 1)");
    EXPECT_EQ(shape("(SELECT TOP 1 1 FROM T) IS NULL"), "(SELECT TOP (1) 1 FROM T) IS NULL");
    EXPECT_EQ(shape("((SELECT 1) + 2)"), "(SELECT 1) + 2");
}

TEST(TsqlExpressions, TellsASimpleCaseFromASearchedOne) {
    EXPECT_TRUE(node<Case>("CASE A WHEN 2 THEN 'x' ELSE NULL END").operand.has_value());
    const auto searched = node<Case>("CASE WHEN A = 1 THEN 2 WHEN B = 1 THEN 3 END");
    EXPECT_FALSE(searched.operand.has_value());
    EXPECT_EQ(searched.branches.size(), 2U);
    EXPECT_FALSE(searched.otherwise.has_value());
}

TEST(TsqlExpressions, ReadsConversions) {
    const auto cast = node<Cast>("CAST(A AS nvarchar(14))");
    EXPECT_EQ(cast.type.name, "NVARCHAR");
    EXPECT_EQ(cast.type.arguments, std::vector<std::int64_t>{14});
    EXPECT_EQ(shape("CONVERT(DECIMAL(5, 2), A, 1)"), "CONVERT(DECIMAL(5, 2), A, 1)");
    EXPECT_TRUE(node<Cast>("CAST(A AS NVARCHAR(MAX))").type.max);
}

TEST(TsqlExpressions, BindsACollationToTheNearestOperand) {
    EXPECT_EQ(shape("A + B COLLATE DATABASE_DEFAULT"), "A + B COLLATE DATABASE_DEFAULT");
    EXPECT_TRUE(std::holds_alternative<Arithmetic>(parseExpression("A + B COLLATE X").node));
}

TEST(TsqlExpressions, ReadsCallsOfFunctions) {
    EXPECT_EQ(node<FunctionCall>("DBO.FNCI_COGE_GETCODEHEADER(4, ?)").name.parts,
              (std::vector<std::string>{"DBO", "FNCI_COGE_GETCODEHEADER"}));
    EXPECT_TRUE(node<FunctionCall>("GETDATE()").arguments.empty());
    EXPECT_TRUE(node<FunctionCall>("COUNT(*)").star);
    EXPECT_TRUE(node<FunctionCall>("COUNT(DISTINCT A)").distinct);
    EXPECT_EQ(shape("COUNT(ALL A)"), "COUNT(A)");
}

TEST(TsqlExpressions, ReadsFunctionsWhoseNamesAreReserved) {
    EXPECT_EQ(node<FunctionCall>("LEFT(A, 2)").name.last(), "LEFT");
    EXPECT_EQ(node<FunctionCall>("RIGHT(A, 2)").name.last(), "RIGHT");
    EXPECT_EQ(node<FunctionCall>("COALESCE(A, B)").arguments.size(), 2U);
    EXPECT_EQ(node<FunctionCall>("NULLIF(A, B)").arguments.size(), 2U);
}

TEST(TsqlExpressions, ReadsWindows) {
    EXPECT_EQ(shape("ROW_NUMBER() OVER (ORDER BY A, B DESC)"), "ROW_NUMBER() OVER (ORDER BY A, B DESC)");
    EXPECT_EQ(shape("SUM(A) OVER (PARTITION BY B ORDER BY C)"), "SUM(A) OVER (PARTITION BY B ORDER BY C)");
}

TEST(TsqlExpressions, ReadsTheRunningNumberOfASelectInto) {
    const auto identity = node<IdentityFunction>("IDENTITY(INT, 10, -1)");
    EXPECT_EQ(identity.type.name, "INT");
    EXPECT_EQ(identity.seed, 10);
    EXPECT_EQ(identity.increment, -1);
}

TEST(TsqlExpressions, ReadsQualifiedNames) {
    EXPECT_EQ(node<ColumnReference>("SUB.ATTIVO").name.parts, (std::vector<std::string>{"SUB", "ATTIVO"}));
    EXPECT_EQ(node<ColumnReference>("TEMPDB..#X").name.parts, (std::vector<std::string>{"TEMPDB", "", "#X"}));
    EXPECT_EQ(node<ColumnReference>("[a b].\"c\"").name.parts, (std::vector<std::string>{"a b", "c"}));
}

TEST(TsqlExpressions, TellsConditionsFromValues) {
    EXPECT_TRUE(isCondition(parseExpression("A = 1")));
    EXPECT_TRUE(isCondition(parseExpression("NOT (A = 1)")));
    EXPECT_FALSE(isCondition(parseExpression("A + 1")));
    EXPECT_FALSE(isCondition(parseExpression("CASE WHEN A = 1 THEN 1 END")));
}

TEST(TsqlExpressions, NumbersMarkersInTheOrderOfTheText) {
    const auto choice = node<Case>("CASE WHEN (SELECT ?) IS NULL THEN ? ELSE ? END");
    EXPECT_EQ(std::get<ParameterMarker>((*choice.otherwise)->node).ordinal, 3U);
    EXPECT_EQ(std::get<ParameterMarker>(choice.branches[0].then->node).ordinal, 2U);
}

TEST(TsqlExpressions, PrintsNamesThatNeedItWithDelimiters) {
    EXPECT_EQ(shape("[ORDER]"), "[ORDER]");
    EXPECT_EQ(shape("[a]]b]"), "[a]]b]");
    EXPECT_EQ(shape("\"CONTO\""), "CONTO");
    EXPECT_EQ(shape("[CAST](1)"), "[CAST](1)");
}

TEST(TsqlExpressions, PrintsStringsWithTheirQuotesDoubled) {
    EXPECT_EQ(shape("N'dell''anno'"), "N'dell''anno'");
}

} // namespace
} // namespace veldran::tsql::test
