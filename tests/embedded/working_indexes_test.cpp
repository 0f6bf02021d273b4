#include "tests/embedded/session_fixture.h"

namespace veldran::embedded::test {

namespace {

/// A working table of three accounts whose indexes are looked at from outside.
class WorkingIndexes : public SessionTest {
protected:
    WorkingIndexes() {
        run({"CREATE TABLE #C (INDICE INT IDENTITY(1, 1) PRIMARY KEY, NATURA DECIMAL(1) NOT NULL, ATTIVO BIT "
             "NOT "
             "NULL, CONTO NCHAR(10) NOT NULL)",
             "INSERT INTO #C VALUES (1, 0, '0101'), (2, 1, '0201'), (2, 0, '0202')"});
    }

    std::vector<std::string> built() { return builtIndexes("#C"); }
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(WorkingIndexes, AreBuiltWhenAStatementTestsTheirColumns) {
    run({"CREATE INDEX PER_NATURA ON #C (NATURA, ATTIVO)"});
    EXPECT_EQ(rows("SELECT CONTO FROM #C"), (Rows{{"0101      "}, {"0201      "}, {"0202      "}}));
    EXPECT_EQ(built(), Names{});
    EXPECT_EQ(cell("SELECT CONTO FROM #C WHERE NATURA = 2 AND ATTIVO = 1"), "0201      ");
    EXPECT_EQ(built(), Names{"PER_NATURA"});
}

TEST_F(WorkingIndexes, AreBuiltWhenAStatementSortsByTheirColumns) {
    run({"CREATE INDEX PER_CONTO ON #C (CONTO DESC)"});
    EXPECT_EQ(cell("SELECT TOP 1 CONTO AS C FROM #C ORDER BY CONTO DESC"), "0202      ");
    EXPECT_EQ(built(), Names{"PER_CONTO"});
}

TEST_F(WorkingIndexes, AreBuiltForChangesConditionsAndCopies) {
    const std::string definition = "CREATE INDEX PER_CONTO ON #C (CONTO)";
    const auto builtBy = [&](const std::string& text) {
        run({definition, text});
        const Names names = built();
        run({"DROP INDEX PER_CONTO ON #C"});
        return names;
    };
    EXPECT_EQ(builtBy("UPDATE #C SET ATTIVO = 1 WHERE CONTO = '0101'"), Names{"PER_CONTO"});
    EXPECT_EQ(builtBy("IF EXISTS (SELECT 1 FROM #C WHERE CONTO = '0101') PRINT 'c''è'"), Names{"PER_CONTO"});
    EXPECT_EQ(builtBy("SELECT CONTO INTO #D FROM #C WHERE CONTO > '0101'"), Names{"PER_CONTO"});
    EXPECT_EQ(builtBy("DELETE FROM #C WHERE CONTO = '0101'"), Names{"PER_CONTO"});
    EXPECT_EQ(rows("SELECT CONTO, ATTIVO FROM #C"), (Rows{{"0201      ", "1"}, {"0202      ", "0"}}));
}

TEST_F(WorkingIndexes, OfTheSameColumnsOnlyTheNarrowestIsBuilt) {
    run({"CREATE INDEX TRE ON #C (NATURA, ATTIVO, INDICE)", "CREATE INDEX DUE ON #C (NATURA, ATTIVO)"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #C WHERE NATURA = 2"), "2");
    EXPECT_EQ(built(), Names{"DUE"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #C WHERE NATURA = 2 AND ATTIVO = 0"), "1");
    EXPECT_EQ(built(), Names{"DUE"});
}

TEST_F(WorkingIndexes, ThatGoOnWithACodeAreBuiltRatherThanTheirBeginning) {
    run({"CREATE INDEX DUE ON #C (NATURA, ATTIVO)", "CREATE INDEX TRE ON #C (NATURA, ATTIVO, CONTO)"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #C WHERE NATURA = 2 AND ATTIVO = 0"), "1");
    EXPECT_EQ(built(), Names{"TRE"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #C WHERE NATURA = 2 AND ATTIVO = 0 AND CONTO = '0202'"), "1");
    EXPECT_EQ(built(), Names{"TRE"});
}

TEST_F(WorkingIndexes, AreNotBuiltForTheSakeOfAFlagThatTheyAdd) {
    run({"CREATE INDEX CON_FLAG ON #C (NATURA, ATTIVO, CONTO)", "CREATE INDEX SENZA ON #C (NATURA, CONTO)"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #C WHERE NATURA = 2 AND ATTIVO = 0 AND CONTO = '0202'"), "1");
    EXPECT_EQ(built(), Names{"SENZA"});
}

TEST_F(WorkingIndexes, AreNotBuiltForAConditionWhoseCodeTheyLeaveOut) {
    run({"CREATE INDEX PER_NATURA ON #C (NATURA)"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #C WHERE NATURA = 2 AND CONTO = '0202'"), "1");
    EXPECT_EQ(built(), Names{});
}

TEST_F(WorkingIndexes, AreBuiltForTheTableThatIsSoughtNotForTheOneThatGivesTheValue) {
    run({"CREATE INDEX PER_CONTO ON #C (CONTO)",
         "CREATE TABLE #P (CODICE NCHAR(10) NOT NULL, NATURA DECIMAL(1))",
         "CREATE INDEX PER_NATURA ON #P (NATURA)", "INSERT INTO #P VALUES ('0201', 2), ('0999', 2)"});
    EXPECT_EQ(
        rows("SELECT INDICE FROM #C WHERE EXISTS (SELECT 1 FROM #P WHERE NATURA = 2 AND CODICE = CONTO)"),
        Rows{{"2"}});
    EXPECT_EQ(built(), Names{});
    EXPECT_EQ(rows("SELECT CODICE FROM #P LEFT OUTER JOIN #C ON #C.CONTO = #P.CODICE WHERE INDICE IS NULL"),
              Rows{{"0999      "}});
    EXPECT_EQ(built(), Names{"PER_CONTO"});
}

TEST_F(WorkingIndexes, OfNobodysDeclarationServeACodeTheSecondTimeItIsLookedFor) {
    const std::string search = "SELECT INDICE FROM #C WHERE NATURA = 2 AND CONTO = '0202'";
    EXPECT_EQ(cell(search), "3");
    EXPECT_EQ(built(), Names{});
    EXPECT_EQ(affected("UPDATE #C SET ATTIVO = 1 WHERE CONTO LIKE '02%'"), 2);
    EXPECT_EQ(built(), Names{"veldran_CONTO"});
    run({"INSERT INTO #C VALUES (4, 1, '0203')"});
    EXPECT_EQ(cell("SELECT INDICE FROM #C WHERE CONTO = '0203'"), "4");
    EXPECT_EQ(cell(search), "3");
    EXPECT_EQ(built(), Names{"veldran_CONTO"});
    EXPECT_EQ(error("CREATE INDEX veldran_CONTO ON #C (NATURA)").Number, 40517);
}

TEST_F(WorkingIndexes, OfNobodysDeclarationAreNotNeededWhereAKeyFindsTheRow) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(cell("SELECT COUNT(*) FROM #C WHERE INDICE = 2 AND CONTO = '0201'"), "1");
    }
    EXPECT_EQ(built(), Names{});
}

TEST_F(WorkingIndexes, OfNobodysDeclarationComeAgainAfterARollback) {
    const std::string search = "SELECT INDICE FROM #C WHERE CONTO = '0202'";
    session_->begin();
    cell(search);
    cell(search);
    EXPECT_EQ(built(), Names{"veldran_CONTO"});
    session_->rollback();
    EXPECT_EQ(built(), Names{});
    cell(search);
    EXPECT_EQ(cell(search), "3");
    EXPECT_EQ(built(), Names{"veldran_CONTO"});
}

TEST_F(WorkingIndexes, AreBuiltFromTheRowsThatAreThereThen) {
    run({"CREATE INDEX PER_CONTO ON #C (CONTO)", "INSERT INTO #C VALUES (3, 1, '0301')",
         "UPDATE #C SET CONTO = '0401' WHERE NATURA = 1"});
    EXPECT_EQ(built(), Names{});
    EXPECT_EQ(rows("SELECT INDICE FROM #C WHERE CONTO >= '0301' ORDER BY INDICE"), (Rows{{"1"}, {"4"}}));
    EXPECT_EQ(built(), Names{"PER_CONTO"});
}

TEST_F(WorkingIndexes, AreBuiltAgainAfterARollbackTookThemBack) {
    run({"CREATE INDEX PER_CONTO ON #C (CONTO)"});
    session_->begin();
    EXPECT_EQ(cell("SELECT NATURA FROM #C WHERE CONTO = '0201'"), "2");
    EXPECT_EQ(built(), Names{"PER_CONTO"});
    session_->rollback();
    EXPECT_EQ(built(), Names{});
    EXPECT_EQ(cell("SELECT NATURA FROM #C WHERE CONTO = '0201'"), "2");
    EXPECT_EQ(built(), Names{"PER_CONTO"});
}

TEST_F(WorkingIndexes, ThatWereTakenBackThemselvesAreNeverBuilt) {
    session_->begin();
    run({"CREATE INDEX PER_CONTO ON #C (CONTO)"});
    session_->rollback();
    EXPECT_EQ(cell("SELECT NATURA FROM #C WHERE CONTO = '0201'"), "2");
    EXPECT_EQ(built(), Names{});
}

TEST_F(WorkingIndexes, HoldTheirNameBeforeTheyAreBuilt) {
    run({"CREATE INDEX PER_CONTO ON #C (CONTO)"});
    EXPECT_EQ(error("CREATE INDEX PER_CONTO ON #C (NATURA)").Number, 1913);
    run({"DROP INDEX PER_CONTO ON #C", "CREATE INDEX PER_CONTO ON #C (NATURA)"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #C WHERE CONTO = '0201'"), "1");
    EXPECT_EQ(built(), Names{});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #C WHERE NATURA = 2"), "2");
    EXPECT_EQ(built(), Names{"PER_CONTO"});
}

TEST_F(WorkingIndexes, GoWithTheirTable) {
    run({"CREATE INDEX PER_CONTO ON #C (CONTO)", "DROP TABLE #C",
         "CREATE TABLE #C (CONTO NCHAR(10) NOT NULL)", "INSERT INTO #C VALUES ('0101')"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #C WHERE CONTO = '0101'"), "1");
    EXPECT_EQ(built(), Names{});
}

TEST_F(WorkingIndexes, ThatGuardUniquenessAreBuiltAtOnce) {
    EXPECT_EQ(error("CREATE UNIQUE INDEX UNA ON #C (NATURA)").Number, 1505);
    run({"CREATE UNIQUE INDEX UNO ON #C (CONTO)"});
    EXPECT_EQ(built(), Names{"UNO"});
    EXPECT_EQ(error("INSERT INTO #C VALUES (3, 1, '0101')").Number, 2601);
}

TEST_F(WorkingIndexes, LeadToTheGreatestOfTheValuesInAList) {
    run({"CREATE TABLE #D (NATURA DECIMAL(1) NOT NULL, PADRE NCHAR(4) NULL, CONTO NCHAR(4) NOT NULL)",
         "INSERT INTO #D VALUES (1, '0100', '0101'), (1, '0100', '0102'), (1, '0101', '0102'), (1, '0102', "
         "'0102'), (1, '0200', '0102'), (2, NULL, '0300'), (1, '0300', '0102')",
         "CREATE INDEX PER_PADRE ON #D (PADRE, CONTO)"});
    const std::string greatest =
        "SELECT MAX(CONTO) FROM #D WHERE NATURA = 1 AND PADRE = '0100' AND CONTO IN ('0101', '0102')";
    EXPECT_EQ(cell(greatest), "0102");
    EXPECT_EQ(builtIndexes("#D"), Names{"PER_PADRE"});
    EXPECT_EQ(cell(greatest), "0102");
}

TEST_F(WorkingIndexes, OfTheDriversOwnAreKnownAfterARollback) {
    run({"CREATE TABLE #D (NATURA DECIMAL(1) NOT NULL, CONTO NCHAR(4) NOT NULL)",
         "INSERT INTO #D VALUES (1, '0101'), (2, '0201')"});
    const auto search = [&] { return cell("SELECT NATURA FROM #D WHERE CONTO = '0201'"); };
    search();
    search();
    ASSERT_EQ(builtIndexes("#D"), Names{"veldran_CONTO"});
    session_->begin();
    session_->rollback();
    for (int times = 0; times < 3; ++times) {
        EXPECT_EQ(search(), "2");
    }
    session_->begin();
    run({"DROP TABLE #D", "CREATE TABLE #D (NATURA DECIMAL(1) NOT NULL, CONTO NCHAR(4) NOT NULL)"});
    session_->rollback();
    EXPECT_EQ(search(), "2");
    EXPECT_EQ(builtIndexes("#D"), Names{"veldran_CONTO"});
}

} // namespace veldran::embedded::test
