#include "adapters/tsql/printer.h"
#include "tests/tsql/refusal.h"

namespace veldran::tsql::test {
namespace {

SelectSpecification selectOf(std::string_view text) {
    return std::get<SelectSpecification>(parsed<SelectStatement>(text).query.first.node);
}

std::string shape(std::string_view text) {
    return toText(parsed<SelectStatement>(text).query);
}

TEST(TsqlQueries, RefusesAnOrderInsideAUnion) {
    EXPECT_EQ(refusalOf("SELECT 1 AS A ORDER BY A UNION SELECT 2"), (Refusal{156, 1, 26}));
}

TEST(TsqlQueries, RefusesAnEmptyAlias) {
    EXPECT_NE(refusalOf("SELECT 1 AS ''"), Refusal{});
    EXPECT_NE(refusalOf("SELECT 1 ''"), Refusal{});
}

TEST(TsqlQueries, RefusesAConditionInAnOrder) {
    EXPECT_EQ(refusalOf("SELECT A FROM T ORDER BY A = 1"), (Refusal{102, 1, 28}));
}

TEST(TsqlQueries, ReadsEveryFormOfAnAlias) {
    const auto select = selectOf("SELECT A AS X, A Y, Z = A, A AS 'con spazio', [W] = A");
    const std::vector<std::string> aliases{"X", "Y", "Z", "con spazio", "W"};
    ASSERT_EQ(select.items.size(), aliases.size());
    for (std::size_t index = 0; index < aliases.size(); ++index) {
        EXPECT_EQ(std::get<SelectValue>(select.items[index].node).alias, aliases[index]);
    }
}

TEST(TsqlQueries, ReadsAllColumnsOfEverythingAndOfOneSource) {
    const auto select = selectOf("SELECT *, T.*, DBO.T.* FROM T");
    EXPECT_FALSE(std::get<AllColumns>(select.items[0].node).qualifier.has_value());
    EXPECT_EQ(std::get<AllColumns>(select.items[1].node).qualifier->parts, std::vector<std::string>{"T"});
    EXPECT_EQ(std::get<AllColumns>(select.items[2].node).qualifier->parts,
              (std::vector<std::string>{"DBO", "T"}));
}

TEST(TsqlQueries, TellsAProductFromAllColumns) {
    EXPECT_EQ(shape("SELECT T.A * 2 FROM T"), "SELECT T.A * 2 FROM T");
}

TEST(TsqlQueries, ReadsAssignmentsToVariables) {
    const auto select = selectOf("SELECT @A = MAX(PROG), @B = 1 FROM #DETTAGLIO");
    EXPECT_EQ(std::get<SelectAssignment>(select.items[0].node).variable, "@A");
    EXPECT_EQ(std::get<SelectAssignment>(select.items[1].node).variable, "@B");
}

TEST(TsqlQueries, ReadsRowLimits) {
    EXPECT_EQ(shape("SELECT TOP 1 1 FROM T"), "SELECT TOP (1) 1 FROM T");
    EXPECT_EQ(shape("SELECT DISTINCT TOP (@N + 1) A FROM T"), "SELECT DISTINCT TOP (@N + 1) A FROM T");
}

TEST(TsqlQueries, ReadsCommaJoins) {
    EXPECT_EQ(selectOf("SELECT * FROM A, B AS X, C Y").from.size(), 3U);
}

TEST(TsqlQueries, ReadsJoinsFromLeftToRight) {
    const auto select = selectOf("SELECT * FROM A INNER JOIN B ON A.X = B.X LEFT JOIN C ON C.X = B.X "
                                 "JOIN D ON 1 = 1 CROSS JOIN E CROSS APPLY F(A.X) OUTER APPLY G(1, 2) AS H");
    ASSERT_EQ(select.from.size(), 1U);
    const std::vector<JoinKind> kinds{JoinKind::Inner, JoinKind::LeftOuter,  JoinKind::Inner,
                                      JoinKind::Cross, JoinKind::CrossApply, JoinKind::OuterApply};
    ASSERT_EQ(select.from[0].joins.size(), kinds.size());
    for (std::size_t index = 0; index < kinds.size(); ++index) {
        EXPECT_EQ(select.from[0].joins[index].kind, kinds[index]) << index;
        EXPECT_EQ(select.from[0].joins[index].on.has_value(), index < 3) << index;
    }
}

TEST(TsqlQueries, ReadsTableFunctionsWithTheirArguments) {
    const auto select = selectOf("SELECT * FROM FNPC03_ANAGPDC_COAN(1, '10', 5, null) AS A");
    const auto& function = std::get<TableFunction>(select.from[0].first.node);
    EXPECT_EQ(function.arguments.size(), 4U);
    EXPECT_EQ(function.alias, "A");
}

TEST(TsqlQueries, ReadsDerivedTables) {
    const auto select = selectOf("SELECT * FROM (SELECT A FROM T UNION ALL SELECT B FROM U) AS D (X)");
    const auto& derived = std::get<DerivedTable>(select.from[0].first.node);
    EXPECT_EQ(derived.alias, "D");
    EXPECT_EQ(derived.columns, std::vector<std::string>{"X"});
    EXPECT_EQ(derived.query->unions.size(), 1U);
}

TEST(TsqlQueries, ReadsGroupedJoins) {
    const auto select =
        selectOf("SELECT * FROM A LEFT OUTER JOIN (B INNER JOIN C ON B.X = C.X) ON A.X = B.X");
    EXPECT_TRUE(std::holds_alternative<NestedJoin>(select.from[0].joins.at(0).right.node));
}

TEST(TsqlQueries, KeepsLockHints) {
    const auto select = selectOf("SELECT * FROM T AS X WITH (nolock, UPDLOCK)");
    EXPECT_EQ(std::get<NamedTable>(select.from[0].first.node).hints,
              (std::vector<std::string>{"NOLOCK", "UPDLOCK"}));
}

TEST(TsqlQueries, ReadsGroupsAndTheirCondition) {
    const auto select = selectOf("SELECT A, COUNT(*) FROM T WHERE B = 1 GROUP BY A, B HAVING COUNT(*) > 1");
    EXPECT_EQ(select.groupBy.size(), 2U);
    EXPECT_TRUE(select.having.has_value());
    EXPECT_TRUE(select.where.has_value());
}

TEST(TsqlQueries, ReadsUnionsFromLeftToRightWithOneOrder) {
    const auto query =
        parsed<SelectStatement>("SELECT 1 AS A UNION SELECT 2 UNION ALL SELECT 3 ORDER BY A DESC").query;
    ASSERT_EQ(query.unions.size(), 2U);
    EXPECT_FALSE(query.unions[0].all);
    EXPECT_TRUE(query.unions[1].all);
    ASSERT_EQ(query.orderBy.size(), 1U);
    EXPECT_TRUE(query.orderBy[0].descending);
}

TEST(TsqlQueries, KeepsAGroupedUnionApart) {
    EXPECT_EQ(shape("SELECT 1 UNION (SELECT 2 UNION ALL SELECT 3)"),
              "SELECT 1 UNION (SELECT 2 UNION ALL SELECT 3)");
    EXPECT_EQ(shape("((SELECT 1))"), "SELECT 1");
}

TEST(TsqlQueries, OrdersAscendingUnlessTold) {
    const auto query = parsed<SelectStatement>("SELECT A FROM T ORDER BY A ASC, B").query;
    EXPECT_FALSE(query.orderBy[0].descending);
    EXPECT_FALSE(query.orderBy[1].descending);
}

TEST(TsqlQueries, ReadsTheTargetOfASelectInto) {
    EXPECT_EQ(selectOf("SELECT A INTO #X FROM T").into->last(), "#X");
}

TEST(TsqlQueries, ReadsASelectWithoutSources) {
    EXPECT_TRUE(selectOf("SELECT 1, 'a'").from.empty());
}

TEST(TsqlQueries, SpansTheWholeQuery) {
    const auto select = parsed<SelectStatement>("  SELECT A\n  FROM T -- end");
    EXPECT_EQ(select.query.span.begin, (SourcePosition{2, 1, 3}));
    EXPECT_EQ(select.query.span.end, (SourcePosition{19, 2, 9}));
}

} // namespace
} // namespace veldran::tsql::test
