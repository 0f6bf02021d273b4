#include "adapters/tsql/printer.h"
#include "tests/tsql/refusal.h"

namespace veldran::tsql::test {
namespace {

std::string shape(std::string_view text) {
    return toText(parseBatch(text));
}

TEST(TsqlDefinitions, RefusesAKeyWithoutColumns) {
    EXPECT_NE(refusalOf("CREATE TABLE T (A INT, PRIMARY KEY)"), Refusal{});
    EXPECT_NE(refusalOf("ALTER TABLE T ADD PRIMARY KEY ()"), Refusal{});
    EXPECT_NE(refusalOf("CREATE INDEX I ON T"), Refusal{});
}

TEST(TsqlDefinitions, RefusesAnIndexDroppedWithoutItsTable) {
    EXPECT_EQ(messageOf("DROP INDEX T.I"),
              "Sintassi non corretta alla fine del testo (riga 1, colonna 15): manca 'ON'");
}

TEST(TsqlDefinitions, RefusesATableThatIsReplaced) {
    EXPECT_EQ(refusalOf("CREATE OR ALTER TABLE T (A INT)"), (Refusal{156, 1, 17}));
}

TEST(TsqlDefinitions, RefusesAParameterDefaultThatIsNoConstant) {
    EXPECT_EQ(messageOf("CREATE PROCEDURE P @A INT = @B AS SELECT 1"),
              "Sintassi non corretta vicino a '@B' (riga 1, colonna 29): manca una costante");
}

TEST(TsqlDefinitions, ReadsColumnsWithAllTheirProperties) {
    const auto table = parsed<CreateTable>(
        "CREATE TABLE T (A NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL, B INT IDENTITY(1, 1) PRIMARY KEY "
        "CLUSTERED, "
        "C DECIMAL(5, 2) NULL CONSTRAINT DF_C DEFAULT 0, D BIT DEFAULT (0) NOT NULL UNIQUE, "
        "E INT CONSTRAINT CK_E CHECK (E IN (0, 1)), F INT IDENTITY)");
    ASSERT_EQ(table.columns.size(), 6U);
    EXPECT_EQ(table.columns[0].collation, "DATABASE_DEFAULT");
    EXPECT_EQ(table.columns[0].nullable, false);
    EXPECT_EQ(table.columns[1].identity, IdentityProperty{});
    EXPECT_FALSE(table.columns[1].nullable.has_value());
    EXPECT_EQ(std::get<KeyConstraint>(table.columns[1].constraints.at(0)).clustering, Clustering::Clustered);
    EXPECT_EQ(table.columns[2].defaultValue->name, "DF_C");
    EXPECT_EQ(table.columns[2].nullable, true);
    EXPECT_EQ(std::get<KeyConstraint>(table.columns[3].constraints.at(0)).kind, KeyKind::Unique);
    EXPECT_EQ(std::get<CheckConstraint>(table.columns[4].constraints.at(0)).name, "CK_E");
    EXPECT_TRUE(table.columns[5].identity.has_value());
}

TEST(TsqlDefinitions, ReadsTableConstraints) {
    const auto table = parsed<CreateTable>("CREATE TABLE T (A INT, B INT, CONSTRAINT PK_T PRIMARY KEY "
                                           "NONCLUSTERED (A, B DESC), UNIQUE (B), CHECK (A > B))");
    ASSERT_EQ(table.constraints.size(), 3U);
    const auto& key = std::get<KeyConstraint>(table.constraints[0]);
    EXPECT_EQ(key.name, "PK_T");
    EXPECT_EQ(key.clustering, Clustering::Nonclustered);
    EXPECT_TRUE(key.columns.at(1).descending);
}

TEST(TsqlDefinitions, ReadsAdditionsToATable) {
    EXPECT_EQ(shape("ALTER TABLE #X ADD PRIMARY KEY CLUSTERED (INDICE)"),
              "ALTER TABLE #X ADD PRIMARY KEY CLUSTERED (INDICE)");
    EXPECT_EQ(shape("ALTER TABLE T ADD CONSTRAINT U UNIQUE (A)"),
              "ALTER TABLE T ADD CONSTRAINT U UNIQUE (A)");
    EXPECT_EQ(shape("ALTER TABLE T ADD C INT NULL"), "ALTER TABLE T ADD C INT NULL");
    EXPECT_EQ(shape("ALTER TABLE T ADD CHECK (A > 0)"), "ALTER TABLE T ADD CHECK (A > 0)");
}

TEST(TsqlDefinitions, ReadsIndexes) {
    const auto index = parsed<CreateIndex>("CREATE UNIQUE NONCLUSTERED INDEX IDX01 ON T (A ASC, B DESC)");
    EXPECT_TRUE(index.unique);
    EXPECT_EQ(index.clustering, Clustering::Nonclustered);
    EXPECT_EQ(index.name, "IDX01");
    EXPECT_FALSE(index.columns.at(0).descending);
    EXPECT_TRUE(index.columns.at(1).descending);
}

TEST(TsqlDefinitions, ReadsDrops) {
    const auto tables = parsed<DropStatement>("DROP TABLE IF EXISTS A, DBO.B");
    EXPECT_TRUE(tables.ifExists);
    EXPECT_EQ(tables.targets.size(), 2U);
    EXPECT_EQ(parsed<DropStatement>("DROP INDEX IDX01 ON T").targets.at(0).table->last(), "T");
    EXPECT_EQ(parsed<DropStatement>("DROP PROC P").kind, DropKind::Procedure);
    EXPECT_EQ(parsed<DropStatement>("DROP FUNCTION F").kind, DropKind::Function);
    EXPECT_EQ(parsed<TruncateTable>("TRUNCATE TABLE #T").name.last(), "#T");
}

TEST(TsqlDefinitions, GivesAProcedureTheRestOfItsBatch) {
    const auto procedure = parsed<CreateProcedure>("CREATE PROCEDURE P AS SET NOCOUNT ON SELECT 1; SELECT 2");
    EXPECT_EQ(procedure.body.size(), 3U);
}

TEST(TsqlDefinitions, ReadsParametersWithTypesDefaultsAndDirections) {
    const auto procedure =
        parsed<CreateProcedure>("CREATE PROC DBO.P (@A BIT = 1, @B AS NVARCHAR(MAX) = N'x', @C DECIMAL(5, 2) "
                                "= -1.5 OUTPUT, @D INT = NULL OUT) AS RETURN 0");
    ASSERT_EQ(procedure.parameters.size(), 4U);
    EXPECT_EQ(procedure.parameters[0].name, "@A");
    EXPECT_TRUE(procedure.parameters[1].type.max);
    EXPECT_EQ(toText(*procedure.parameters[2].defaultValue), "-1.5");
    EXPECT_TRUE(procedure.parameters[2].output);
    EXPECT_FALSE(procedure.parameters[1].output);
    EXPECT_TRUE(procedure.parameters[3].output);
}

TEST(TsqlDefinitions, KeepsTheTextOfARoutineWithinReach) {
    const std::string text =
        "-- a note\nCREATE PROCEDURE P @A INT AS\n  SELECT @A -- inside\n  SELECT 2 ;\n-- after";
    const Batch batch = parseBatch(text);
    const SourceSpan whole = batch.statements.at(0).span;
    const SourceSpan body = std::get<CreateProcedure>(batch.statements[0].node).bodySpan;
    EXPECT_EQ(text.substr(whole.begin.offset, whole.end.offset - whole.begin.offset),
              "CREATE PROCEDURE P @A INT AS\n  SELECT @A -- inside\n  SELECT 2 ;");
    EXPECT_EQ(text.substr(body.begin.offset, body.end.offset - body.begin.offset),
              "SELECT @A -- inside\n  SELECT 2 ;");
}

TEST(TsqlDefinitions, TellsHowARoutineIsDefined) {
    EXPECT_EQ(parsed<CreateProcedure>("CREATE PROCEDURE P AS SELECT 1").mode, DefinitionMode::Create);
    EXPECT_EQ(parsed<CreateProcedure>("CREATE OR ALTER PROCEDURE P AS SELECT 1").mode,
              DefinitionMode::CreateOrAlter);
    EXPECT_EQ(parsed<CreateProcedure>("ALTER PROCEDURE P AS SELECT 1").mode, DefinitionMode::Alter);
}

TEST(TsqlDefinitions, ReadsScalarFunctions) {
    const auto function =
        parsed<CreateFunction>("CREATE FUNCTION DBO.F (@A INT, @B NCHAR(10)) RETURNS NVARCHAR(10) WITH "
                               "SCHEMABINDING AS BEGIN DECLARE @X INT RETURN @X END;");
    EXPECT_EQ(function.parameters.size(), 2U);
    EXPECT_TRUE(function.schemaBinding);
    const auto& body = std::get<ScalarFunctionBody>(function.body);
    EXPECT_EQ(body.returns.name, "NVARCHAR");
    EXPECT_EQ(body.statements.size(), 2U);
}

TEST(TsqlDefinitions, ReadsTableFunctionsWithOrWithoutParentheses) {
    const auto grouped =
        parsed<CreateFunction>("CREATE FUNCTION F(@A INT) RETURNS TABLE AS RETURN (SELECT @A AS A)");
    const auto plain =
        parsed<CreateFunction>("CREATE FUNCTION F(@A INT) RETURNS TABLE RETURN SELECT @A AS A");
    EXPECT_EQ(grouped, plain);
    EXPECT_TRUE(std::holds_alternative<InlineTableBody>(grouped.body));
}

} // namespace
} // namespace veldran::tsql::test
