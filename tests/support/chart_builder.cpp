#include "tests/support/chart_builder.h"

#include "platform/text.h"

#include <algorithm>
#include <stdexcept>

namespace veldran::test {

namespace {

void requireCode(const std::string& code) {
    if (code.size() != 10 ||
        !std::all_of(code.begin(), code.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        throw std::invalid_argument("not an account code: " + code);
    }
}

} // namespace

std::string literal(std::string_view text) {
    return "N'" + replaceAll(std::string(text), "'", "''") + "'";
}

Chart& Chart::account(std::string code, std::string description, int nature) {
    requireCode(code);
    accounts_.push_back({std::move(code), std::move(description), nature});
    return *this;
}

Chart& Chart::activated(std::string code, std::string ditta) {
    requireCode(code);
    statements_.push_back(
        "INSERT INTO CI35_CONTIATTIVI (CI35_DITTA_CG18, CI35_GRUPPO_CG10, CI35_CONTO_CG24) VALUES (" + ditta +
        ", " + std::to_string(code_) + ", " + literal(code) + ")");
    return *this;
}

Chart& Chart::correlated(std::string code, std::string causale, std::string ditta) {
    requireCode(code);
    statements_.push_back("INSERT INTO CI15_CORRCONTICOGE (CI15_DITTA_CG18, CI15_CODCAUS_CI03, "
                          "CI15_CODPDC_CG10, CI15_CONTO_CG24, CI15_PROG, "
                          "CI15_CODPDC_PC01, CI15_CONTO_PC03, CI15_INDSEGNO, CI15_PERC) VALUES (" +
                          ditta + ", " + literal(causale) + ", " + std::to_string(code_) + ", " +
                          literal(code) + ", " + std::to_string(++correlations_) + ", 10, N'100', 1, 100)");
    return *this;
}

Chart& Chart::correlatedInChart(std::int32_t chart, std::string code) {
    const std::int32_t own = code_;
    code_ = chart;
    correlated(std::move(code));
    code_ = own;
    return *this;
}

Chart& Chart::script(std::string text) {
    statements_.push_back(std::move(text));
    return *this;
}

std::vector<std::string> Chart::statements() const {
    std::vector<std::string> all;
    const std::string chart = std::to_string(code_);
    all.push_back("INSERT INTO CG10_DESPDC (CG10_GRUPPO, CG10_DESCR, CG10_NUMLIVELLI) VALUES (" + chart +
                  ", " + literal("Piano dei conti " + chart) + ", " + std::to_string(levels_) + ")");
    for (const ChartAccount& account : accounts_) {
        all.push_back(
            "INSERT INTO CG24_TABPDC (CG24_GRUPPO_CG10, CG24_CONTO, CG24_DESCR, CG24_INDTIPOCONTO) VALUES (" +
            chart + ", " + literal(account.code) + ", " + literal(account.description) + ", " +
            std::to_string(account.nature) + ")");
    }
    all.insert(all.end(), statements_.begin(), statements_.end());
    return all;
}

} // namespace veldran::test
