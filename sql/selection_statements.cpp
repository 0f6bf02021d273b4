#include "sql/selection_statements.h"

#include "sql/statement.h"

namespace veldran::sql {

namespace {

std::string columns() {
    return lines({
        "    INDICE",
        "    , GRUPPO",
        "    , CONTO",
        "    , DESCRIZIONE",
        "    , CG24_INDTIPOCONTO",
        "    , CONTOF",
        "    , CODEHEADER",
        "    , PARENT",
        "    , LIVELLO1",
        "    , LIVELLO2",
        "    , LIVELLO3",
        "    , LIVELLO4",
        "    , LIVELLO5",
        "    , NRLIVELLO",
        "    , ISANALITICO",
        "    , ATTIVO",
        "    , CORRELATO",
    });
}

std::string withCondition(std::string text, int filtro) {
    constexpr std::string_view where = "WHERE";
    constexpr std::string_view analytic = "    ISANALITICO = 1";
    constexpr std::string_view active = "    AND ATTIVO = 1";
    constexpr std::string_view inactive = "    AND ATTIVO = 0";
    constexpr std::string_view correlated = "    AND CORRELATO = 1";
    constexpr std::string_view uncorrelated = "    AND CORRELATO = 0";
    switch (filtro) {
    case 2:
        return withLines(std::move(text), {where, analytic, active});
    case 3:
        return withLines(std::move(text), {where, analytic, inactive});
    case 4:
        return withLines(std::move(text), {where, analytic, correlated});
    case 5:
        return withLines(std::move(text), {where, analytic, uncorrelated});
    case 6:
        return withLines(std::move(text), {where, analytic, active, correlated});
    case 7:
        return withLines(std::move(text), {where, analytic, active, uncorrelated});
    case 8:
        return withLines(std::move(text), {where, analytic, inactive, correlated});
    case 9:
        return withLines(std::move(text), {where, analytic, inactive, uncorrelated});
    default:
        return text;
    }
}

std::string index(int number, const std::string& columns) {
    return std::string("CREATE NONCLUSTERED INDEX IDX") + (number < 10 ? "0" : "") + std::to_string(number) +
           " ON #CG24_TABPDC_SELECTED (" + columns + ")";
}

std::string writeBack(std::string_view column) {
    const std::string name(column);
    return lines({
        "UPDATE #CG24_TABPDC",
        "    SET #CG24_TABPDC." + name + " = #CG24_TABPDC_SELECTED." + name,
        "FROM",
        "    #CG24_TABPDC",
        "    INNER JOIN",
        "    #CG24_TABPDC_SELECTED",
        "    ON",
        "    #CG24_TABPDC.INDICE = #CG24_TABPDC_SELECTED.INDICE",
    });
}

} // namespace

std::string rimozioneSelezione() {
    return "IF OBJECT_ID('TEMPDB.DBO.#CG24_TABPDC_SELECTED') IS NOT NULL DROP TABLE #CG24_TABPDC_SELECTED";
}

std::string creazioneSelezione(int filtro) {
    const std::string copy = lines({
        "SELECT",
        columns(),
        "INTO",
        "    #CG24_TABPDC_SELECTED",
        "FROM",
        "    #CG24_TABPDC",
    });
    return withLines(withCondition(copy, filtro), {"ORDER BY", "    INDICE ASC"});
}

std::string identitaSelezione() {
    return "SET IDENTITY_INSERT #CG24_TABPDC_SELECTED ON";
}

std::string completamentoSelezione(std::int32_t codicePDC) {
    return substituted(lines({
                           "INSERT INTO #CG24_TABPDC_SELECTED",
                           "(",
                           columns(),
                           ")",
                           "SELECT",
                           columns(),
                           "FROM",
                           "    #CG24_TABPDC",
                           "WHERE",
                           "    GRUPPO = @GRUPPO",
                           "    AND CONTO IN (",
                           "        SELECT DISTINCT",
                           "            CHILD_TABLE.PARENT",
                           "        FROM",
                           "            #CG24_TABPDC_SELECTED AS CHILD_TABLE",
                           "            LEFT OUTER JOIN",
                           "            #CG24_TABPDC_SELECTED AS PARENT_TABLE",
                           "            ON",
                           "            CHILD_TABLE.GRUPPO = PARENT_TABLE.GRUPPO",
                           "            AND CHILD_TABLE.PARENT = PARENT_TABLE.CONTO",
                           "        WHERE",
                           "            PARENT_TABLE.GRUPPO IS NULL",
                           "    )",
                           "ORDER BY",
                           "    INDICE ASC",
                       }),
                       {{"@GRUPPO", std::to_string(codicePDC)}});
}

std::vector<std::string> indiciSelezione(std::int16_t livelli) {
    constexpr int ancestorColumns = 5;
    std::vector<std::string> statements = {
        "ALTER TABLE #CG24_TABPDC_SELECTED ADD PRIMARY KEY CLUSTERED (INDICE)",
        index(1, "GRUPPO, PARENT"),
        index(2, "CG24_INDTIPOCONTO, ISANALITICO, ATTIVO"),
    };
    for (int level = 1; level <= ancestorColumns && level <= livelli; ++level) {
        statements.push_back(
            index(2 + level, "CG24_INDTIPOCONTO, ISANALITICO, ATTIVO, LIVELLO" + std::to_string(level)));
    }
    for (int level = 1; level <= ancestorColumns && level <= livelli; ++level) {
        statements.push_back(
            index(7 + level, "CG24_INDTIPOCONTO, ISANALITICO, LIVELLO" + std::to_string(level)));
    }
    return statements;
}

const std::string& riportoAttivo() {
    static const std::string text = writeBack("ATTIVO");
    return text;
}

const std::string& riportoCorrelato() {
    static const std::string text = writeBack("CORRELATO");
    return text;
}

std::string impostazioneCorrelatoConto(std::int32_t codicePDC) {
    return lines({
        "UPDATE #CG24_TABPDC_SELECTED",
        "SET",
        "    CORRELATO = ?",
        "WHERE",
        "    GRUPPO = " + std::to_string(codicePDC),
        "    AND CONTO = ?",
    });
}

} // namespace veldran::sql
