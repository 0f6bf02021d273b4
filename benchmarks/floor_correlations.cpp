#include "benchmarks/floor_correlations.h"

#include "database/generator/synthetic_script.h"

#include <algorithm>

namespace veldran::bench {

namespace {

constexpr std::string_view blanks = "               ";

std::string padded(const std::string& code) {
    return code + std::string(blanks.substr(std::min(code.size(), blanks.size())));
}

std::string trimmed(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

} // namespace

template<typename... Values>
void FloorCorrelations::run(const char* sql, const Values&... values) {
    Statement& statement = tables_.prepared(sql);
    const StatementUse use(statement);
    int place = 0;
    (statement.bind(++place, values), ...);
    statement.run();
}

void FloorCorrelations::list() {
    Statement& causali = tables_.prepared(
        "SELECT DISTINCT CI03_CODCAUS, CI03_DESCR FROM CI15_CORRCONTICOGE JOIN CI03_CAUSALI ON CI03_CODCAUS "
        "= "
        "CI15_CODCAUS_CI03 AND CI03_DITTA_CG18 IN (0, CI15_DITTA_CG18) WHERE CI15_DITTA_CG18 = ? AND "
        "CI15_CODPDC_CG10 = ? AND CI15_CONTO_CG24 = ?");
    const StatementUse use(causali);
    causali.bind(1, std::int64_t{company});
    causali.bind(2, std::int64_t{chartCode});
    causali.bind(3, account_);
    listed_.clear();
    while (causali.step()) {
        listed_.push_back({trimmed(causali.text(0)), trimmed(causali.text(1))});
    }
}

void FloorCorrelations::fill() {
    if (!created_) {
        tables_.database().execute(
            "CREATE TEMP TABLE testata (CAUSALE TEXT NOT NULL PRIMARY KEY) WITHOUT ROWID; CREATE TEMP TABLE "
            "dettaglio (CAUSALE TEXT NOT NULL, PROG INTEGER NOT NULL, SEGNO INTEGER NOT NULL, PERCENTUALE "
            "INTEGER, PDC INTEGER, CONTO TEXT, PDCVDS INTEGER, CONTOVDS TEXT, AVERE TEXT, DARE TEXT, PRIMARY "
            "KEY (CAUSALE, PROG)) WITHOUT ROWID");
        created_ = true;
    } else {
        run("DELETE FROM testata");
        run("DELETE FROM dettaglio");
    }
    run("INSERT INTO testata SELECT DISTINCT CI15_CODCAUS_CI03 FROM CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 "
        "= "
        "? AND CI15_CODPDC_CG10 = ? AND CI15_CONTO_CG24 = ?",
        std::int64_t{company}, std::int64_t{chartCode}, account_);
    run("INSERT INTO dettaglio SELECT CI15_CODCAUS_CI03, CI15_PROG, CI15_INDSEGNO, CI15_PERC, "
        "CI15_CODPDC_PC01, "
        "CI15_CONTO_PC03, CI15_CODVDS_PC01, CI15_VDS_PC03, iif(CI15_INDSEGNO = 2, CI15_CONTO_PC03, NULL), "
        "iif(CI15_INDSEGNO = 1, CI15_CONTO_PC03, NULL) FROM CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = ? AND "
        "CI15_CODPDC_CG10 = ? AND CI15_CONTO_CG24 = ?",
        std::int64_t{company}, std::int64_t{chartCode}, account_);
    Statement& headers = tables_.prepared("SELECT CAUSALE FROM testata");
    const StatementUse use(headers);
    headers_.clear();
    while (headers.step()) {
        headers_.emplace_back(headers.text(0));
    }
}

void FloorCorrelations::enter(const std::string& account) {
    account_ = account;
    list();
    fill();
    if (!headers_.empty()) {
        moveTo(headers_.front());
    }
}

void FloorCorrelations::moveTo(const std::string& causale) {
    current_ = causale;
    Statement& rows = tables_.prepared("SELECT * FROM dettaglio WHERE CAUSALE = ? ORDER BY PROG");
    const StatementUse use(rows);
    rows.bind(1, causale);
    rows_.clear();
    while (rows.step()) {
        rows_.push_back({std::string(rows.text(0)), rows.number(1), rows.number(2), rows.number(3),
                         rows.number(4), std::string(rows.text(5)), rows.number(6), std::string(rows.text(7)),
                         std::string(rows.text(8)), std::string(rows.text(9))});
    }
}

CorrelationRows FloorCorrelations::shown() const {
    CorrelationRows shown;
    for (const Row& row : rows_) {
        shown.push_back({static_cast<int>(row.sign), row.hundredths, trimmed(row.account)});
    }
    return shown;
}

std::vector<std::string> FloorCorrelations::listed() const {
    std::vector<std::string> codes;
    for (const Causale& causale : listed_) {
        codes.push_back(causale.code);
    }
    return codes;
}

void FloorCorrelations::save(const std::string& causale, const CorrelationRows& keyed) {
    run("BEGIN");
    rows_.clear();
    std::int64_t number = 0;
    for (const CorrelationRow& row : keyed) {
        Statement& insert =
            tables_.prepared("INSERT INTO dettaglio VALUES (?, ?, ?, ?, ?, ?, NULL, NULL, ?, ?)");
        const StatementUse use(insert);
        const std::string code = padded(row.account);
        insert.bind(1, causale);
        insert.bind(2, ++number);
        insert.bind(3, std::int64_t{row.sign});
        insert.bind(4, row.hundredths);
        insert.bind(5, std::int64_t{chartgen::syntheticCostChart});
        insert.bind(6, code);
        insert.bindNull(7);
        insert.bindNull(8);
        insert.bind(row.sign == 2 ? 7 : 8, code);
        insert.run();
        rows_.push_back({causale,
                         number,
                         row.sign,
                         row.hundredths,
                         chartgen::syntheticCostChart,
                         code,
                         0,
                         {},
                         row.sign == 2 ? code : std::string(),
                         row.sign == 2 ? std::string() : code});
    }
    run("COMMIT");
    run("INSERT INTO testata VALUES (?)", causale);
    run("BEGIN IMMEDIATE");
    run("DELETE FROM CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = ? AND CI15_CODPDC_CG10 = ? AND "
        "CI15_CONTO_CG24 = ? AND CI15_CODCAUS_CI03 = ?",
        std::int64_t{company}, std::int64_t{chartCode}, account_, causale);
    run("INSERT INTO CI15_CORRCONTICOGE (CI15_DITTA_CG18, CI15_CODPDC_CG10, CI15_CONTO_CG24, "
        "CI15_CODCAUS_CI03, CI15_PROG, CI15_CODPDC_PC01, CI15_CONTO_PC03, CI15_CODVDS_PC01, CI15_VDS_PC03, "
        "CI15_INDSEGNO, CI15_PERC) SELECT ?1, ?2, ?3, CAUSALE, PROG, PDC, CONTO, PDCVDS, CONTOVDS, SEGNO, "
        "PERCENTUALE FROM dettaglio WHERE CAUSALE = ?4",
        std::int64_t{company}, std::int64_t{chartCode}, account_, causale);
    run("COMMIT");
    listed_.push_back({causale, "Causale " + causale});
    headers_.push_back(causale);
    current_ = causale;
}

void FloorCorrelations::copyCausale(const std::string& from, const std::string& onto, bool replaced) {
    if (replaced) {
        run("DELETE FROM CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = ? AND CI15_CODPDC_CG10 = ? AND "
            "CI15_CONTO_CG24 = ? AND CI15_CODCAUS_CI03 = ?",
            std::int64_t{company}, std::int64_t{chartCode}, account_, onto);
    }
    run("INSERT INTO CI15_CORRCONTICOGE (CI15_DITTA_CG18, CI15_CODPDC_CG10, CI15_CONTO_CG24, "
        "CI15_CODCAUS_CI03, CI15_PROG, CI15_CODPDC_PC01, CI15_CONTO_PC03, CI15_CODVDS_PC01, CI15_VDS_PC03, "
        "CI15_INDSEGNO, CI15_PERC) SELECT CI15_DITTA_CG18, CI15_CODPDC_CG10, CI15_CONTO_CG24, ?5, CI15_PROG, "
        "CI15_CODPDC_PC01, CI15_CONTO_PC03, CI15_CODVDS_PC01, CI15_VDS_PC03, CI15_INDSEGNO, CI15_PERC FROM "
        "CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = ?1 AND CI15_CODPDC_CG10 = ?2 AND CI15_CONTO_CG24 = ?3 "
        "AND "
        "CI15_CODCAUS_CI03 = ?4",
        std::int64_t{company}, std::int64_t{chartCode}, account_, from, onto);
    fill();
    moveTo(current_);
    list();
}

bool FloorCorrelations::leave() {
    Statement& count =
        tables_.prepared("SELECT count(*) FROM CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = ? AND "
                         "CI15_CODPDC_CG10 = ? AND CI15_CONTO_CG24 = ?");
    const StatementUse use(count);
    count.bind(1, std::int64_t{company});
    count.bind(2, std::int64_t{chartCode});
    count.bind(3, account_);
    const bool correlated = count.step() && count.number(0) > 0;
    tables_.markCorrelated(account_, correlated);
    return correlated;
}

void FloorCorrelations::copyAccount(const std::string& from, const std::string& onto) {
    run("DELETE FROM CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = ? AND CI15_CODPDC_CG10 = ? AND "
        "CI15_CONTO_CG24 = ?",
        std::int64_t{company}, std::int64_t{chartCode}, onto);
    run("INSERT INTO CI15_CORRCONTICOGE (CI15_DITTA_CG18, CI15_CODPDC_CG10, CI15_CONTO_CG24, "
        "CI15_CODCAUS_CI03, CI15_PROG, CI15_CODPDC_PC01, CI15_CONTO_PC03, CI15_CODVDS_PC01, CI15_VDS_PC03, "
        "CI15_INDSEGNO, CI15_PERC) SELECT CI15_DITTA_CG18, CI15_CODPDC_CG10, ?4, CI15_CODCAUS_CI03, "
        "CI15_PROG, "
        "CI15_CODPDC_PC01, CI15_CONTO_PC03, CI15_CODVDS_PC01, CI15_VDS_PC03, CI15_INDSEGNO, CI15_PERC FROM "
        "CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = ?1 AND CI15_CODPDC_CG10 = ?2 AND CI15_CONTO_CG24 = ?3",
        std::int64_t{company}, std::int64_t{chartCode}, from, onto);
    tables_.markCorrelated(onto, true);
}

} // namespace veldran::bench
