#include "bench/chart_file.h"

#include "bench/sqlite_text.h"
#include "database/generator/embedded_writer.h"

#include <filesystem>
#include <map>
#include <utility>

namespace veldran::bench {

namespace {

constexpr std::int64_t wideChildren = 20000;

void generate(const std::string& path, std::int64_t accounts, int levels) {
    chartgen::SyntheticOptions options;
    options.accounts = accounts;
    options.levels = levels;
    options.seed = 7;
    options.wide = levels == 2 ? wideChildren : 0;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    const std::string aside = path + ".new";
    std::filesystem::remove(aside);
    chartgen::writeSyntheticDatabase(options, {company, chartCode}, {aside, VELDRAN_DATABASE_DIR});
    std::filesystem::rename(aside, path);
}

ChartFile describe(const std::string& path, int levels) {
    Database database(path);
    const std::string ofCompany = std::to_string(company);
    const std::string accounts = " FROM CG24_TABPDC WHERE CG24_GRUPPO_CG10 = " + std::to_string(chartCode);
    const std::string activated = " FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = " + ofCompany;
    // Digits of the code of an account that has analytic accounts right below it.
    const std::size_t digits = levels == 2 ? 2 : levels == 5 ? 8 : 6;
    const std::string zeros(10 - digits, '0');
    const std::string header = "substr(CG24_CONTO, 1, " + std::to_string(digits) + ")";
    const std::string analytic = accounts + " AND CG24_INDTIPOCONTO = " + std::to_string(nature) +
                                 " AND CG24_CONTO <> " + header + " || '" + zeros + "'";
    const std::string widest =
        analytic + " GROUP BY " + header + " ORDER BY count(*) DESC, CG24_CONTO LIMIT 1";
    ChartFile result;
    result.path = path;
    result.levels = levels;
    result.accounts = database.number("SELECT count(*)" + accounts);
    result.activated = database.number("SELECT count(*)" + activated);
    result.correlated = database.number("SELECT count(DISTINCT CI15_CONTO_CG24) FROM CI15_CORRCONTICOGE "
                                        "WHERE CI15_DITTA_CG18 = " +
                                        ofCompany);
    result.roots = database.number("SELECT count(DISTINCT substr(CG24_CONTO, 1, 2))" + analytic);
    result.root = database.text("SELECT min(substr(CG24_CONTO, 1, 2))" + analytic) + "00000000";
    result.below =
        database.number("SELECT count(*)" + accounts + " AND CG24_INDTIPOCONTO = " + std::to_string(nature) +
                        " AND CG24_CONTO LIKE '" + result.root.substr(0, 2) + "%'");
    result.activatedBelow = database.number("SELECT count(*)" + activated + " AND CI35_CONTO_CG24 LIKE '" +
                                            result.root.substr(0, 2) + "%'");
    result.parent = database.text("SELECT " + header + " || '" + zeros + "'" + widest);
    result.children = database.number("SELECT count(*)" + widest);
    result.analytic =
        database.text("SELECT CI35_CONTO_CG24" + activated + " ORDER BY CI35_CONTO_CG24 LIMIT 1 OFFSET " +
                      std::to_string(result.activated / 2));
    return result;
}

} // namespace

const ChartFile& chartFile(std::int64_t accounts, int levels) {
    static std::map<std::pair<std::int64_t, int>, ChartFile> known;
    const auto key = std::pair(accounts, levels);
    if (const auto found = known.find(key); found != known.end()) {
        return found->second;
    }
    const std::string path = std::string(VELDRAN_BENCH_DIR) + "/chart-" + std::to_string(accounts) + "-" +
                             std::to_string(levels) + ".vdb";
    if (!std::filesystem::exists(path)) {
        generate(path, accounts, levels);
    }
    return known.emplace(key, describe(path, levels)).first->second;
}

ChartCopy::ChartCopy(const ChartFile& original) : file(original) {
    file.path += ".copy";
    std::filesystem::copy_file(original.path, file.path, std::filesystem::copy_options::overwrite_existing);
}

ChartCopy::~ChartCopy() {
    std::error_code ignored;
    std::filesystem::remove(file.path, ignored);
}

} // namespace veldran::bench
