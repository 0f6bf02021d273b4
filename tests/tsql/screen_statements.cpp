#include "tests/tsql/screen_statements.h"

#include <stdexcept>
#include <string_view>

namespace veldran::tsql::test {
namespace {

// The screen joins the lines of a statement with carriage return and line feed.
std::string sent(std::string_view lines) {
    std::string text;
    for (const char character : lines) {
        if (character == '\n') {
            text += '\r';
        }
        text += character;
    }
    return text;
}

std::vector<ScreenStatement> written() {
    return {
        {"LivelliPDC", sent(R"sql(SELECT
    CG10_NUMLIVELLI
FROM
    CG10_DESPDC
WHERE
    CG10_GRUPPO = 1)sql"),
         0},
        {"CodeHeader", sent(R"sql(SELECT DBO.FNCI_COGE_GETCODEHEADER(4, ?))sql"), 1},
        {"TabellaConti", sent(R"sql(SELECT
    IDENTITY(INT, 1, 1)     AS INDICE
    , CG24_GRUPPO_CG10      AS GRUPPO
    , CG24_CONTO            AS CONTO
    , CG24_DESCR            AS DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CAST(
        CASE 4
            WHEN 2 THEN
                SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 6, 5)
            WHEN 3 THEN
                SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 5, 2) + '/' + SUBSTRING(CG24_CONTO, 7, 4)
            WHEN 4 THEN
                SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 3, 2) + '/' + SUBSTRING(CG24_CONTO, 5, 2) + '/' + SUBSTRING(CG24_CONTO, 7, 4)
            WHEN 5 THEN
                SUBSTRING(CG24_CONTO, 1, 2) + '/' + SUBSTRING(CG24_CONTO, 3, 2) + '/' + SUBSTRING(CG24_CONTO, 5, 2) + '/' + SUBSTRING(CG24_CONTO, 7, 2) + '/' + SUBSTRING(CG24_CONTO, 9, 2)
        END
        AS NVARCHAR(14))    AS CONTOF
    , CAST(
        CASE 4
            WHEN 2 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 6, 5) = '00000' THEN SUBSTRING(CG24_CONTO, 1, 2) ELSE CG24_CONTO END
            WHEN 3 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 2) WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN SUBSTRING(CG24_CONTO, 1, 6) ELSE CG24_CONTO END
            WHEN 4 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 2) WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 4) WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN SUBSTRING(CG24_CONTO, 1, 6) ELSE CG24_CONTO END
            WHEN 5 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 2) WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 4) WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 6) WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' THEN SUBSTRING(CG24_CONTO, 1, 8) ELSE CG24_CONTO END
        END
        AS NVARCHAR(10))    AS CODEHEADER
    , CAST(
        CASE 4
            WHEN 2 THEN
                CASE (CASE WHEN SUBSTRING(CG24_CONTO, 6, 5) = '00000' THEN 1 ELSE 2 END) WHEN 1 THEN NULL WHEN 2 THEN SUBSTRING(CG24_CONTO, 1, 2) + '00000000' END
            WHEN 3 THEN
                CASE (CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 1 WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN 2 ELSE 3 END) WHEN 1 THEN NULL WHEN 2 THEN SUBSTRING(CG24_CONTO, 1, 2) + '00000000' WHEN 3 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000' END
            WHEN 4 THEN
                CASE (CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN 1 WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 2 WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN 3 ELSE 4 END) WHEN 1 THEN NULL WHEN 2 THEN SUBSTRING(CG24_CONTO, 1, 2) + '00000000' WHEN 3 THEN SUBSTRING(CG24_CONTO, 1, 4) + '000000' WHEN 4 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000' END
            WHEN 5 THEN
                CASE (CASE WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN 1 WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 2 WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' THEN 3 WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' THEN 4 ELSE 5 END) WHEN 1 THEN NULL WHEN 2 THEN SUBSTRING(CG24_CONTO, 1, 2) + '00000000' WHEN 3 THEN SUBSTRING(CG24_CONTO, 1, 4) + '000000' WHEN 4 THEN SUBSTRING(CG24_CONTO, 1, 6) + '0000' WHEN 5 THEN SUBSTRING(CG24_CONTO, 1, 8) + '00' END
        END
        AS NCHAR(10))    AS PARENT
    , CAST(SUBSTRING(CG24_CONTO, 1, 2) + '00000000' AS NCHAR(10))    AS LIVELLO1
    , CAST(
        CASE 4
            WHEN 2 THEN
                CG24_CONTO
            WHEN 3 THEN
                SUBSTRING(CG24_CONTO, 1, 6) + '0000'
            WHEN 4 THEN
                SUBSTRING(CG24_CONTO, 1, 4) + '000000'
            WHEN 5 THEN
                SUBSTRING(CG24_CONTO, 1, 4) + '000000'
        END
        AS NCHAR(10))    AS LIVELLO2
    , CAST(
        CASE 4
            WHEN 2 THEN
                NULL
            WHEN 3 THEN
                CG24_CONTO
            WHEN 4 THEN
                SUBSTRING(CG24_CONTO, 1, 6) + '0000'
            WHEN 5 THEN
                SUBSTRING(CG24_CONTO, 1, 6) + '0000'
        END
        AS NCHAR(10))    AS LIVELLO3
    , CAST(
        CASE 4
            WHEN 2 THEN
                NULL
            WHEN 3 THEN
                NULL
            WHEN 4 THEN
                CG24_CONTO
            WHEN 5 THEN
                SUBSTRING(CG24_CONTO, 1, 8) + '00'
        END
        AS NCHAR(10))    AS LIVELLO4
    , CAST(
        CASE 4
            WHEN 2 THEN
                NULL
            WHEN 3 THEN
                NULL
            WHEN 4 THEN
                NULL
            WHEN 5 THEN
                CG24_CONTO
        END
        AS NCHAR(10))    AS LIVELLO5
    , CAST(
        CASE 4
            WHEN 2 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 6, 5) = '00000' THEN 1 ELSE 2 END
            WHEN 3 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 1 WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN 2 ELSE 3 END
            WHEN 4 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN 1 WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 2 WHEN SUBSTRING(CG24_CONTO, 7, 4) = '0000' THEN 3 ELSE 4 END
            WHEN 5 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' AND SUBSTRING(CG24_CONTO, 3, 2) = '00' THEN 1 WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' AND SUBSTRING(CG24_CONTO, 5, 2) = '00' THEN 2 WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' AND SUBSTRING(CG24_CONTO, 7, 2) = '00' THEN 3 WHEN SUBSTRING(CG24_CONTO, 9, 2) = '00' THEN 4 ELSE 5 END
        END
        AS SMALLINT)    AS NRLIVELLO
    , CAST(
        CASE 4
            WHEN 2 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 6, 5) <> '00000' THEN 1 ELSE 0 END
            WHEN 3 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) <> '0000' THEN 1 ELSE 0 END
            WHEN 4 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 7, 4) <> '0000' THEN 1 ELSE 0 END
            WHEN 5 THEN
                CASE WHEN SUBSTRING(CG24_CONTO, 9, 2) <> '00' THEN 1 ELSE 0 END
        END
        AS BIT)    AS ISANALITICO
    , CAST(0 AS BIT)    AS ATTIVO
    , CAST(0 AS BIT)    AS CORRELATO
INTO
    #CG24_TABPDC
FROM
    CG24_TABPDC
WHERE
    CG24_GRUPPO_CG10 = 1
ORDER BY
    CG24_GRUPPO_CG10 ASC
    , CG24_CONTO ASC)sql"),
         0},
        {"ChiaveConti", sent(R"sql(ALTER TABLE #CG24_TABPDC ADD PRIMARY KEY CLUSTERED (INDICE))sql"), 0},
        {"IndiceConti1", sent(R"sql(CREATE NONCLUSTERED INDEX IDX01 ON #CG24_TABPDC (GRUPPO, CONTO))sql"), 0},
        {"IndiceConti2", sent(R"sql(CREATE NONCLUSTERED INDEX IDX02 ON #CG24_TABPDC (GRUPPO, PARENT))sql"),
         0},
        {"AttivazioneIniziale", sent(R"sql(UPDATE
    #CG24_TABPDC
SET
    ATTIVO = ISNULL(
        (
            SELECT TOP 1
                1
            FROM
                CI35_CONTIATTIVI
            WHERE
                CI35_DITTA_CG18 = 7
                AND CI35_GRUPPO_CG10 = 1
                AND CI35_CONTO_CG24 = CONTO
        )
        , 0))sql"),
         0},
        {"CorrelazioneIniziale", sent(R"sql(UPDATE
    #CG24_TABPDC
SET
    CORRELATO =
        CASE
            WHEN GRUPPOCORRELATO IS NULL THEN 0
            ELSE 1
        END
FROM
    #CG24_TABPDC
    LEFT OUTER JOIN
    (
        SELECT DISTINCT
            CI15_CODPDC_CG10 AS GRUPPOCORRELATO
            , CI15_CONTO_CG24 AS CONTOCORRELATO
        FROM
            CI15_CORRCONTICOGE
        WHERE
            CI15_DITTA_CG18 = 7
    ) AS CONTICORRELATI
    ON
    GRUPPO = GRUPPOCORRELATO
    AND CONTO = CONTOCORRELATO)sql"),
         0},
        {"EliminazioneSelezione",
         sent(
             R"sql(IF OBJECT_ID('TEMPDB.DBO.#CG24_TABPDC_SELECTED') IS NOT NULL DROP TABLE #CG24_TABPDC_SELECTED)sql"),
         0},
        {"Selezione1", sent(R"sql(SELECT
    INDICE
    , GRUPPO
    , CONTO
    , DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CONTOF
    , CODEHEADER
    , PARENT
    , LIVELLO1
    , LIVELLO2
    , LIVELLO3
    , LIVELLO4
    , LIVELLO5
    , NRLIVELLO
    , ISANALITICO
    , ATTIVO
    , CORRELATO
INTO
    #CG24_TABPDC_SELECTED
FROM
    #CG24_TABPDC
ORDER BY
    INDICE ASC)sql"),
         0},
        {"Selezione2", sent(R"sql(SELECT
    INDICE
    , GRUPPO
    , CONTO
    , DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CONTOF
    , CODEHEADER
    , PARENT
    , LIVELLO1
    , LIVELLO2
    , LIVELLO3
    , LIVELLO4
    , LIVELLO5
    , NRLIVELLO
    , ISANALITICO
    , ATTIVO
    , CORRELATO
INTO
    #CG24_TABPDC_SELECTED
FROM
    #CG24_TABPDC
WHERE
    ISANALITICO = 1
    AND ATTIVO = 1
ORDER BY
    INDICE ASC)sql"),
         0},
        {"Selezione3", sent(R"sql(SELECT
    INDICE
    , GRUPPO
    , CONTO
    , DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CONTOF
    , CODEHEADER
    , PARENT
    , LIVELLO1
    , LIVELLO2
    , LIVELLO3
    , LIVELLO4
    , LIVELLO5
    , NRLIVELLO
    , ISANALITICO
    , ATTIVO
    , CORRELATO
INTO
    #CG24_TABPDC_SELECTED
FROM
    #CG24_TABPDC
WHERE
    ISANALITICO = 1
    AND ATTIVO = 0
ORDER BY
    INDICE ASC)sql"),
         0},
        {"Selezione4", sent(R"sql(SELECT
    INDICE
    , GRUPPO
    , CONTO
    , DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CONTOF
    , CODEHEADER
    , PARENT
    , LIVELLO1
    , LIVELLO2
    , LIVELLO3
    , LIVELLO4
    , LIVELLO5
    , NRLIVELLO
    , ISANALITICO
    , ATTIVO
    , CORRELATO
INTO
    #CG24_TABPDC_SELECTED
FROM
    #CG24_TABPDC
WHERE
    ISANALITICO = 1
    AND CORRELATO = 1
ORDER BY
    INDICE ASC)sql"),
         0},
        {"Selezione5", sent(R"sql(SELECT
    INDICE
    , GRUPPO
    , CONTO
    , DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CONTOF
    , CODEHEADER
    , PARENT
    , LIVELLO1
    , LIVELLO2
    , LIVELLO3
    , LIVELLO4
    , LIVELLO5
    , NRLIVELLO
    , ISANALITICO
    , ATTIVO
    , CORRELATO
INTO
    #CG24_TABPDC_SELECTED
FROM
    #CG24_TABPDC
WHERE
    ISANALITICO = 1
    AND CORRELATO = 0
ORDER BY
    INDICE ASC)sql"),
         0},
        {"Selezione6", sent(R"sql(SELECT
    INDICE
    , GRUPPO
    , CONTO
    , DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CONTOF
    , CODEHEADER
    , PARENT
    , LIVELLO1
    , LIVELLO2
    , LIVELLO3
    , LIVELLO4
    , LIVELLO5
    , NRLIVELLO
    , ISANALITICO
    , ATTIVO
    , CORRELATO
INTO
    #CG24_TABPDC_SELECTED
FROM
    #CG24_TABPDC
WHERE
    ISANALITICO = 1
    AND ATTIVO = 1
    AND CORRELATO = 1
ORDER BY
    INDICE ASC)sql"),
         0},
        {"Selezione7", sent(R"sql(SELECT
    INDICE
    , GRUPPO
    , CONTO
    , DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CONTOF
    , CODEHEADER
    , PARENT
    , LIVELLO1
    , LIVELLO2
    , LIVELLO3
    , LIVELLO4
    , LIVELLO5
    , NRLIVELLO
    , ISANALITICO
    , ATTIVO
    , CORRELATO
INTO
    #CG24_TABPDC_SELECTED
FROM
    #CG24_TABPDC
WHERE
    ISANALITICO = 1
    AND ATTIVO = 1
    AND CORRELATO = 0
ORDER BY
    INDICE ASC)sql"),
         0},
        {"Selezione8", sent(R"sql(SELECT
    INDICE
    , GRUPPO
    , CONTO
    , DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CONTOF
    , CODEHEADER
    , PARENT
    , LIVELLO1
    , LIVELLO2
    , LIVELLO3
    , LIVELLO4
    , LIVELLO5
    , NRLIVELLO
    , ISANALITICO
    , ATTIVO
    , CORRELATO
INTO
    #CG24_TABPDC_SELECTED
FROM
    #CG24_TABPDC
WHERE
    ISANALITICO = 1
    AND ATTIVO = 0
    AND CORRELATO = 1
ORDER BY
    INDICE ASC)sql"),
         0},
        {"Selezione9", sent(R"sql(SELECT
    INDICE
    , GRUPPO
    , CONTO
    , DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CONTOF
    , CODEHEADER
    , PARENT
    , LIVELLO1
    , LIVELLO2
    , LIVELLO3
    , LIVELLO4
    , LIVELLO5
    , NRLIVELLO
    , ISANALITICO
    , ATTIVO
    , CORRELATO
INTO
    #CG24_TABPDC_SELECTED
FROM
    #CG24_TABPDC
WHERE
    ISANALITICO = 1
    AND ATTIVO = 0
    AND CORRELATO = 0
ORDER BY
    INDICE ASC)sql"),
         0},
        {"InserimentoIdentita", sent(R"sql(SET IDENTITY_INSERT #CG24_TABPDC_SELECTED ON)sql"), 0},
        {"Completamento", sent(R"sql(INSERT INTO #CG24_TABPDC_SELECTED
(
    INDICE
    , GRUPPO
    , CONTO
    , DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CONTOF
    , CODEHEADER
    , PARENT
    , LIVELLO1
    , LIVELLO2
    , LIVELLO3
    , LIVELLO4
    , LIVELLO5
    , NRLIVELLO
    , ISANALITICO
    , ATTIVO
    , CORRELATO
)
SELECT
    INDICE
    , GRUPPO
    , CONTO
    , DESCRIZIONE
    , CG24_INDTIPOCONTO
    , CONTOF
    , CODEHEADER
    , PARENT
    , LIVELLO1
    , LIVELLO2
    , LIVELLO3
    , LIVELLO4
    , LIVELLO5
    , NRLIVELLO
    , ISANALITICO
    , ATTIVO
    , CORRELATO
FROM
    #CG24_TABPDC
WHERE
    GRUPPO = 1
    AND CONTO IN (
        SELECT DISTINCT
            CHILD_TABLE.PARENT
        FROM
            #CG24_TABPDC_SELECTED AS CHILD_TABLE
            LEFT OUTER JOIN
            #CG24_TABPDC_SELECTED AS PARENT_TABLE
            ON
            CHILD_TABLE.GRUPPO = PARENT_TABLE.GRUPPO
            AND CHILD_TABLE.PARENT = PARENT_TABLE.CONTO
        WHERE
            PARENT_TABLE.GRUPPO IS NULL
    )
ORDER BY
    INDICE ASC)sql"),
         0},
        {"ChiaveSelezione",
         sent(R"sql(ALTER TABLE #CG24_TABPDC_SELECTED ADD PRIMARY KEY CLUSTERED (INDICE))sql"), 0},
        {"IndiceSelezione01",
         sent(R"sql(CREATE NONCLUSTERED INDEX IDX01 ON #CG24_TABPDC_SELECTED (GRUPPO, PARENT))sql"), 0},
        {"IndiceSelezione02",
         sent(
             R"sql(CREATE NONCLUSTERED INDEX IDX02 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, ATTIVO))sql"),
         0},
        {"IndiceSelezione03",
         sent(
             R"sql(CREATE NONCLUSTERED INDEX IDX03 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, ATTIVO, LIVELLO1))sql"),
         0},
        {"IndiceSelezione04",
         sent(
             R"sql(CREATE NONCLUSTERED INDEX IDX04 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, ATTIVO, LIVELLO2))sql"),
         0},
        {"IndiceSelezione05",
         sent(
             R"sql(CREATE NONCLUSTERED INDEX IDX05 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, ATTIVO, LIVELLO3))sql"),
         0},
        {"IndiceSelezione06",
         sent(
             R"sql(CREATE NONCLUSTERED INDEX IDX06 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, ATTIVO, LIVELLO4))sql"),
         0},
        {"IndiceSelezione07",
         sent(
             R"sql(CREATE NONCLUSTERED INDEX IDX07 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, ATTIVO, LIVELLO5))sql"),
         0},
        {"IndiceSelezione08",
         sent(
             R"sql(CREATE NONCLUSTERED INDEX IDX08 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, LIVELLO1))sql"),
         0},
        {"IndiceSelezione09",
         sent(
             R"sql(CREATE NONCLUSTERED INDEX IDX09 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, LIVELLO2))sql"),
         0},
        {"IndiceSelezione10",
         sent(
             R"sql(CREATE NONCLUSTERED INDEX IDX10 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, LIVELLO3))sql"),
         0},
        {"IndiceSelezione11",
         sent(
             R"sql(CREATE NONCLUSTERED INDEX IDX11 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, LIVELLO4))sql"),
         0},
        {"IndiceSelezione12",
         sent(
             R"sql(CREATE NONCLUSTERED INDEX IDX12 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, LIVELLO5))sql"),
         0},
        {"RiportoAttivo", sent(R"sql(UPDATE #CG24_TABPDC
    SET #CG24_TABPDC.ATTIVO = #CG24_TABPDC_SELECTED.ATTIVO
FROM
    #CG24_TABPDC
    INNER JOIN
    #CG24_TABPDC_SELECTED
    ON
    #CG24_TABPDC.INDICE = #CG24_TABPDC_SELECTED.INDICE)sql"),
         0},
        {"RiportoCorrelato", sent(R"sql(UPDATE #CG24_TABPDC
    SET #CG24_TABPDC.CORRELATO = #CG24_TABPDC_SELECTED.CORRELATO
FROM
    #CG24_TABPDC
    INNER JOIN
    #CG24_TABPDC_SELECTED
    ON
    #CG24_TABPDC.INDICE = #CG24_TABPDC_SELECTED.INDICE)sql"),
         0},
        {"CorrelatoDelConto", sent(R"sql(UPDATE #CG24_TABPDC_SELECTED
SET
    CORRELATO = ?
WHERE
    GRUPPO = 1
    AND CONTO = ?)sql"),
         2},
        {"FigliDellaRadice", sent(R"sql(SELECT
    CONTO
    , CONTOF
    , DESCRIZIONE
    , ISANALITICO
    ,
    CASE
        WHEN (
            SELECT TOP 1
                1
            FROM
                #CG24_TABPDC_SELECTED AS SUB
            WHERE
                SUB.CG24_INDTIPOCONTO = ?
                AND SUB.ISANALITICO = 1
                AND SUB.ATTIVO = 0
        )
        IS NULL THEN 1
        ELSE 0
    END AS ATTIVO
    , CORRELATO
    , NRLIVELLO
FROM
    #CG24_TABPDC_SELECTED
WHERE
    NRLIVELLO = 1
    AND EXISTS (
        SELECT TOP 1
            1
        FROM
            #CG24_TABPDC_SELECTED AS SUB
        WHERE
            SUB.CG24_INDTIPOCONTO = ?
            AND SUB.ISANALITICO = 1
            AND SUB.LIVELLO1 = #CG24_TABPDC_SELECTED.CONTO
    )
ORDER BY
    INDICE ASC)sql"),
         2},
        {"FigliDelConto", sent(R"sql(SELECT
    CONTO
    , CONTOF
    , DESCRIZIONE
    , ISANALITICO
    , ATTIVO
    , CORRELATO
    , NRLIVELLO
FROM
    #CG24_TABPDC_SELECTED
WHERE
    GRUPPO = ?
    AND PARENT = ?
    AND CG24_INDTIPOCONTO = ?
ORDER BY
    INDICE ASC)sql"),
         3},
        {"RicercaConto", sent(R"sql(SELECT * FROM #CG24_TABPDC_SELECTED WHERE GRUPPO = 1
AND CONTO = ?
AND ISANALITICO = 1)sql"),
         1},
        {"AttivazioneSelezione", sent(R"sql(UPDATE #CG24_TABPDC_SELECTED
SET
    ATTIVO = 1
WHERE
    CONTO LIKE '0102%'
    AND CG24_INDTIPOCONTO = 2)sql"),
         0},
        {"PrimoLivelloInattivo",
         sent(R"sql(SELECT TOP 1 1 FROM #CG24_TABPDC_SELECTED WHERE CG24_INDTIPOCONTO = 2
AND ISANALITICO = 1
AND ATTIVO = 0)sql"),
         0},
        {"PrimoLivelloPresente",
         sent(R"sql(SELECT TOP 1 1 FROM #CG24_TABPDC_SELECTED WHERE CG24_INDTIPOCONTO = 2
AND ISANALITICO = 1)sql"),
         0},
        {"ConteggioCorrelazioni", sent(R"sql(SELECT
    COUNT(*)
FROM
    CI15_CORRCONTICOGE
WHERE
    CI15_DITTA_CG18 = 7
    AND CI15_CODPDC_CG10 = 1
    AND CI15_CONTO_CG24 = ?)sql"),
         1},
        {"CreazioneTestata", sent(R"sql(CREATE TABLE #TESTATA
(
    CAUSALE NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL,
    PRIMARY KEY (CAUSALE)
))sql"),
         0},
        {"CreazioneDettaglio", sent(R"sql(CREATE TABLE #DETTAGLIO
(
    CAUSALE NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL,
    PROG DECIMAL(3) NOT NULL,
    SEGNO DECIMAL(2) NOT NULL,
    PERCENTUALE DECIMAL(5, 2) NULL,
    PDC DECIMAL(3) NULL,
    CONTO NCHAR(15) COLLATE DATABASE_DEFAULT NULL,
    PDCVDS DECIMAL(3) NULL,
    CONTOVDS NCHAR(15) COLLATE DATABASE_DEFAULT NULL,
    AVERE NCHAR(15) COLLATE DATABASE_DEFAULT NULL,
    DARE NCHAR(15) COLLATE DATABASE_DEFAULT NULL,
    PRIMARY KEY (CAUSALE, PROG)
))sql"),
         0},
        {"SvuotamentoDettaglio", sent(R"sql(DELETE FROM #DETTAGLIO)sql"), 0},
        {"SvuotamentoTestata", sent(R"sql(DELETE FROM #TESTATA)sql"), 0},
        {"RiempimentoTestata", sent(R"sql(INSERT INTO #TESTATA
(
CAUSALE
)
SELECT DISTINCT
CI15_CODCAUS_CI03
FROM
CI15_CORRCONTICOGE
WHERE
CI15_DITTA_CG18 = 7
AND CI15_CODPDC_CG10 = 1
AND CI15_CONTO_CG24 = ?)sql"),
         1},
        {"RiempimentoDettaglio", sent(R"sql(INSERT INTO #DETTAGLIO
(
CAUSALE
, PROG
, PDC
, CONTO
, PDCVDS
, CONTOVDS
, SEGNO
, PERCENTUALE
, AVERE
, DARE
)
SELECT
CI15_CODCAUS_CI03
, CI15_PROG
, CI15_CODPDC_PC01
, CI15_CONTO_PC03
, CI15_CODVDS_PC01
, CI15_VDS_PC03
, CI15_INDSEGNO
, CI15_PERC
, CASE CI15_INDSEGNO
WHEN 2 THEN CI15_CONTO_PC03
ELSE NULL
END
, CASE CI15_INDSEGNO
WHEN 1 THEN CI15_CONTO_PC03
ELSE NULL
END
FROM
CI15_CORRCONTICOGE
WHERE
CI15_DITTA_CG18 = 7
AND CI15_CODPDC_CG10 = 1
AND CI15_CONTO_CG24 = ?
ORDER BY
CI15_PROG ASC)sql"),
         1},
        {"Testata", sent(R"sql(SELECT * FROM #TESTATA)sql"), 0},
        {"DettaglioVuoto", sent(R"sql(SELECT * FROM #DETTAGLIO WHERE 1 = 0)sql"), 0},
        {"DettaglioDellaCausale",
         sent(R"sql(SELECT * FROM #DETTAGLIO WHERE CAUSALE = 'A01 ' ORDER BY PROG ASC)sql"), 0},
        {"EliminazioneDettaglio", sent(R"sql(DELETE FROM #DETTAGLIO WHERE CAUSALE = 'A01')sql"), 0},
        {"EliminazionePerSalvataggio", sent(R"sql(DELETE FROM CI15_CORRCONTICOGE
WHERE
CI15_DITTA_CG18 = 7
AND CI15_CODCAUS_CI03 = 'A01'
AND CI15_CODPDC_CG10 = 1
AND CI15_CONTO_CG24 = '0102030005')sql"),
         0},
        {"InserimentoPerSalvataggio", sent(R"sql(INSERT INTO CI15_CORRCONTICOGE
(
    CI15_DITTA_CG18
    , CI15_CODCAUS_CI03
    , CI15_CODPDC_CG10
    , CI15_CONTO_CG24
    , CI15_PROG
    , CI15_CODPDC_PC01
    , CI15_CONTO_PC03
    , CI15_CODVDS_PC01
    , CI15_VDS_PC03
    , CI15_INDSEGNO
    , CI15_PERC
)
SELECT
    7
    , T.CAUSALE
    , 1
    , '0102030005'
    , D.PROG
    , D.PDC
    , D.CONTO
    , D.PDCVDS
    , D.CONTOVDS
    , D.SEGNO
    , D.PERCENTUALE
FROM
#TESTATA AS T
INNER JOIN
#DETTAGLIO AS D
ON
T.CAUSALE = D.CAUSALE
WHERE
T.CAUSALE = 'A01'
ORDER BY
D.PROG ASC)sql"),
         0},
        {"Tipologia", sent(R"sql(SELECT
    CI11_FLGCOLLEG          * POWER(2, 0)
    + CI11_FLGTRANSIT       * POWER(2, 1)
    + CI11_FLGCOMPET        * POWER(2, 2)
    + CI11_FLGCDC           * POWER(2, 3)
    + CI11_FLGLAVPROG       * POWER(2, 4)
    + CI11_FLGMAGAZ         * POWER(2, 5)
    + CI11_FLGMARGLORDI     * POWER(2, 6)
    + CI11_FLGMARGNETTI     * POWER(2, 7)
    + CI11_FLGRISULT        * POWER(2, 8)
    + CI11_FLGALTRITIPI     * POWER(2, 9) AS TIPOLOGIA_CONTO_INDUSTRIALE
    , CASE
        WHEN ( 
            (CI11_FLGCOLLEG = 1)
            AND (CI11_FLGTRANSIT = 1)
            AND (CI11_FLGCOMPET = 1)
            AND (CI11_FLGCDC = 1)
            AND (CI11_FLGLAVPROG = 1)
            AND (CI11_FLGMAGAZ = 1)
            AND (CI11_FLGMARGLORDI = 1)
            AND (CI11_FLGMARGNETTI = 1)
            AND (CI11_FLGRISULT = 1)
            AND (CI11_FLGALTRITIPI = 1)) THEN 1
        ELSE 0
    END AS TUTTI
FROM
    CI11_CONTROLLOCONTI
WHERE
    CI11_CODCAUS_CI03 = ?
    AND CI11_SEGNO = ?)sql"),
         2},
        {"DescrizioneVDS", sent(R"sql(SELECT PC03_DESCR FROM FNPC03_ANAGPDC_COAN(12, '0100', 7, Null) )sql"),
         0},
        {"Causali", sent(R"sql(SELECT DISTINCT
    CI03_CODCAUS
    , CI03_DESCR
FROM
    CI15_CORRCONTICOGE
     CROSS APPLY FNCI03_CAUSALI(CI15_CODCAUS_CI03, CI15_DITTA_CG18) 
WHERE
    CI15_DITTA_CG18 = 7
    AND CI15_CODPDC_CG10 = 1
    AND CI15_CONTO_CG24 = ?)sql"),
         1},
        {"EliminazioneConto", sent(R"sql(DELETE FROM CI15_CORRCONTICOGE
WHERE
    CI15_DITTA_CG18 = 7
    AND CI15_CODPDC_CG10 = 1
    AND CI15_CONTO_CG24 = ?)sql"),
         1},
        {"EliminazioneCausale", sent(R"sql(DELETE FROM CI15_CORRCONTICOGE
WHERE
    CI15_DITTA_CG18 = 7
    AND CI15_CODPDC_CG10 = 1
    AND CI15_CONTO_CG24 = ?
    AND CI15_CODCAUS_CI03 = ?)sql"),
         2},
        {"CopiaConto", sent(R"sql(INSERT INTO CI15_CORRCONTICOGE
(
    CI15_DITTA_CG18
    , CI15_CODCAUS_CI03
    , CI15_CODPDC_CG10
    , CI15_CONTO_CG24
    , CI15_PROG
    , CI15_CODPDC_PC01
    , CI15_CONTO_PC03
    , CI15_CODVDS_PC01
    , CI15_VDS_PC03
    , CI15_INDSEGNO
    , CI15_PERC
)
SELECT
    CI15_DITTA_CG18
    , CI15_CODCAUS_CI03
    , CI15_CODPDC_CG10
    , ?
    , CI15_PROG
    , CI15_CODPDC_PC01
    , CI15_CONTO_PC03
    , CI15_CODVDS_PC01
    , CI15_VDS_PC03
    , CI15_INDSEGNO
    , CI15_PERC
FROM
    CI15_CORRCONTICOGE
WHERE
    CI15_DITTA_CG18 = 7
    AND CI15_CODPDC_CG10 = 1
    AND CI15_CONTO_CG24 = ?
ORDER BY
    CI15_CODCAUS_CI03 ASC
    , CI15_PROG ASC)sql"),
         2},
        {"CopiaCausale", sent(R"sql(INSERT INTO CI15_CORRCONTICOGE
(
    CI15_DITTA_CG18
    , CI15_CODCAUS_CI03
    , CI15_CODPDC_CG10
    , CI15_CONTO_CG24
    , CI15_PROG
    , CI15_CODPDC_PC01
    , CI15_CONTO_PC03
    , CI15_CODVDS_PC01
    , CI15_VDS_PC03
    , CI15_INDSEGNO
    , CI15_PERC
)
SELECT
    CI15_DITTA_CG18
    , ?
    , CI15_CODPDC_CG10
    , CI15_CONTO_CG24
    , CI15_PROG
    , CI15_CODPDC_PC01
    , CI15_CONTO_PC03
    , CI15_CODVDS_PC01
    , CI15_VDS_PC03
    , CI15_INDSEGNO
    , CI15_PERC
FROM
    CI15_CORRCONTICOGE
WHERE
    CI15_DITTA_CG18 = 7
    AND CI15_CODPDC_CG10 = 1
    AND CI15_CONTO_CG24 = ?
    AND CI15_CODCAUS_CI03 = ?
ORDER BY
    CI15_PROG ASC)sql"),
         3},
    };
}

} // namespace

const std::vector<ScreenStatement>& screenStatements() {
    static const std::vector<ScreenStatement> statements = written();
    return statements;
}

const std::string& screenStatement(const std::string& name) {
    for (const ScreenStatement& statement : screenStatements()) {
        if (statement.name == name) {
            return statement.text;
        }
    }
    throw std::out_of_range("no such statement: " + name);
}

} // namespace veldran::tsql::test
