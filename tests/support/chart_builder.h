#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::test {

/// One account of a test chart.
struct ChartAccount {
    std::string code; ///< ten digits
    std::string description;
    int nature = 0; ///< 0 to 3, as CG24_INDTIPOCONTO
};

/// A chart of accounts with what a company has done on it, in one expression:
///     Chart(4).account("0102030005", "Cassa contanti", 1).activated("0102030005").correlated("0102030005")
/// Company "1" is the one that the test host opens unless it is told otherwise.
class Chart {
public:
    explicit Chart(int levels, std::int32_t code = 1) : levels_(levels), code_(code) {}

    Chart& account(std::string code, std::string description, int nature);
    Chart& activated(std::string code, std::string ditta = "1");
    /// One correlation row of the account, under a causale.
    Chart& correlated(std::string code, std::string causale = "VEND", std::string ditta = "1");
    /// A correlation row that names this account code but another chart.
    Chart& correlatedInChart(std::int32_t chart, std::string code);
    /// Further T-SQL to run after the chart was loaded.
    Chart& script(std::string text);

    int levels() const { return levels_; }
    std::int32_t code() const { return code_; }
    const std::vector<ChartAccount>& accounts() const { return accounts_; }

    /// One statement or batch an entry.
    std::vector<std::string> statements() const;

private:
    int levels_;
    std::int32_t code_;
    std::vector<ChartAccount> accounts_;
    std::vector<std::string> statements_;
    int correlations_ = 0;
};

/// `text` as a T-SQL literal.
std::string literal(std::string_view text);

} // namespace veldran::test
