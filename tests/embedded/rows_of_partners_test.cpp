// An UPDATE of a whole working table that gives a constant to rows without a partner, beside the same UPDATE
// of every row one by one: each row, each count and each error has to be the same.
#include "tests/embedded/random_texts.h"
#include "tests/embedded/session_fixture.h"

#include <algorithm>

namespace veldran::embedded::test {

namespace {

const std::string columns =
    "INDICE, ROWID, GRUPPO, CONTO, PADRE, ATTIVO, FORSE, CONTEGGIO, LUNGO, LIVELLO, TESTO";

/// Texts on @, which stands for the table, #B and NOTE, at random.
class Texts : public RandomTexts {
public:
    using RandomTexts::RandomTexts;

    std::string code() {
        return of({"'0100'", "'0101'", "'01a1'", "'01A1'", "'0200'", "'03'", "'03  '", "NULL", "'à0'"});
    }

    /// What follows UPDATE @ SET.
    std::string assignment() {
        const std::string column = of({"ATTIVO", "FORSE", "CONTEGGIO", "LUNGO", "LIVELLO", "TESTO", "PADRE"});
        if (among(3) == 0) {
            return column + " = " + joinedValue() + " FROM @ LEFT OUTER JOIN " + joined();
        }
        return column + " = " + value();
    }

    std::string change() {
        return "UPDATE @ SET " +
               of({"ATTIVO = " + number(2), "FORSE = " + of({"0", "1", "NULL"}), "GRUPPO = " + number(3),
                   "CONTO = ISNULL(" + code() + ", '9')", "PADRE = " + code(), "CONTEGGIO = " + number(3),
                   "TESTO = " + of({"'1'", "'x'", "' 2 '"}), "ROWID = " + number(9)}) +
               of({"", " WHERE CONTO = " + code(), " WHERE INDICE > " + number(8)});
    }

private:
    std::string value() {
        const std::string c = of({"0", "1", "2", "-1", "70000", "1.0", "'0'", "NULL", "ATTIVO", "FORSE"});
        const std::string d = of({"0", "1", "2", "40000", "CAST(TESTO AS INT)", "CONTEGGIO", "NULL"});
        switch (among(10)) {
        case 0:
            return "CASE WHEN " + exists() + " THEN " + d + " ELSE " + c + " END";
        case 1:
            return "CASE WHEN NOT " + exists() + " THEN " + c + " ELSE " + d + " END";
        case 2:
            return "CASE " + scalar() + " WHEN " + of({"1", "2", "CAST(TESTO AS INT)"}) + " THEN " + d +
                   " ELSE " + c + " END";
        case 3:
            return "CASE WHEN " + scalar() + of({" = 1", " > LIVELLO", " IS NULL", " = CAST(TESTO AS INT)"}) +
                   " THEN " + c + " ELSE " + d + " END";
        case 4:
            return "ISNULL(" + scalar() + of({" + 1", " * 40000", " + CAST(TESTO AS INT)", " - ATTIVO"}) +
                   ", " + c + ")";
        case 5:
            return "ISNULL(CAST(" + scalar() + " AS " + of({"TINYINT", "BIT", "BIGINT", "NVARCHAR(2)"}) +
                   "), " + of({"0", "1"}) + ")";
        case 6:
            return "CASE WHEN " + exists() + " AND " + exists() + " THEN 1 ELSE " + c + " END";
        default:
            return "ISNULL(" + scalar() + ", " + c + ")";
        }
    }

    std::string scalar() {
        const std::string source = of({"#B", "NOTE", "@"});
        const std::string constant = of({"1", "0", "2", "300", "NULL", "'1'", "CAST(1 AS BIT)", "70000"});
        const std::string own =
            source == "@" ? of({"P.LIVELLO", "P.ATTIVO", "P.CONTEGGIO", "P.TESTO"})
            : source == "NOTE"
                ? of({"P.PROG", "P.PROG - 1", "P.DITTA"})
                : of({"P.V", "P.INTERO", "P.PESO", "P.INTERO * 30000", "CAST(P.BREVE AS INT)"});
        const std::string from = " FROM " + source + " AS P WHERE " + condition(source);
        switch (among(8)) {
        case 0:
            return "(SELECT " + constant + from + ")";
        case 1:
            return "(SELECT " + own + from + ")";
        case 2:
            return "(SELECT DISTINCT " + of({constant, own}) + from + ")";
        case 3:
            return "(SELECT " + of({"COUNT(*)", "MAX(" + of({"P.CONTO", "1"}) + ")", "MIN(1)"}) +
                   (source == "#B" ? " FROM NOTE AS P WHERE " + condition("NOTE") : from) + ")";
        case 4:
            return "(SELECT TOP 1 " + own + from + " ORDER BY " + own + of({"", " DESC"}) + ")";
        case 5:
            return "(SELECT TOP " + of({"0", "2", "(?)"}) + " " + constant + from + ")";
        case 6:
            return "(SELECT TOP 1 1" + from + " ORDER BY COUNT(*))";
        default:
            return "(SELECT TOP 1 " + constant + from + ")";
        }
    }

    std::string exists() {
        const std::string source = of({"#B", "NOTE", "@"});
        return "EXISTS (SELECT " + of({"*", "1", "TOP 1 1", "TOP 0 1", "TOP (?) 1", "DISTINCT 1", "NULL"}) +
               " FROM " + source + " AS P WHERE " + condition(source) + ")";
    }

    std::string condition(const std::string& source) {
        const std::string theirs = source == "#B"  ? of({"P.CODICE", "P.BREVE"})
                                   : source == "@" ? of({"P.CONTO", "P.PADRE"})
                                                   : "P.CONTO";
        const std::string mine = of({"@.CONTO", "@.CONTO", "@.PADRE"});
        std::vector<std::string> parts{among(2) == 0 ? theirs + " = " + mine : mine + " = " + theirs};
        for (int more = among(4); more > 0; --more) {
            parts.push_back(
                source == "#B" ? of({"P.V = 1", "P.V = @.ATTIVO", "P.INTERO = @.GRUPPO", "P.PESO = 1.5",
                                     "P.PESO = @.LIVELLO", "P.INTERO = 1", "P.BREVE = '1'",
                                     "P.INTERO IS NULL", "P.INTERO = ?", "P.V = '1'"})
                : source == "@"
                    ? of({"P.GRUPPO = @.GRUPPO", "P.ATTIVO = 1", "P.INDICE > 3", "P.FORSE IS NULL",
                          "P.LIVELLO <= @.LIVELLO", "P.ATTIVO = @.ATTIVO", "P.CONTEGGIO = ?"})
                    : of({"P.GRUPPO = @.GRUPPO", "P.GRUPPO = 1", "P.DITTA = 7", "P.GRUPPO = ?",
                          "P.DITTA = '7'", "P.GRUPPO = '1'", "@.GRUPPO = 1", "P.GRUPPO = 1.0",
                          "P.PROG = @.LIVELLO", "P.CONTO = '0101'"}));
        }
        if (among(12) == 0) {
            parts.push_back(of({"(1 = 1 OR P.CONTO = '0')", "1 = 1", "@.TESTO = 1"}));
        }
        shuffle(parts);
        std::string text;
        for (const std::string& part : parts) {
            text += (text.empty() ? "" : " AND ") + part;
        }
        return text;
    }

    std::string joined() {
        const std::string more =
            of({"", "", " AND @.ATTIVO = 1", " AND @.LIVELLO = 2", " AND @.FORSE IS NULL", " AND 1 = 1"});
        return of({"(SELECT DISTINCT GRUPPO AS G, CONTO AS C FROM NOTE WHERE DITTA = 7) AS N ON G = @.GRUPPO "
                   "AND C = "
                   "@.CONTO",
                   "(SELECT DISTINCT 1 AS G, CODICE AS C FROM #B WHERE INTERO = ?) AS N ON @.CONTO = C AND "
                   "@.GRUPPO = G",
                   "(SELECT DISTINCT CODICE AS C, V AS G FROM #B) AS N ON @.CONTO = N.C AND N.G = @.ATTIVO",
                   "(SELECT DISTINCT CONTO AS C, PROG AS G FROM NOTE) AS N ON N.C = @.PADRE AND N.G = "
                   "@.LIVELLO",
                   "(SELECT DISTINCT ATTIVO AS G, CONTO AS C FROM @) AS N ON N.C = @.PADRE AND N.G = @.FORSE",
                   "(SELECT DITTA, GRUPPO AS G, CONTO AS C, PROG FROM NOTE) AS N ON N.C = @.CONTO",
                   "UNICI AS N ON N.C = @.CONTO", "UNICI AS N ON @.PADRE = N.C"}) +
               more;
    }

    std::string joinedValue() {
        return of({"CASE WHEN C IS NULL THEN 0 ELSE 1 END", "CASE WHEN N.C IS NOT NULL THEN 1 ELSE 0 END",
                   "ISNULL(N.G, 0)", "ISNULL(N.G, -1)", "CASE WHEN G IS NULL THEN 0 ELSE 1 END",
                   "CASE WHEN C = '0101' THEN 2 ELSE 1 END", "ISNULL(G + CAST(TESTO AS INT), 0)", "DEFAULT",
                   "CASE WHEN N.G = CAST(TESTO AS INT) THEN 1 ELSE 0 END", "1",
                   "CASE WHEN C IS NULL THEN 70000 ELSE 1 END", "CASE WHEN C IS NULL THEN 0 ELSE 70000 END"});
    }
};

class RowsOfPartners : public SessionTest {
protected:
    RowsOfPartners() {
        run({"CREATE TABLE PIANO (GRUPPO INT NOT NULL, CONTO NCHAR(4) NOT NULL, PADRE NCHAR(4) NULL, LIVELLO "
             "TINYINT NOT NULL, PRIMARY KEY (GRUPPO, CONTO))",
             "INSERT INTO PIANO VALUES (1, '0100', NULL, 1), (1, '0101', '0100', 2), (1, '01a2', '0100', 2), "
             "(1, "
             "'0200', NULL, 1), (1, '0201', '0200', 2), (1, '03', '0200', 2), (2, '0101', '0100', 1), (2, "
             "'à0', "
             "NULL, 1)",
             "CREATE TABLE NOTE (DITTA INT NOT NULL, GRUPPO INT NOT NULL, CONTO NCHAR(4) NOT NULL, PROG "
             "TINYINT "
             "NOT NULL, PRIMARY KEY (DITTA, GRUPPO, CONTO, PROG))",
             "CREATE TABLE UNICI (C NCHAR(4) NOT NULL PRIMARY KEY, G INT NULL)",
             "CREATE TABLE #B (CODICE NVARCHAR(10) NULL, BREVE VARCHAR(4) NULL, INTERO INT NULL, PESO "
             "DECIMAL(4, 1) NULL, V BIT NULL)"});
    }

    void fill(const std::string& table, const std::string& where) {
        run({"SELECT IDENTITY(INT, 1, 1) AS INDICE, 3 AS ROWID, GRUPPO, CONTO, PADRE, CAST(0 AS BIT) AS "
             "ATTIVO, "
             "CAST(1 AS SMALLINT) AS CONTEGGIO, CAST(0 AS BIGINT) AS LUNGO, LIVELLO, CAST('1' AS "
             "NVARCHAR(4)) AS "
             "TESTO INTO " +
                 table + " FROM PIANO " + where + " ORDER BY GRUPPO, CONTO",
             "ALTER TABLE " + table + " ADD PRIMARY KEY CLUSTERED (INDICE)",
             "ALTER TABLE " + table + " ADD FORSE BIT NULL DEFAULT 1",
             "CREATE INDEX PER_CONTO ON " + table + " (GRUPPO, CONTO)",
             "CREATE INDEX PER_SOLO ON " + table + " (CONTO)",
             "CREATE INDEX PER_PADRE ON " + table + " (ATTIVO, LIVELLO, PADRE)"});
    }
    static std::string on(std::string text, const std::string& table) {
        for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@')) {
            text.replace(at, 1, table);
        }
        return text;
    }
    bool isNarrowed(const std::string& text) {
        try {
            const auto values = valuesOf(text);
            std::vector<ado::ParameterInfo> infos;
            for (const auto& value : values) {
                infos.push_back(value.info);
            }
            return session_->explain(text, infos).find(" IN (SELECT \"#T$") != std::string::npos;
        } catch (const ado::AdoError&) {
            return false;
        }
    }
    std::vector<ado::BoundParameter> valuesOf(const std::string& text) const {
        std::vector<ado::BoundParameter> values;
        for (auto markers = std::count(text.begin(), text.end(), '?'); markers > 0; --markers) {
            values.push_back(integer("", parameter_));
        }
        return values;
    }
    /// The count, or what was refused: several rows may each be refused for a reason of their own, and which
    /// comes first is not said.
    std::string counted(const std::string& text) {
        const std::string answer = outcome(text);
        const bool ofRow =
            answer == "error 245" || answer == "error 512" || answer == "error 515" || answer == "error 8115";
        return ofRow ? "a row refused" : answer;
    }
    /// The count or the number of the error.
    std::string outcome(const std::string& text) {
        try {
            return std::to_string(execute(text, valuesOf(text)).rowsAffected);
        } catch (const ado::AdoError& error) {
            return "error " + std::to_string(error.first().Number);
        }
    }

    int parameter_ = 1;
};

} // namespace

TEST_F(RowsOfPartners, AreNoneWhereAnExistenceIsAskedOfNoRow) {
    fill("#T", "WHERE GRUPPO = 1");
    run({"INSERT INTO NOTE VALUES (7, 1, '0101', 1), (7, 1, '0201', 1)"});
    for (const std::string top : {"TOP 0 ", "TOP (?) "}) {
        const std::string text =
            "UPDATE #T SET ATTIVO = CASE WHEN EXISTS (SELECT " + top +
            "1 FROM NOTE AS P WHERE P.GRUPPO = 1 AND P.CONTO = #T.CONTO) THEN 1 ELSE 0 END";
        parameter_ = 0;
        EXPECT_TRUE(isNarrowed(text)) << text;
        EXPECT_EQ(outcome(text), "6");
        EXPECT_EQ(cell("SELECT COUNT(*) FROM #T WHERE ATTIVO = 1"), "0") << text;
    }
}

TEST_F(RowsOfPartners, AreFoundInATableWithAColumnNamedRowid) {
    fill("#T", "WHERE GRUPPO = 1");
    run({"INSERT INTO NOTE VALUES (7, 1, '0101', 1), (7, 1, '0201', 1)"});
    const std::string text =
        "UPDATE #T SET ATTIVO = ISNULL((SELECT TOP 1 1 FROM NOTE AS P WHERE P.GRUPPO = 1 "
        "AND P.CONTO = #T.CONTO), 0)";
    EXPECT_TRUE(isNarrowed(text));
    EXPECT_EQ(outcome(text), "6");
    EXPECT_EQ(rows("SELECT CONTO FROM #T WHERE ATTIVO = 1 ORDER BY CONTO"), (Rows{{"0101"}, {"0201"}}));
    run({"UPDATE NOTE SET CONTO = '0200' WHERE CONTO = '0101'"});
    EXPECT_EQ(outcome(text), "6");
    EXPECT_EQ(rows("SELECT CONTO FROM #T WHERE ATTIVO = 1 ORDER BY CONTO"), (Rows{{"0200"}, {"0201"}}));
}

TEST_F(RowsOfPartners, MayGetTheDefaultBesideAnOuterJoin) {
    fill("#T", "WHERE GRUPPO = 1");
    EXPECT_EQ(outcome("UPDATE #T SET FORSE = DEFAULT FROM #T LEFT OUTER JOIN UNICI ON C = CONTO"), "6");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM #T WHERE FORSE = 1"), "6");
}

TEST_F(RowsOfPartners, AreRefusedAValueThatDoesNotFitNoSoonerThanTheyGetIt) {
    fill("#T", "WHERE GRUPPO = 1");
    const std::string text =
        "UPDATE #T SET LUNGO = ISNULL(CAST((SELECT TOP 1 300 FROM NOTE AS P WHERE P.GRUPPO "
        "= 1 AND P.CONTO = #T.CONTO) AS TINYINT), 0)";
    EXPECT_EQ(outcome(text), "6");
    run({"INSERT INTO NOTE VALUES (7, 1, '0101', 1)"});
    EXPECT_EQ(outcome(text), "error 8115");
    EXPECT_EQ(cell("SELECT SUM(LUNGO) FROM #T"), "0");
}

TEST_F(RowsOfPartners, DoNotHideWhatFailsInTheOrderOfTheirs) {
    fill("#T", "WHERE GRUPPO = 1");
    const std::string text =
        "UPDATE #T SET LUNGO = ISNULL((SELECT TOP 1 1 FROM #B AS P WHERE P.CODICE = #T.CONTO "
        "ORDER BY CAST(P.BREVE AS INT)), 0)";
    EXPECT_TRUE(isNarrowed(text));
    run({"INSERT INTO #B VALUES ('9999', 'x', 1, 1, 1), ('0101', 'x', 1, 1, 1)"});
    EXPECT_EQ(outcome(text), "error 245");
    run({"UPDATE #B SET BREVE = '1' WHERE CODICE = '0101'"});
    EXPECT_EQ(outcome(text), "6");
    EXPECT_EQ(rows("SELECT CONTO FROM #T WHERE LUNGO = 1"), (Rows{{"0101"}}));
}

TEST_F(RowsOfPartners, DoNotHideWhatFailsInTheOthers) {
    fill("#T", "WHERE GRUPPO = 1");
    run({"INSERT INTO NOTE VALUES (7, 1, '0101', 1)", "UPDATE #T SET TESTO = 'x' WHERE CONTO = '0200'"});
    const std::string partner = "(SELECT TOP 1 1 FROM NOTE AS P WHERE P.GRUPPO = 1 AND P.CONTO = #T.CONTO)";
    const std::vector<std::string> texts{"ISNULL(" + partner + " + CAST(TESTO AS INT), 0)",
                                         "CASE WHEN " + partner + " = CAST(TESTO AS INT) THEN 1 ELSE 0 END",
                                         "ISNULL(CASE WHEN EXISTS " + partner +
                                             " THEN 1 END + CAST(TESTO AS INT), 0)",
                                         "CASE WHEN UNICI.G = CAST(TESTO AS INT) THEN 1 ELSE 0 END FROM #T "
                                         "LEFT OUTER JOIN UNICI ON C = CONTO"};
    for (const std::string& text : texts) {
        EXPECT_EQ(outcome("UPDATE #T SET LUNGO = " + text), "error 245") << text;
    }
    EXPECT_EQ(cell("SELECT SUM(LUNGO) FROM #T"), "0");
}

TEST_F(RowsOfPartners, AreFoundAnewWhenAProcedureRunsAgain) {
    run({"CREATE PROCEDURE SEGNA @GRUPPO INT, @DITTA INT AS UPDATE #T SET ATTIVO = ISNULL((SELECT TOP 1 1 "
         "FROM "
         "NOTE WHERE DITTA = @DITTA AND NOTE.GRUPPO = @GRUPPO AND NOTE.CONTO = #T.CONTO), 0) SELECT "
         "@@ROWCOUNT "
         "AS RIGHE",
         "INSERT INTO NOTE VALUES (7, 1, '0101', 1), (8, 1, '0200', 1), (7, 2, '0101', 1)"});
    const auto marked = [&] { return rows("SELECT GRUPPO, CONTO FROM #T WHERE ATTIVO = 1 ORDER BY INDICE"); };
    fill("#T", "WHERE GRUPPO = 1");
    EXPECT_EQ(cell("EXEC SEGNA 1, 7"), "6");
    EXPECT_EQ(marked(), (Rows{{"1", "0101"}}));
    EXPECT_EQ(cell("EXEC SEGNA 1, 8"), "6");
    EXPECT_EQ(marked(), (Rows{{"1", "0200"}}));
    EXPECT_EQ(cell("EXEC SEGNA NULL, 8"), "6");
    EXPECT_EQ(marked(), Rows{});
    run({"DROP TABLE #T"});
    fill("#T", "WHERE GRUPPO >= 1");
    EXPECT_EQ(cell("EXEC SEGNA 1, 7"), "8");
    EXPECT_EQ(marked(), (Rows{{"1", "0101"}, {"2", "0101"}}));
    run({"DROP TABLE #T"});
    fill("#T", "WHERE GRUPPO = 2");
    EXPECT_EQ(cell("EXEC SEGNA 2, 7"), "2");
    EXPECT_EQ(marked(), (Rows{{"2", "0101"}}));
    run({"BEGIN TRANSACTION", "SAVE TRANSACTION PRIMA", "UPDATE #T SET GRUPPO = 1, ATTIVO = 0",
         "ROLLBACK TRANSACTION PRIMA", "COMMIT TRANSACTION"});
    EXPECT_EQ(cell("EXEC SEGNA 2, 8"), "2");
    EXPECT_EQ(marked(), Rows{});
}

// GRUPPO, which the index begins with, has one value, however the statement that fills the table says so.
TEST_F(RowsOfPartners, AreFoundBehindAColumnOfAnyTypeThatHasOneValue) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> cases{
        {"DECIMAL(4, 1)",
         {"= 90", "= '90'", "= 90.0", "= 90.5", "= '90.5'", "= 9e1", "= -9", "= 90.55", "= '9'", "IN (90)",
          "IN (90, 9)", "BETWEEN 90 AND 90", "= 9 OR GRUPPO = 90", "<> 90", "= 90 AND CONTO > '0'",
          "= GRUPPO", "= CAST(90 AS BIGINT)", "= 90 + 0"}},
        {"INT", {"= 90", "= '90'", "= 90.0", "= 90.5", "= -9", "= CAST(90 AS DECIMAL(18, 4))", "= 9e1"}},
        {"BIT", {"= 1", "= '1'", "= 'TRUE'", "= 2", "= 1.0", "= 0", "= CAST(90 AS BIT)"}},
        {"TINYINT", {"= 90", "= 346", "= '90'"}},
        {"BIGINT", {"= 90", "= 90.0"}},
        {"FLOAT", {"= 90", "= 90.5", "= '90'"}},
        {"NVARCHAR(5)", {"= '90'", "= 90", "= '90  '"}}};
    run({"INSERT INTO NOTE VALUES (7, 1, '0101', 1), (7, 1, '0201', 1)"});
    int narrowed = 0;
    for (const auto& [type, conditions] : cases) {
        run({"CREATE TABLE FONTE (GRUPPO " + type + " NULL, CONTO NCHAR(4) NOT NULL)"});
        for (const std::string value : {"90", "90.5", "9", "-9", "0", "1"}) {
            for (const std::string account : {"0100", "0101", "0201"}) {
                outcome("INSERT INTO FONTE VALUES (" + value + ", '" + account + "')");
            }
        }
        run({"INSERT INTO FONTE VALUES (NULL, '0101')"});
        for (const std::string& condition : conditions) {
            if (outcome(
                    "SELECT IDENTITY(INT, 1, 1) AS INDICE, *, 0 AS SEGNO INTO #T FROM FONTE WHERE GRUPPO " +
                    condition)
                    .starts_with("error")) {
                continue;
            }
            run({"CREATE INDEX PER_CONTO ON #T (GRUPPO, CONTO)"});
            const std::string text =
                "UPDATE #T SET SEGNO = ISNULL((SELECT TOP 1 1 FROM NOTE WHERE NOTE.CONTO = "
                "#T.CONTO), 0)";
            narrowed += isNarrowed(text) ? 1 : 0;
            EXPECT_EQ(outcome(text), cell("SELECT COUNT(*) FROM #T"));
            EXPECT_EQ(rows("SELECT INDICE FROM #T WHERE SEGNO = 1 ORDER BY INDICE"),
                      rows("SELECT INDICE FROM #T WHERE CONTO <> '0100' ORDER BY INDICE"))
                << type << " " << condition;
            run({"DROP TABLE #T"});
        }
        run({"DROP TABLE FONTE"});
    }
    EXPECT_EQ(narrowed, 24);
}

TEST_F(RowsOfPartners, AreNoLongerFoundByAValueThatAnUpdateOfTheKeyTakesAway) {
    run({"SELECT IDENTITY(INT, 1, 1) AS INDICE, 1 AS GRUPPO, CONTO, 0 AS SEGNO INTO #T FROM PIANO WHERE "
         "GRUPPO = 1",
         "ALTER TABLE #T ADD UNIQUE (GRUPPO, CONTO)", "CREATE INDEX PER_CONTO ON #T (GRUPPO, CONTO)",
         "INSERT INTO NOTE VALUES (7, 1, '0101', 1)"});
    const std::string text =
        "UPDATE #T SET SEGNO = ISNULL((SELECT TOP 1 1 FROM NOTE WHERE NOTE.CONTO = #T.CONTO), 0)";
    EXPECT_TRUE(isNarrowed(text));
    run({"UPDATE #T SET GRUPPO = 2 WHERE CONTO = '0101'"});
    EXPECT_FALSE(isNarrowed(text));
    EXPECT_EQ(outcome(text), "6");
    EXPECT_EQ(rows("SELECT GRUPPO, CONTO FROM #T WHERE SEGNO = 1"), (Rows{{"2", "0101"}}));
}

TEST_F(RowsOfPartners, GetWhatEachGetsWhenItIsAskedAlone) {
    Texts texts(20261122);
    int narrowed = 0;
    int refused = 0;
    for (int round = 0; round < 100; ++round) {
        run({"DELETE FROM NOTE", "DELETE FROM UNICI", "TRUNCATE TABLE #B"});
        for (int i = texts.among(8); i > 0; --i) {
            outcome("INSERT INTO NOTE VALUES (" + texts.of({"7", "8"}) + ", " + texts.of({"1", "2"}) +
                    ", ISNULL(" + texts.code() + ", '0201'), " + texts.number(3) + ")");
            outcome("INSERT INTO UNICI VALUES (ISNULL(" + texts.code() + ", '01A2'), " +
                    texts.of({"0", "1", "2", "NULL"}) + ")");
            run({"INSERT INTO #B VALUES (" + texts.code() + ", " +
                 texts.of({"'1'", "'0101'", "'x'", "NULL"}) + ", " + texts.of({"0", "1", "2", "NULL"}) +
                 ", " + texts.of({"1", "1.5", "NULL"}) + ", " + texts.of({"0", "1", "NULL"}) + ")"});
        }
        const std::string where =
            texts.of({"", "WHERE GRUPPO = 1", "WHERE GRUPPO = '1'", "WHERE LIVELLO = 1.0",
                      "WHERE GRUPPO = 1 AND LIVELLO = 2", "WHERE GRUPPO = 1 OR LIVELLO = 1",
                      "WHERE NOT GRUPPO = 1", "WHERE GRUPPO IN (1)", "WHERE 1 = 0"});
        fill("#T", where);
        fill("#U", where);
        std::vector<std::string> statements;
        for (int i = 0; i < 4; ++i) {
            statements.push_back("UPDATE @ SET " + texts.assignment());
        }
        std::vector<std::string> history{where};
        const auto both = [&](const std::string& text) {
            history.push_back(text);
            ASSERT_EQ(counted(on(text, "#T")), counted(on(text, "#U"))) << text;
        };
        bool within = false;
        for (int step = 0; step < 14; ++step) {
            parameter_ = texts.among(3);
            switch (texts.among(10)) {
            case 0:
            case 1:
                both(texts.change());
                break;
            case 2:
                if (texts.among(4) == 0) {
                    both(texts.of(
                        {"DELETE FROM @ WHERE INDICE = 2", "TRUNCATE TABLE @",
                         "INSERT INTO @ (ROWID, GRUPPO, CONTO, ATTIVO, CONTEGGIO, LUNGO, LIVELLO, TESTO) "
                         "VALUES (1, 1, '0103', 1, 0, 0, 1, 'x')"}));
                }
                break;
            case 3:
                within ? session_->rollback() : session_->begin();
                within = !within;
                history.push_back(within ? "BEGIN" : "ROLLBACK");
                break;
            default: {
                const std::string& statement = texts.of(statements);
                const std::string text = on(statement, "#T");
                narrowed += isNarrowed(text) ? 1 : 0;
                history.push_back(statement + " ? " + std::to_string(parameter_));
                const std::string answer = counted(text);
                refused += answer == "a row refused" ? 1 : 0;
                EXPECT_EQ(answer, counted(on(statement, "#U") + " WHERE #U.INDICE > 0")) << statement;
            }
            }
            EXPECT_EQ(rows("SELECT " + columns + " FROM #T ORDER BY INDICE"),
                      rows("SELECT " + columns + " FROM #U ORDER BY INDICE"));
            if (HasFailure()) {
                std::string all;
                for (const std::string& text : history) {
                    all += text + "\n";
                }
                FAIL() << all;
            }
        }
        if (within) {
            session_->rollback();
        }
        run({"DROP TABLE #T", "DROP TABLE #U"});
    }
    EXPECT_GT(narrowed, 100);
    EXPECT_GT(refused, 100);
}

} // namespace veldran::embedded::test
