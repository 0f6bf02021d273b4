#include "adapters/embedded/script.h"
#include "tests/embedded/session_fixture.h"

namespace veldran::embedded::test {

TEST_F(SessionTest, AProcedureRunsWithItsParametersByName) {
    run({"CREATE TABLE T (A INT, B NCHAR(4))", "INSERT INTO T VALUES (1, 'x'), (2, 'y')",
         "CREATE PROCEDURE P @MIN INT, @B NCHAR(4) = 'y' AS SELECT A, B FROM T WHERE A >= @MIN AND B = @B"});
    const auto call = [&](const std::vector<ado::BoundParameter>& parameters) {
        return asText(*session_->callProcedure("P", parameters, {}).rows);
    };
    EXPECT_EQ(call({integer("@MIN", 1)}), (Rows{{"2", "y   "}}));
    EXPECT_EQ(call({wide("b", "X", 4), integer("min", 0)}), (Rows{{"1", "x   "}}));
    EXPECT_EQ(errorOf([&] { call({}); }).Number, 201);
    EXPECT_EQ(errorOf([&] { call({integer("@MIN", 1), integer("@ALTRO", 1)}); }).Number, 8145);
    EXPECT_EQ(errorOf([&] { call({integer("@MIN", 1), wide("@B", "abcde", 5)}); }).Number, 8152);
    for (const char* name : {"NESSUNA", "", "P'", "P P", "P."}) {
        EXPECT_EQ(errorOf([&] { session_->callProcedure(name, {}, {}); }).Number, 2812) << name;
    }
}

TEST_F(SessionTest, AProcedureTellsItsParameters) {
    execute("CREATE PROCEDURE P @A NCHAR(10), @B INT, @C SMALLINT, @D BIT, @E DECIMAL(5, 2), @F NVARCHAR(20) "
            "OUTPUT AS RETURN");
    const auto parameters = session_->describeProcedure("dbo.p");
    ASSERT_EQ(parameters.size(), 6U);
    EXPECT_EQ(parameters[0].name, "@A");
    EXPECT_EQ(parameters[0].type, ado::adWChar);
    EXPECT_EQ(parameters[0].size, 10);
    EXPECT_EQ(parameters[1].type, ado::adInteger);
    EXPECT_EQ(parameters[2].type, ado::adSmallInt);
    EXPECT_EQ(parameters[3].type, ado::adBoolean);
    EXPECT_EQ(parameters[4].type, ado::adNumeric);
    EXPECT_EQ(parameters[4].precision, 5);
    EXPECT_EQ(parameters[4].scale, 2);
    EXPECT_EQ(parameters[5].direction, ado::adParamInputOutput);
    EXPECT_EQ(errorOf([&] { session_->describeProcedure("NO"); }).Number, 2812);
}

TEST_F(SessionTest, AProcedureDecidesRepeatsAndCalls) {
    run({"CREATE TABLE T (N INT)",
         "CREATE PROCEDURE AGGIUNGI @N INT, @DOPPIO INT OUTPUT AS BEGIN INSERT INTO T VALUES (@N) SET "
         "@DOPPIO = @N * 2 RETURN @N END",
         "CREATE PROCEDURE GIRA @QUANTI INT AS BEGIN "
         "DECLARE @I INT, @D INT, @R INT SET @I = 0 "
         "WHILE 1 = 1 BEGIN SET @I = @I + 1 IF @I > @QUANTI BREAK IF @I = 2 CONTINUE "
         "EXEC @R = AGGIUNGI @I, @DOPPIO = @D OUTPUT END "
         "IF @R = 3 SELECT @D AS D, @R AS R ELSE SELECT -1 AS D, @R AS R END"});
    EXPECT_EQ(rows("EXEC GIRA 3"), (Rows{{"6", "3"}}));
    EXPECT_EQ(rows("SELECT N FROM T ORDER BY N"), (Rows{{"1"}, {"3"}}));
    EXPECT_EQ(rows("EXECUTE GIRA @QUANTI = 1"), (Rows{{"-1", "1"}}));
    EXPECT_EQ(error("EXEC GIRA 1, 2").Number, 8144);
    EXPECT_EQ(error("EXEC GIRA @X = 2").Number, 8145);
    EXPECT_EQ(error("EXEC GIRA").Number, 201);
}

TEST_F(SessionTest, AProcedureThatCallsItselfForEverIsStopped) {
    execute("CREATE PROCEDURE P AS EXEC P");
    EXPECT_EQ(error("EXEC P").Number, 217);
    EXPECT_EQ(cell("SELECT @@NESTLEVEL"), "0");
}

TEST_F(SessionTest, WorkingTablesOfAProcedureEndWithIt) {
    run({"CREATE PROCEDURE P AS BEGIN CREATE TABLE #P (A INT) INSERT INTO #P VALUES (1) SELECT A FROM #P "
         "END"});
    EXPECT_EQ(rows("EXEC P"), (Rows{{"1"}}));
    EXPECT_EQ(error("SELECT * FROM #P").Number, 208);
    EXPECT_EQ(rows("EXEC P"), (Rows{{"1"}}));
}

TEST_F(SessionTest, AWorkingTableMadeWithParametersEndsWithItsText) {
    run({"CREATE TABLE T (A INT)", "INSERT INTO T VALUES (1)"});
    execute("SELECT A INTO #T FROM T WHERE A = ?", {integer("@A", 1)});
    EXPECT_EQ(error("SELECT * FROM #T").Number, 208);
}

TEST_F(SessionTest, AProcedureFindsTheWorkingTablesOfItsCaller) {
    run({"CREATE PROCEDURE P AS SELECT COUNT(*) AS N FROM #T"});
    EXPECT_EQ(error("EXEC P").Number, 208);
    run({"CREATE TABLE #T (A INT)", "INSERT INTO #T VALUES (1)"});
    EXPECT_EQ(rows("EXEC P"), (Rows{{"1"}}));
    run({"DROP TABLE #T", "CREATE TABLE #T (A NVARCHAR(3), B INT)"});
    EXPECT_EQ(rows("EXEC P"), (Rows{{"0"}}));
}

TEST_F(SessionTest, RoutinesAreReplacedAlteredAndDropped) {
    execute("CREATE PROCEDURE P AS SELECT 1 AS N");
    EXPECT_EQ(error("CREATE PROCEDURE P AS SELECT 2 AS N").Number, 2714);
    EXPECT_EQ(error("CREATE TABLE P (A INT)").Number, 2714);
    execute("ALTER PROCEDURE P AS SELECT 2 AS N");
    EXPECT_EQ(rows("EXEC P"), (Rows{{"2"}}));
    execute("CREATE OR ALTER PROCEDURE P AS SELECT 3 AS N");
    EXPECT_EQ(asText(*anotherSession()->execute("EXEC P", {}, {}).rows), (Rows{{"3"}}));
    execute("DROP PROCEDURE P");
    EXPECT_EQ(error("EXEC P").Number, 2812);
    EXPECT_EQ(error("DROP PROCEDURE P").Number, 3701);
    EXPECT_EQ(error("ALTER PROCEDURE P AS SELECT 1").Number, 208);
    execute("CREATE FUNCTION F() RETURNS INT AS BEGIN RETURN 1 END");
    EXPECT_EQ(error("DROP PROCEDURE F").Number, 3701);
}

TEST_F(SessionTest, AFunctionConvertsItsArgumentsAndItsResult) {
    run({"CREATE FUNCTION F (@A NCHAR(3), @N SMALLINT) RETURNS NVARCHAR(5) AS BEGIN RETURN @A + '|' + "
         "CAST(@N AS NVARCHAR(3)) END",
         "CREATE FUNCTION G (@N INT) RETURNS INT AS BEGIN RETURN DBO.H(@N) + 1 END",
         "CREATE FUNCTION H (@N INT) RETURNS INT AS BEGIN RETURN @N * 10 END",
         "CREATE FUNCTION R (@N INT) RETURNS INT AS BEGIN RETURN DBO.R(@N) END",
         "CREATE FUNCTION L (@N INT) RETURNS INT AS BEGIN DECLARE @X INT SET @X = @N RETURN @X END"});
    EXPECT_EQ(rows("SELECT DBO.F('a', 7), DBO.G(4)"), (Rows{{"a  |7", "41"}}));
    EXPECT_EQ(error("SELECT DBO.F('a', 70000)").Number, 8115);
    EXPECT_EQ(error("SELECT DBO.F('a')").Number, 313);
    EXPECT_EQ(error("SELECT DBO.F('a', 1, 2)").Number, 8144);
    EXPECT_EQ(error("SELECT DBO.R(1)").Number, 217);
    EXPECT_EQ(error("SELECT DBO.L(1)").Number, 40517);
}

TEST_F(SessionTest, AChangedFunctionChangesWhatWasBoundToIt) {
    run({"CREATE FUNCTION F (@N INT) RETURNS INT AS BEGIN RETURN @N + 1 END"});
    const auto prepared = session_->prepare("SELECT DBO.F(1)", {});
    EXPECT_EQ(asText(*prepared->execute({}, {}).rows), (Rows{{"2"}}));
    run({"DROP FUNCTION F", "CREATE FUNCTION F (@N INT) RETURNS INT AS BEGIN RETURN @N + 2 END"});
    EXPECT_EQ(asText(*prepared->execute({}, {}).rows), (Rows{{"3"}}));
}

TEST_F(SessionTest, ATableFunctionIsAppliedRowByRow) {
    run({"CREATE TABLE T (A INT, B NCHAR(2))", "CREATE TABLE K (A INT, D NVARCHAR(10))",
         "INSERT INTO T VALUES (1, 'x'), (2, 'y'), (3, 'z')",
         "INSERT INTO K VALUES (1, 'uno'), (1, 'ein'), (2, 'due')",
         "CREATE FUNCTION F (@A INT) RETURNS TABLE AS RETURN (SELECT A AS KA, D, UPPER(D) AS U FROM K WHERE "
         "A = @A)"});
    EXPECT_EQ(rows("SELECT T.A, D FROM T CROSS APPLY F(T.A) ORDER BY T.A, D"),
              (Rows{{"1", "ein"}, {"1", "uno"}, {"2", "due"}}));
    EXPECT_EQ(rows("SELECT X.U FROM T CROSS APPLY DBO.F(T.A + 1) AS X WHERE T.A = 1"), (Rows{{"DUE"}}));
    EXPECT_EQ(rows("SELECT D FROM F(2)"), (Rows{{"due"}}));
    EXPECT_EQ(rows("SELECT T.A FROM T INNER JOIN F(1) AS X ON X.KA = T.A WHERE X.D = 'UNO'"), (Rows{{"1"}}));
    EXPECT_EQ(error("SELECT T.A FROM T OUTER APPLY F(T.A)").Number, 40517) << "U is computed";
}

TEST_F(SessionTest, AnOuterApplyKeepsTheRowsWithoutAMatch) {
    run({"CREATE TABLE T (A INT)", "CREATE TABLE K (A INT NOT NULL, D NVARCHAR(10) NOT NULL)",
         "INSERT INTO T VALUES (1), (2)", "INSERT INTO K VALUES (1, 'uno')",
         "CREATE FUNCTION F (@A INT) RETURNS TABLE AS RETURN (SELECT D FROM K WHERE A = @A)"});
    EXPECT_EQ(rows("SELECT A, D FROM T OUTER APPLY F(A) ORDER BY A"), (Rows{{"1", "uno"}, {"2", "NULL"}}));
    EXPECT_EQ(rows("SELECT A FROM T OUTER APPLY F(A) WHERE D IS NULL"), (Rows{{"2"}}));
}

TEST_F(SessionTest, AFunctionMayReadTheTableOfItsCaller) {
    run({"CREATE TABLE T (A INT, P INT)", "INSERT INTO T VALUES (1, NULL), (2, 1), (3, 1)",
         "CREATE FUNCTION FIGLI (@A INT) RETURNS TABLE AS RETURN (SELECT A AS F FROM T WHERE P = @A)"});
    EXPECT_EQ(rows("SELECT T.A, F FROM T CROSS APPLY FIGLI(T.A) ORDER BY F"), (Rows{{"1", "2"}, {"1", "3"}}));
}

TEST_F(SessionTest, RaisedErrorsReachTheCaller) {
    const ado::Error raised = error("RAISERROR('Conto %s, riga %d', 16, 1, 'A1', 3)");
    EXPECT_EQ(raised.Number, 50000);
    EXPECT_EQ(raised.Description, "Conto A1, riga 3");
    EXPECT_NO_THROW(execute("RAISERROR('solo un messaggio', 10, 1) PRINT 'ciao'"));
    EXPECT_EQ(error("THROW 51000, 'Fermo', 1").Number, 51000);
}

TEST_F(SessionTest, VariablesLiveInTheirText) {
    EXPECT_EQ(rows("DECLARE @A NCHAR(3) = 'x', @B DECIMAL(5, 2) SET @B = 1.005 SELECT @A + '|', @B"),
              (Rows{{"x  |", "1.01"}}));
    EXPECT_EQ(error("DECLARE @A INT DECLARE @A INT").Number, 134);
    run({"CREATE TABLE T (A INT)", "INSERT INTO T VALUES (5)"});
    EXPECT_EQ(rows("DECLARE @X INT, @N INT SELECT @X = A, @N = A + 1 FROM T SELECT @X, @N"),
              (Rows{{"5", "6"}}));
    EXPECT_EQ(error("DECLARE @X INT SELECT @X = A, A FROM T").Number, 141);
}

TEST_F(SessionTest, AScriptTellsTheLineOfItsError) {
    const std::string script =
        "CREATE TABLE T (A INT)\nGO\n\nINSERT INTO T VALUES (1)\nGO 2\nSELECT * FROM X\nGO\nDROP TABLE T\n";
    const ado::Error failed = errorOf([&] { runScript(*session_, script); });
    EXPECT_EQ(failed.Number, 208);
    EXPECT_TRUE(failed.Description.starts_with("Script, riga 6:")) << failed.Description;
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T"), "2");
    EXPECT_NE(errorOf([&] { runScript(*session_, "SELECT 1\nGO\nSELECT 'a\n"); }).Description.find("riga 3"),
              std::string::npos);
    EXPECT_NE(
        errorOf([&] { runScript(*session_, "SELECT 1\nGO\n\nSELECT 1 FROM\n"); }).Description.find("riga 4"),
        std::string::npos);
}

} // namespace veldran::embedded::test
