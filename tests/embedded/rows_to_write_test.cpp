// An UPDATE of a whole working table that gives a constant to rows without a partner looks at those that
// partners lead to and at those that do not have the constant: what is written for it, when it is not, and
// that its effect is that of the statement as it stands.
#include "adapters/embedded/bulk_loader.h"
#include "tests/embedded/session_fixture.h"

#include <random>

namespace veldran::embedded::test {

namespace {

const std::string markActive =
    "UPDATE #T SET ATTIVO = ISNULL((SELECT TOP 1 1 FROM ATTIVI WHERE DITTA = 7 AND ATTIVI.GRUPPO = 1 AND "
    "ATTIVI.CONTO = #T.CONTO), 0)";
const std::string markNoted =
    "UPDATE #T SET ANNOTATO = CASE WHEN G IS NULL THEN 0 ELSE 1 END FROM #T LEFT OUTER JOIN (SELECT DISTINCT "
    "GRUPPO AS G, CONTO AS C FROM NOTE WHERE DITTA = 7) AS N ON GRUPPO = G AND CONTO = C";

/// #T holds chart 1 as a query fills it: accounts '0100', '0101', '0102', '0200', '0201', without any flag
/// set. Company 7 has activated '0101' and '0201' and has two notes of '0101' and one of '0200'.
class RowsToWrite : public SessionTest {
protected:
    RowsToWrite() {
        run({"CREATE TABLE PIANO (GRUPPO DECIMAL(2) NOT NULL, CONTO NCHAR(4) NOT NULL, PRIMARY KEY (GRUPPO, "
             "CONTO))",
             "CREATE TABLE ATTIVI (DITTA INT NOT NULL, GRUPPO DECIMAL(2) NOT NULL, CONTO NCHAR(4) NOT NULL, "
             "PRIMARY KEY (DITTA, GRUPPO, CONTO))",
             "CREATE TABLE NOTE (DITTA INT NOT NULL, GRUPPO DECIMAL(2) NOT NULL, CONTO NCHAR(4) NOT NULL, "
             "PROG "
             "INT NOT NULL, PRIMARY KEY (DITTA, GRUPPO, CONTO, PROG))",
             "INSERT INTO PIANO VALUES (1, '0100'), (1, '0101'), (1, '0102'), (1, '0200'), (1, '0201'), (2, "
             "'0101')",
             "INSERT INTO ATTIVI VALUES (7, 1, '0101'), (7, 1, '0201'), (7, 2, '0102'), (8, 1, '0102')",
             "INSERT INTO NOTE VALUES (7, 1, '0101', 1), (7, 1, '0101', 2), (7, 1, '0200', 1), (8, 1, "
             "'0100', "
             "1)"});
        fill("#T");
        run({"CREATE INDEX PER_CONTO ON #T (GRUPPO, CONTO)"});
    }

    void fill(const std::string& table, const std::string& account = "CONTO") {
        run({"SELECT IDENTITY(INT, 1, 1) AS INDICE, GRUPPO, " + account +
                 " AS CONTO, CAST(0 AS BIT) AS ATTIVO, CAST(0 AS BIT) AS ANNOTATO, CAST(0 AS SMALLINT) AS "
                 "CONTEGGIO, CAST('no' AS NVARCHAR(4)) AS TESTO INTO " +
                 table + " FROM PIANO WHERE GRUPPO = 1 ORDER BY GRUPPO, CONTO",
             "ALTER TABLE " + table + " ADD PRIMARY KEY CLUSTERED (INDICE)",
             "ALTER TABLE " + table + " ADD FORSE BIT NULL"});
    }
    std::string emitted(const std::string& text) { return session_->explain(text, {}); }
    bool isNarrowed(const std::string& text) {
        return emitted(text).find("rowid IN (SELECT") != std::string::npos;
    }
    bool looksForOthers(const std::string& text) {
        return emitted(text).find(" UNION ALL ") != std::string::npos;
    }
    std::string flags(const std::string& column) {
        std::string result;
        for (const auto& row : rows("SELECT " + column + " FROM #T ORDER BY INDICE")) {
            result += row[0];
        }
        return result;
    }
    std::int64_t written(const std::string& text) {
        sqlite3* handle = session_->state().database().handle();
        const std::int64_t before = sqlite3_total_changes64(handle);
        execute(text);
        return sqlite3_total_changes64(handle) - before;
    }
};

} // namespace

TEST_F(RowsToWrite, AreThoseThatPartnersLeadToWhereEveryRowHasTheConstant) {
    EXPECT_EQ(emitted(markActive),
              "UPDATE temp.\"#T\" SET \"ATTIVO\" = 1 WHERE \"#T\".rowid IN (SELECT \"#T$1\".rowid FROM "
              "main.\"ATTIVI\" CROSS JOIN temp.\"#T\" AS \"#T$1\" WHERE \"ATTIVI\".\"DITTA\" = 7 AND "
              "\"ATTIVI\".\"GRUPPO\" = 1 AND \"ATTIVI\".\"CONTO\" = \"#T$1\".\"CONTO\" AND "
              "\"#T$1\".\"GRUPPO\" = 1) AND \"#T\".\"ATTIVO\" IS NOT 1");
    EXPECT_EQ(affected(markActive), 5);
    EXPECT_EQ(flags("ATTIVO"), "01001");
}

TEST_F(RowsToWrite, AreThoseOfAnOuterJoinToo) {
    EXPECT_EQ(
        emitted(markNoted),
        "UPDATE temp.\"#T\" SET \"ANNOTATO\" = 1 WHERE \"#T\".rowid IN (SELECT \"#T$1\".rowid FROM (SELECT "
        "DISTINCT \"NOTE\".\"GRUPPO\" AS \"G\", \"NOTE\".\"CONTO\" AS \"C\" FROM main.\"NOTE\" WHERE "
        "\"NOTE\".\"DITTA\" = 7) AS \"N\" CROSS JOIN temp.\"#T\" AS \"#T$1\" WHERE \"#T$1\".\"GRUPPO\" = "
        "\"N\".\"G\" AND \"#T$1\".\"CONTO\" = \"N\".\"C\") AND \"#T\".\"ANNOTATO\" IS NOT 1");
    EXPECT_EQ(affected(markNoted), 5);
    EXPECT_EQ(flags("ANNOTATO"), "01010");
}

TEST_F(RowsToWrite, AreAskedForTheirValueWherePartnersMayGiveSeveral) {
    EXPECT_EQ(
        emitted("UPDATE #T SET ATTIVO = ISNULL((SELECT 1 FROM NOTE WHERE DITTA = 7 AND NOTE.GRUPPO = 1 AND "
                "NOTE.CONTO = #T.CONTO), 0)"),
        "UPDATE temp.\"#T\" SET \"ATTIVO\" = 1 - \"#T\".\"ATTIVO\" WHERE \"#T\".rowid IN (SELECT "
        "\"#T$1\".rowid FROM main.\"NOTE\" CROSS JOIN temp.\"#T\" AS \"#T$1\" WHERE \"NOTE\".\"DITTA\" = 7 "
        "AND \"NOTE\".\"GRUPPO\" = 1 AND \"NOTE\".\"CONTO\" = \"#T$1\".\"CONTO\" AND \"#T$1\".\"GRUPPO\" = "
        "1) AND ts_changed(\"#T\".\"ATTIVO\", ifnull((SELECT ts_single(1) FROM main.\"NOTE\" WHERE "
        "\"NOTE\".\"DITTA\" = 7 AND \"NOTE\".\"GRUPPO\" = 1 AND \"NOTE\".\"CONTO\" = \"#T\".\"CONTO\"), 0))");
    run({"CREATE TABLE PESI (GRUPPO DECIMAL(2) NOT NULL, CONTO NCHAR(4) NOT NULL, PESO INT NULL, PRIMARY KEY "
         "(GRUPPO, CONTO))",
         "INSERT INTO PESI VALUES (1, '0101', NULL), (1, '0200', 7)"});
    const std::string text =
        "UPDATE #T SET CONTEGGIO = CASE WHEN PESI.CONTO IS NULL THEN 0 WHEN PESO IS NULL THEN 1 ELSE 2 END "
        "FROM #T LEFT OUTER JOIN PESI ON PESI.GRUPPO = #T.GRUPPO AND PESI.CONTO = #T.CONTO";
    EXPECT_TRUE(isNarrowed(text));
    EXPECT_EQ(affected(text), 5);
    EXPECT_EQ(flags("CONTEGGIO"), "01020");
}

TEST_F(RowsToWrite, AreAlsoThoseThatHaveAnotherValueWhereSomeMay) {
    run({"UPDATE #T SET ATTIVO = 1 WHERE CONTO <> '0201'"});
    EXPECT_NE(
        emitted(markActive)
            .find("rowid IN (SELECT \"#T$2\".rowid FROM temp.\"#T\" AS \"#T$2\" WHERE \"#T$2\".\"ATTIVO\" "
                  "IS NOT 0 UNION ALL SELECT \"#T$1\".rowid FROM "),
        std::string::npos)
        << emitted(markActive);
    EXPECT_EQ(written(markActive), 4);
    EXPECT_EQ(flags("ATTIVO"), "01001");
    EXPECT_EQ(written(markActive), 0);
}

TEST_F(RowsToWrite, AreFoundByTheIndexThatIsBuiltForThem) {
    for (int account = 1000; account < 1400; ++account) {
        run({"INSERT INTO PIANO VALUES (1, '" + std::to_string(account) + "')"});
    }
    run({"DROP TABLE #T"});
    fill("#T");
    run({"CREATE INDEX PER_CONTO ON #T (GRUPPO, CONTO)"});
    const std::string text = emitted(markActive);
    EXPECT_EQ(builtIndexes("#T"), std::vector<std::string>{});
    execute(markActive);
    EXPECT_EQ(builtIndexes("#T"), std::vector<std::string>{"PER_CONTO"});
    SqliteStatement plan = session_->state().database().prepare("EXPLAIN QUERY PLAN " + text);
    std::string steps;
    while (plan.step()) {
        steps.append(plan.text(3)).append("; ");
    }
    EXPECT_EQ(steps, "SEARCH temp.#T USING INTEGER PRIMARY KEY (rowid=?); LIST SUBQUERY 1; SEARCH "
                     "main.ATTIVI USING PRIMARY KEY (DITTA=? AND GRUPPO=?); SEARCH #T$1 USING COVERING INDEX "
                     "#T.PER_CONTO (GRUPPO=? AND CONTO=?); ");
}

TEST_F(RowsToWrite, AreToldByAnExistenceAsWell) {
    const std::string text =
        "UPDATE #T SET ATTIVO = CASE WHEN NOT EXISTS (SELECT * FROM NOTE WHERE DITTA = 7 AND "
        "NOTE.GRUPPO = #T.GRUPPO AND NOTE.CONTO = #T.CONTO) THEN 0 ELSE 1 END";
    EXPECT_TRUE(isNarrowed(text));
    EXPECT_EQ(affected(text), 5);
    EXPECT_EQ(flags("ATTIVO"), "01010");
}

TEST_F(RowsToWrite, MayGetAnyNumberFromTheirPartner) {
    const std::string text =
        "UPDATE #T SET CONTEGGIO = ISNULL((SELECT TOP 1 PROG FROM NOTE WHERE DITTA = 7 AND "
        "NOTE.GRUPPO = 1 AND NOTE.CONTO = #T.CONTO ORDER BY PROG DESC), -1)";
    EXPECT_TRUE(isNarrowed(text));
    EXPECT_TRUE(looksForOthers(text));
    EXPECT_EQ(affected(text), 5);
    EXPECT_EQ(flags("CONTEGGIO"), "-12-11-1");
}

TEST_F(RowsToWrite, AreThoseWithoutAnyValueToo) {
    const std::string text = "UPDATE #T SET FORSE = ISNULL((SELECT TOP 1 1 FROM ATTIVI WHERE DITTA = 7 AND "
                             "ATTIVI.GRUPPO = 1 AND ATTIVI.CONTO = #T.CONTO), 0)";
    EXPECT_TRUE(isNarrowed(text));
    EXPECT_TRUE(emitted(text).starts_with(
        "UPDATE temp.\"#T\" SET \"FORSE\" = ifnull((SELECT 1 FROM ")); // not 1 - NULL
    EXPECT_EQ(written(text), 5);
    EXPECT_EQ(flags("FORSE"), "01001");
}

TEST_F(RowsToWrite, AreAllOfThemUnlessAnIndexLeadsToTheCode) {
    fill("#U");
    run({"CREATE INDEX PER_GRUPPO ON #U (GRUPPO)", "CREATE INDEX PER_TESTO ON #U (TESTO, CONTO)"});
    const std::string text = "UPDATE #U SET ATTIVO = ISNULL((SELECT TOP 1 1 FROM ATTIVI WHERE DITTA = 7 AND "
                             "ATTIVI.GRUPPO = 1 AND ATTIVI.CONTO = #U.CONTO), 0)";
    EXPECT_FALSE(isNarrowed(text));
    EXPECT_EQ(affected(text), 5);
    run({"CREATE INDEX PER_CONTO ON #U (GRUPPO, CONTO)"});
    EXPECT_TRUE(isNarrowed(text));
}

TEST_F(RowsToWrite, AreAllOfThemWhereTheStatementIsOfAnotherForm) {
    const std::string found = "FROM ATTIVI WHERE DITTA = 7 AND ATTIVI.GRUPPO = 1 AND ATTIVI.CONTO = #T.CONTO";
    const std::string partner = "(SELECT TOP 1 1 " + found + ")";
    const std::vector<std::string> texts{
        "UPDATE #T SET ATTIVO = ISNULL(" + partner + ", 0) WHERE CONTO > '01'",
        "UPDATE #T SET ATTIVO = ISNULL(" + partner + ", 0), CONTEGGIO = 1",
        "UPDATE #T SET TESTO = ISNULL(" + partner + ", 0)",
        "UPDATE #T SET ATTIVO = ISNULL(" + partner + ", ANNOTATO)",
        "UPDATE #T SET FORSE = " + partner,
        "UPDATE #T SET ATTIVO = CASE WHEN ANNOTATO = 0 THEN ISNULL(" + partner + ", 0) ELSE 1 END",
        "UPDATE #T SET ATTIVO = ISNULL((SELECT COUNT(*) " + found + "), 0)",
        "UPDATE #T SET ATTIVO = ISNULL((SELECT MAX(1) " + found + " GROUP BY DITTA), 0)",
        "UPDATE #T SET ATTIVO = ISNULL((SELECT TOP 1 1 " + found + " UNION SELECT 1 FROM PIANO), 0)",
        "UPDATE #T SET ATTIVO = ISNULL((SELECT TOP 1 1 FROM ATTIVI WHERE ATTIVI.CONTO > #T.CONTO), 0)",
        ("UPDATE #T SET ATTIVO = ISNULL((SELECT TOP 1 1 FROM ATTIVI WHERE ATTIVI.CONTO = #T.CONTO "
         "AND CAST(ATTIVI.CONTO AS INT) < 5), 0)"),
        ("UPDATE #T SET ATTIVO = ISNULL((SELECT TOP 1 1 FROM ATTIVI WHERE ATTIVI.CONTO = #T.CONTO "
         "OR DITTA = 8), 0)"),
        ("UPDATE #T SET ATTIVO = ISNULL((SELECT TOP 1 1 FROM PIANO, ATTIVI WHERE ATTIVI.CONTO = "
         "#T.CONTO), 0)"),
        ("UPDATE PIANO SET GRUPPO = ISNULL((SELECT TOP 1 1 FROM #T WHERE #T.CONTO = PIANO.CONTO), "
         "0)")};
    for (const std::string& text : texts) {
        EXPECT_FALSE(isNarrowed(text)) << text << "\n" << emitted(text);
    }
}

TEST_F(RowsToWrite, StillRefuseASecondPartnerWhereOneIsMeant) {
    const std::string text =
        "UPDATE #T SET ATTIVO = ISNULL((SELECT 1 FROM NOTE WHERE DITTA = 7 AND NOTE.GRUPPO = "
        "1 AND NOTE.CONTO = #T.CONTO), 0)";
    EXPECT_TRUE(isNarrowed(text));
    EXPECT_EQ(error(text).Number, 512);
    EXPECT_EQ(flags("ATTIVO"), "00000");
    run({"DELETE FROM NOTE WHERE PROG = 2"});
    EXPECT_EQ(affected(text), 5);
    EXPECT_EQ(flags("ATTIVO"), "01010");
}

TEST_F(RowsToWrite, RefuseAConstantThatDoesNotFitWhenARowWouldGetIt) {
    const std::string text = "UPDATE #T SET CONTEGGIO = CASE WHEN C IS NULL THEN 100000 ELSE 1 END FROM #T "
                             "LEFT OUTER JOIN (SELECT "
                             "DISTINCT CONTO AS C, GRUPPO AS G FROM PIANO) AS P ON CONTO = C AND GRUPPO = G";
    EXPECT_FALSE(isNarrowed(text));
    EXPECT_EQ(affected(text), 5);
    run({"DELETE FROM PIANO WHERE CONTO = '0100'"});
    EXPECT_EQ(error(text).Number, 8115);
}

TEST_F(RowsToWrite, AreNoLongerKnownByAColumnThatWasAssigned) {
    execute(markActive);
    run({"UPDATE #T SET GRUPPO = 2 WHERE CONTO = '0100'"});
    EXPECT_FALSE(isNarrowed(markActive));
    run({"INSERT INTO ATTIVI VALUES (7, 1, '0100')"});
    EXPECT_EQ(affected(markActive), 5);
    EXPECT_EQ(flags("ATTIVO"), "11001");
}

TEST_F(RowsToWrite, AreNoLongerKnownWhenRowsCome) {
    EXPECT_FALSE(looksForOthers(markActive));
    run({"INSERT INTO #T (GRUPPO, CONTO, ATTIVO, ANNOTATO, CONTEGGIO, TESTO) VALUES (1, '0300', 1, 1, 0, "
         "'x')"});
    EXPECT_FALSE(isNarrowed(markActive));
    EXPECT_TRUE(looksForOthers(markNoted));
    EXPECT_EQ(affected(markActive), 6);
    EXPECT_EQ(affected(markNoted), 6);
    EXPECT_EQ(flags("ATTIVO"), "010010");
    EXPECT_EQ(flags("ANNOTATO"), "010100");
}

TEST_F(RowsToWrite, AreNoLongerKnownWhenRowsAreLoaded) {
    BulkLoader loader(*session_, "#T", {"GRUPPO", "CONTO", "ATTIVO", "ANNOTATO", "CONTEGGIO", "TESTO"});
    loader.append(std::vector<Value>{1, "0300", true, false, 0, "x"});
    EXPECT_EQ(loader.finish(), 1);
    EXPECT_EQ(affected(markActive), 6);
    EXPECT_EQ(flags("ATTIVO"), "010010");
}

TEST_F(RowsToWrite, AreNoLongerKnownAfterARollback) {
    run({"BEGIN TRANSACTION", "UPDATE #T SET ATTIVO = 1", "ROLLBACK TRANSACTION"});
    EXPECT_FALSE(isNarrowed(markActive));
    EXPECT_TRUE(looksForOthers(markNoted));
}

TEST_F(RowsToWrite, AreNotTakenForThoseOfATableOfTheSameName) {
    execute(markActive);
    run({"DROP TABLE #T",
         "CREATE TABLE #T (INDICE INT IDENTITY(1, 1) NOT NULL PRIMARY KEY, GRUPPO DECIMAL(2) NOT "
         "NULL, CONTO NCHAR(4) NOT NULL, ATTIVO BIT NOT NULL)",
         "INSERT INTO #T VALUES (1, '0101', 0), (2, '0201', 0), (1, '0300', 1)",
         "CREATE INDEX PER_CONTO ON #T (GRUPPO, CONTO)"});
    EXPECT_FALSE(isNarrowed(markActive));
    EXPECT_EQ(affected(markActive), 3);
    EXPECT_EQ(flags("ATTIVO"), "110");
}

TEST_F(RowsToWrite, AreOnlyKnownByWhatTheQueryThatMadeTheTableSays) {
    run({"SELECT IDENTITY(INT, 1, 1) AS INDICE, GRUPPO, CONTO, CAST(0 AS BIT) AS ATTIVO INTO #U FROM PIANO "
         "WHERE "
         "GRUPPO = 1 OR GRUPPO = 2",
         "CREATE INDEX PER_CONTO ON #U (GRUPPO, CONTO)",
         "SELECT IDENTITY(INT, 1, 1) AS INDICE, GRUPPO, CONTO, CAST(0 AS BIT) AS ATTIVO INTO #V FROM PIANO "
         "WHERE "
         "GRUPPO >= 1 AND GRUPPO <= 1",
         "CREATE INDEX PER_CONTO ON #V (GRUPPO, CONTO)"});
    for (const std::string table : {"#U", "#V"}) {
        const std::string text = "UPDATE " + table +
                                 " SET ATTIVO = ISNULL((SELECT TOP 1 1 FROM ATTIVI WHERE DITTA = 7 AND "
                                 "ATTIVI.GRUPPO = 1 AND ATTIVI.CONTO = " +
                                 table + ".CONTO), 0)";
        EXPECT_FALSE(isNarrowed(text)) << text;
    }
    EXPECT_EQ(affected("UPDATE #U SET ATTIVO = ISNULL((SELECT TOP 1 1 FROM ATTIVI WHERE DITTA = 7 AND "
                       "ATTIVI.GRUPPO = 1 AND ATTIVI.CONTO = #U.CONTO), 0)"),
              6);
    EXPECT_EQ(rows("SELECT GRUPPO, CONTO FROM #U WHERE ATTIVO = 1 ORDER BY GRUPPO, CONTO"),
              (Rows{{"1", "0101"}, {"1", "0201"}, {"2", "0101"}}));
}

// #U is #T without an index, nor does it get one for a text of any length: its statements run as they stand.
TEST_F(RowsToWrite, HaveTheEffectOfTheWholeStatementWhateverTheTablesHold) {
    const std::vector<std::string> statements{
        "ATTIVO = ISNULL((SELECT TOP 1 1 FROM ATTIVI WHERE DITTA = 7 AND ATTIVI.GRUPPO = 1 AND ATTIVI.CONTO "
        "= "
        "@.CONTO), 0)",
        "ATTIVO = CASE WHEN EXISTS (SELECT 1 FROM NOTE WHERE NOTE.GRUPPO = @.GRUPPO AND NOTE.CONTO = "
        "@.CONTO) THEN "
        "0 ELSE 1 END",
        "FORSE = ISNULL((SELECT TOP 1 0 FROM ATTIVI WHERE DITTA = 7 AND ATTIVI.GRUPPO = @.GRUPPO AND "
        "ATTIVI.CONTO = "
        "@.CONTO), 1)",
        "CONTEGGIO = ISNULL((SELECT TOP 1 DITTA - 5 FROM ATTIVI WHERE ATTIVI.GRUPPO = @.GRUPPO AND "
        "ATTIVI.CONTO = "
        "@.CONTO ORDER BY DITTA DESC), 3)",
        "ANNOTATO = CASE WHEN G IS NULL THEN 0 ELSE 1 END FROM @ LEFT OUTER JOIN (SELECT DISTINCT GRUPPO AS "
        "G, "
        "CONTO AS C FROM NOTE WHERE DITTA = 7) AS N ON GRUPPO = G AND CONTO = C",
        "FORSE = CASE WHEN A.CONTO IS NULL THEN 1 WHEN @.ANNOTATO = 1 THEN NULL ELSE 0 END FROM @ LEFT OUTER "
        "JOIN (SELECT DISTINCT GRUPPO, CONTO FROM ATTIVI WHERE DITTA = 8) AS A ON A.GRUPPO = @.GRUPPO AND "
        "A.CONTO = @.CONTO"};
    const auto on = [](std::string text, const std::string& table) {
        for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@')) {
            text.replace(at, 1, table);
        }
        return "UPDATE " + table + " SET " + text;
    };
    std::mt19937 random(20261122);
    int narrowed = 0;
    for (int round = 0; round < 60; ++round) {
        for (const char* table : {"ATTIVI", "NOTE"}) {
            run({std::string("DELETE FROM ") + table});
            for (const char* account : {"0100", "0101", "0102", "0200", "0201", "0300"}) {
                for (int company = 7; company <= 8; ++company) {
                    if (random() % 3 == 0) {
                        run({std::string("INSERT INTO ") + table + " VALUES (" + std::to_string(company) +
                             ", " + std::to_string(1 + random() % 2) + ", '" + account + "'" +
                             (table[0] == 'N' ? ", 1)" : ")")});
                    }
                }
            }
        }
        run({"DROP TABLE #T"});
        fill("#T");
        fill("#U", "CAST(CONTO AS NVARCHAR(4))");
        run({"CREATE INDEX PER_CONTO ON #T (GRUPPO, CONTO)"});
        for (int step = 0; step < 4; ++step) {
            if (random() % 3 == 0) {
                const std::string account =
                    "0" + std::to_string(random() % 3) + "0" + std::to_string(random() % 3);
                const std::string change =
                    random() % 2 == 0 ? "ATTIVO = 1, FORSE = NULL" : "ANNOTATO = 1, CONTEGGIO = 9";
                for (const char* table : {"#T", "#U"}) {
                    run({std::string("UPDATE ") + table + " SET " + change + " WHERE CONTO <= '" + account +
                         "'"});
                }
            }
            const std::string& statement = statements[random() % statements.size()];
            narrowed += isNarrowed(on(statement, "#T")) ? 1 : 0;
            EXPECT_FALSE(isNarrowed(on(statement, "#U")));
            EXPECT_EQ(affected(on(statement, "#T")), affected(on(statement, "#U"))) << statement;
            EXPECT_EQ(rows("SELECT * FROM #T ORDER BY INDICE"), rows("SELECT * FROM #U ORDER BY INDICE"))
                << statement;
        }
        run({"DROP TABLE #U"});
    }
    EXPECT_EQ(narrowed, 240);
}

} // namespace veldran::embedded::test
