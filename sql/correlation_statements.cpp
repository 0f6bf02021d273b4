#include "sql/correlation_statements.h"

#include "platform/text.h"
#include "sql/statement.h"

namespace veldran::sql {

namespace {

std::string quoted(const std::string& text) {
    return "'" + text + "'";
}

/// As a literal of the language, for codes that users type.
std::string literal(const std::string& text) {
    return quoted(replaceAll(text, "'", "''"));
}

/// The condition on one account's rows, each line behind `margin`.
std::string ofAccount(const CorrelationOwner& owner, std::string_view margin) {
    const std::string indent(margin);
    return lines({
        "WHERE",
        indent + "CI15_DITTA_CG18 = " + owner.codiceDitta,
        indent + "AND CI15_CODPDC_CG10 = " + std::to_string(owner.codicePDC),
        indent + "AND CI15_CONTO_CG24 = ?",
    });
}

constexpr std::string_view margin = "    ";

} // namespace

std::string conteggioCorrelazioni(const CorrelationOwner& owner) {
    return lines({"SELECT", "    COUNT(*)", "FROM", "    CI15_CORRCONTICOGE", ofAccount(owner, margin)});
}

std::string causaliCorrelate(const CorrelationOwner& owner) {
    return lines({
        "SELECT DISTINCT",
        "    CI03_CODCAUS",
        "    , CI03_DESCR",
        "FROM",
        "    CI15_CORRCONTICOGE",
        "     CROSS APPLY FNCI03_CAUSALI(CI15_CODCAUS_CI03, CI15_DITTA_CG18) ",
        ofAccount(owner, margin),
    });
}

std::string creazioneTestata() {
    return lines({
        "CREATE TABLE #TESTATA",
        "(",
        "    CAUSALE NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL,",
        "    PRIMARY KEY (CAUSALE)",
        ")",
    });
}

std::string creazioneDettaglio() {
    return lines({
        "CREATE TABLE #DETTAGLIO",
        "(",
        "    CAUSALE NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL,",
        "    PROG DECIMAL(3) NOT NULL,",
        "    SEGNO DECIMAL(2) NOT NULL,",
        "    PERCENTUALE DECIMAL(5, 2) NULL,",
        "    PDC DECIMAL(3) NULL,",
        "    CONTO NCHAR(15) COLLATE DATABASE_DEFAULT NULL,",
        "    PDCVDS DECIMAL(3) NULL,",
        "    CONTOVDS NCHAR(15) COLLATE DATABASE_DEFAULT NULL,",
        "    AVERE NCHAR(15) COLLATE DATABASE_DEFAULT NULL,",
        "    DARE NCHAR(15) COLLATE DATABASE_DEFAULT NULL,",
        "    PRIMARY KEY (CAUSALE, PROG)",
        ")",
    });
}

std::string svuotamentoTestata() {
    return "DELETE FROM #TESTATA";
}

std::string svuotamentoDettaglio() {
    return "DELETE FROM #DETTAGLIO";
}

std::string riempimentoTestata(const CorrelationOwner& owner) {
    return lines({
        "INSERT INTO #TESTATA",
        "(",
        "CAUSALE",
        ")",
        "SELECT DISTINCT",
        "CI15_CODCAUS_CI03",
        "FROM",
        "CI15_CORRCONTICOGE",
        ofAccount(owner, {}),
    });
}

std::string riempimentoDettaglio(const CorrelationOwner& owner) {
    return lines({
        "INSERT INTO #DETTAGLIO",
        "(",
        "CAUSALE",
        ", PROG",
        ", PDC",
        ", CONTO",
        ", PDCVDS",
        ", CONTOVDS",
        ", SEGNO",
        ", PERCENTUALE",
        ", AVERE",
        ", DARE",
        ")",
        "SELECT",
        "CI15_CODCAUS_CI03",
        ", CI15_PROG",
        ", CI15_CODPDC_PC01",
        ", CI15_CONTO_PC03",
        ", CI15_CODVDS_PC01",
        ", CI15_VDS_PC03",
        ", CI15_INDSEGNO",
        ", CI15_PERC",
        ", CASE CI15_INDSEGNO",
        "WHEN 2 THEN CI15_CONTO_PC03",
        "ELSE NULL",
        "END",
        ", CASE CI15_INDSEGNO",
        "WHEN 1 THEN CI15_CONTO_PC03",
        "ELSE NULL",
        "END",
        "FROM",
        "CI15_CORRCONTICOGE",
        ofAccount(owner, {}),
        "ORDER BY",
        "CI15_PROG ASC",
    });
}

std::string letturaTestata() {
    return "SELECT * FROM #TESTATA";
}

std::string letturaDettaglio(const std::string& causale) {
    return "SELECT * FROM #DETTAGLIO WHERE CAUSALE = " + quoted(causale) + " ORDER BY PROG ASC";
}

std::string letturaDettaglioVuoto() {
    return "SELECT * FROM #DETTAGLIO WHERE 1 = 0";
}

std::string rimozioneRigheDettaglio(const std::string& causale) {
    return "DELETE FROM #DETTAGLIO WHERE CAUSALE = " + quoted(causale);
}

std::string rimozioneCorrelazione(const CorrelationOwner& owner, const std::string& causale,
                                  const std::string& conto) {
    return lines({
        "DELETE FROM CI15_CORRCONTICOGE",
        "WHERE",
        "CI15_DITTA_CG18 = " + owner.codiceDitta,
        "AND CI15_CODCAUS_CI03 = " + quoted(causale),
        "AND CI15_CODPDC_CG10 = " + std::to_string(owner.codicePDC),
        "AND CI15_CONTO_CG24 = " + quoted(conto),
    });
}

std::string scritturaCorrelazione(const CorrelationOwner& owner, const std::string& causale,
                                  const std::string& conto) {
    return lines({
        "INSERT INTO CI15_CORRCONTICOGE",
        "(",
        "    CI15_DITTA_CG18",
        "    , CI15_CODCAUS_CI03",
        "    , CI15_CODPDC_CG10",
        "    , CI15_CONTO_CG24",
        "    , CI15_PROG",
        "    , CI15_CODPDC_PC01",
        "    , CI15_CONTO_PC03",
        "    , CI15_CODVDS_PC01",
        "    , CI15_VDS_PC03",
        "    , CI15_INDSEGNO",
        "    , CI15_PERC",
        ")",
        "SELECT",
        "    " + owner.codiceDitta,
        "    , T.CAUSALE",
        "    , " + std::to_string(owner.codicePDC),
        "    , " + quoted(conto),
        "    , D.PROG",
        "    , D.PDC",
        "    , D.CONTO",
        "    , D.PDCVDS",
        "    , D.CONTOVDS",
        "    , D.SEGNO",
        "    , D.PERCENTUALE",
        "FROM",
        "#TESTATA AS T",
        "INNER JOIN",
        "#DETTAGLIO AS D",
        "ON",
        "T.CAUSALE = D.CAUSALE",
        "WHERE",
        "T.CAUSALE = " + quoted(causale),
        "ORDER BY",
        "D.PROG ASC",
    });
}

std::string tipologiaContoIndustriale() {
    return lines({
        "SELECT",
        "    CI11_FLGCOLLEG          * POWER(2, 0)",
        "    + CI11_FLGTRANSIT       * POWER(2, 1)",
        "    + CI11_FLGCOMPET        * POWER(2, 2)",
        "    + CI11_FLGCDC           * POWER(2, 3)",
        "    + CI11_FLGLAVPROG       * POWER(2, 4)",
        "    + CI11_FLGMAGAZ         * POWER(2, 5)",
        "    + CI11_FLGMARGLORDI     * POWER(2, 6)",
        "    + CI11_FLGMARGNETTI     * POWER(2, 7)",
        "    + CI11_FLGRISULT        * POWER(2, 8)",
        "    + CI11_FLGALTRITIPI     * POWER(2, 9) AS TIPOLOGIA_CONTO_INDUSTRIALE",
        "    , CASE",
        "        WHEN ( ",
        "            (CI11_FLGCOLLEG = 1)",
        "            AND (CI11_FLGTRANSIT = 1)",
        "            AND (CI11_FLGCOMPET = 1)",
        "            AND (CI11_FLGCDC = 1)",
        "            AND (CI11_FLGLAVPROG = 1)",
        "            AND (CI11_FLGMAGAZ = 1)",
        "            AND (CI11_FLGMARGLORDI = 1)",
        "            AND (CI11_FLGMARGNETTI = 1)",
        "            AND (CI11_FLGRISULT = 1)",
        "            AND (CI11_FLGALTRITIPI = 1)) THEN 1",
        "        ELSE 0",
        "    END AS TUTTI",
        "FROM",
        "    CI11_CONTROLLOCONTI",
        "WHERE",
        "    CI11_CODCAUS_CI03 = ?",
        "    AND CI11_SEGNO = ?",
    });
}

std::string descrizioneConto(std::int32_t codicePDC, const std::string& conto,
                             const std::string& codiceDitta) {
    // The company's replacement aims at a marker that is gone: the one of the company stays.
    return substituted(" SELECT PC03_DESCR FROM FNPC03_ANAGPDC_COAN(<CODICEPDC>, <CONTO>, <DITTA>, null) ",
                       {{"<CODICEPDC>", std::to_string(codicePDC)},
                        {"<CONTO>", literal(conto)},
                        {"<CODICEPDC>", codiceDitta}});
}

std::string descrizioneVDS(std::int32_t codicePDC, const std::string& vds, const std::string& codiceDitta) {
    return substituted(
        "SELECT PC03_DESCR FROM FNPC03_ANAGPDC_COAN(<CODICEVDS>, <VDS>, <DITTA>, Null) ",
        {{"<CODICEVDS>", std::to_string(codicePDC)}, {"<VDS>", literal(vds)}, {"<DITTA>", codiceDitta}});
}

} // namespace veldran::sql
