// Rows of a copied working table are found by the indexes of the table that they were copied from: what is
// written for it, when it is no longer written, and that the answers stay those of the statement as it
// stands.
#include "tests/embedded/session_fixture.h"

#include <random>

namespace veldran::embedded::test {

namespace {

const std::string copy =
    "SELECT INDICE, GRUPPO, CONTO, PADRE, RADICE, NATURA, ANALITICO, ATTIVO INTO #S FROM #T ";
const std::string endOfCopy =
    " ORDER BY INDICE ALTER TABLE #S ADD PRIMARY KEY CLUSTERED (INDICE) CREATE INDEX "
    "PER_PADRE ON #S (GRUPPO, PADRE) CREATE INDEX PER_FLAG ON #S (NATURA, ANALITICO, "
    "ATTIVO) CREATE INDEX PER_RADICE ON #S (NATURA, ANALITICO, ATTIVO, RADICE)";
const std::string byCode = "SELECT INDICE FROM #S WHERE GRUPPO = 1 AND CONTO = '0102'";
const std::string rootsOfNature =
    "SELECT CONTO FROM #S WHERE ANALITICO = 0 AND EXISTS (SELECT 1 FROM #S AS SUB "
    "WHERE SUB.NATURA = 2 AND SUB.ANALITICO = 1 AND SUB.RADICE = #S.CONTO) ORDER BY "
    "INDICE";

/// #T holds a small chart in the order of its codes, #S a copy of it.
class ImpliedConditions : public SessionTest {
protected:
    ImpliedConditions() {
        run({"CREATE TABLE #T (INDICE INT IDENTITY(1, 1) NOT NULL PRIMARY KEY, GRUPPO DECIMAL(2) NOT NULL, "
             "CONTO "
             "NCHAR(4) NOT NULL, PADRE NCHAR(4) NULL, RADICE NCHAR(4) NOT NULL, NATURA DECIMAL(1) NOT NULL, "
             "ANALITICO BIT NOT NULL, ATTIVO BIT NOT NULL)",
             "INSERT INTO #T VALUES (1, '0100', NULL, '0100', 1, 0, 0), (1, '0101', '0100', '0100', 1, 1, "
             "0), "
             "(1, '0102', '0100', '0100', 1, 1, 1), (1, '0200', NULL, '0200', 2, 0, 0), (1, '0201', '0200', "
             "'0200', 2, 1, 1), (1, '0300', NULL, '0300', 2, 0, 0)",
             "CREATE INDEX PER_CONTO ON #T (GRUPPO, CONTO)", "CREATE INDEX PER_PADRE ON #T (GRUPPO, PADRE)",
             copy + endOfCopy});
    }

    std::string emitted(const std::string& text) { return session_->explain(text, {}); }
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(ImpliedConditions, ACodeOfACopyIsSoughtInTheIndexOfItsOriginal) {
    EXPECT_EQ(emitted(byCode),
              "SELECT \"#T$1\".rowid FROM temp.\"#T\" AS \"#T$1\" CROSS JOIN temp.\"#S\" WHERE "
              "\"#T$1\".\"GRUPPO\" = 1 AND \"#T$1\".\"CONTO\" = '0102' AND \"#S\".rowid = \"#T$1\".rowid");
    EXPECT_EQ(rows(byCode), Rows{{"3"}});
    EXPECT_EQ(
        rows("SELECT INDICE FROM #S WHERE GRUPPO = 1 AND PADRE = '0100' AND NATURA = 1 ORDER BY INDICE"),
        (Rows{{"2"}, {"3"}}));
    EXPECT_EQ(builtIndexes("#S"), Names{});
}

TEST_F(ImpliedConditions, WhatTheOriginalCannotTellIsAskedOfTheCopyAndTheNumbersComeInOrder) {
    EXPECT_EQ(
        emitted("SELECT CONTO FROM #S WHERE (ATTIVO = 1 OR NATURA = 2) AND GRUPPO = 1 AND PADRE = '0100' "
                "ORDER BY INDICE"),
        "SELECT \"#S\".\"CONTO\" FROM temp.\"#T\" AS \"#T$1\" CROSS JOIN temp.\"#S\" WHERE "
        "\"#T$1\".\"GRUPPO\" = 1 AND \"#T$1\".\"PADRE\" = '0100' AND \"#S\".rowid = \"#T$1\".rowid AND "
        "(\"#S\".\"ATTIVO\" = 1 OR \"#S\".\"NATURA\" = 2) ORDER BY \"#T$1\".rowid");
}

TEST_F(ImpliedConditions, TheIndexesOfTheOriginalAreBuiltWithItsFirstCopy) {
    EXPECT_EQ(builtIndexes("#T"), (Names{"PER_CONTO", "PER_PADRE"}));
}

TEST_F(ImpliedConditions, ABeginningOfACodeIsSoughtBehindANumberThatNobodyNames) {
    const std::string update = "UPDATE #S SET ATTIVO = 1 WHERE CONTO LIKE '01%' AND NATURA = 1";
    const std::string sought = "\"#S\".\"CONTO\" >= '01' || char(1) AND \"#S\".\"CONTO\" <= '01' || "
                               "char(1114111) AND \"#S\".\"NATURA\" = 1";
    const std::string original = "FROM temp.\"#T\" AS \"#T$1\" WHERE \"#T$1\".\"CONTO\" >= '01' || char(1) "
                                 "AND \"#T$1\".\"CONTO\" <= '01' || char(1114111))";
    EXPECT_EQ(emitted(update),
              "UPDATE temp.\"#S\" NOT INDEXED SET \"ATTIVO\" = 1 WHERE " + sought + " AND CASE WHEN " +
                  sought +
                  " THEN ts_changed(\"#S\".\"ATTIVO\", 1) END AND \"#S\".rowid BETWEEN (SELECT "
                  "min(\"#T$1\".rowid) " +
                  original + " AND (SELECT max(\"#T$1\".rowid) " + original);
    EXPECT_EQ(affected(update), 3);
    EXPECT_EQ(rows("SELECT INDICE FROM #S WHERE ATTIVO = 1 ORDER BY INDICE"),
              (Rows{{"1"}, {"2"}, {"3"}, {"5"}}));
}

TEST_F(ImpliedConditions, ARowBetweenThoseThatAnUpdateMeansStaysAsItIs) {
    run({"INSERT INTO #T VALUES (1, '0103', '0100', '0100', 1, 1, 0)", "DROP TABLE #S", copy + endOfCopy});
    EXPECT_EQ(affected("UPDATE #S SET ATTIVO = 1 WHERE GRUPPO = 1 AND PADRE = '0100'"), 3);
    EXPECT_EQ(rows("SELECT INDICE FROM #S WHERE ATTIVO = 1 ORDER BY INDICE"),
              (Rows{{"2"}, {"3"}, {"5"}, {"7"}}))
        << "5 was active before; 4 and 6 lie between";
    EXPECT_EQ(affected("UPDATE #S SET ATTIVO = 0 WHERE CONTO = '0999'"), 0) << "no number at all";
}

TEST_F(ImpliedConditions, AColumnThatHasChangedIsSoughtInTheCopyItself) {
    EXPECT_EQ(rows(byCode), Rows{{"3"}});
    run({"UPDATE #S SET CONTO = '0199' WHERE INDICE = 3"});
    EXPECT_EQ(emitted(byCode).find("#T"), std::string::npos);
    EXPECT_EQ(rows(byCode), Rows{});
    EXPECT_EQ(rows("SELECT INDICE FROM #S WHERE GRUPPO = 1 AND CONTO = '0199'"), Rows{{"3"}});
    run({"UPDATE #T SET PADRE = '0200' WHERE INDICE = 2"});
    EXPECT_EQ(rows("SELECT INDICE FROM #S WHERE GRUPPO = 1 AND PADRE = '0100' ORDER BY INDICE"),
              (Rows{{"2"}, {"3"}}));
}

TEST_F(ImpliedConditions, ARowThatCameFromElsewhereIsFound) {
    EXPECT_EQ(rows(byCode), Rows{{"3"}});
    run({"INSERT INTO #S VALUES (1, '0102', '0100', '0100', 1, 1, 0)"});
    EXPECT_EQ(rows(byCode + " ORDER BY INDICE"), (Rows{{"3"}, {"7"}}));
}

TEST_F(ImpliedConditions, ARowThatIsGoneFromTheOriginalIsFoundInTheCopy) {
    EXPECT_EQ(rows(byCode), Rows{{"3"}});
    run({"DELETE FROM #T WHERE CONTO = '0102'"});
    EXPECT_EQ(rows(byCode), Rows{{"3"}});
    run({"DROP TABLE #T"});
    EXPECT_EQ(rows(byCode), Rows{{"3"}});
}

TEST_F(ImpliedConditions, AreBoundAnewForTheNextCopy) {
    EXPECT_EQ(rows(byCode), Rows{{"3"}});
    run({"DROP TABLE #S", copy + "WHERE ATTIVO = 0" + endOfCopy});
    EXPECT_EQ(rows(byCode), Rows{});
    run({"SET IDENTITY_INSERT #S ON",
         "INSERT INTO #S (INDICE, GRUPPO, CONTO, PADRE, RADICE, NATURA, ANALITICO, "
         "ATTIVO) SELECT INDICE, GRUPPO, CONTO, PADRE, RADICE, NATURA, ANALITICO, ATTIVO "
         "FROM #T WHERE ATTIVO = 1 ORDER BY INDICE"});
    EXPECT_EQ(rows(byCode), Rows{{"3"}});
    EXPECT_NE(emitted(byCode).find("CROSS JOIN"), std::string::npos);
}

TEST_F(ImpliedConditions, AreLeftToTheCopyWhenItHasFewRowsOfItsOriginal) {
    run({"DECLARE @N INT SET @N = 0 WHILE @N < 30 BEGIN INSERT INTO #T VALUES (1, '0400', '0100', '0100', 1, "
         "1, "
         "0) SET @N = @N + 1 END",
         "DROP TABLE #S", copy + "WHERE ATTIVO = 1" + endOfCopy});
    const std::string below = "SELECT CONTO FROM #S WHERE GRUPPO = 1 AND PADRE = '0100' ORDER BY INDICE";
    EXPECT_EQ(emitted(below).find("#T"), std::string::npos) << "31 of #T lie there, one of #S";
    EXPECT_EQ(rows(below), Rows{{"0102"}});
    EXPECT_EQ(builtIndexes("#S"), Names{"PER_PADRE"});
    EXPECT_NE(emitted(byCode).find("#T"), std::string::npos) << "no index of its own serves this";
    run({"DROP TABLE #S", copy + endOfCopy});
    EXPECT_EQ(rows(below).size(), 32U);
    EXPECT_EQ(builtIndexes("#S"), Names{}) << "bound anew for a copy with all rows";
}

TEST_F(ImpliedConditions, AreGoneAfterARollback) {
    session_->begin();
    run({"DROP TABLE #S", copy + "WHERE ATTIVO = 1" + endOfCopy});
    EXPECT_EQ(rows(byCode), Rows{{"3"}});
    session_->rollback();
    EXPECT_EQ(rows("SELECT INDICE FROM #S WHERE GRUPPO = 1 AND CONTO = '0101'"), Rows{{"2"}});
}

TEST_F(ImpliedConditions, AColumnOfAnotherTypeInTheCopyIsSoughtThere) {
    run({"CREATE TABLE #U (INDICE INT IDENTITY(1, 1) NOT NULL PRIMARY KEY, CONTO NVARCHAR(4) NOT NULL)",
         "SET IDENTITY_INSERT #U ON", "INSERT INTO #U (INDICE, CONTO) SELECT INDICE, CONTO FROM #T"});
    EXPECT_EQ(emitted("SELECT INDICE FROM #U WHERE CONTO = '0102'").find("#T"), std::string::npos);
}

TEST_F(ImpliedConditions, AFlagBetweenTheColumnsOfAnIndexIsSteppedOver) {
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #S WHERE NATURA = 2 AND ANALITICO = 1 AND ATTIVO = 0"), "0");
    EXPECT_EQ(builtIndexes("#S"), Names{"PER_RADICE"}) << "the one that goes on with a code";
    const std::string text = "SELECT INDICE FROM #S WHERE NATURA = 2 AND ANALITICO = 1 AND RADICE = '0200'";
    EXPECT_EQ(emitted(text),
              "SELECT \"#S\".\"INDICE\" FROM temp.\"#S\" WHERE \"#S\".\"NATURA\" = 2 AND "
              "\"#S\".\"ANALITICO\" = 1 AND \"#S\".\"RADICE\" = '0200' AND \"#S\".\"ATTIVO\" IN (0, 1)");
    EXPECT_EQ(rows(text), Rows{{"5"}});
    EXPECT_EQ(builtIndexes("#S"), Names{"PER_RADICE"});
}

TEST_F(ImpliedConditions, AFlagThatMayBeNullIsNot) {
    run({"CREATE TABLE #N (NATURA DECIMAL(1) NOT NULL, FLAG BIT NULL, CONTO NCHAR(4) NOT NULL)",
         "INSERT INTO #N VALUES (1, NULL, '0101')", "CREATE INDEX TUTTI ON #N (NATURA, FLAG, CONTO)"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #N WHERE NATURA = 1 AND CONTO = '0101'"), "1");
}

TEST_F(ImpliedConditions, WhatExistsForARowSaysWhereTheRowIs) {
    EXPECT_EQ(
        emitted(rootsOfNature),
        "SELECT \"#S\".\"CONTO\" FROM temp.\"#S\" WHERE \"#S\".rowid IN (SELECT \"#T$2\".rowid FROM "
        "(SELECT DISTINCT \"SUB\".\"ATTIVO\" AS \"f1\", \"SUB\".\"RADICE\" AS \"v\" FROM temp.\"#S\" AS "
        "\"SUB\" "
        "WHERE \"SUB\".\"NATURA\" = 2 AND \"SUB\".\"ANALITICO\" = 1) AS \"$1\" CROSS JOIN temp.\"#T\" AS "
        "\"#T$2\" WHERE \"#T$2\".\"CONTO\" = \"$1\".\"v\") AND \"#S\".\"ANALITICO\" = 0 ORDER BY "
        "\"#S\".\"INDICE\"")
        << "being among them is the same as that one exists";
    EXPECT_EQ(rows(rootsOfNature), Rows{{"0200"}});
}

TEST_F(ImpliedConditions, WhatExistsIsAskedRowByRowWhereItDependsOnMoreOfTheRow) {
    EXPECT_EQ(
        rows(
            "SELECT CONTO FROM #S WHERE ANALITICO = 0 AND EXISTS (SELECT 1 FROM #S AS SUB WHERE SUB.NATURA = "
            "#S.NATURA AND SUB.ANALITICO = 1 AND SUB.RADICE = #S.CONTO) ORDER BY INDICE"),
        (Rows{{"0100"}, {"0200"}}));
    EXPECT_EQ(rows("SELECT CONTO FROM #S WHERE ANALITICO = 0 AND NOT EXISTS (SELECT 1 FROM #S AS SUB WHERE "
                   "SUB.NATURA = 2 AND SUB.ANALITICO = 1 AND SUB.RADICE = #S.CONTO) ORDER BY INDICE"),
              (Rows{{"0100"}, {"0300"}}));
    EXPECT_EQ(rows("SELECT CONTO FROM #S WHERE ANALITICO = 0 AND (NATURA = 1 OR EXISTS (SELECT 1 FROM #S AS "
                   "SUB WHERE "
                   "SUB.NATURA = 2 AND SUB.ANALITICO = 1 AND SUB.RADICE = #S.CONTO)) ORDER BY INDICE"),
              (Rows{{"0100"}, {"0200"}}));
}

TEST_F(ImpliedConditions, AFlagMayHaveAnyNameBesideTheValueThatExists) {
    run({"CREATE TABLE #A (INDICE INT IDENTITY(1, 1) NOT NULL PRIMARY KEY, CONTO NCHAR(4) NOT NULL, RADICE "
         "NCHAR(4) NOT NULL, NATURA INT NOT NULL, V BIT NOT NULL)",
         "INSERT INTO #A VALUES ('0100', '0100', 1, 0), ('0101', '0100', 2, 1), ('0200', '0200', 1, 0)",
         "CREATE INDEX PER_CONTO ON #A (CONTO)",
         "SELECT INDICE, CONTO, RADICE, NATURA, V INTO #C FROM #A CREATE INDEX PER_RADICE ON #C (NATURA, V, "
         "RADICE)"});
    EXPECT_EQ(rows("SELECT INDICE FROM #C WHERE EXISTS (SELECT 1 FROM #C AS SUB WHERE SUB.NATURA = 2 AND "
                   "SUB.RADICE = #C.CONTO)"),
              Rows{{"1"}});
}

TEST_F(ImpliedConditions, OfSeveralThatExistForARowOneSaysWhereItIsAndTheOthersAreAskedOfIt) {
    const std::string text =
        "SELECT CONTO FROM #S WHERE EXISTS (SELECT 1 FROM #S AS A WHERE A.NATURA = 2 AND A.RADICE = "
        "#S.CONTO) AND EXISTS (SELECT 1 FROM #S AS B WHERE B.ATTIVO = 0 AND B.RADICE = #S.CONTO) ORDER BY "
        "INDICE";
    const std::string asked = emitted(text);
    EXPECT_NE(
        asked.find(
            "FROM temp.\"#S\" AS \"A\" WHERE \"A\".\"NATURA\" = 2) AS \"$1\" CROSS JOIN temp.\"#T\" AS "
            "\"#T$4\" WHERE \"#T$4\".\"CONTO\" = \"$1\".\"v\") AND EXISTS (SELECT 1 FROM temp.\"#T\" AS "
            "\"#T$2\""),
        std::string::npos)
        << asked;
    EXPECT_EQ(rows(text), (Rows{{"0200"}, {"0300"}}));
}

TEST_F(ImpliedConditions, WhatExistsMayBeACodeOfAnotherTypeWithOtherBlanksAndInOtherCase) {
    run({"INSERT INTO #T VALUES (1, 'a1', NULL, 'a1', 1, 0, 0)", "DROP TABLE #S", copy + endOfCopy,
         "CREATE TABLE #B (CODICE NVARCHAR(10) NULL, NATURA INT NOT NULL)",
         "INSERT INTO #B VALUES (N'A1', 1), (N'a1    ', 1), (NULL, 1), (N'0102', 1), (N'0200', 2)"});
    EXPECT_EQ(rows("SELECT INDICE FROM #S WHERE EXISTS (SELECT * FROM #B WHERE #B.CODICE = CONTO AND "
                   "#B.NATURA = 1) ORDER BY INDICE"),
              (Rows{{"3"}, {"7"}}));
    EXPECT_EQ(affected("UPDATE #S SET ATTIVO = 0 WHERE EXISTS (SELECT * FROM #B WHERE #B.CODICE = CONTO AND "
                       "#B.NATURA = 1)"),
              2);
}

TEST_F(ImpliedConditions, SayTheSameInAProcedureThatRunsAgainAfterTheTablesHaveChanged) {
    run({"CREATE PROCEDURE ATTIVA @PADRE NCHAR(4), @NATURA INT AS UPDATE #S SET ATTIVO = 1 - ATTIVO WHERE "
         "GRUPPO = 1 AND PADRE = @PADRE SELECT @@ROWCOUNT AS RIGHE, COUNT(*) AS RADICI FROM #S WHERE EXISTS "
         "(SELECT 1 FROM #S AS SUB WHERE SUB.NATURA = @NATURA AND SUB.RADICE = #S.CONTO)"});
    const auto answer = [&] { return rows("EXECUTE ATTIVA '0100', 2").front(); };
    using Row = std::vector<std::string>;
    EXPECT_EQ(answer(), (Row{"2", "2"}));
    run({"DROP TABLE #S", copy + "WHERE INDICE <> 2" + endOfCopy});
    EXPECT_EQ(answer(), (Row{"1", "2"}));
    run({"UPDATE #S SET PADRE = '0100', CONTO = 'X' WHERE INDICE = 6"});
    EXPECT_EQ(answer(), (Row{"2", "1"}));
    session_->begin();
    run({"DROP TABLE #S", copy + "WHERE INDICE = 3" + endOfCopy});
    EXPECT_EQ(answer(), (Row{"1", "0"}));
    session_->rollback();
    EXPECT_EQ(answer(), (Row{"2", "1"}));
    run({"DELETE FROM #S WHERE INDICE = 6"});
    EXPECT_EQ(answer(), (Row{"1", "1"}));
}

TEST_F(ImpliedConditions, DoNotTakeAColumnOfThatNameForTheNumberOfARow) {
    run({"CREATE TABLE #A (INDICE INT IDENTITY(1, 1) NOT NULL PRIMARY KEY, CONTO NCHAR(4) NOT NULL, RowId "
         "INT "
         "NOT NULL)",
         "INSERT INTO #A VALUES ('0100', 7), ('0101', 8)", "CREATE INDEX PER_CONTO ON #A (CONTO)",
         "SELECT INDICE, CONTO, RowId INTO #C FROM #A", "UPDATE #C SET RowId = 2 WHERE INDICE = 1"});
    EXPECT_EQ(rows("SELECT INDICE, RowId FROM #C WHERE CONTO = '0101'"), (Rows{{"2", "8"}}));
    EXPECT_EQ(affected("UPDATE #C SET RowId = 9 WHERE CONTO LIKE '0101%'"), 1);
    EXPECT_EQ(rows("SELECT RowId FROM #C ORDER BY INDICE"), (Rows{{"2"}, {"9"}}));
    EXPECT_EQ(affected("DELETE X FROM #C AS X INNER JOIN #A ON #A.INDICE = X.INDICE WHERE #A.CONTO = '0101'"),
              1);
    EXPECT_EQ(rows("SELECT INDICE FROM #C"), Rows{{"1"}});
}

TEST_F(ImpliedConditions, GiveWhatTheStatementGivesHoweverTheTablesWereChanged) {
    // The same on a table that was filled otherwise, so that nothing is known of its rows.
    std::mt19937 random(7);
    const auto among = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    const std::string columns = "INDICE, GRUPPO, CONTO, PADRE, RADICE, NATURA, ANALITICO, ATTIVO";
    const std::string mirror =
        "CREATE TABLE #M (INDICE INT NOT NULL, GRUPPO DECIMAL(2) NOT NULL, CONTO NCHAR(4) NOT "
        "NULL, PADRE NCHAR(4) NULL, RADICE NCHAR(4) NOT NULL, NATURA DECIMAL(1) NOT NULL, "
        "ANALITICO BIT NOT NULL, ATTIVO BIT NOT NULL)";
    const Names codes{"0100", "0101", "0102", "0200", "0201", "0300", "0301"};
    for (int step = 0; step < 300; ++step) {
        const std::string code = codes[static_cast<std::size_t>(among(7))];
        const std::string flag = std::to_string(among(2));
        switch (among(7)) {
        case 0:
            run({"DROP TABLE #S", copy + "WHERE ATTIVO = " + flag + endOfCopy});
            break;
        case 1:
            run({"UPDATE #S SET ATTIVO = " + flag + " WHERE CONTO LIKE '" + code.substr(0, 2) + "%'"});
            break;
        case 2:
            run({"UPDATE #S SET CONTO = '" + code + "' WHERE INDICE = " + std::to_string(1 + among(6))});
            break;
        case 3:
            run({"UPDATE #T SET ATTIVO = " + flag + ", PADRE = '" + code + "' WHERE CONTO = '" + code + "'"});
            break;
        case 4:
            run({"DELETE FROM #S WHERE CONTO = '" + code + "'"});
            break;
        default:
            run({"SET IDENTITY_INSERT #S ON",
                 "INSERT INTO #S (" + columns + ") SELECT " + columns +
                     " FROM #T WHERE GRUPPO = 1 AND INDICE NOT IN (SELECT INDICE FROM #S) AND CONTO IN "
                     "(SELECT DISTINCT "
                     "FIGLI.PADRE FROM #S AS FIGLI LEFT OUTER JOIN #S AS PADRI ON FIGLI.GRUPPO = "
                     "PADRI.GRUPPO AND "
                     "FIGLI.PADRE = PADRI.CONTO WHERE PADRI.GRUPPO IS NULL) ORDER BY INDICE",
                 "SET IDENTITY_INSERT #S OFF"});
        }
        run({mirror, "INSERT INTO #M SELECT " + columns + " FROM #S"});
        for (const std::string& question :
             {std::string("SELECT INDICE FROM #S WHERE GRUPPO = 1 AND CONTO = '") + code +
                  "' ORDER BY INDICE",
              "SELECT INDICE FROM #S WHERE GRUPPO = 1 AND PADRE = '" + code +
                  "' AND NATURA = 1 ORDER BY INDICE",
              "SELECT INDICE FROM #S WHERE CONTO LIKE '" + code.substr(0, 3) + "%' ORDER BY INDICE",
              "SELECT INDICE FROM #S WHERE NATURA = 2 AND ANALITICO = 1 AND RADICE = '" + code +
                  "' ORDER BY INDICE",
              "SELECT CONTO, (SELECT TOP 1 SUB.CONTO FROM #S AS SUB WHERE SUB.NATURA = 2 AND SUB.ATTIVO = " +
                  flag +
                  " AND SUB.INDICE > #S.INDICE ORDER BY SUB.INDICE), (SELECT COUNT(*) FROM #S AS SUB WHERE "
                  "SUB.GRUPPO = 1 AND SUB.PADRE = #S.CONTO) FROM #S WHERE GRUPPO = 1 AND PADRE = '" +
                  code + "' ORDER BY INDICE",
              "SELECT F.CONTO FROM (SELECT INDICE, CONTO, NATURA FROM #S WHERE GRUPPO = 1 AND CONTO = '" +
                  code +
                  "') AS F WHERE F.NATURA = 1 OR EXISTS (SELECT 1 FROM #S AS SUB WHERE SUB.GRUPPO = 1 "
                  "AND SUB.PADRE = F.CONTO AND SUB.INDICE > F.INDICE) ORDER BY F.INDICE",
              rootsOfNature,
              std::string(
                  "SELECT INDICE FROM #S AS X WHERE X.PADRE IN (SELECT DISTINCT FIGLI.PADRE FROM #S AS FIGLI "
                  "LEFT OUTER JOIN #S AS PADRI ON FIGLI.GRUPPO = PADRI.GRUPPO AND FIGLI.PADRE = PADRI.CONTO "
                  "WHERE PADRI.GRUPPO IS NULL) ORDER BY INDICE")}) {
            std::string mirrored = question;
            for (std::size_t at = 0; (at = mirrored.find("#S", at)) != std::string::npos;) {
                mirrored.replace(at, 2, "#M");
            }
            ASSERT_EQ(rows(question), rows(mirrored)) << "step " << step << ": " << question;
        }
        run({"DROP TABLE #M"});
    }
}

} // namespace veldran::embedded::test
