#include "sql/tree_statements.h"

#include "sql/statement.h"

namespace veldran::sql {

std::string figliRadice() {
    return lines({
        "SELECT",
        "    CONTO",
        "    , CONTOF",
        "    , DESCRIZIONE",
        "    , ISANALITICO",
        "    ,",
        "    CASE",
        "        WHEN (",
        "            SELECT TOP 1",
        "                1",
        "            FROM",
        "                #CG24_TABPDC_SELECTED AS SUB",
        "            WHERE",
        "                SUB.CG24_INDTIPOCONTO = ?",
        "                AND SUB.ISANALITICO = 1",
        "                AND SUB.ATTIVO = 0",
        "        )",
        "        IS NULL THEN 1",
        "        ELSE 0",
        "    END AS ATTIVO",
        "    , CORRELATO",
        "    , NRLIVELLO",
        "FROM",
        "    #CG24_TABPDC_SELECTED",
        "WHERE",
        "    NRLIVELLO = 1",
        "    AND EXISTS (",
        "        SELECT TOP 1",
        "            1",
        "        FROM",
        "            #CG24_TABPDC_SELECTED AS SUB",
        "        WHERE",
        "            SUB.CG24_INDTIPOCONTO = ?",
        "            AND SUB.ISANALITICO = 1",
        "            AND SUB.LIVELLO1 = #CG24_TABPDC_SELECTED.CONTO",
        "    )",
        "ORDER BY",
        "    INDICE ASC",
    });
}

std::string figliIntermedio() {
    return lines({
        "SELECT",
        "    CONTO",
        "    , CONTOF",
        "    , DESCRIZIONE",
        "    , ISANALITICO",
        "    , ATTIVO",
        "    , CORRELATO",
        "    , NRLIVELLO",
        "FROM",
        "    #CG24_TABPDC_SELECTED",
        "WHERE",
        "    GRUPPO = ?",
        "    AND PARENT = ?",
        "    AND CG24_INDTIPOCONTO = ?",
        "ORDER BY",
        "    INDICE ASC",
    });
}

std::string ricercaConto(std::int32_t codicePDC) {
    return lines({
        "SELECT * FROM #CG24_TABPDC_SELECTED WHERE GRUPPO = " + std::to_string(codicePDC),
        "AND CONTO = ?",
        "AND ISANALITICO = 1",
    });
}

std::string attivazioneSelezione(bool attiva, const std::string& modello, int natura) {
    return lines({
        "UPDATE #CG24_TABPDC_SELECTED",
        "SET",
        std::string("    ATTIVO = ") + (attiva ? "1" : "0"),
        "WHERE",
        "    CONTO LIKE '" + modello + "'",
        "    AND CG24_INDTIPOCONTO = " + std::to_string(natura),
    });
}

std::string contoInattivoDiNatura(int natura) {
    return withLines(contoDiNatura(natura), {"AND ATTIVO = 0"});
}

std::string contoDiNatura(int natura) {
    return lines({
        "SELECT TOP 1 1 FROM #CG24_TABPDC_SELECTED WHERE CG24_INDTIPOCONTO = " + std::to_string(natura),
        "AND ISANALITICO = 1",
    });
}

} // namespace veldran::sql
