// An UPDATE of a whole working table that gives a constant to rows without a partner, beside the same UPDATE
// of every row one by one: each row, each count and each error has to be the same.
#include "tests/embedded/session_fixture.h"

#include <algorithm>

namespace veldran::embedded::test {

namespace {

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

} // namespace veldran::embedded::test
