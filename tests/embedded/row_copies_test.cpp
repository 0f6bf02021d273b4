// A column is carried back from a working table to the one it was copied from: what counts as a row met, and
// which rows are looked at.
#include "tests/embedded/session_fixture.h"

#include <random>

namespace veldran::embedded::test {

namespace {

const std::string carryBack =
    "UPDATE #T SET #T.ATTIVO = #S.ATTIVO FROM #T INNER JOIN #S ON #T.INDICE = #S.INDICE";

/// #T holds five accounts, #S those whose number is odd.
class RowCopiesTest : public SessionTest {
protected:
    RowCopiesTest() {
        run({"CREATE TABLE #T (INDICE INT IDENTITY(1, 1) NOT NULL PRIMARY KEY, CONTO NCHAR(4) NOT NULL, "
             "ATTIVO "
             "BIT NOT NULL, CORRELATO BIT NOT NULL)",
             "INSERT INTO #T VALUES ('1', 0, 0), ('2', 0, 0), ('3', 0, 0), ('4', 0, 0), ('5', 0, 0)",
             select});
    }

    struct Effect {
        std::int64_t counted;
        std::int64_t lookedAt;
        friend bool operator==(const Effect&, const Effect&) = default;
        friend void PrintTo(const Effect& effect, std::ostream* out) {
            *out << effect.counted << " counted, " << effect.lookedAt << " looked at";
        }
    };
    Effect effect(const std::string& text = carryBack) {
        const std::int64_t counted = affected(text);
        return {counted, session_->state().database().functions().comparedRows};
    }
    std::string flags(const std::string& table = "#T", const std::string& column = "ATTIVO") {
        std::string result;
        for (const auto& row : rows("SELECT " + column + " FROM " + table + " ORDER BY INDICE")) {
            result += row[0];
        }
        return result;
    }

    const std::string select =
        "SELECT INDICE, CONTO, ATTIVO, CORRELATO INTO #S FROM #T WHERE INDICE % 2 = 1 ORDER BY INDICE "
        "ALTER TABLE #S ADD PRIMARY KEY CLUSTERED (INDICE)";
};

} // namespace

TEST_F(RowCopiesTest, AreLookedAtWhereAnUpdateHasChangedThem) {
    EXPECT_EQ(effect(), (Effect{3, 0}));
    run({"UPDATE #S SET ATTIVO = 1 WHERE CONTO = '3'"});
    EXPECT_EQ(effect(), (Effect{3, 1}));
    EXPECT_EQ(flags(), "00100");
    EXPECT_EQ(effect(), (Effect{3, 0}));
    run({"UPDATE #S SET ATTIVO = 1", "UPDATE #S SET ATTIVO = 0 WHERE CONTO = '1'"});
    EXPECT_EQ(effect(), (Effect{3, 3})) << "each row once; the one between was active already";
    EXPECT_EQ(flags(), "00101");
}

TEST_F(RowCopiesTest, ThatAreNearOneAnotherAreWrittenTogetherAndWhatLiesBetweenStaysAsItIs) {
    run({"DROP TABLE #S",
         "SELECT INDICE, CONTO, ATTIVO, CORRELATO INTO #S FROM #T ORDER BY INDICE ALTER TABLE "
         "#S ADD PRIMARY KEY CLUSTERED (INDICE)",
         carryBack, "UPDATE #S SET ATTIVO = 1 WHERE INDICE IN (1, 2, 4, 5)"});
    EXPECT_EQ(effect(), (Effect{5, 5})) << "two and two, and the third on the way";
    EXPECT_EQ(flags(), "11011");
    run({"UPDATE #S SET ATTIVO = 0"});
    EXPECT_EQ(effect(), (Effect{5, 5}));
    EXPECT_EQ(flags(), "00000");
}

TEST_F(RowCopiesTest, ThatAreFarFromOneAnotherAreWrittenWithoutTheManyBetween) {
    run({"DECLARE @N INT SET @N = 5 WHILE @N < 600 BEGIN INSERT INTO #T VALUES ('X', 0, 0) SET @N = @N + 1 "
         "END",
         "DROP TABLE #S",
         "SELECT INDICE, CONTO, ATTIVO, CORRELATO INTO #S FROM #T ORDER BY INDICE ALTER TABLE "
         "#S ADD PRIMARY KEY CLUSTERED (INDICE)",
         carryBack, "UPDATE #S SET ATTIVO = 1 WHERE INDICE % 30 = 0"});
    EXPECT_EQ(effect(), (Effect{600, 20}));
    EXPECT_EQ(rows("SELECT COUNT(*), MIN(INDICE), SUM(INDICE) FROM #T WHERE ATTIVO = 1"),
              (Rows{{"20", "30", "6300"}}));
    run({"UPDATE #S SET ATTIVO = 1 WHERE INDICE % 2 = 0"});
    EXPECT_EQ(effect(), (Effect{600, 597})) << "from 2 to 598 at once costs less than 280 statements";
    EXPECT_EQ(rows("SELECT COUNT(*) FROM #T WHERE ATTIVO = 1 AND INDICE % 2 = 0"), Rows{{"300"}});
    run({"UPDATE #S SET ATTIVO = 0 WHERE INDICE = 200"});
    EXPECT_EQ(effect(), (Effect{600, 1})) << "then row by row again";
}

TEST_F(RowCopiesTest, AreAllLookedAtWhenTheCopyHasFewRowsFarFromOneAnother) {
    run({"DECLARE @N INT SET @N = 5 WHILE @N < 6000 BEGIN INSERT INTO #T VALUES ('X', 0, 0) SET @N = @N + 1 "
         "END",
         "DROP TABLE #S",
         "SELECT INDICE, CONTO, ATTIVO, CORRELATO INTO #S FROM #T WHERE INDICE % 30 = 0 ORDER BY INDICE "
         "ALTER TABLE #S ADD PRIMARY KEY CLUSTERED (INDICE)",
         carryBack, "UPDATE #S SET ATTIVO = 1 WHERE INDICE > 60"});
    EXPECT_EQ(effect(), (Effect{200, 200})) << "198 have changed";
    EXPECT_EQ(rows("SELECT COUNT(*) FROM #T WHERE ATTIVO = 1"), Rows{{"198"}});
}

TEST_F(RowCopiesTest, AreLookedAtWhereTheOtherSideHasChanged) {
    run({"UPDATE #T SET ATTIVO = 1 WHERE CONTO IN ('2', '3')"});
    EXPECT_EQ(effect(), (Effect{3, 1}));
    EXPECT_EQ(flags(), "01000") << "what has no copy stays";
}

TEST_F(RowCopiesTest, AreFollowedColumnByColumn) {
    const std::string other =
        "UPDATE #T SET CORRELATO = #S.CORRELATO FROM #T INNER JOIN #S ON #S.INDICE = #T.INDICE";
    run({"UPDATE #S SET CORRELATO = 1 WHERE CONTO = '5'", "UPDATE #S SET ATTIVO = 1"});
    EXPECT_EQ(effect(other), (Effect{3, 1}));
    EXPECT_EQ(flags("#T", "CORRELATO"), "00001");
    EXPECT_EQ(flags("#T", "ATTIVO"), "00000");
    EXPECT_EQ(effect(), (Effect{3, 3}));
    EXPECT_EQ(flags("#T", "ATTIVO"), "10101");
}

TEST_F(RowCopiesTest, ReachTheRowCountOfTheNextStatement) {
    EXPECT_EQ(cell(carryBack + " SELECT @@ROWCOUNT"), "3");
}

TEST_F(RowCopiesTest, AreAllLookedAtOnceSomethingWasTakenBack) {
    run({"UPDATE #S SET ATTIVO = 1 WHERE CONTO = '3'"});
    session_->begin();
    EXPECT_EQ(effect(), (Effect{3, 1}));
    session_->rollback();
    EXPECT_EQ(flags(), "00000");
    EXPECT_EQ(effect(), (Effect{3, 3}));
    EXPECT_EQ(flags(), "00100");
}

TEST_F(RowCopiesTest, AreAllLookedAtOnceRowsHaveComeOrGone) {
    run({"DELETE FROM #S WHERE CONTO = '1'"});
    EXPECT_EQ(effect(), (Effect{2, 2}));
    run({"DROP TABLE #S", select, "TRUNCATE TABLE #S"});
    EXPECT_EQ(effect(), (Effect{0, 0}));
    run({"DROP TABLE #S", select, "INSERT INTO #T VALUES ('6', 0, 0)"});
    EXPECT_EQ(effect(), (Effect{3, 3}));
    run({"DROP TABLE #S", select, "DELETE FROM #T WHERE CONTO = '1'", "UPDATE #S SET ATTIVO = 1"});
    EXPECT_EQ(effect(), (Effect{2, 2}));
}

TEST_F(RowCopiesTest, AreFollowedWhenMoreRowsAreCopied) {
    run({"SET IDENTITY_INSERT #S ON",
         "INSERT INTO #S (INDICE, CONTO, ATTIVO, CORRELATO) SELECT INDICE, CONTO, ATTIVO, CORRELATO FROM #T "
         "WHERE INDICE = 4",
         "UPDATE #S SET ATTIVO = 1 WHERE INDICE >= 4"});
    EXPECT_EQ(effect(), (Effect{4, 2}));
    EXPECT_EQ(flags(), "00011");
}

TEST_F(RowCopiesTest, AreAllLookedAtWhenMoreRowsComeWithOtherValues) {
    run({"SET IDENTITY_INSERT #S ON",
         "INSERT INTO #S (INDICE, CONTO, ATTIVO, CORRELATO) SELECT INDICE, CONTO, 1, CORRELATO FROM #T WHERE "
         "INDICE = 4"});
    EXPECT_EQ(effect(), (Effect{4, 4}));
    EXPECT_EQ(flags(), "00010");
    run({"INSERT INTO #S (INDICE, CONTO, ATTIVO, CORRELATO) SELECT INDICE + 1, CONTO, ATTIVO, CORRELATO FROM "
         "#T "
         "WHERE INDICE = 1"});
    EXPECT_EQ(effect(), (Effect{5, 5}));
}

TEST_F(RowCopiesTest, AreAllLookedAtByStatementsOfAnotherShape) {
    run({"UPDATE #S SET ATTIVO = 1 WHERE CONTO = '3'"});
    for (const char* text :
         {"UPDATE #T SET ATTIVO = #S.ATTIVO FROM #T INNER JOIN #S ON #T.INDICE = #S.INDICE WHERE #S.INDICE > "
          "0",
          "UPDATE #T SET ATTIVO = #S.CORRELATO FROM #T INNER JOIN #S ON #T.INDICE = #S.INDICE",
          "UPDATE #T SET ATTIVO = #S.ATTIVO, CORRELATO = 0 FROM #T INNER JOIN #S ON #T.INDICE = #S.INDICE"}) {
        EXPECT_EQ(effect(text), (Effect{3, 3})) << text;
    }
}

TEST_F(RowCopiesTest, OfAColumnThatWasNotCopiedPlainlyAreAllLookedAt) {
    run({"DROP TABLE #S", "SELECT INDICE, CONTO, CAST(1 - ATTIVO AS BIT) AS ATTIVO INTO #S FROM #T ALTER "
                          "TABLE #S ADD PRIMARY KEY "
                          "(INDICE)"});
    EXPECT_EQ(effect(), (Effect{5, 5}));
    EXPECT_EQ(flags(), "11111");
}

TEST_F(RowCopiesTest, AreFoundWhenEachTableHasTheNameOfTheOther) {
    run({"UPDATE #S SET ATTIVO = 1 WHERE CONTO = '3'"});
    EXPECT_EQ(effect("UPDATE [#S] SET ATTIVO = [#T].ATTIVO FROM #T AS [#S] INNER JOIN #S AS [#T] ON "
                     "[#T].INDICE = [#S].INDICE"),
              (Effect{3, 1}));
    EXPECT_EQ(flags(), "00100");
}

TEST_F(RowCopiesTest, CarryNullAndBlanksBackAsTheyAre) {
    run({"CREATE TABLE #A (INDICE INT IDENTITY(1, 1) NOT NULL PRIMARY KEY, NOTA NVARCHAR(9) NULL)",
         "INSERT INTO #A VALUES ('uno'), ('due'), (NULL)",
         "SELECT INDICE, NOTA INTO #B FROM #A ALTER TABLE #B ADD PRIMARY KEY (INDICE)",
         "UPDATE #B SET NOTA = CASE INDICE WHEN 1 THEN NULL WHEN 2 THEN 'Due  ' ELSE 'tre' END"});
    EXPECT_EQ(effect("UPDATE #A SET NOTA = #B.NOTA FROM #A INNER JOIN #B ON #A.INDICE = #B.INDICE"),
              (Effect{3, 3}));
    EXPECT_EQ(rows("SELECT '<' + NOTA + '>' FROM #A ORDER BY INDICE"),
              (Rows{{"NULL"}, {"<Due  >"}, {"<tre>"}}));
}

TEST_F(RowCopiesTest, OfACopyOfACopyGoBackToTheCopyAlone) {
    run({"SELECT INDICE, CONTO, ATTIVO INTO #U FROM #S WHERE INDICE > 1 ALTER TABLE #U ADD PRIMARY KEY "
         "(INDICE)",
         "UPDATE #U SET ATTIVO = 1"});
    EXPECT_EQ(effect("UPDATE #S SET ATTIVO = #U.ATTIVO FROM #S INNER JOIN #U ON #S.INDICE = #U.INDICE"),
              (Effect{2, 2}));
    EXPECT_EQ(flags("#S"), "011");
    EXPECT_EQ(flags(), "00000");
    EXPECT_EQ(effect(), (Effect{3, 2}));
    EXPECT_EQ(flags(), "00101");
}

TEST_F(RowCopiesTest, EndWithTheTableThatTheyCameFrom) {
    run({"DROP TABLE #T",
         "CREATE TABLE #T (INDICE INT IDENTITY(1, 1) NOT NULL PRIMARY KEY, ATTIVO BIT NOT NULL)",
         "INSERT INTO #T VALUES (1), (1)"});
    EXPECT_EQ(effect(), (Effect{1, 1}));
    EXPECT_EQ(flags(), "01");
}

TEST_F(RowCopiesTest, ThatAStatementFailedToChangeAreCarriedBackAsTheyAre) {
    run({"CREATE UNIQUE INDEX UNO ON #T (CONTO)", "UPDATE #S SET ATTIVO = 1 WHERE CONTO = '1'"});
    error("UPDATE #S SET ATTIVO = 1 / (INDICE - 3)");
    EXPECT_EQ(flags("#S"), "100");
    effect();
    EXPECT_EQ(flags(), "10000");
}

TEST_F(RowCopiesTest, GiveWhatTheWholeStatementGivesHoweverTheTablesWereChanged) {
    // The same changes on tables whose write-back is worded so that every row is looked at.
    run({"CREATE TABLE #U (INDICE INT IDENTITY(1, 1) NOT NULL PRIMARY KEY, CONTO NCHAR(4) NOT NULL, ATTIVO "
         "BIT NOT "
         "NULL, CORRELATO BIT NOT NULL)",
         "INSERT INTO #U SELECT CONTO, ATTIVO, CORRELATO FROM #T ORDER BY INDICE",
         "SELECT INDICE, CONTO, ATTIVO, CORRELATO INTO #V FROM #U WHERE INDICE % 2 = 1 ALTER TABLE #V ADD "
         "PRIMARY KEY (INDICE)"});
    std::mt19937 random(20);
    const auto among = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    for (int step = 0; step < 400; ++step) {
        const std::string number = std::to_string(1 + among(6));
        const std::string value = std::to_string(among(2));
        const int what = among(12);
        for (const auto& [all, some, whole] :
             {std::tuple("#T", "#S", ""), std::tuple("#U", "#V", " WHERE #U.INDICE > 0")}) {
            const std::string t = all;
            const std::string s = some;
            switch (what) {
            case 0:
                run({"DROP TABLE " + s, "SELECT INDICE, CONTO, ATTIVO, CORRELATO INTO " + s + " FROM " + t +
                                            " WHERE ATTIVO = " + value + " ALTER TABLE " + s +
                                            " ADD PRIMARY KEY (INDICE)"});
                break;
            case 1:
                run({"DELETE FROM " + s + " WHERE INDICE = " + number});
                break;
            case 2:
                run({"UPDATE " + t + " SET ATTIVO = " + value + " WHERE INDICE <= " + number});
                break;
            case 3:
                run({"SET IDENTITY_INSERT " + s + " ON",
                     "INSERT INTO " + s +
                         " (INDICE, CONTO, ATTIVO, CORRELATO) SELECT INDICE, CONTO, ATTIVO, " +
                         "CORRELATO FROM " + t + " WHERE INDICE NOT IN (SELECT INDICE FROM " + s + ")",
                     "SET IDENTITY_INSERT " + s + " OFF"});
                break;
            case 4:
            case 5:
            case 6:
            case 7:
                run({"UPDATE " + s + " SET ATTIVO = " + value + " WHERE INDICE >= " + number});
                break;
            default:
                run({"UPDATE " + t + " SET ATTIVO = " + s + ".ATTIVO FROM " + t + " INNER JOIN " + s +
                     " ON " + t + ".INDICE = " + s + ".INDICE" + whole});
            }
        }
        ASSERT_EQ(flags("#T"), flags("#U")) << "step " << step;
        ASSERT_EQ(flags("#S"), flags("#V")) << "step " << step;
    }
}

} // namespace veldran::embedded::test
