#include "tests/tsql/screen_statements_by_subject.h"

namespace veldran::tsql::test {

std::vector<ScreenStatement> selectionStatements() {
    return {
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
    };
}

} // namespace veldran::tsql::test
