#include "tests/screen/expected_statements.h"

#include <fstream>
#include <stdexcept>
#include <utility>

namespace veldran::test::expected {

namespace {

const std::vector<std::string>& columns() {
    static const std::vector<std::string> all = {"    INDICE",
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
                                                 "    , CORRELATO"};
    return all;
}

void append(std::vector<std::string>& texts, const std::vector<std::string>& more) {
    texts.insert(texts.end(), more.begin(), more.end());
}

} // namespace

std::string lines(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) {
        if (!all.empty()) {
            all += "\r\n";
        }
        all += text;
    }
    return all;
}

std::string levels(int chart) {
    return lines({"SELECT", "    CG10_NUMLIVELLI", "FROM", "    CG10_DESPDC", "WHERE",
                  "    CG10_GRUPPO = " + std::to_string(chart)});
}

std::string workingTable(int chart, int levels) {
    const std::string path = VELDRAN_SOURCE_DIR "/tests/screen/golden/working_table.sql";
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    std::vector<std::string> texts;
    for (std::string line; std::getline(file, line);) {
        for (const auto& [marker, value] : {std::pair<std::string, int>{"@NUMLIVELLI", levels},
                                            std::pair<std::string, int>{"@CODICE_PDC_COGE", chart}}) {
            if (line.ends_with(marker)) {
                line.replace(line.size() - marker.size(), marker.size(), std::to_string(value));
            }
        }
        texts.push_back(line);
    }
    return lines(texts);
}

std::string workingTableKey() {
    return "ALTER TABLE #CG24_TABPDC ADD PRIMARY KEY CLUSTERED (INDICE)";
}

std::string workingTableIndex1() {
    return "CREATE NONCLUSTERED INDEX IDX01 ON #CG24_TABPDC (GRUPPO, CONTO)";
}

std::string workingTableIndex2() {
    return "CREATE NONCLUSTERED INDEX IDX02 ON #CG24_TABPDC (GRUPPO, PARENT)";
}

std::string activationFlags(const std::string& ditta, int chart) {
    return lines({"UPDATE #CG24_TABPDC", "SET ATTIVO = ISNULL(", "    (", "        SELECT TOP 1 1",
                  "        FROM CI35_CONTIATTIVI", "        WHERE CI35_DITTA_CG18 = " + ditta,
                  "            AND CI35_GRUPPO_CG10 = " + std::to_string(chart),
                  "            AND CI35_CONTO_CG24 = CONTO", "    )", "    , 0)"});
}

std::string correlationFlags(const std::string& ditta) {
    return lines({"UPDATE #CG24_TABPDC", "SET CORRELATO =", "    CASE",
                  "        WHEN GRUPPOCORRELATO IS NULL THEN 0", "        ELSE 1", "    END",
                  "FROM #CG24_TABPDC", "    LEFT OUTER JOIN", "    (", "        SELECT DISTINCT",
                  "            CI15_CODPDC_CG10 AS GRUPPOCORRELATO",
                  "            , CI15_CONTO_CG24 AS CONTOCORRELATO", "        FROM CI15_CORRCONTICOGE",
                  "        WHERE CI15_DITTA_CG18 = " + ditta, "    ) AS CONTICORRELATI",
                  "    ON GRUPPO = GRUPPOCORRELATO", "        AND CONTO = CONTOCORRELATO"});
}

std::string dropSelection() {
    return "IF OBJECT_ID('TEMPDB.DBO.#CG24_TABPDC_SELECTED') IS NOT NULL DROP TABLE #CG24_TABPDC_SELECTED";
}

std::string select(int filter) {
    static const std::vector<std::vector<std::string>> conditions = {
        {},
        {"    AND ATTIVO = 1"},
        {"    AND ATTIVO = 0"},
        {"    AND CORRELATO = 1"},
        {"    AND CORRELATO = 0"},
        {"    AND ATTIVO = 1", "    AND CORRELATO = 1"},
        {"    AND ATTIVO = 1", "    AND CORRELATO = 0"},
        {"    AND ATTIVO = 0", "    AND CORRELATO = 1"},
        {"    AND ATTIVO = 0", "    AND CORRELATO = 0"},
    };
    std::vector<std::string> texts = {"SELECT"};
    append(texts, columns());
    append(texts, {"INTO", "    #CG24_TABPDC_SELECTED", "FROM", "    #CG24_TABPDC"});
    if (filter >= 2 && filter <= 9) {
        append(texts, {"WHERE", "    ISANALITICO = 1"});
        append(texts, conditions[static_cast<std::size_t>(filter) - 1]);
    }
    append(texts, {"ORDER BY", "    INDICE ASC"});
    return lines(texts);
}

std::string identityInsertOn() {
    return "SET IDENTITY_INSERT #CG24_TABPDC_SELECTED ON";
}

std::string completeSelection(int chart) {
    std::vector<std::string> texts = {"INSERT INTO #CG24_TABPDC_SELECTED", "("};
    append(texts, columns());
    append(texts, {")", "SELECT"});
    append(texts, columns());
    append(texts, {"FROM", "    #CG24_TABPDC", "WHERE", "    GRUPPO = " + std::to_string(chart),
                   "    AND CONTO IN (", "        SELECT DISTINCT", "            CHILD_TABLE.PARENT",
                   "        FROM", "            #CG24_TABPDC_SELECTED AS CHILD_TABLE",
                   "            LEFT OUTER JOIN", "            #CG24_TABPDC_SELECTED AS PARENT_TABLE",
                   "            ON", "            CHILD_TABLE.GRUPPO = PARENT_TABLE.GRUPPO",
                   "            AND CHILD_TABLE.PARENT = PARENT_TABLE.CONTO", "        WHERE",
                   "            PARENT_TABLE.GRUPPO IS NULL", "    )", "ORDER BY", "    INDICE ASC"});
    return lines(texts);
}

std::string selectionKey() {
    return "ALTER TABLE #CG24_TABPDC_SELECTED ADD PRIMARY KEY CLUSTERED (INDICE)";
}

std::vector<std::string> selectionIndexes(int levels) {
    const std::string create = "CREATE NONCLUSTERED INDEX IDX";
    const std::string on = " ON #CG24_TABPDC_SELECTED (";
    std::vector<std::string> all = {create + "01" + on + "GRUPPO, PARENT)",
                                    create + "02" + on + "CG24_INDTIPOCONTO, ISANALITICO, ATTIVO)"};
    const char* const withActivation[] = {"03", "04", "05", "06", "07"};
    const char* const withoutActivation[] = {"08", "09", "10", "11", "12"};
    for (int level = 1; level <= 5 && level <= levels; ++level) {
        all.push_back(create + withActivation[level - 1] + on +
                      "CG24_INDTIPOCONTO, ISANALITICO, ATTIVO, LIVELLO" + std::to_string(level) + ")");
    }
    for (int level = 1; level <= 5 && level <= levels; ++level) {
        all.push_back(create + withoutActivation[level - 1] + on + "CG24_INDTIPOCONTO, ISANALITICO, LIVELLO" +
                      std::to_string(level) + ")");
    }
    return all;
}

std::string anyInactive(int nature) {
    return lines({anyAnalytic(nature), "AND ATTIVO = 0"});
}

std::string anyAnalytic(int nature) {
    return lines(
        {"SELECT TOP 1 1 FROM #CG24_TABPDC_SELECTED WHERE CG24_INDTIPOCONTO = " + std::to_string(nature),
         "AND ISANALITICO = 1"});
}

std::string rootChildren() {
    return lines({"SELECT",
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
                  "    INDICE ASC"});
}

std::string analyticChildren() {
    return lines({"SELECT", "    CONTO", "    , CONTOF", "    , DESCRIZIONE", "    , ISANALITICO",
                  "    , ATTIVO", "    , CORRELATO", "    , NRLIVELLO", "FROM", "    #CG24_TABPDC_SELECTED",
                  "WHERE", "    GRUPPO = ?", "    AND PARENT = ?", "    AND CG24_INDTIPOCONTO = ?",
                  "ORDER BY", "    INDICE ASC"});
}

std::string search(int chart) {
    return lines({"SELECT * FROM #CG24_TABPDC_SELECTED WHERE GRUPPO = " + std::to_string(chart),
                  "AND CONTO = ?", "AND ISANALITICO = 1"});
}

std::string header(int levels) {
    return "SELECT DBO.FNCI_COGE_GETCODEHEADER(" + std::to_string(levels) + ", ?)";
}

std::string markActivation(bool active, const std::string& pattern, int nature) {
    return lines({"UPDATE #CG24_TABPDC_SELECTED", "SET", std::string("    ATTIVO = ") + (active ? "1" : "0"),
                  "WHERE", "    CONTO LIKE '" + pattern + "'",
                  "    AND CG24_INDTIPOCONTO = " + std::to_string(nature)});
}

std::string writeBack(const std::string& column) {
    return lines({"UPDATE #CG24_TABPDC",
                  "    SET #CG24_TABPDC." + column + " = #CG24_TABPDC_SELECTED." + column, "FROM",
                  "    #CG24_TABPDC", "    INNER JOIN", "    #CG24_TABPDC_SELECTED", "    ON",
                  "    #CG24_TABPDC.INDICE = #CG24_TABPDC_SELECTED.INDICE"});
}

std::string markCorrelation(int chart) {
    return lines({"UPDATE #CG24_TABPDC_SELECTED", "SET", "    CORRELATO = ?", "WHERE",
                  "    GRUPPO = " + std::to_string(chart), "    AND CONTO = ?"});
}

} // namespace veldran::test::expected
