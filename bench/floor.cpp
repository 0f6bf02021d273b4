#include "bench/floor.h"

#include "bench/chart_file.h"
#include "bench/sqlite_text.h"

#include <array>
#include <optional>
#include <vector>

namespace veldran::bench {

namespace {

constexpr std::size_t codeLength = 10;

/// Where the groups of a code begin and end, level by level; ends[0] is 0.
struct Shape {
    int levels;
    std::array<std::size_t, 6> begins;
    std::array<std::size_t, 6> ends;
};

Shape shapeOf(int levels) {
    switch (levels) {
    case 2:
        return {2, {0, 0, 5}, {0, 2, 10}};
    case 3:
        return {3, {0, 0, 4, 6}, {0, 2, 6, 10}};
    case 4:
        return {4, {0, 0, 2, 4, 6}, {0, 2, 4, 6, 10}};
    default:
        return {5, {0, 0, 2, 4, 6, 8}, {0, 2, 4, 6, 8, 10}};
    }
}

/// The derived columns of one account, in buffers that are used again for the next.
class Account {
public:
    explicit Account(int levels) : shape_(shapeOf(levels)) {}

    void read(std::string_view code) {
        code_.assign(code);
        level_ = 1;
        for (int level = shape_.levels; level > 1; --level) {
            if (group(level).find_first_not_of('0') != std::string_view::npos) {
                level_ = level;
                break;
            }
        }
        display_.clear();
        for (int level = 1; level <= shape_.levels; ++level) {
            ancestors_[at(level)].assign(code_, 0, shape_.ends[at(level)]);
            ancestors_[at(level)].resize(codeLength, '0');
            display_.append(level == 1 ? "" : "/").append(group(level));
        }
    }

    int level() const { return level_; }
    bool isAnalytic() const { return level_ == shape_.levels; }
    std::string_view display() const { return display_; }
    std::string_view header() const { return std::string_view(code_).substr(0, shape_.ends[at(level_)]); }
    std::optional<std::string_view> parent() const {
        return level_ == 1 ? std::nullopt : ancestor(level_ - 1);
    }
    std::optional<std::string_view> ancestor(int level) const {
        return level > shape_.levels ? std::nullopt : std::optional<std::string_view>(ancestors_[at(level)]);
    }

private:
    static std::size_t at(int level) { return static_cast<std::size_t>(level); }
    std::string_view group(int level) const {
        const std::size_t begin = shape_.begins[at(level)];
        return std::string_view(code_).substr(begin, shape_.ends[at(level)] - begin);
    }

    Shape shape_;
    std::string code_;
    std::string display_;
    std::array<std::string, 6> ancestors_;
    int level_ = 1;
};

std::string text(std::int64_t value) {
    return std::to_string(value);
}

class Floor : public Subject {
public:
    explicit Floor(const ChartFile& file) : file_(file), database_(file.path) {
        database_.execute("PRAGMA temp_store = MEMORY; PRAGMA cache_size = -65536; PRAGMA synchronous = FULL;"
                          "PRAGMA temp.auto_vacuum = NONE; PRAGMA secure_delete = OFF;");
    }

    void buildChart() override {
        database_.execute("BEGIN; CREATE TEMP TABLE chart (" + columns() + ")");
        Statement source(database_.handle(),
                         "SELECT CG24_CONTO, CG24_DESCR, CG24_INDTIPOCONTO FROM CG24_TABPDC WHERE "
                         "CG24_GRUPPO_CG10 = " +
                             text(chartCode) + " ORDER BY CG24_CONTO");
        Statement insert(database_.handle(),
                         "INSERT INTO chart VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, 0)");
        Account account(file_.levels);
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

    void indexChart() override {
        database_.execute("CREATE INDEX temp.chart1 ON chart (GRUPPO, CONTO);"
                          "CREATE INDEX temp.chart2 ON chart (GRUPPO, PARENT)");
    }

    void markActive() override {
        database_.execute("UPDATE chart SET ATTIVO = 1 FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = " +
                          text(company) + " AND CI35_GRUPPO_CG10 = " + text(chartCode) +
                          " AND GRUPPO = CI35_GRUPPO_CG10 AND CONTO = CI35_CONTO_CG24");
    }

    void markCorrelated() override {
        database_.execute("UPDATE chart SET CORRELATO = 1 FROM (SELECT DISTINCT CI15_CODPDC_CG10, "
                          "CI15_CONTO_CG24 FROM CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = " +
                          text(company) + ") WHERE GRUPPO = CI15_CODPDC_CG10 AND CONTO = CI15_CONTO_CG24");
    }

    void select(int filter) override {
        database_.execute("DROP TABLE IF EXISTS temp.selection; CREATE TEMP TABLE selection (" + columns() +
                          "); INSERT INTO temp.selection SELECT * FROM temp.chart" +
                          (filter == 2 ? " WHERE ISANALITICO = 1 AND ATTIVO = 1" : ""));
    }

    void complete() override {
        for (int level = 1; level < file_.levels; ++level) {
            database_.execute("INSERT INTO temp.selection SELECT * FROM temp.chart WHERE GRUPPO = " +
                              text(chartCode) + " AND CONTO IN (SELECT LIVELLO" + text(level) +
                              " FROM temp.selection WHERE ISANALITICO = 1)");
        }
    }

    void indexSelection() override {
        std::string sql = "CREATE INDEX temp.s1 ON selection (GRUPPO, PARENT);"
                          "CREATE INDEX temp.s2 ON selection (CG24_INDTIPOCONTO, ISANALITICO, ATTIVO);";
        for (int level = 1; level <= file_.levels; ++level) {
            sql += "CREATE INDEX temp.s" + text(2 + level) +
                   " ON selection (CG24_INDTIPOCONTO, ISANALITICO, ATTIVO, LIVELLO" + text(level) + ");";
        }
        for (int level = 1; level <= file_.levels; ++level) {
            sql += "CREATE INDEX temp.s" + text(7 + level) +
                   " ON selection (CG24_INDTIPOCONTO, ISANALITICO, LIVELLO" + text(level) + ");";
        }
        database_.execute(sql);
    }

    std::int64_t expandRoot() override {
        Statement statement(
            database_.handle(),
            "SELECT CONTO, CONTOF, DESCRIZIONE, ISANALITICO, NOT EXISTS (SELECT 1 FROM selection AS s WHERE "
            "s.CG24_INDTIPOCONTO = ?1 AND s.ISANALITICO = 1 AND s.ATTIVO = 0), CORRELATO, NRLIVELLO FROM "
            "selection WHERE GRUPPO = ?2 AND PARENT IS NULL AND EXISTS (SELECT 1 FROM selection AS s WHERE "
            "s.CG24_INDTIPOCONTO = ?1 AND s.ISANALITICO = 1 AND s.LIVELLO1 = selection.CONTO) ORDER BY "
            "INDICE");
        statement.bind(1, std::int64_t{nature});
        statement.bind(2, std::int64_t{chartCode});
        return read(statement);
    }

    std::int64_t expandChildren(const std::string& parent) override {
        Statement statement(database_.handle(),
                            "SELECT CONTO, CONTOF, DESCRIZIONE, ISANALITICO, ATTIVO, CORRELATO, NRLIVELLO "
                            "FROM selection WHERE GRUPPO = ? AND PARENT = ? AND CG24_INDTIPOCONTO = ? ORDER "
                            "BY INDICE");
        statement.bind(1, std::int64_t{chartCode});
        statement.bind(2, parent);
        statement.bind(3, std::int64_t{nature});
        return read(statement);
    }

    std::int64_t lookup(const std::string& account) override {
        Statement statement(database_.handle(),
                            "SELECT s.* FROM chart AS c JOIN selection AS s ON s.INDICE = c.INDICE WHERE "
                            "c.GRUPPO = ? AND c.CONTO = ? AND s.ISANALITICO = 1");
        statement.bind(1, std::int64_t{chartCode});
        statement.bind(2, account);
        return read(statement);
    }

    void activate(const std::string& header, bool on) override {
        const std::string first = "'" + (header + "0000000000").substr(0, codeLength) + "'";
        const std::string last = "'" + (header + "9999999999").substr(0, codeLength) + "'";
        const std::string ofCompany = text(company);
        const std::string ofChart = text(chartCode);
        const std::string ofNature = text(nature);
        const std::string state = on ? "1" : "0";
        if (on) {
            database_.execute("INSERT OR IGNORE INTO CI35_CONTIATTIVI SELECT " + ofCompany +
                              ", GRUPPO, CONTO FROM chart WHERE GRUPPO = " + ofChart + " AND CONTO BETWEEN " +
                              first + " AND " + last +
                              " AND ISANALITICO = 1 AND CG24_INDTIPOCONTO = " + ofNature);
        } else {
            database_.execute("DELETE FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = " + ofCompany +
                              " AND CI35_GRUPPO_CG10 = " + ofChart + " AND CI35_CONTO_CG24 BETWEEN " + first +
                              " AND " + last +
                              " AND EXISTS (SELECT 1 FROM chart WHERE GRUPPO = CI35_GRUPPO_CG10 AND CONTO = "
                              "CI35_CONTO_CG24 AND ISANALITICO = 1 AND CG24_INDTIPOCONTO = " +
                              ofNature + ")");
        }
        // Accounts are numbered in the order of their codes, so a branch is a range of numbers.
        const std::string branch = "(SELECT min(INDICE) FROM chart WHERE GRUPPO = " + ofChart +
                                   " AND CONTO BETWEEN " + first + " AND " + last +
                                   ") AND (SELECT max(INDICE) FROM chart WHERE GRUPPO = " + ofChart +
                                   " AND CONTO BETWEEN " + first + " AND " + last + ")";
        for (const char* table : {"selection", "chart"}) {
            database_.execute(std::string("UPDATE ") + table + " SET ATTIVO = " + state +
                              " WHERE INDICE BETWEEN " + branch + " AND CG24_INDTIPOCONTO = " + ofNature +
                              " AND ATTIVO <> " + state);
        }
    }

    Sums chart() override { return sums("chart"); }
    Sums selection() override { return sums("selection"); }

private:
    static std::string columns() {
        return "INDICE INTEGER PRIMARY KEY, GRUPPO INTEGER NOT NULL, CONTO TEXT NOT NULL, DESCRIZIONE TEXT "
               "NOT NULL, CG24_INDTIPOCONTO INTEGER NOT NULL, CONTOF TEXT, CODEHEADER TEXT, PARENT TEXT, "
               "LIVELLO1 TEXT, LIVELLO2 TEXT, LIVELLO3 TEXT, LIVELLO4 TEXT, LIVELLO5 TEXT, NRLIVELLO "
               "INTEGER, "
               "ISANALITICO INTEGER, ATTIVO INTEGER NOT NULL, CORRELATO INTEGER NOT NULL";
    }

    static void bindOptional(Statement& statement, int place, std::optional<std::string_view> value) {
        if (value) {
            statement.bind(place, *value);
        } else {
            statement.bindNull(place);
        }
    }

    /// Keeps every row as a client has to.
    static std::int64_t read(Statement& statement) {
        struct Row {
            std::string account;
            std::string display;
            std::string description;
            std::array<std::int64_t, 4> numbers{};
        };
        std::vector<Row> rows;
        while (statement.step()) {
            rows.push_back(
                {std::string(statement.text(0)),
                 std::string(statement.text(1)),
                 std::string(statement.text(2)),
                 {statement.number(3), statement.number(4), statement.number(5), statement.number(6)}});
        }
        return static_cast<std::int64_t>(rows.size());
    }

    Sums sums(const std::string& table) {
        Statement statement(database_.handle(),
                            "SELECT count(*), sum(ATTIVO), sum(CORRELATO), sum(NRLIVELLO), count(PARENT), "
                            "count(DISTINCT LIVELLO2) FROM " +
                                table);
        statement.step();
        return {statement.number(0), statement.number(1), statement.number(2),
                statement.number(3), statement.number(4), statement.number(5)};
    }

    ChartFile file_;
    Database database_;
};

} // namespace

std::unique_ptr<Subject> makeFloor(const ChartFile& file) {
    return std::make_unique<Floor>(file);
}

} // namespace veldran::bench
