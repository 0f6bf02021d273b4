#include "tests/screen/expected_correlation_statements.h"

#include "tests/screen/expected_statements.h"

namespace veldran::test::expected {

namespace {

/// A text without rows, sent through the connection.
ExpectedMessage action(std::string text) {
    return sent(std::move(text)).withoutRows();
}

ExpectedMessage ofAccount(ExpectedMessage message, const std::string& account) {
    return message.with("@CONTO", ado::adWChar, 10, Value(account)).timeout(0);
}

std::string chartOf(const Owner& owner) {
    return std::to_string(owner.chart);
}

std::string createHeader() {
    return lines({"CREATE TABLE #TESTATA", "(", "    CAUSALE NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL,",
                  "    PRIMARY KEY (CAUSALE)", ")"});
}

std::string createDetail() {
    return lines({"CREATE TABLE #DETTAGLIO", "(", "    CAUSALE NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL,",
                  "    PROG DECIMAL(3) NOT NULL,", "    SEGNO DECIMAL(2) NOT NULL,",
                  "    PERCENTUALE DECIMAL(5, 2) NULL,", "    PDC DECIMAL(3) NULL,",
                  "    CONTO NCHAR(15) COLLATE DATABASE_DEFAULT NULL,", "    PDCVDS DECIMAL(3) NULL,",
                  "    CONTOVDS NCHAR(15) COLLATE DATABASE_DEFAULT NULL,",
                  "    AVERE NCHAR(15) COLLATE DATABASE_DEFAULT NULL,",
                  "    DARE NCHAR(15) COLLATE DATABASE_DEFAULT NULL,", "    PRIMARY KEY (CAUSALE, PROG)",
                  ")"});
}

ExpectedMessage preparing(const std::string& text) {
    return ExpectedMessage(Sent::Prepare, text).with("@CONTO", ado::adWChar, 10, Value());
}

/// A kept command: prepared at its first use, which is the one told here.
std::vector<Message> firstUse(const std::string& text, const std::string& account) {
    return {preparing(text), ofAccount(sentPrepared(text), account).withoutRows()};
}

} // namespace

ExpectedMessage correlatedCausali(const std::string& account, const Owner& owner) {
    return ofAccount(
        sent(lines({"SELECT DISTINCT", "    CI03_CODCAUS", "    , CI03_DESCR", "FROM",
                    "    CI15_CORRCONTICOGE",
                    "     CROSS APPLY FNCI03_CAUSALI(CI15_CODCAUS_CI03, CI15_DITTA_CG18) ", "WHERE",
                    "    CI15_DITTA_CG18 = " + owner.ditta, "    AND CI15_CODPDC_CG10 = " + chartOf(owner),
                    "    AND CI15_CONTO_CG24 = ?"})),
        account);
}

std::string correlationCountText(const Owner& owner) {
    return lines({"SELECT", "    COUNT(*)", "FROM", "    CI15_CORRCONTICOGE", "WHERE",
                  "    CI15_DITTA_CG18 = " + owner.ditta, "    AND CI15_CODPDC_CG10 = " + chartOf(owner),
                  "    AND CI15_CONTO_CG24 = ?"});
}

std::vector<Message> correlationCount(const std::string& account, const Owner& owner) {
    return {ofAccount(sentPrepared(correlationCountText(owner)), account)};
}

std::vector<Message> firstCorrelationCount(const std::string& account, const Owner& owner) {
    return together({{preparing(correlationCountText(owner))}, correlationCount(account, owner)});
}

std::string headerFillText(const Owner& owner) {
    return lines({"INSERT INTO #TESTATA", "(", "CAUSALE", ")", "SELECT DISTINCT", "CI15_CODCAUS_CI03", "FROM",
                  "CI15_CORRCONTICOGE", "WHERE", "CI15_DITTA_CG18 = " + owner.ditta,
                  "AND CI15_CODPDC_CG10 = " + chartOf(owner), "AND CI15_CONTO_CG24 = ?"});
}

std::string detailFillText(const Owner& owner) {
    return lines({"INSERT INTO #DETTAGLIO",
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
                  "WHERE",
                  "CI15_DITTA_CG18 = " + owner.ditta,
                  "AND CI15_CODPDC_CG10 = " + chartOf(owner),
                  "AND CI15_CONTO_CG24 = ?",
                  "ORDER BY",
                  "CI15_PROG ASC"});
}

std::vector<Message> tablesCreated(const std::string& account, const Owner& owner) {
    return together({{action(createHeader())},
                     firstUse(headerFillText(owner), account),
                     {action(createDetail())},
                     firstUse(detailFillText(owner), account)});
}

std::vector<Message> tablesRefilled(const std::string& account, const Owner& owner) {
    return {action("DELETE FROM #DETTAGLIO"), action("DELETE FROM #TESTATA"),
            ofAccount(sentPrepared(headerFillText(owner)), account).withoutRows(),
            ofAccount(sentPrepared(detailFillText(owner)), account).withoutRows()};
}

ExpectedMessage markCorrelation(bool correlated, const std::string& account) {
    return sent(markCorrelation(1))
        .with("@CORRELATO", ado::adBoolean, 0, Value(correlated))
        .with("@CONTO", ado::adWChar, 10, Value(account))
        .timeout(0)
        .withoutRows();
}

ExpectedMessage headers() {
    return sent("SELECT * FROM #TESTATA");
}

ExpectedMessage noRows() {
    return sent("SELECT * FROM #DETTAGLIO WHERE 1 = 0");
}

ExpectedMessage rowsOf(const std::string& paddedCausale) {
    return sent("SELECT * FROM #DETTAGLIO WHERE CAUSALE = '" + paddedCausale + "' ORDER BY PROG ASC");
}

std::string deleteCorrelationText(const std::string& causale, const std::string& account,
                                  const Owner& owner) {
    return lines({"DELETE FROM CI15_CORRCONTICOGE", "WHERE", "CI15_DITTA_CG18 = " + owner.ditta,
                  "AND CI15_CODCAUS_CI03 = '" + causale + "'", "AND CI15_CODPDC_CG10 = " + chartOf(owner),
                  "AND CI15_CONTO_CG24 = '" + account + "'"});
}

std::string insertCorrelationText(const std::string& causale, const std::string& account,
                                  const Owner& owner) {
    return lines({"INSERT INTO CI15_CORRCONTICOGE",
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
                  "    " + owner.ditta,
                  "    , T.CAUSALE",
                  "    , " + chartOf(owner),
                  "    , '" + account + "'",
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
                  "T.CAUSALE = '" + causale + "'",
                  "ORDER BY",
                  "D.PROG ASC"});
}

std::vector<Message> savedCorrelation(const std::string& causale, const std::string& account,
                                      const Owner& owner) {
    return inTransaction({action(deleteCorrelationText(causale, account, owner)),
                          action(insertCorrelationText(causale, account, owner))});
}

std::vector<Message> inTransaction(const std::vector<Message>& messages) {
    return together({{ExpectedMessage(Sent::Begin, "BEGIN TRANSACTION")},
                     messages,
                     {ExpectedMessage(Sent::Commit, "COMMIT TRANSACTION")}});
}

ExpectedMessage deletedWorkingRows(const std::string& causale) {
    return action("DELETE FROM #DETTAGLIO WHERE CAUSALE = '" + causale + "'");
}

std::string kindsText() {
    return lines({"SELECT",
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
                  "    AND CI11_SEGNO = ?"});
}

std::vector<Message> kinds(const std::string& causale, int sign) {
    return {sentPrepared(kindsText())
                .with("@CAUSALE", ado::adWChar, 4, Value(causale))
                .with("@SEGNO", ado::adNumeric, 0, Decimal{sign, 0}, 1, 0)
                .timeout(0)};
}

std::vector<Message> firstKinds(const std::string& causale, int sign) {
    return together({{ExpectedMessage(Sent::Prepare, kindsText())
                          .with("@CAUSALE", ado::adWChar, 4, Value())
                          .with("@SEGNO", ado::adNumeric, 0, Value(), 1, 0)},
                     kinds(causale, sign)});
}

ExpectedMessage accountDescription(const std::string& account, int chart) {
    return sent(" SELECT PC03_DESCR FROM FNPC03_ANAGPDC_COAN(" + std::to_string(chart) + ", '" + account +
                "', <DITTA>, null) ");
}

ExpectedMessage itemDescription(const std::string& item, int chart, const std::string& ditta) {
    return sent("SELECT PC03_DESCR FROM FNPC03_ANAGPDC_COAN(" + std::to_string(chart) + ", '" + item + "', " +
                ditta + ", Null) ");
}

std::vector<Message> together(const std::vector<std::vector<Message>>& lists) {
    std::vector<Message> all;
    for (const std::vector<Message>& list : lists) {
        all.insert(all.end(), list.begin(), list.end());
    }
    return all;
}

} // namespace veldran::test::expected
