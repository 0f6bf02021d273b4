#include "adapters/embedded/script.h"
#include "tests/embedded/session_fixture.h"

namespace veldran::embedded::test {

using Names = std::vector<std::string>;

TEST_F(SessionTest, WorkingTablesBelongToTheirSession) {
    const auto other = anotherSession();
    run({"CREATE TABLE #T (A INT)", "INSERT INTO #T VALUES (1)"});
    EXPECT_EQ(errorOf([&] { other->execute("SELECT * FROM #T", {}, {}); }).Number, 208);
    EXPECT_NO_THROW(other->execute("CREATE TABLE #T (B NVARCHAR(3))", {}, {}));
    EXPECT_EQ(cell("SELECT A FROM #T"), "1");
}

TEST_F(SessionTest, WorkingTablesAnswerToEveryFormOfTheirName) {
    run({"CREATE TABLE #T (A INT)", "INSERT INTO TEMPDB.DBO.#T VALUES (1)",
         "INSERT INTO TEMPDB..#T VALUES (2)"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #t"), "2");
    EXPECT_EQ(cell("SELECT CASE WHEN OBJECT_ID('TEMPDB.DBO.#T') IS NOT NULL THEN 1 ELSE 0 END"), "1");
    EXPECT_EQ(cell("SELECT OBJECT_ID('#T')"), "NULL") << "not in the session's own database";
    EXPECT_EQ(cell("SELECT OBJECT_ID('TEMPDB..#NO')"), "NULL");
    EXPECT_EQ(rows("SELECT TEMPDB..#T.A FROM #T WHERE #T.A = 2"), (Rows{{"2"}}));
}

TEST_F(SessionTest, ObjectIdTellsTablesFromRoutines) {
    run({"CREATE TABLE T (A INT)", "CREATE PROCEDURE P AS SELECT 1"});
    EXPECT_EQ(cell("SELECT OBJECT_ID('P', 'U')"), "NULL");
    EXPECT_NE(cell("SELECT OBJECT_ID('DBO.P', 'P')"), "NULL");
    EXPECT_NE(cell("SELECT OBJECT_ID('[T]')"), "NULL");
    EXPECT_EQ(cell("SELECT OBJECT_ID('')"), "NULL");
    EXPECT_EQ(cell("SELECT OBJECT_ID('ALTRO.DBO.T')"), "NULL");
}

TEST_F(SessionTest, AConditionalDropDropsOnlyWhatIsThere) {
    const std::string drop = "IF OBJECT_ID('TEMPDB.DBO.#T') IS NOT NULL DROP TABLE #T";
    EXPECT_NO_THROW(execute(drop));
    run({"CREATE TABLE #T (A INT)", drop});
    EXPECT_EQ(error("SELECT * FROM #T").Number, 208);
    EXPECT_NO_THROW(execute("DROP TABLE IF EXISTS #T"));
}

TEST_F(SessionTest, SelectIntoNumbersRowsInTheirOrder) {
    run({"CREATE TABLE T (A NCHAR(3) NOT NULL)", "INSERT INTO T VALUES ('c'), ('a'), ('b')",
         "SELECT A AS X, IDENTITY(INT, 1, 1) AS N, A + '!' AS Y INTO #T FROM T ORDER BY A DESC"});
    EXPECT_EQ(rows("SELECT * FROM #T ORDER BY N"),
              (Rows{{"c  ", "1", "c  !"}, {"b  ", "2", "b  !"}, {"a  ", "3", "a  !"}}));
    EXPECT_EQ(error("INSERT INTO #T VALUES ('d', 4, 'd')").Number, 8101);
    EXPECT_EQ(error("INSERT INTO #T SELECT 'd', 4, 'd'").Number, 8101);
    EXPECT_EQ(affected("INSERT INTO #T (X, Y) VALUES ('d', 'd')"), 1);
    EXPECT_EQ(cell("SELECT N FROM #T WHERE X = 'd'"), "4");
}

TEST_F(SessionTest, IdentityStartsWhereItIsTold) {
    run({"CREATE TABLE T (A INT)", "INSERT INTO T VALUES (1), (2)",
         "SELECT IDENTITY(INT, 100, 1) AS N, A INTO #T FROM T",
         "CREATE TABLE P (N INT IDENTITY(7, 1) PRIMARY KEY, A INT)", "INSERT INTO P VALUES (1), (2)"});
    EXPECT_EQ(rows("SELECT N FROM #T ORDER BY N"), (Rows{{"100"}, {"101"}}));
    EXPECT_EQ(rows("SELECT N FROM P ORDER BY N"), (Rows{{"7"}, {"8"}}));
    EXPECT_EQ(cell("SELECT SCOPE_IDENTITY()"), "8");
    EXPECT_EQ(error("CREATE TABLE Q (N INT IDENTITY(1, 2))").Number, 40517);
}

TEST_F(SessionTest, AnIdentityIsNotGivenTwice) {
    run({"CREATE TABLE T (N INT IDENTITY(1, 1), A INT)", "INSERT INTO T VALUES (1), (2)",
         "DELETE FROM T WHERE N = 2", "INSERT INTO T VALUES (3)"});
    EXPECT_EQ(rows("SELECT N FROM T ORDER BY N"), (Rows{{"1"}, {"3"}}));
    run({"TRUNCATE TABLE T", "INSERT INTO T VALUES (4)"});
    EXPECT_EQ(rows("SELECT N, A FROM T"), (Rows{{"1", "4"}}));
}

TEST_F(SessionTest, ACopiedColumnKeepsItsIdentityAndItsValues) {
    run({"CREATE TABLE T (A INT)", "INSERT INTO T VALUES (10), (20), (30)",
         "SELECT IDENTITY(INT, 1, 1) AS N, A INTO #T FROM T ORDER BY A",
         "SELECT N, A INTO #S FROM #T WHERE A > 10 ORDER BY N ASC"});
    EXPECT_EQ(rows("SELECT N, A FROM #S ORDER BY N"), (Rows{{"2", "20"}, {"3", "30"}}));
    EXPECT_EQ(error("INSERT INTO #S (N, A) VALUES (1, 10)").Number, 544);
    run({"SET IDENTITY_INSERT #S ON", "INSERT INTO #S (N, A) SELECT N, A FROM #T WHERE A = 10"});
    EXPECT_EQ(rows("SELECT N FROM #S ORDER BY N"), (Rows{{"1"}, {"2"}, {"3"}}));
    EXPECT_EQ(error("INSERT INTO #S (A) VALUES (1)").Number, 545);
    EXPECT_EQ(error("INSERT INTO #S VALUES (9, 1)").Number, 8101);
    EXPECT_EQ(error("SET IDENTITY_INSERT #T ON").Number, 8107);
    run({"SET IDENTITY_INSERT #S OFF", "INSERT INTO #S (A) VALUES (40)"});
    EXPECT_EQ(cell("SELECT N FROM #S WHERE A = 40"), "4");
}

TEST_F(SessionTest, AnIdentityWithoutAKeyRefusesARepeatedNumberAndSaysWhy) {
    run({"CREATE TABLE #T (N INT IDENTITY(1, 1), A INT)", "INSERT INTO #T VALUES (1)",
         "SET IDENTITY_INSERT #T ON"});
    const ado::Error refused = error("INSERT INTO #T (N, A) VALUES (1, 2)");
    EXPECT_EQ(refused.Number, 2627);
    EXPECT_NE(refused.Description.find("Identity 'N'"), std::string::npos) << refused.Description;
}

TEST_F(SessionTest, AComputedOrJoinedCopyHasNoIdentity) {
    run({"CREATE TABLE T (N INT IDENTITY(1, 1), A INT)", "INSERT INTO T VALUES (1)",
         "SELECT N + 0 AS N INTO #A FROM T", "SELECT X.N INTO #B FROM T AS X INNER JOIN T AS Y ON X.N = Y.N",
         "INSERT INTO #A VALUES (9)", "INSERT INTO #B VALUES (9)"});
    EXPECT_EQ(rows("SELECT N FROM #A ORDER BY N"), (Rows{{"1"}, {"9"}}));
    EXPECT_EQ(rows("SELECT N FROM #B ORDER BY N"), (Rows{{"1"}, {"9"}}));
}

TEST_F(SessionTest, AKeyAddedLaterHoldsFromThenOn) {
    run({"CREATE TABLE T (A INT NOT NULL, B NCHAR(2) NOT NULL)", "INSERT INTO T VALUES (1, 'a'), (1, 'b')",
         "ALTER TABLE T ADD CONSTRAINT PK_T PRIMARY KEY (A, B)"});
    EXPECT_EQ(error("INSERT INTO T VALUES (1, 'A')").Number, 2627);
    EXPECT_TRUE(execute("SELECT A, B FROM T").rows->columns()[0].key);
    EXPECT_FALSE(execute("SELECT A FROM T").rows->columns()[0].key) << "half a key names no row";
    EXPECT_EQ(errorOf([&] { anotherSession()->execute("INSERT INTO T VALUES (1, 'b')", {}, {}); }).Number,
              2627);
}

TEST_F(SessionTest, AKeyThatTheRowsContradictIsRefused) {
    run({"CREATE TABLE T (A INT NOT NULL)", "INSERT INTO T VALUES (1), (1)"});
    EXPECT_EQ(error("ALTER TABLE T ADD PRIMARY KEY (A)").Number, 1505);
    EXPECT_EQ(error("CREATE UNIQUE INDEX IX ON T (A)").Number, 1505);
    EXPECT_NO_THROW(execute("INSERT INTO T VALUES (1)"));
    EXPECT_FALSE(execute("SELECT A FROM T").rows->columns()[0].key);
}

TEST_F(SessionTest, IndexNamesBelongToTheirTable) {
    run({"CREATE TABLE T (A INT)", "CREATE TABLE S (A INT)", "CREATE INDEX IDX01 ON T (A)",
         "CREATE NONCLUSTERED INDEX IDX01 ON S (A DESC)", "DROP INDEX IDX01 ON T", "DROP INDEX IDX01 ON S",
         "CREATE INDEX IDX01 ON T (A)"});
    EXPECT_EQ(error("CREATE INDEX IDX01 ON T (A)").Number, 1913);
}

TEST_F(SessionTest, ADroppedTableTakesItsIndexesAlong) {
    run({"CREATE TABLE #T (A INT)", "CREATE INDEX IDX01 ON #T (A)", "DROP TABLE #T",
         "CREATE TABLE #T (A INT)", "CREATE INDEX IDX01 ON #T (A)"});
    SUCCEED();
}

TEST_F(SessionTest, DefaultsFillWhatAnInsertLeavesOut) {
    run({"CREATE TABLE T (A INT NOT NULL, B NCHAR(3) NOT NULL DEFAULT 'x', C DECIMAL(5, 2) DEFAULT 1.5)",
         "INSERT INTO T (A) VALUES (1)", "INSERT INTO T (A, B) VALUES (2, DEFAULT), (3, 'y')",
         "INSERT INTO T (A) SELECT 4", "UPDATE T SET C = DEFAULT WHERE A = 3"});
    EXPECT_EQ(rows("SELECT A, B, C FROM T ORDER BY A"),
              (Rows{{"1", "x  ", "1.50"}, {"2", "x  ", "1.50"}, {"3", "y  ", "1.50"}, {"4", "x  ", "1.50"}}));
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T"), "4");
    EXPECT_EQ(errorOf([&] { anotherSession()->execute("INSERT INTO T DEFAULT VALUES", {}, {}); }).Number,
              515);
}

TEST_F(SessionTest, AColumnIsAddedToATableWithRows) {
    run({"CREATE TABLE T (A INT)", "INSERT INTO T VALUES (1)", "ALTER TABLE T ADD B NCHAR(2) NULL",
         "ALTER TABLE T ADD C INT NOT NULL DEFAULT 7"});
    EXPECT_EQ(rows("SELECT * FROM T"), (Rows{{"1", "NULL", "7"}}));
    EXPECT_EQ(error("ALTER TABLE T ADD D INT NOT NULL").Number, 4901);
    EXPECT_EQ(error("ALTER TABLE T ADD b INT").Number, 2705);
    EXPECT_EQ(asText(*anotherSession()->execute("SELECT C FROM T", {}, {}).rows), (Rows{{"7"}}));
}

TEST_F(SessionTest, KeysMayMoveSwapAndCloseGaps) {
    run({"CREATE TABLE T (C NCHAR(2) NOT NULL, P DECIMAL(3) NOT NULL, V INT, PRIMARY KEY (C, P))",
         "INSERT INTO T VALUES ('a', 1, 10), ('a', 2, 20), ('a', 3, 30), ('b', 1, 40)"});
    EXPECT_EQ(affected("UPDATE T SET P = P + 1 WHERE C = 'a'"), 3);
    EXPECT_EQ(rows("SELECT P, V FROM T WHERE C = 'a' ORDER BY P"),
              (Rows{{"2", "10"}, {"3", "20"}, {"4", "30"}}));
    EXPECT_EQ(affected("UPDATE T SET P = CASE P WHEN 2 THEN 4 WHEN 4 THEN 2 ELSE P END WHERE C = 'a'"), 3);
    EXPECT_EQ(rows("SELECT P, V FROM T WHERE C = 'a' ORDER BY P"),
              (Rows{{"2", "30"}, {"3", "20"}, {"4", "10"}}));
    EXPECT_EQ(error("UPDATE T SET P = 9").Number, 2627);
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE P = 9"), "0");
}

TEST_F(SessionTest, AnUpdateMayTakeItsValuesFromAJoin) {
    run({"CREATE TABLE #T (N INT NOT NULL PRIMARY KEY, V INT)", "CREATE TABLE #S (N INT NOT NULL, V INT)",
         "INSERT INTO #T VALUES (1, 0), (2, 0), (3, 0)", "INSERT INTO #S VALUES (1, 10), (3, 30)"});
    EXPECT_EQ(affected("UPDATE #T SET #T.V = #S.V FROM #T INNER JOIN #S ON #T.N = #S.N"), 2);
    EXPECT_EQ(rows("SELECT V FROM #T ORDER BY N"), (Rows{{"10"}, {"0"}, {"30"}}));
    EXPECT_EQ(affected("UPDATE X SET V = ISNULL(Y.V, -1) FROM #T AS X LEFT OUTER JOIN #S AS Y ON X.N = Y.N"),
              3);
    EXPECT_EQ(rows("SELECT V FROM #T ORDER BY N"), (Rows{{"10"}, {"-1"}, {"30"}}));
    EXPECT_EQ(affected("UPDATE #T SET V = #S.V + 1 FROM #S WHERE #T.N = #S.N"), 2);
    EXPECT_EQ(rows("SELECT V FROM #T ORDER BY N"), (Rows{{"11"}, {"-1"}, {"31"}}));
    EXPECT_EQ(affected("DELETE #T FROM #T INNER JOIN #S ON #T.N = #S.N WHERE #S.V > 10"), 1);
    EXPECT_EQ(affected("DELETE FROM X FROM #T X WHERE X.N = 2"), 1);
    EXPECT_EQ(rows("SELECT N FROM #T"), (Rows{{"1"}}));
}

TEST_F(SessionTest, WhatASubqueryOfAChangeReadsIsTheTableAsItWasBefore) {
    for (const std::string table : {"LIVELLI", "#LIVELLI"}) {
        const auto levels = [&] {
            std::string result;
            for (const auto& row : rows("SELECT CONTO, LIVELLO FROM " + table + " ORDER BY CONTO")) {
                result += row[0] + row[1] + " ";
            }
            return result;
        };
        run({"CREATE TABLE " + table +
                 " (CONTO NCHAR(1) NOT NULL PRIMARY KEY, PADRE NCHAR(1) NULL, LIVELLO INT NOT NULL)",
             "INSERT INTO " + table + " VALUES ('1', NULL, 1), ('2', '1', 0), ('3', '2', 0), ('4', '3', 0)"});
        const std::string above = " FROM " + table + " AS P WHERE P.CONTO = " + table + ".PADRE";
        EXPECT_EQ(affected("UPDATE " + table + " SET LIVELLO = (SELECT P.LIVELLO + 1" + above +
                           ") WHERE PADRE IS NOT NULL"),
                  3);
        EXPECT_EQ(levels(), "11 22 31 41 ");
        EXPECT_EQ(affected("UPDATE " + table + " SET LIVELLO = 9 WHERE EXISTS (SELECT 1" + above +
                           " AND P.LIVELLO = 1)"),
                  2);
        EXPECT_EQ(levels(), "11 29 31 49 ") << "the third was 1 when the fourth was asked about";
        EXPECT_EQ(affected("UPDATE X SET LIVELLO = (SELECT COUNT(*) FROM " + table +
                           " AS P WHERE P.LIVELLO = X.LIVELLO) FROM " + table + " AS X"),
                  4);
        EXPECT_EQ(levels(), "12 22 32 42 ");
        EXPECT_EQ(affected("DELETE FROM " + table +
                           " WHERE PADRE IS NULL OR CONTO > (SELECT MIN(P.CONTO) FROM " + table +
                           " AS P) AND CONTO < '3'"),
                  2);
        EXPECT_EQ(levels(), "32 42 ") << "the first was there when the second was asked about";
    }
}

TEST_F(SessionTest, ASubqueryMayNameTheTableAroundItByItsOwnName) {
    run({"CREATE TABLE #T (N INT, P INT)", "INSERT INTO #T VALUES (1, NULL), (2, 1), (3, 1), (4, 2)"});
    EXPECT_EQ(
        rows("SELECT N FROM #T WHERE EXISTS (SELECT TOP 1 1 FROM #T AS SUB WHERE SUB.P = #T.N) ORDER BY N"),
        (Rows{{"1"}, {"2"}}));
    EXPECT_EQ(rows("SELECT N, (SELECT COUNT(*) FROM #T AS SUB WHERE SUB.P = #T.N) AS C FROM #T ORDER BY C "
                   "DESC, N DESC"),
              (Rows{{"1", "2"}, {"2", "1"}, {"4", "0"}, {"3", "0"}}));
}

TEST_F(SessionTest, QueriesUniteTopAndOrder) {
    run({"CREATE TABLE T (A INT, B NVARCHAR(5))", "INSERT INTO T VALUES (1, 'x'), (2, 'y'), (3, 'x')"});
    EXPECT_EQ(
        rows("SELECT A AS K FROM T WHERE A < 3 UNION ALL SELECT A * 10 FROM T WHERE A > 1 ORDER BY K DESC"),
        (Rows{{"30"}, {"20"}, {"2"}, {"1"}}));
    EXPECT_EQ(rows("SELECT B FROM T UNION SELECT N'Z' ORDER BY 1"), (Rows{{"x"}, {"y"}, {"Z"}}));
    EXPECT_EQ(rows("SELECT TOP 1 A FROM T WHERE B = 'x' ORDER BY A DESC"), (Rows{{"3"}}));
    EXPECT_EQ(rows("SELECT TOP 0 A FROM T"), Rows{});
    EXPECT_EQ(rows("SELECT B, COUNT(*) AS N FROM T GROUP BY B HAVING COUNT(*) > 1"), (Rows{{"x", "2"}}));
    EXPECT_EQ(rows("SELECT D.A FROM (SELECT TOP 2 A FROM T ORDER BY A DESC) AS D ORDER BY A"),
              (Rows{{"2"}, {"3"}}));
    EXPECT_EQ(rows("SELECT ROW_NUMBER() OVER (PARTITION BY B ORDER BY A DESC) AS R, A FROM T ORDER BY A"),
              (Rows{{"2", "1"}, {"1", "2"}, {"1", "3"}}));
    EXPECT_EQ(
        rows(
            "SELECT A FROM T WHERE B = (SELECT TOP 1 B FROM T GROUP BY B ORDER BY COUNT(*) DESC) ORDER BY A"),
        (Rows{{"1"}, {"3"}}));
    EXPECT_EQ(rows("SELECT A FROM T WHERE A IN (SELECT MAX(A) FROM T GROUP BY B) ORDER BY A"),
              (Rows{{"2"}, {"3"}}));
    EXPECT_EQ(cell("SELECT 1.5 UNION SELECT 1.50"), "1.50");
}

TEST_F(SessionTest, AStatementCountsItsRows) {
    run({"CREATE TABLE T (A INT)"});
    EXPECT_EQ(affected("INSERT INTO T VALUES (1), (2), (3)"), 3);
    EXPECT_EQ(affected("UPDATE T SET A = 0 WHERE A > 1"), 2);
    EXPECT_EQ(affected("SELECT A INTO #T FROM T"), 3);
    EXPECT_EQ(affected("SELECT A FROM T"), -1);
    EXPECT_EQ(affected("DELETE FROM T"), 3);
    EXPECT_EQ(affected("SET NOCOUNT ON INSERT INTO T VALUES (1) SET NOCOUNT OFF"), -1);
    EXPECT_EQ(rows("UPDATE T SET A = 5 SELECT @@ROWCOUNT"), (Rows{{"1"}}));
}

TEST_F(SessionTest, TransactionsKeepOrUndoEverythingTheyHold) {
    run({"CREATE TABLE T (A INT NOT NULL PRIMARY KEY)"});
    session_->begin();
    run({"INSERT INTO T VALUES (1)", "CREATE TABLE #T (A INT)", "CREATE TABLE S (A INT)"});
    EXPECT_EQ(error("INSERT INTO T VALUES (1)").Number, 2627);
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T"), "1") << "the error leaves the transaction open";
    session_->rollback();
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T"), "0");
    EXPECT_EQ(error("SELECT * FROM #T").Number, 208);
    EXPECT_EQ(error("SELECT * FROM S").Number, 208);
    EXPECT_EQ(errorOf([&] { session_->rollback(); }).Number, 3903);
    EXPECT_EQ(errorOf([&] { session_->commit(); }).Number, 3902);
    run({"BEGIN TRAN", "INSERT INTO T VALUES (2)", "SAVE TRAN qui", "INSERT INTO T VALUES (3)",
         "ROLLBACK TRAN qui", "BEGIN TRAN", "COMMIT"});
    EXPECT_EQ(cell("SELECT @@TRANCOUNT"), "1");
    execute("COMMIT");
    EXPECT_EQ(rows("SELECT A FROM T"), (Rows{{"2"}}));
    run({"SET XACT_ABORT ON", "BEGIN TRAN", "INSERT INTO T VALUES (4)"});
    EXPECT_EQ(error("INSERT INTO T VALUES (4)").Number, 2627);
    EXPECT_EQ(cell("SELECT @@TRANCOUNT"), "0");
    EXPECT_EQ(rows("SELECT A FROM T"), (Rows{{"2"}}));
}

TEST_F(SessionTest, AClosedSessionTakesItsTransactionBack) {
    run({"CREATE TABLE T (A INT)"});
    {
        const auto other = anotherSession();
        other->begin();
        other->execute("INSERT INTO T VALUES (1)", {}, {});
    }
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T"), "0");
    EXPECT_NO_THROW(execute("INSERT INTO T VALUES (2)"));
}

TEST_F(SessionTest, CopiesATableWithItsNumbersAndGoesOnFromTheLast) {
    run({"CREATE TABLE #A (INDICE INT IDENTITY(1, 1) PRIMARY KEY, CONTO NCHAR(4) NOT NULL, DESCR "
         "NVARCHAR(20) NULL)",
         "INSERT INTO #A VALUES ('0101', N'uno'), ('0202', NULL), ('0303', N'tre')",
         "DELETE FROM #A WHERE INDICE = 1"});
    EXPECT_EQ(affected("SELECT INDICE, CONTO, DESCR INTO #B FROM #A ORDER BY INDICE"), 2);
    run({"INSERT INTO #B VALUES ('0404', NULL)"});
    EXPECT_EQ(rows("SELECT * FROM #B ORDER BY INDICE"),
              (Rows{{"2", "0202", "NULL"}, {"3", "0303", "tre"}, {"4", "0404", "NULL"}}));
    EXPECT_EQ(error("INSERT INTO #B VALUES (NULL, NULL)").Number, 515);
}

TEST_F(SessionTest, CopiesATableStoredInTheOrderOfItsKey) {
    run({"CREATE TABLE A (CONTO NCHAR(4) NOT NULL PRIMARY KEY, NATURA INT NOT NULL)",
         "INSERT INTO A VALUES ('0202', 2), ('0101', 1)"});
    EXPECT_EQ(affected("SELECT * INTO #B FROM A"), 2);
    EXPECT_EQ(rows("SELECT CONTO, NATURA FROM #B ORDER BY CONTO DESC"), (Rows{{"0202", "2"}, {"0101", "1"}}));
}

} // namespace veldran::embedded::test
