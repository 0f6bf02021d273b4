#include "tests/tsql/screen_statements_by_subject.h"

namespace veldran::tsql::test {

std::vector<ScreenStatement> treeStatements() {
    return {
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
    };
}

} // namespace veldran::tsql::test
