#include "sql/chart_statements.h"

#include "sql/statement.h"

namespace veldran::sql {

namespace {

/// The account's own level: the number of its last group that is not all zeros.
std::string levelExpression() {
    return lines({
        "            CASE @NUMLIVELLI",
        "                WHEN 2 THEN",
        "                    CASE",
        "                        WHEN SUBSTRING(CG24_CONTO, 6, 5) = '00000' THEN 1",
        "                        ELSE 2",
        "                    END",
        "                WHEN 3 THEN",
        "                    CASE",
        "                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000'"
        " AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 1",
        "                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN 2",
        "                        ELSE 3",
        "                    END",
        "                WHEN 4 THEN",
        "                    CASE",
        "                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000'"
        " AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN 1",
        "                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000'"
        " AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 2",
        "                        WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN 3",
        "                        ELSE 4",
        "                    END",
        "                WHEN 5 THEN",
        "                    CASE",
        "                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00'"
        " AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00'"
        " AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN 1",
        "                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00'"
        " AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 2",
        "                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00'"
        " AND SUBSTRING(CG24_CONTO, 7, 2) = '00' THEN 3",
        "                        WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' THEN 4",
        "                        ELSE 5",
        "                    END",
        "            END",
    });
}

std::string displayColumn() {
    return lines({
        "    , CAST(",
        "        CASE @NUMLIVELLI",
        "            WHEN 2 THEN SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 6, 5)",
        "            WHEN 3 THEN SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 5, 2)"
        " + '/' + SUBSTRING(CG24_CONTO, 7, 4)",
        "            WHEN 4 THEN SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 3, 2)"
        " + '/' + SUBSTRING(CG24_CONTO, 5, 2) + '/' + SUBSTRING(CG24_CONTO, 7, 4)",
        "            WHEN 5 THEN SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 3, 2)"
        " + '/' + SUBSTRING(CG24_CONTO, 5, 2) + '/' + SUBSTRING(CG24_CONTO, 7, 2)"
        " + '/' + SUBSTRING(CG24_CONTO, 9, 2)",
        "        END",
        "    AS NVARCHAR(14)) AS CONTOF",
    });
}

std::string headerColumn() {
    return lines({
        "    , CAST(",
        "        CASE @NUMLIVELLI",
        "            WHEN 2 THEN",
        "                CASE",
        "                    WHEN SUBSTRING(CG24_CONTO, 6, 5) = '00000' THEN SUBSTRING(CG24_CONTO, 1, 2)",
        "                    ELSE CG24_CONTO",
        "                END",
        "            WHEN 3 THEN",
        "                CASE",
        "                    WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000'"
        " AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 2)",
        "                    WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN SUBSTRING(CG24_CONTO, 1, 6)",
        "                    ELSE CG24_CONTO",
        "                END",
        "            WHEN 4 THEN",
        "                CASE",
        "                    WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000'"
        " AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00'"
        " THEN SUBSTRING(CG24_CONTO, 1, 2)",
        "                    WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000'"
        " AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 4)",
        "                    WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN SUBSTRING(CG24_CONTO, 1, 6)",
        "                    ELSE CG24_CONTO",
        "                END",
        "            WHEN 5 THEN",
        "                CASE",
        "                    WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00'"
        " AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00'"
        " AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 2)",
        "                    WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00'"
        " AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00'"
        " THEN SUBSTRING(CG24_CONTO, 1, 4)",
        "                    WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00'"
        " AND SUBSTRING(CG24_CONTO, 7, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 6)",
        "                    WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 8)",
        "                    ELSE CG24_CONTO",
        "                END",
        "        END",
        "    AS NVARCHAR(10)) AS CODEHEADER",
    });
}

std::string parentColumn() {
    return lines({
        "    , CAST(",
        "        CASE",
        levelExpression(),
        "            WHEN 1 THEN NULL",
        "            WHEN 2 THEN SUBSTRING(CG24_CONTO, 1, 2) + '00000000'",
        "            WHEN 3 THEN",
        "                CASE @NUMLIVELLI",
        "                    WHEN 3 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000'",
        "                    ELSE SUBSTRING(CG24_CONTO, 1, 4) + '000000'",
        "                END",
        "            WHEN 4 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000'",
        "            WHEN 5 THEN SUBSTRING(CG24_CONTO, 1, 8) + '00'",
        "        END",
        "    AS NCHAR(10)) AS PARENT",
    });
}

std::string ancestorColumns() {
    return lines({
        "    , CAST(SUBSTRING(CG24_CONTO, 1, 2) + '00000000' AS NCHAR(10)) AS LIVELLO1",
        "    , CAST(",
        "        CASE @NUMLIVELLI",
        "            WHEN 2 THEN CG24_CONTO",
        "            WHEN 3 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000'",
        "            WHEN 4 THEN SUBSTRING(CG24_CONTO, 1, 4) + '000000'",
        "            WHEN 5 THEN SUBSTRING(CG24_CONTO, 1, 4) + '000000'",
        "        END",
        "    AS NCHAR(10)) AS LIVELLO2",
        "    , CAST(",
        "        CASE @NUMLIVELLI",
        "            WHEN 2 THEN NULL",
        "            WHEN 3 THEN CG24_CONTO",
        "            WHEN 4 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000'",
        "            WHEN 5 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000'",
        "        END",
        "    AS NCHAR(10)) AS LIVELLO3",
        "    , CAST(",
        "        CASE @NUMLIVELLI",
        "            WHEN 2 THEN NULL",
        "            WHEN 3 THEN NULL",
        "            WHEN 4 THEN CG24_CONTO",
        "            WHEN 5 THEN SUBSTRING(CG24_CONTO, 1, 8) + '00'",
        "        END",
        "    AS NCHAR(10)) AS LIVELLO4",
        "    , CAST(",
        "        CASE @NUMLIVELLI",
        "            WHEN 2 THEN NULL",
        "            WHEN 3 THEN NULL",
        "            WHEN 4 THEN NULL",
        "            WHEN 5 THEN CG24_CONTO",
        "        END",
        "    AS NCHAR(10)) AS LIVELLO5",
    });
}

std::string levelColumn() {
    return lines({
        "    , CAST(",
        levelExpression(),
        "    AS SMALLINT) AS NRLIVELLO",
    });
}

std::string analyticColumn() {
    return lines({
        "    , CAST(",
        "        CASE @NUMLIVELLI",
        "            WHEN 2 THEN CASE WHEN SUBSTRING(CG24_CONTO, 6, 5) <> '00000' THEN 1 ELSE 0 END",
        "            WHEN 3 THEN CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) <> '0000' THEN 1 ELSE 0 END",
        "            WHEN 4 THEN CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) <> '0000' THEN 1 ELSE 0 END",
        "            WHEN 5 THEN CASE WHEN SUBSTRING(CG24_CONTO, 9, 2) <> '00' THEN 1 ELSE 0 END",
        "        END",
        "    AS BIT) AS ISANALITICO",
    });
}

} // namespace

std::string livelliPDC(std::int32_t codicePDC) {
    return lines({
        "SELECT",
        "    CG10_NUMLIVELLI",
        "FROM",
        "    CG10_DESPDC",
        "WHERE",
        "    CG10_GRUPPO = " + std::to_string(codicePDC),
    });
}

std::string creazioneTabellaConti(std::int32_t codicePDC, std::int16_t livelli) {
    return substituted(
        lines({
            "SELECT",
            "    IDENTITY(INT, 1, 1)     AS INDICE",
            "    , CG24_GRUPPO_CG10      AS GRUPPO",
            "    , CG24_CONTO            AS CONTO",
            "    , CG24_DESCR            AS DESCRIZIONE",
            "    , CG24_INDTIPOCONTO",
            displayColumn(),
            headerColumn(),
            parentColumn(),
            ancestorColumns(),
            levelColumn(),
            analyticColumn(),
            "    , CAST(0 AS BIT)    AS ATTIVO",
            "    , CAST(0 AS BIT)    AS CORRELATO",
            "INTO",
            "    #CG24_TABPDC",
            "FROM",
            "    CG24_TABPDC",
            "WHERE",
            "    CG24_GRUPPO_CG10 = @CODICE_PDC_COGE",
            "ORDER BY",
            "    CG24_GRUPPO_CG10 ASC,",
            "    CG24_CONTO ASC",
        }),
        {{"@CODICE_PDC_COGE", std::to_string(codicePDC)}, {"@NUMLIVELLI", std::to_string(livelli)}});
}

std::string chiaveTabellaConti() {
    return "ALTER TABLE #CG24_TABPDC ADD PRIMARY KEY CLUSTERED (INDICE)";
}

std::string indiceContoTabellaConti() {
    return "CREATE NONCLUSTERED INDEX IDX01 ON #CG24_TABPDC (GRUPPO, CONTO)";
}

std::string indiceParentTabellaConti() {
    return "CREATE NONCLUSTERED INDEX IDX02 ON #CG24_TABPDC (GRUPPO, PARENT)";
}

std::string impostazioneAttivi(const std::string& codiceDitta, std::int32_t codicePDC) {
    return substituted(lines({
                           "UPDATE #CG24_TABPDC",
                           "SET ATTIVO = ISNULL(",
                           "    (",
                           "        SELECT TOP 1 1",
                           "        FROM CI35_CONTIATTIVI",
                           "        WHERE CI35_DITTA_CG18 = @CODICE_DITTA",
                           "            AND CI35_GRUPPO_CG10 = @CODICE_PDC_COGE",
                           "            AND CI35_CONTO_CG24 = CONTO",
                           "    )",
                           "    , 0)",
                       }),
                       {{"@CODICE_DITTA", codiceDitta}, {"@CODICE_PDC_COGE", std::to_string(codicePDC)}});
}

std::string impostazioneCorrelati(const std::string& codiceDitta) {
    return substituted(lines({
                           "UPDATE #CG24_TABPDC",
                           "SET CORRELATO =",
                           "    CASE",
                           "        WHEN GRUPPOCORRELATO IS NULL THEN 0",
                           "        ELSE 1",
                           "    END",
                           "FROM #CG24_TABPDC",
                           "    LEFT OUTER JOIN",
                           "    (",
                           "        SELECT DISTINCT",
                           "            CI15_CODPDC_CG10 AS GRUPPOCORRELATO",
                           "            , CI15_CONTO_CG24 AS CONTOCORRELATO",
                           "        FROM CI15_CORRCONTICOGE",
                           "        WHERE CI15_DITTA_CG18 = @CODICE_DITTA",
                           "    ) AS CONTICORRELATI",
                           "    ON GRUPPO = GRUPPOCORRELATO",
                           "        AND CONTO = CONTOCORRELATO",
                       }),
                       {{"@CODICE_DITTA", codiceDitta}});
}

std::string codeHeader(std::int16_t livelli) {
    return "SELECT DBO.FNCI_COGE_GETCODEHEADER(" + std::to_string(livelli) + ", ?)";
}

} // namespace veldran::sql
