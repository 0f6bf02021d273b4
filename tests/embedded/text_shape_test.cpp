// Texts that differ in codes alone share a plan: which do, which do not, and that all of them do what they do
// when each is bound by itself.
#include "adapters/embedded/driver.h"
#include "adapters/embedded/file.h"
#include "adapters/embedded/text_shape.h"
#include "tests/embedded/session_fixture.h"
#include "tests/tsql/screen_statements.h"

#include <random>

namespace veldran::embedded::test {

namespace {

using tsql::test::screenStatement;

const std::vector<std::string> tables{
    "CREATE TABLE RIGHE (DITTA DECIMAL(4) NOT NULL, CAUSALE NCHAR(4) NOT NULL, CONTO NCHAR(15) NOT NULL, "
    "DESCR NVARCHAR(6) NULL, PERC DECIMAL(5, 2) NULL, N INT NULL, VIVA BIT NULL, PRIMARY KEY (DITTA, "
    "CAUSALE, CONTO))",
    "CREATE TABLE NOTE (CAUSALE NCHAR(4) NOT NULL, NOTA NVARCHAR(20) NULL, TIPO INT NOT NULL DEFAULT 1)",
    "CREATE TABLE #T (CAUSALE NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL, PROG DECIMAL(3) NOT NULL, CONTO "
    "NCHAR(15) COLLATE DATABASE_DEFAULT NULL, PRIMARY KEY (CAUSALE, PROG))"};

const std::vector<std::string> rowsOfTables{
    "INSERT INTO RIGHE VALUES (1, 'A001', '0101', 'uno', 10.5, 1, 1), (1, 'A001', '0102', N'perché', 60, 12, "
    "0), (1, 'ACQ', '0101', NULL, NULL, NULL, NULL), (2, 'b002', '0101', 'due', 39.5, -3, 1)",
    "INSERT INTO NOTE VALUES ('A001', 'prima', 1), ('ACQ', 'seconda', 2)",
    "INSERT INTO #T VALUES ('A001', 1, '0101'), ('A001', 2, '0102'), ('ACQ', 1, '0101')"};

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
        text.replace(at, what.size(), by);
    }
    return text;
}

/// What a client sees of a text: its rows and what it is told of their columns, the count, or the error.
std::string outcomeOf(const std::function<ado::StatementResult()>& action) {
    std::string outcome;
    try {
        const ado::StatementResult result = action();
        outcome = std::to_string(result.rowsAffected) + " rows";
        if (result.rows) {
            for (const ado::ColumnInfo& column : result.rows->columns()) {
                outcome += " " + column.name + ":" + std::to_string(column.type) + ":" +
                           std::to_string(column.definedSize) + ":" + std::to_string(column.nullable) + ":" +
                           column.baseTable;
            }
            for (const auto& row : asText(*result.rows)) {
                for (const std::string& cell : row) {
                    outcome += "|" + cell;
                }
                outcome += "\n";
            }
        }
    } catch (const ado::AdoError& error) {
        outcome = std::to_string(error.first().Number) + " " + error.first().SQLState + " " +
                  error.first().Description;
    }
    return outcome;
}

/// Two databases with the same rows. What the first runs may share plans, what the second prepares does not.
class TextsOfOneShape : public SessionTest {
protected:
    TextsOfOneShape() {
        createDatabase(directory_.file("altro.vdb"));
        unshared_ = std::make_unique<EmbeddedSession>(
            openDatabase(parseConnectionString(connectionString(directory_.file("altro.vdb")))));
        for (const auto& texts : {tables, rowsOfTables}) {
            for (const std::string& text : texts) {
                execute(text);
                unshared_->execute(text, {}, {});
            }
        }
    }

    std::size_t parsed() { return session_->state().texts().parsed(); }

    /// How many of the texts had to be parsed.
    std::size_t parsedOf(const std::vector<std::string>& texts) {
        const std::size_t before = parsed();
        for (const std::string& text : texts) {
            outcomeOf([&] { return execute(text); });
        }
        return parsed() - before;
    }

    /// How many texts had to be parsed to write one row for each code, which stands where the text has "%".
    std::size_t parsedToWriteARowOfEach(const std::vector<std::string>& codes, const std::string& text) {
        const std::size_t before = parsed();
        for (const std::string& code : codes) {
            EXPECT_EQ(affected(replaced(text, "%", code)), 1) << code;
        }
        return parsed() - before;
    }

    std::string outcome(const std::string& text) {
        return outcomeOf([&] { return execute(text); });
    }
    std::string outcomeAlone(const std::string& text) {
        return outcomeOf([&] { return unshared_->prepare(text, {})->execute({}, {}); });
    }

    /// The SQLite text that stands for all texts of the shape.
    std::string shared(const std::string& text) {
        execute(text);
        std::vector<Stored> values;
        const auto plan = session_->state().texts().sharedPlan(text, values);
        EXPECT_FALSE(values.empty()) << text;
        return plan->compiled.begin()->second.program().sql;
    }

    /// How SQLite goes about it.
    Rows wayOf(const std::string& sqliteText) {
        SqliteStatement plan = session_->state().database().prepare("EXPLAIN QUERY PLAN " + sqliteText);
        Rows result;
        while (plan.step()) {
            result.push_back({std::string(plan.text(3))});
        }
        return result;
    }

    std::unique_ptr<EmbeddedSession> unshared_;
};

} // namespace

TEST_F(TextsOfOneShape, AreParsedOnce) {
    const std::vector<std::string> texts{
        "SELECT * FROM RIGHE WHERE CAUSALE = 'A001'",
        "SELECT * FROM RIGHE WHERE CAUSALE = N'A001' AND CONTO = '0101'",
        "SELECT * FROM RIGHE WHERE ('A001' = CAUSALE OR NOT (RIGHE.DESCR <> 'x A001')) AND DITTA = 1",
        "SELECT CONTO FROM RIGHE R INNER JOIN NOTE ON NOTE.CAUSALE = R.CAUSALE WHERE R.CAUSALE >= 'A001' "
        "ORDER BY CONTO",
        "SELECT TOP 1 CONTO FROM RIGHE WHERE CAUSALE > 'A001' -- della causale\r\nORDER BY CONTO DESC;",
        "SELECT COUNT(*) FROM RIGHE, #T WHERE RIGHE.CAUSALE <= 'A001' AND #T.CAUSALE < 'A001'",
        "SELECT * FROM [RIGHE] WHERE \"CAUSALE\"='A001'",
        "SELECT N FROM RIGHE WHERE N = 'A001'",
        "UPDATE RIGHE SET N = 5 WHERE CAUSALE = 'A001'",
        "UPDATE RIGHE SET N = 5 FROM RIGHE, NOTE WHERE RIGHE.CAUSALE = NOTE.CAUSALE AND NOTA = 'A001'",
        "DELETE FROM RIGHE WHERE CAUSALE = 'A001'",
        "DELETE RIGHE FROM RIGHE INNER JOIN NOTE ON NOTE.CAUSALE = RIGHE.CAUSALE WHERE NOTA = 'A001'",
        "INSERT INTO NOTE VALUES ('A001', N'nota A001', 2), ('ZZZZ', 'A001', DEFAULT)",
        "INSERT INTO NOTE (CAUSALE, NOTA) SELECT CAUSALE, 'A001' FROM #T WHERE CAUSALE = 'A001'",
        "INSERT INTO NOTE (NOTA, CAUSALE) SELECT 'A001', 'ZZZZ'"};
    for (const std::string& text : texts) {
        EXPECT_EQ(parsedOf({text, replaced(text, "A001", "B(2]"), replaced(text, "A001", "\"--?"), text}), 1U)
            << text;
    }
}

TEST_F(TextsOfOneShape, AreTheScreensForAllCausaliAndAccounts) {
    for (const char* name : {"DettaglioDellaCausale", "EliminazioneDettaglio", "EliminazionePerSalvataggio",
                             "InserimentoPerSalvataggio"}) {
        const std::string text = screenStatement(name);
        ASSERT_NE(text.find("'A01"), std::string::npos) << name;
        EXPECT_EQ(parsedOf({text, replaced(text, "'A01", "'B02"), replaced(text, "'01", "'02")}), 1U) << name;
    }
}

TEST_F(TextsOfOneShape, HaveLiteralsOfTheSameKindAndLength) {
    const std::string text = "SELECT * FROM RIGHE WHERE DESCR = 'citt'";
    for (const char* other :
         {"N'citt'", "'citta'", "'cit'", "'cit '", "'città'", "'cià'", "''", "'c''t'", "'c\tt'", "'ci\nt'"}) {
        EXPECT_EQ(parsedOf({text}), text.ends_with(other) ? 0U : 1U);
        EXPECT_EQ(parsedOf({replaced(text, "'citt'", other)}), 1U) << other;
        session_ = anotherSession();
    }
    EXPECT_EQ(
        parsedOf({"SELECT * FROM RIGHE WHERE DESCR = 'città'", "SELECT * FROM RIGHE WHERE DESCR = 'virtù'",
                  "SELECT * FROM RIGHE WHERE DESCR = 'cità '", "SELECT * FROM RIGHE WHERE DESCR = 'nò  '"}),
        3U);
    EXPECT_EQ(parsedOf({"SELECT * FROM RIGHE WHERE CAUSALE = 'ACQ '",
                        "SELECT * FROM RIGHE WHERE CAUSALE = 'VE  '"}),
              1U)
        << "a comparison passes over blanks at the end";
}

TEST_F(TextsOfOneShape, AreNotThoseWithALiteralThatBindingMayLookAt) {
    const std::vector<std::string> texts{
        "SELECT 'A001'",
        "SELECT CAUSALE, 'A001' AS X FROM RIGHE",
        "SELECT * FROM RIGHE WHERE CAUSALE LIKE 'A001'",
        "SELECT * FROM RIGHE WHERE CAUSALE IN ('A001')",
        "SELECT * FROM RIGHE WHERE CAUSALE BETWEEN 'A001' AND 'ZZZZ'",
        "SELECT * FROM RIGHE WHERE CAUSALE = 'A001' + 'x'",
        "SELECT * FROM RIGHE WHERE 'A001' = 'ZZZZ'",
        "SELECT * FROM RIGHE WHERE CAUSALE = SUBSTRING('A001', 1, 4)",
        "SELECT * FROM RIGHE WHERE SUBSTRING(CAUSALE, 1, 4) = 'A001'",
        "SELECT * FROM RIGHE WHERE CAUSALE = CASE WHEN CONTO = 'A001' THEN 'ZZZZ' END",
        "SELECT * FROM RIGHE WHERE CAUSALE = 'ZZZZ' AND DESCR LIKE 'A001'",
        "SELECT * FROM RIGHE WHERE CAUSALE = 'A001' COLLATE DATABASE_DEFAULT",
        "SELECT * FROM RIGHE WHERE CAUSALE IN (SELECT CAUSALE FROM #T WHERE CONTO = 'A001')",
        "SELECT * FROM RIGHE WHERE EXISTS (SELECT 1 FROM #T WHERE #T.CAUSALE = RIGHE.CAUSALE AND CONTO = "
        "'A001')",
        "SELECT * FROM (SELECT 'A001' AS X) AS S WHERE X = 'A001'",
        "SELECT * FROM RIGHE, (SELECT CAUSALE AS X FROM #T) AS S WHERE X = 'A001'",
        "SELECT * FROM RIGHE INNER JOIN #T ON #T.CONTO = 'A001'",
        "SELECT CAUSALE FROM RIGHE GROUP BY CAUSALE HAVING CAUSALE = 'A001'",
        "SELECT CAUSALE FROM RIGHE WHERE CAUSALE = 'A001' UNION SELECT CAUSALE FROM #T",
        "SELECT CAUSALE FROM RIGHE ORDER BY CASE CAUSALE WHEN 'A001' THEN 1 ELSE 2 END",
        "SELECT CAUSALE INTO #N FROM RIGHE WHERE CAUSALE = 'A001' DROP TABLE #N",
        "SELECT CAUSALE INTO #A001 FROM RIGHE WHERE CAUSALE = 'A001'",
        "UPDATE RIGHE SET DESCR = 'A001' WHERE N = 99",
        "INSERT INTO NOTE SELECT DISTINCT CAUSALE, 'A001', 3 FROM RIGHE WHERE DITTA = 9",
        "INSERT INTO NOTE SELECT CAUSALE, 'A001', 3 FROM RIGHE WHERE DITTA = 9 UNION SELECT 'A', 'B', 1",
        "INSERT INTO NOTE VALUES ('A001', 'ends with a blank ', 3)",
        "INSERT INTO NOTE VALUES ('A001', SUBSTRING('prova', 1, 2), 3)",
        "DELETE FROM RIGHE WHERE CAUSALE = 'A001' DELETE FROM RIGHE WHERE CAUSALE = 'ZZZZ'",
        "IF EXISTS (SELECT 1 FROM RIGHE WHERE CAUSALE = 'A001') PRINT 'A001'",
        "BEGIN SELECT * FROM RIGHE WHERE CAUSALE = 'A001' END",
        "SELECT * FROM RIGHE /* l'una */ WHERE CAUSALE = 'A001' /* l'altra */",
        "SELECT N AS [l'una], N AS [l'altra] FROM RIGHE WHERE CAUSALE = 'A001'",
        "PRINT 'A001'"};
    for (const std::string& text : texts) {
        EXPECT_EQ(parsedOf({text, replaced(text, "A001", "B002"), text}), 2U) << text;
    }
    const std::string longer(101, 'x');
    EXPECT_EQ(parsedOf({"SELECT * FROM RIGHE WHERE DESCR = '" + longer + "A'",
                        "SELECT * FROM RIGHE WHERE DESCR = '" + longer + "B'"}),
              2U);
}

TEST_F(TextsOfOneShape, AreNotThoseWithMarkers) {
    const std::string marked = "SELECT * FROM RIGHE WHERE CAUSALE = 'A001' AND DITTA = ?";
    const std::size_t before = parsed();
    EXPECT_EQ(rows(marked, {integer("@D", 1)}).size(), 2U);
    EXPECT_EQ(rows(replaced(marked, "A001", "b002"), {integer("@D", 2)}).size(), 1U);
    EXPECT_EQ(parsed() - before, 2U);
    EXPECT_EQ(error(marked).Description, "Il testo ha 1 marcatori, ma sono stati forniti 0 parametri.");
}

TEST_F(TextsOfOneShape, AreNotFoundByAShape) {
    const std::string text = "SELECT CONTO FROM #T WHERE CAUSALE = 'ACQ '";
    EXPECT_EQ(rows(text), Rows{{"0101           "}});
    EXPECT_EQ(rows(shapeOf(text).text), Rows{});
    EXPECT_EQ(rows(text), Rows{{"0101           "}});
}

TEST_F(TextsOfOneShape, FindEachItsOwnRows) {
    const auto accounts = [&](const std::string& causale) {
        return rows("SELECT CONTO FROM RIGHE WHERE CAUSALE = '" + causale + "' ORDER BY CONTO");
    };
    EXPECT_EQ(accounts("A001"), (Rows{{"0101           "}, {"0102           "}}));
    EXPECT_EQ(accounts("ACQ "), Rows{{"0101           "}});
    EXPECT_EQ(accounts("B002"), Rows{{"0101           "}}) << "case makes no difference";
    EXPECT_EQ(accounts("C003"), Rows{});
    EXPECT_EQ(rows("SELECT CAUSALE FROM RIGHE WHERE DESCR = N'PERCHE'"), Rows{});
    EXPECT_EQ(rows("SELECT CAUSALE FROM RIGHE WHERE DESCR = N'PERCHÉ'"), Rows{{"A001"}});
    EXPECT_EQ(rows("SELECT CAUSALE FROM RIGHE WHERE DESCR = N'PERCHÈ'"), Rows{});
    EXPECT_EQ(affected("DELETE FROM RIGHE WHERE CAUSALE = 'A001' AND CONTO = '0102'"), 1);
    EXPECT_EQ(affected("DELETE FROM RIGHE WHERE CAUSALE = 'A001' AND CONTO = '0103'"), 0);
    EXPECT_EQ(accounts("A001"), Rows{{"0101           "}});
}

TEST_F(TextsOfOneShape, WriteEachItsOwnValuesAsTheColumnKeepsThem) {
    for (const char* code : {"0301", "03è1", "0\"';1"}) {
        execute("INSERT INTO #T (CAUSALE, PROG, CONTO) VALUES ('X', '7', '" + replaced(code, "'", "''") +
                "')");
        EXPECT_EQ(cell("SELECT CONTO FROM #T WHERE PROG = 7"), padded(code, 15));
        EXPECT_EQ(affected("INSERT INTO RIGHE (DITTA, CAUSALE, CONTO, DESCR, PERC) SELECT 7, CAUSALE, 'C' + "
                           "CONTO, 'ab', 1.5 FROM #T WHERE CAUSALE = 'X'"),
                  1);
        run({"DELETE FROM #T WHERE PROG = 7", "DELETE FROM RIGHE WHERE DITTA = 7"});
    }
    EXPECT_EQ(parsedToWriteARowOfEach({"0301", "0302", "0303"},
                                      "INSERT INTO RIGHE (DITTA, CAUSALE, CONTO, DESCR, PERC, VIVA) SELECT "
                                      "7, CAUSALE, '%', '%', '%' - 300, '1' FROM #T WHERE CAUSALE = 'ACQ'"),
              3U)
        << "a literal that is computed with";
    EXPECT_EQ(parsedToWriteARowOfEach({"401", "402", "403"},
                                      "INSERT INTO RIGHE (DITTA, CAUSALE, CONTO, DESCR, PERC, VIVA) SELECT "
                                      "8, CAUSALE, '%', '%', '%', '1' FROM #T WHERE CAUSALE = 'ACQ'"),
              1U);
    EXPECT_EQ(rows("SELECT CONTO, DESCR, PERC, VIVA FROM RIGHE WHERE DITTA = 8 ORDER BY CONTO"),
              (Rows{{"401            ", "401", "401.00", "1"},
                    {"402            ", "402", "402.00", "1"},
                    {"403            ", "403", "403.00", "1"}}));
}

TEST_F(TextsOfOneShape, AreRefusedEachWithItsOwnWords) {
    const auto message = [&](const std::string& text) {
        const ado::Error refused = error(text);
        return std::to_string(refused.Number) + " " + refused.Description;
    };
    for (const char* causale : {"AAAAA", "BBBBB"}) {
        const std::string literal = "'" + std::string(causale) + "'";
        for (const std::string& text :
             {"INSERT INTO NOTE VALUES (" + literal + ", 'x', 1)",
              "INSERT INTO NOTE SELECT " + literal + ", NOTA, TIPO FROM NOTE WHERE CAUSALE = " + literal}) {
            EXPECT_EQ(error(text).Number, 8152) << "even where no row is written: " << text;
            EXPECT_EQ(outcome(text), outcomeAlone(text));
        }
    }
    EXPECT_NE(message("SELECT * FROM RIGHE WHERE N = 'tre'"), message("SELECT * FROM RIGHE WHERE N = 'due'"));
    EXPECT_NE(message("SELECT * FROM RIGHE WHERE N = 'due'").find("'due'"), std::string::npos);
    const std::string quoted = "INSERT INTO NOTE (CAUSALE) SELECT DISTINCT NOTA FROM NOTE WHERE NOTA = 'AAA'";
    EXPECT_NE(message(quoted).find("'AAA'"), std::string::npos) << message(quoted);
    EXPECT_NE(message(replaced(quoted, "AAA", "BBB")).find("'BBB'"), std::string::npos);
    EXPECT_EQ(message("INSERT INTO RIGHE (DITTA, CAUSALE, CONTO) VALUES (1, 'A001', '0101')"),
              message("INSERT INTO RIGHE (DITTA, CAUSALE, CONTO) VALUES (1, 'a001', '0102')"));
    EXPECT_EQ(error("SELECT * FROM NESSUNA WHERE CAUSALE = 'A001'").Number, 208);
    EXPECT_EQ(error("SELECT * FROM NESSUNA WHERE CAUSALE = 'B002'").Number, 208);
    EXPECT_EQ(error("SELECT * FROM RIGHE WHERE CAUSA = 'A001'").Number, 207);
}

TEST_F(TextsOfOneShape, FollowATableThatIsMadeAnew) {
    const std::string text = "SELECT * FROM #N WHERE C = '0012'";
    run({"CREATE TABLE #N (C NCHAR(4))", "INSERT INTO #N VALUES ('0012')"});
    EXPECT_EQ(rows(text), Rows{{"0012"}});
    run({"DROP TABLE #N", "CREATE TABLE #N (C DECIMAL(5, 2))", "INSERT INTO #N VALUES ('0012')"});
    EXPECT_EQ(rows(text), Rows{{"12.00"}});
    EXPECT_EQ(rows(replaced(text, "0012", "12.0")), Rows{{"12.00"}});
    EXPECT_EQ(error(replaced(text, "0012", "dodi")).Number, 8114);
    run({"DROP TABLE #N"});
    EXPECT_EQ(error(replaced(text, "0012", "0013")).Number, 208);
}

TEST_F(TextsOfOneShape, ArePreparedEachByItself) {
    const std::string text = "SELECT CONTO FROM #T WHERE CAUSALE = 'ACQ'";
    const auto prepared = session_->prepare(text, {});
    EXPECT_EQ(rows(replaced(text, "ACQ", "VEN")), Rows{});
    EXPECT_EQ(asText(*prepared->execute({}, {}).rows), Rows{{"0101           "}});
    EXPECT_EQ(rows(text), Rows{{"0101           "}});
}

TEST_F(TextsOfOneShape, TakeOnePlaceAmongThoseThatAreKept) {
    const auto& texts = session_->state().texts();
    for (int i = 1000; i < 1600; ++i) {
        const std::string number = std::to_string(i);
        execute("SELECT PROG FROM #T WHERE CAUSALE = '" + number + "'");
        execute("SELECT " + number + " FROM #T WHERE CAUSALE = '" + number + "'");
        EXPECT_LE(texts.size(), 256U);
    }
    EXPECT_EQ(texts.size(), 256U);
    EXPECT_EQ(parsedOf({"SELECT PROG FROM #T WHERE CAUSALE = 'A001'"}), 0U);
    EXPECT_EQ(parsedOf({"SELECT 1000 FROM #T WHERE CAUSALE = 'A001'"}), 1U) << "long not used";
}

TEST_F(TextsOfOneShape, GoTheWayToTheirRowsThatEachWouldGoAlone) {
    run({"CREATE INDEX PER_CONTO ON #T (CONTO)", "CREATE INDEX PER_NOTA ON NOTE (NOTA)",
         "CREATE TABLE #C (INDICE INT IDENTITY(1, 1) NOT NULL PRIMARY KEY, GRUPPO DECIMAL(2) NOT NULL, "
         "CODICE "
         "NCHAR(4) NOT NULL, FLAG BIT NOT NULL)",
         "INSERT INTO #C VALUES (1, '0101', 0), (1, '0102', 1), (2, '0201', 0)",
         "CREATE INDEX PER_CODICE ON #C (GRUPPO, CODICE)",
         "SELECT INDICE, GRUPPO, CODICE, FLAG INTO #S FROM #C ORDER BY INDICE ALTER TABLE #S ADD PRIMARY KEY "
         "CLUSTERED (INDICE)"});
    const std::vector<std::string> texts{
        "SELECT * FROM RIGHE WHERE DITTA = 1 AND CAUSALE = 'A001' AND CONTO = '0101'",
        "SELECT * FROM #T WHERE CAUSALE = 'A001' ORDER BY PROG ASC",
        "SELECT * FROM #T WHERE CONTO > '0101'",
        "SELECT * FROM NOTE WHERE NOTA = 'prima'",
        "DELETE FROM #T WHERE CAUSALE = 'ZZZZ'",
        "UPDATE NOTE SET TIPO = 3 WHERE NOTA = 'zzzzz'",
        "SELECT INDICE FROM #S WHERE GRUPPO = 1 AND CODICE = '0102'",
        "INSERT INTO NOTE SELECT T.CAUSALE, 'zzzz', 1 FROM #T AS T INNER JOIN RIGHE AS R ON T.CAUSALE = "
        "R.CAUSALE "
        "WHERE T.CAUSALE = 'ZZZZ' ORDER BY T.PROG"};
    for (const std::string& text : texts) {
        const Rows way = wayOf(shared(text));
        EXPECT_EQ(way, wayOf(session_->explain(text))) << text;
        EXPECT_NE(way.at(0).at(0).find("SEARCH"), std::string::npos) << text << "\n" << way[0][0];
    }
    EXPECT_EQ(builtIndexes("#T"), std::vector<std::string>{"PER_CONTO"});
    EXPECT_EQ(shared(texts[6]),
              "SELECT \"#C$1\".rowid FROM temp.\"#C\" AS \"#C$1\" CROSS JOIN temp.\"#S\" WHERE "
              "\"#C$1\".\"GRUPPO\" = 1 AND \"#C$1\".\"CODICE\" = ?1 AND \"#S\".rowid = "
              "\"#C$1\".rowid");
    EXPECT_EQ(
        shared("INSERT INTO #T VALUES ('A009', 9, '0101')"),
        "INSERT INTO temp.\"#T\" (\"CAUSALE\", \"PROG\", \"CONTO\") VALUES (?1, 9, ?2 || '           ')");
}

TEST_F(TextsOfOneShape, HaveTheWorkingIndexOfNobodysDeclarationTheSecondTime) {
    execute("SELECT PROG FROM #T WHERE CONTO = '0101'");
    EXPECT_EQ(builtIndexes("#T"), std::vector<std::string>{});
    execute("SELECT PROG FROM #T WHERE CONTO = '0102'");
    EXPECT_EQ(builtIndexes("#T"), std::vector<std::string>{"veldran_CONTO"});
}

TEST_F(TextsOfOneShape, DoAllThatTheyDoAlone) {
    std::mt19937 random(11);
    const auto oneOf = [&](const std::vector<std::string>& choices) {
        return choices[random() % choices.size()];
    };
    // Each line of one length, so that its codes can follow each other in one shape.
    const std::vector<std::vector<std::string>> codes{
        {"A001", "b002", "0101", "10.5", "-003", "39.5", "perc", "?1--"},
        {"ACQ ", "ACQ", "acq ", "b002", "012 ", "due ", "1   "},
        {"1", "0", "x", "è", "é", "-", " ", "'", "", "\t"},
        {"12", "-3", "60", "01", "1e", "x'", "è1"},
        {"perché", "PERCHÉ", "0101  ", "000001", "999999", "zzzzzz"},
        {"99999999999", "una descriz", "\"RIGHE\".\"N\"", "0101       "},
        {"una descrizione lunga", "000000000000000000101"}};
    const auto column = [&] { return oneOf({"CAUSALE", "CONTO", "DESCR", "PERC", "N", "DITTA", "VIVA"}); };
    // "%" and "N%" are the places of literals.
    const auto literal = [&] { return oneOf({"%", "%", "N%"}); };
    const auto test = [&] {
        const std::string op = oneOf({"=", "=", "=", "<>", "<", "<=", ">", ">="});
        return random() % 4 == 0 ? literal() + " " + op + " " + column()
                                 : oneOf({"", "NOT "}) + column() + " " + op + " " + literal();
    };
    const auto where = [&] {
        std::string text = " WHERE " + test();
        while (random() % 3 != 0) {
            text += oneOf({" AND ", " OR "}) + test();
        }
        return text;
    };
    const std::vector<std::function<std::string()>> forms{
        [&] { return "SELECT * FROM RIGHE" + where() + " ORDER BY DITTA, CAUSALE, CONTO"; },
        [&] { return "SELECT DISTINCT CONTO, N AS X FROM RIGHE" + where() + " ORDER BY CONTO, X"; },
        [&] { return "SELECT COUNT(*), MAX(DESCR) FROM RIGHE" + where(); },
        [&] { return "DELETE FROM RIGHE" + where() + " AND DITTA = 3"; },
        [&] { return "UPDATE RIGHE SET N = N + 1" + where(); },
        [&] { return "UPDATE RIGHE SET DITTA = 4" + where() + " AND DITTA = 3"; },
        [&] {
            return "INSERT INTO RIGHE (DITTA, CAUSALE, CONTO, " + column() + ") VALUES (3, " + literal() +
                   ", " + literal() + ", " + literal() + ")";
        },
        [&] {
            return "INSERT INTO RIGHE (CONTO, CAUSALE, DITTA, " + oneOf({"DESCR", "PERC", "N", "VIVA"}) +
                   ") SELECT " + literal() + ", CAUSALE, 3, " + literal() + " FROM RIGHE" + where();
        },
        [&] { return std::string("DELETE FROM RIGHE WHERE DITTA > 2 AND CONTO <> %"); }};
    const std::string all = "SELECT * FROM RIGHE ORDER BY DITTA, CAUSALE, CONTO";
    const std::size_t before = parsed();
    std::size_t texts = 0;
    std::size_t refused = 0;
    while (texts < 4000) {
        const std::string form = forms[random() % forms.size()]();
        std::vector<std::size_t> lengths;
        for (int i = 0; i < 20; ++i) {
            lengths.push_back(random() % 3 == 0 ? random() % codes.size() : 0);
        }
        for (int i = 0; i < 4; ++i, ++texts) {
            std::string text;
            std::size_t place = 0;
            for (const char c : form) {
                text += c == '%'
                            ? "'" + replaced(oneOf(codes[lengths[place++ % lengths.size()]]), "'", "''") + "'"
                            : std::string(1, c);
            }
            const std::string alone = outcomeAlone(text);
            ASSERT_EQ(outcome(text), alone) << text;
            refused += alone.find(" rows") == std::string::npos ? 1U : 0U;
        }
        ASSERT_EQ(outcome(all), outcomeAlone(all)) << "after a text like " << form;
    }
    EXPECT_GT(refused, texts / 10);
    EXPECT_LT(parsed() - before, texts * 3 / 4);
}

} // namespace veldran::embedded::test
