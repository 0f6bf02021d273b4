#include "benchmarks/chart_file.h"

#include "adapters/embedded/driver.h"
#include "benchmarks/sqlite_text.h"
#include "database/generator/embedded_writer.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <stdexcept>

namespace veldran::bench {

namespace {

namespace fs = std::filesystem;

// Digits of the code that tell the accounts of a level from those above them.
std::size_t digitsOf(int levels, int level) {
    if (level == levels) {
        return 10;
    }
    return levels == 3 && level == 2 ? 6 : static_cast<std::size_t>(2 * level);
}

std::string upTo(const std::string& code, int levels, int level) {
    std::string result = code.substr(0, digitsOf(levels, level));
    result.resize(10, '0');
    return result;
}

/// T-SQL that a generated company lacks: more causali, and a second correlation of one account.
std::string additions(const std::string& edited) {
    std::string text;
    const auto add = [&text](const std::string& code) {
        text += "INSERT INTO CI03_CAUSALI VALUES ('" + code + "', 0, N'Causale " + code + "')\n";
    };
    add(otherCausale);
    std::for_each(newCausali.begin(), newCausali.end(), add);
    std::for_each(freeCausali.begin(), freeCausali.end(), add);
    int number = 0;
    for (const CorrelationRow& row : sixRows()) {
        text += "INSERT INTO CI15_CORRCONTICOGE VALUES (" + std::to_string(company) + ", '" + otherCausale +
                "', " + std::to_string(chartCode) + ", '" + edited + "', " + std::to_string(++number) + ", " +
                std::to_string(chartgen::syntheticCostChart) + ", '" + row.account + "', NULL, NULL, " +
                std::to_string(row.sign) + ", " + std::to_string(row.hundredths / 100) + ")\n";
    }
    return text;
}

struct Queries {
    const std::string accounts = " FROM CG24_TABPDC WHERE CG24_GRUPPO_CG10 = " + std::to_string(chartCode);
    const std::string economicAccounts = accounts + " AND CG24_INDTIPOCONTO = " + std::to_string(economic);
    const std::string activated = " FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = " + std::to_string(company);
    const std::string correlated =
        " FROM CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = " + std::to_string(company);
};

/// The grouping with the most accounts right below it.
std::string widestGrouping(Database& database, int levels) {
    const std::size_t digits = digitsOf(levels, levels - 1);
    const std::string header = "substr(CG24_CONTO, 1, " + std::to_string(digits) + ")";
    const std::string zeros(10 - digits, '0');
    return database.text("SELECT " + header + " || '" + zeros + "'" + Queries().economicAccounts +
                         " AND CG24_CONTO <> " + header + " || '" + zeros + "' GROUP BY " + header +
                         " ORDER BY count(*) DESC, CG24_CONTO LIMIT 1");
}

/// Accounts right below a grouping of the last level but one.
std::string belowOf(const std::string& grouping, int levels, const char* column) {
    const std::string header = grouping.substr(0, digitsOf(levels, levels - 1));
    return std::string(column) + " > '" + grouping + "' AND " + column + " <= '" + header +
           std::string(10 - header.size(), '9') + "'";
}

ChartFile describe(const std::string& path, const ChartKind& kind) {
    Database database(path);
    const Queries queries;
    ChartFile result;
    result.kind = kind;
    result.path = path;
    result.accounts = database.number("SELECT count(*)" + queries.accounts);
    result.activated = database.number("SELECT count(*)" + queries.activated);
    result.correlated = database.number("SELECT count(DISTINCT CI15_CONTO_CG24)" + queries.correlated);
    const std::string widest = widestGrouping(database, kind.levels);
    const std::string below = belowOf(widest, kind.levels, "CG24_CONTO");
    result.widest = database.number("SELECT count(*)" + queries.economicAccounts + " AND " + below);
    result.branch.push_back({economic, 0, {}});
    for (int level = 1; level < kind.levels; ++level) {
        result.branch.push_back({economic, level, upTo(widest, kind.levels, level)});
    }
    Statement siblings(database.handle(), "SELECT DISTINCT substr(CG24_CONTO, 1, 2) || '00000000' AS top" +
                                              queries.economicAccounts + " AND top <> '" +
                                              result.branch.at(1).code + "' LIMIT 5");
    while (siblings.step()) {
        result.siblings.push_back({economic, 1, std::string(siblings.text(0))});
    }
    siblings.reset();
    // A small chart may have no activated account there.
    result.leaf = {economic, kind.levels,
                   database.text("SELECT coalesce((SELECT min(CI35_CONTO_CG24)" + queries.activated +
                                 " AND " + belowOf(widest, kind.levels, "CI35_CONTO_CG24") +
                                 "), (SELECT min(CG24_CONTO)" + queries.economicAccounts + " AND " + below +
                                 "))")};
    const std::string ofBalance = queries.accounts + " AND CG24_INDTIPOCONTO = " + std::to_string(balance);
    result.hidden = database.text("SELECT max(CG24_CONTO)" + ofBalance);
    result.edited = {economic, kind.levels,
                     database.text("SELECT max(CI15_CONTO_CG24)" + queries.correlated +
                                   " AND CI15_CODCAUS_CI03 LIKE '" + otherCausale + "%'")};
    result.bare = {economic, kind.levels,
                   database.text("SELECT min(CG24_CONTO)" + queries.economicAccounts + " AND " + below +
                                 " AND CG24_CONTO NOT IN (SELECT CI15_CONTO_CG24" + queries.correlated +
                                 ")")};
    return result;
}

void generate(const std::string& path, const ChartKind& kind) {
    chartgen::SyntheticOptions options;
    options.accounts = kind.accounts;
    options.levels = kind.levels;
    options.seed = 7;
    options.wide = kind.wide;
    fs::create_directories(fs::path(path).parent_path());
    const std::string aside = path + ".new";
    fs::remove(aside);
    chartgen::writeSyntheticDatabase(options, {company, chartCode}, {aside, VELDRAN_DATABASE_DIR});
    std::string edited;
    {
        Database database(aside);
        const std::string below =
            belowOf(widestGrouping(database, kind.levels), kind.levels, "CI15_CONTO_CG24");
        edited = database.text("SELECT max(CI15_CONTO_CG24)" + Queries().correlated + " AND " + below);
        if (edited.empty()) { // a small chart may have no correlation there
            edited = database.text("SELECT max(CG24_CONTO)" + Queries().economicAccounts + " AND " +
                                   belowOf(widestGrouping(database, kind.levels), kind.levels, "CG24_CONTO"));
        }
    }
    embedded::EmbeddedDriver driver;
    auto session = driver.open("Provider=VeldranEmbedded;Data Source=" + aside, {}, {});
    session->execute(additions(edited), {}, {0, false});
    session->execute(
        "IF NOT EXISTS (SELECT 1 FROM CI15_CORRCONTICOGE WHERE CI15_CONTO_CG24 = '" + edited +
            "' AND CI15_CODCAUS_CI03 = '" + storedCausale +
            "') INSERT INTO CI15_CORRCONTICOGE SELECT CI15_DITTA_CG18, '" + storedCausale +
            "', CI15_CODPDC_CG10, CI15_CONTO_CG24, CI15_PROG, CI15_CODPDC_PC01, CI15_CONTO_PC03, "
            "CI15_CODVDS_PC01, CI15_VDS_PC03, CI15_INDSEGNO, CI15_PERC FROM CI15_CORRCONTICOGE "
            "WHERE CI15_CONTO_CG24 = '" +
            edited + "' AND CI15_CODCAUS_CI03 = '" + otherCausale + "'",
        {}, {0, false});
    session.reset(); // the last to close brings the log into the file
    fs::rename(aside, path);
}

// A chart file keeps the schema and the routines that it was made with.
bool isOlderThanScripts(const std::string& path) {
    const auto made = fs::last_write_time(path);
    const auto entries = fs::directory_iterator(VELDRAN_DATABASE_DIR);
    return std::any_of(fs::begin(entries), fs::end(entries), [&](const fs::directory_entry& entry) {
        return entry.path().extension() == ".sql" && entry.last_write_time() > made;
    });
}

} // namespace

CorrelationRows sixRows() {
    CorrelationRows rows{{2, 10000, "COL010"}};
    for (const char* account : {"CDC010", "CDC020", "CDC010", "CDC020", "CDC010"}) {
        rows.push_back({1, 2000, account});
    }
    return rows;
}

const ChartFile& chartFile(const ChartKind& kind) {
    static std::map<ChartKind, ChartFile> known;
    if (const auto found = known.find(kind); found != known.end()) {
        return found->second;
    }
    const std::string path = std::string(VELDRAN_BENCH_DIR) + "/charts/company-" +
                             std::to_string(kind.accounts) + "-" + std::to_string(kind.levels) +
                             (kind.wide > 0 ? "-" + std::to_string(kind.wide) : "") + ".vdb";
    if (!fs::exists(path) || isOlderThanScripts(path)) {
        generate(path, kind);
    }
    return known.emplace(kind, describe(path, kind)).first->second;
}

ChartCopy::ChartCopy(const ChartFile& original, const std::string& suffix) : file(original) {
    file.path += suffix;
    fs::copy_file(original.path, file.path, fs::copy_options::overwrite_existing);
}

ChartCopy::~ChartCopy() {
    for (const char* suffix : {"", "-wal", "-shm"}) {
        std::error_code ignored;
        fs::remove(file.path + suffix, ignored);
    }
}

std::string storedState(const std::string& path) {
    Database database(path);
    return database.text("SELECT count(*) || ' activated, ' || total(CI35_CONTO_CG24) FROM "
                         "CI35_CONTIATTIVI") +
           "; " +
           database.text(
               "SELECT count(*) || ' correlation rows, ' || group_concat(CI15_CONTO_CG24 || "
               "rtrim(CI15_CODCAUS_CI03) || CI15_PROG || rtrim(CI15_CONTO_PC03) || CI15_INDSEGNO || "
               "CI15_PERC, ' ') FROM (SELECT * FROM CI15_CORRCONTICOGE ORDER BY CI15_CONTO_CG24, "
               "CI15_CODCAUS_CI03, CI15_PROG)");
}

} // namespace veldran::bench
