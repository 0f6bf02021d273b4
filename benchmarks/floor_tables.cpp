#include "benchmarks/floor_tables.h"

#include "benchmarks/floor_account.h"

#include <array>
#include <optional>

namespace veldran::bench {

namespace {

constexpr const char* tableColumns =
    "(INDICE INTEGER PRIMARY KEY, GRUPPO INTEGER NOT NULL, CONTO TEXT NOT NULL, DESCRIZIONE TEXT NOT NULL, "
    "CG24_INDTIPOCONTO INTEGER NOT NULL, CONTOF TEXT, CODEHEADER TEXT, PARENT TEXT, LIVELLO1 TEXT, LIVELLO2 "
    "TEXT, LIVELLO3 TEXT, LIVELLO4 TEXT, LIVELLO5 TEXT, NRLIVELLO INTEGER, ISANALITICO INTEGER, ATTIVO "
    "INTEGER "
    "NOT NULL, CORRELATO INTEGER NOT NULL)";

std::string text(std::int64_t value) {
    return std::to_string(value);
}

void bindOptional(Statement& statement, int place, std::optional<std::string_view> value) {
    if (value) {
        statement.bind(place, *value);
    } else {
        statement.bindNull(place);
    }
}

/// Grouping children by the level of their parent: a child is checked when it has accounts and all are
/// active.
constexpr std::array<const char*, 4> groupings = {
    "SELECT CONTO, CONTOF, DESCRIZIONE, ISANALITICO, NOT EXISTS (SELECT 1 FROM selection AS s WHERE "
    "s.CG24_INDTIPOCONTO = ?1 AND s.ISANALITICO = 1 AND s.ATTIVO = 0), CORRELATO, NRLIVELLO FROM selection "
    "WHERE GRUPPO = ?2 AND PARENT IS NULL AND EXISTS (SELECT 1 FROM selection AS s WHERE s.CG24_INDTIPOCONTO "
    "= ?1 AND s.ISANALITICO = 1 AND s.LIVELLO1 = selection.CONTO) ORDER BY INDICE",
    "SELECT CONTO, CONTOF, DESCRIZIONE, ISANALITICO, NOT EXISTS (SELECT 1 FROM selection AS s WHERE "
    "s.CG24_INDTIPOCONTO = ?1 AND s.ISANALITICO = 1 AND s.ATTIVO = 0 AND s.LIVELLO2 = selection.CONTO), "
    "CORRELATO, NRLIVELLO FROM selection WHERE GRUPPO = ?2 AND PARENT = ?3 AND CG24_INDTIPOCONTO = ?1 ORDER "
    "BY INDICE",
    "SELECT CONTO, CONTOF, DESCRIZIONE, ISANALITICO, NOT EXISTS (SELECT 1 FROM selection AS s WHERE "
    "s.CG24_INDTIPOCONTO = ?1 AND s.ISANALITICO = 1 AND s.ATTIVO = 0 AND s.LIVELLO3 = selection.CONTO), "
    "CORRELATO, NRLIVELLO FROM selection WHERE GRUPPO = ?2 AND PARENT = ?3 AND CG24_INDTIPOCONTO = ?1 ORDER "
    "BY INDICE",
    "SELECT CONTO, CONTOF, DESCRIZIONE, ISANALITICO, NOT EXISTS (SELECT 1 FROM selection AS s WHERE "
    "s.CG24_INDTIPOCONTO = ?1 AND s.ISANALITICO = 1 AND s.ATTIVO = 0 AND s.LIVELLO4 = selection.CONTO), "
    "CORRELATO, NRLIVELLO FROM selection WHERE GRUPPO = ?2 AND PARENT = ?3 AND CG24_INDTIPOCONTO = ?1 ORDER "
    "BY INDICE"};

constexpr const char* accountsBelow = "SELECT CONTO, CONTOF, DESCRIZIONE, ISANALITICO, ATTIVO, CORRELATO, "
                                      "NRLIVELLO FROM selection WHERE GRUPPO "
                                      "= ?2 AND PARENT = ?3 AND CG24_INDTIPOCONTO = ?1 ORDER BY INDICE";

} // namespace

FloorTables::FloorTables(const ChartFile& file) : file_(file), database_(file.path) {
    database_.execute("PRAGMA temp_store = MEMORY; PRAGMA cache_size = -65536; PRAGMA synchronous = FULL; "
                      "PRAGMA temp.secure_delete = OFF");
}

Statement& FloorTables::prepared(const char* sql) {
    std::unique_ptr<Statement>& statement = prepared_[sql];
    if (!statement) {
        statement = std::make_unique<Statement>(database_.handle(), sql);
    }
    return *statement;
}

void FloorTables::buildChart() {
    fillChart();
    database_.execute("CREATE INDEX temp.chart1 ON chart (GRUPPO, CONTO);"
                      "CREATE INDEX temp.chart2 ON chart (GRUPPO, PARENT)");
    database_.execute("UPDATE chart SET ATTIVO = 1 FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = " +
                      text(company) + " AND CI35_GRUPPO_CG10 = " + text(chartCode) +
                      " AND GRUPPO = CI35_GRUPPO_CG10 AND CONTO = CI35_CONTO_CG24");
    database_.execute("UPDATE chart SET CORRELATO = 1 FROM (SELECT DISTINCT CI15_CODPDC_CG10, "
                      "CI15_CONTO_CG24 FROM CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = " +
                      text(company) + ") WHERE GRUPPO = CI15_CODPDC_CG10 AND CONTO = CI15_CONTO_CG24");
}

void FloorTables::fillChart() {
    database_.execute(std::string("BEGIN; CREATE TEMP TABLE chart ") + tableColumns);
    Statement source(database_.handle(),
                     "SELECT CG24_CONTO, CG24_DESCR, CG24_INDTIPOCONTO FROM CG24_TABPDC WHERE "
                     "CG24_GRUPPO_CG10 = " +
                         text(chartCode) + " ORDER BY CG24_CONTO");
    Statement insert(database_.handle(),
                     "INSERT INTO chart VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, 0)");
    FloorAccount account(file_.kind.levels);
    for (std::int64_t number = 1; source.step(); ++number) {
        account.read(source.text(0));
        insert.bind(1, number);
        insert.bind(2, std::int64_t{chartCode});
        insert.bind(3, source.text(0));
        insert.bind(4, source.text(1));
        insert.bind(5, source.number(2));
        insert.bind(6, account.display());
        insert.bind(7, account.header());
        bindOptional(insert, 8, account.parent());
        for (int level = 1; level <= 5; ++level) {
            bindOptional(insert, 8 + level, account.ancestor(level));
        }
        insert.bind(14, std::int64_t{account.level()});
        insert.bind(15, std::int64_t{account.isAnalytic()});
        insert.run();
    }
    source.reset();
    database_.execute("COMMIT");
}

void FloorTables::select(int filter) {
    std::string sql = std::string("DROP TABLE IF EXISTS temp.selection; CREATE TEMP TABLE selection ") +
                      tableColumns + "; INSERT INTO temp.selection SELECT * FROM temp.chart" +
                      (filter == 1 ? ";" : " WHERE ISANALITICO = 1 AND ATTIVO = ") +
                      (filter == 1   ? ""
                       : filter == 2 ? "1;"
                                     : "0;");
    for (int level = 1; filter != 1 && level < file_.kind.levels; ++level) {
        sql += "INSERT INTO temp.selection SELECT * FROM temp.chart WHERE GRUPPO = " + text(chartCode) +
               " AND CONTO IN (SELECT LIVELLO" + text(level) + " FROM temp.selection WHERE ISANALITICO = 1);";
    }
    sql += "CREATE INDEX temp.s1 ON selection (GRUPPO, PARENT);"
           "CREATE INDEX temp.s2 ON selection (CG24_INDTIPOCONTO, ISANALITICO, ATTIVO);";
    for (int level = 1; level <= file_.kind.levels; ++level) {
        sql += "CREATE INDEX temp.s" + text(2 + level) +
               " ON selection (CG24_INDTIPOCONTO, ISANALITICO, ATTIVO, LIVELLO" + text(level) + ");";
    }
    for (int level = 1; level <= file_.kind.levels; ++level) {
        sql += "CREATE INDEX temp.s" + text(7 + level) +
               " ON selection (CG24_INDTIPOCONTO, ISANALITICO, LIVELLO" + text(level) + ");";
    }
    database_.execute(sql);
}

bool FloorTables::allActive(int nature) {
    Statement& statement = prepared(
        "SELECT NOT EXISTS (SELECT 1 FROM selection WHERE CG24_INDTIPOCONTO = ?1 AND ISANALITICO = 1 AND "
        "ATTIVO = 0) AND EXISTS (SELECT 1 FROM selection WHERE CG24_INDTIPOCONTO = ?1 AND ISANALITICO = 1)");
    const StatementUse use(statement);
    statement.bind(1, std::int64_t{nature});
    return statement.step() && statement.number(0) != 0;
}

std::vector<ChartRow> FloorTables::children(const Place& place) {
    const bool accounts = place.level + 1 == file_.kind.levels;
    Statement& statement =
        prepared(accounts ? accountsBelow : groupings[static_cast<std::size_t>(place.level)]);
    const StatementUse use(statement);
    statement.bind(1, std::int64_t{place.nature});
    statement.bind(2, std::int64_t{chartCode});
    if (place.level > 0) {
        statement.bind(3, place.code);
    }
    std::vector<ChartRow> rows;
    while (statement.step()) {
        rows.push_back({std::string(statement.text(0)), std::string(statement.text(1)),
                        std::string(statement.text(2)), statement.number(3) != 0, statement.number(4) != 0,
                        statement.number(5) != 0, static_cast<int>(statement.number(6))});
    }
    return rows;
}

std::vector<Place> FloorTables::pathTo(const std::string& account) {
    Statement& statement =
        prepared("SELECT s.* FROM chart AS c JOIN selection AS s ON s.INDICE = c.INDICE WHERE c.GRUPPO = ? "
                 "AND c.CONTO = ? AND s.ISANALITICO = 1");
    const StatementUse use(statement);
    statement.bind(1, std::int64_t{chartCode});
    statement.bind(2, account);
    if (!statement.step()) {
        return {};
    }
    const int nature = static_cast<int>(statement.number(4));
    std::vector<Place> path{{nature, 0, {}}};
    for (int level = 1; level < file_.kind.levels; ++level) {
        path.push_back({nature, level, std::string(statement.text(7 + level))});
    }
    return path;
}

std::string FloorTables::headerOf(const Place& place) const {
    FloorAccount account(file_.kind.levels);
    account.read(place.code);
    return std::string(account.header());
}

void FloorTables::activate(const Place& place, bool on) {
    const std::string header = headerOf(place);
    const std::string first = (header + "0000000000").substr(0, 10);
    const std::string last = (header + "9999999999").substr(0, 10);
    const auto runOn = [&](const char* sql) {
        Statement& statement = prepared(sql);
        const StatementUse use(statement);
        statement.bind(1, std::int64_t{chartCode});
        statement.bind(2, first);
        statement.bind(3, last);
        statement.bind(4, std::int64_t{place.nature});
        statement.bind(5, std::int64_t{on});
        if (statement.parameters() == 6) {
            statement.bind(6, std::int64_t{company});
        }
        statement.run();
    };
    if (on) {
        runOn("INSERT OR IGNORE INTO CI35_CONTIATTIVI SELECT ?6, GRUPPO, CONTO FROM chart WHERE GRUPPO = ?1 "
              "AND CONTO BETWEEN ?2 AND ?3 AND ISANALITICO = 1 AND CG24_INDTIPOCONTO = ?4");
    } else {
        runOn("DELETE FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = ?6 AND CI35_GRUPPO_CG10 = ?1 AND "
              "CI35_CONTO_CG24 BETWEEN ?2 AND ?3 AND EXISTS (SELECT 1 FROM chart WHERE GRUPPO = "
              "CI35_GRUPPO_CG10 AND CONTO = CI35_CONTO_CG24 AND ISANALITICO = 1 AND CG24_INDTIPOCONTO = "
              "?4)");
    }
    // Accounts are numbered in the order of their codes, so a branch is a range of numbers; the plus sign
    // keeps SQLite from going through all accounts of the nature by an index instead.
    runOn("UPDATE selection SET ATTIVO = ?5 WHERE INDICE BETWEEN (SELECT INDICE FROM chart WHERE GRUPPO = ?1 "
          "AND CONTO >= ?2 ORDER BY CONTO LIMIT 1) AND (SELECT INDICE FROM chart WHERE GRUPPO = ?1 AND CONTO "
          "<= ?3 ORDER BY CONTO DESC LIMIT 1) AND +CG24_INDTIPOCONTO = ?4 AND ATTIVO <> ?5");
    runOn(
        "UPDATE chart SET ATTIVO = ?5 WHERE INDICE BETWEEN (SELECT INDICE FROM chart WHERE GRUPPO = ?1 AND "
        "CONTO >= ?2 ORDER BY CONTO LIMIT 1) AND (SELECT INDICE FROM chart WHERE GRUPPO = ?1 AND CONTO <= ?3 "
        "ORDER BY CONTO DESC LIMIT 1) AND CG24_INDTIPOCONTO = ?4 AND ATTIVO <> ?5 AND EXISTS (SELECT 1 "
        "FROM selection AS s WHERE s.INDICE = chart.INDICE)");
}

void FloorTables::markCorrelated(const std::string& account, bool on) {
    Statement& find = prepared("SELECT INDICE FROM chart WHERE GRUPPO = ? AND CONTO = ?");
    const StatementUse use(find);
    find.bind(1, std::int64_t{chartCode});
    find.bind(2, account);
    if (!find.step()) {
        return;
    }
    const std::int64_t number = find.number(0);
    for (const char* sql : {"UPDATE selection SET CORRELATO = ? WHERE INDICE = ?",
                            "UPDATE chart SET CORRELATO = ? WHERE INDICE = ?"}) {
        Statement& mark = prepared(sql);
        const StatementUse marking(mark);
        mark.bind(1, std::int64_t{on});
        mark.bind(2, number);
        mark.run();
    }
}

Sums FloorTables::sums(const char* table) {
    Statement statement(database_.handle(),
                        std::string("SELECT count(*), sum(ATTIVO), sum(CORRELATO), sum(NRLIVELLO), "
                                    "count(PARENT), count(DISTINCT LIVELLO2) FROM ") +
                            table);
    statement.step();
    return {statement.number(0), statement.number(1), statement.number(2),
            statement.number(3), statement.number(4), statement.number(5)};
}

} // namespace veldran::bench
