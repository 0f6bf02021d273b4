#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace veldran::chartgen {

/// What chart is wanted. Percentages are of the analytic accounts: of the economic ones for activation, of
/// the economic and balance-sheet ones for correlation.
struct SyntheticOptions {
    std::int64_t accounts = 0;
    int levels = 5;
    std::uint64_t seed = 1;
    std::int64_t wide = 0; // children of one account of the last level but one; 0: no such account is wanted
    int activatedPercent = 35;
    int correlatedPercent = 5;
};

struct SyntheticAccount {
    std::string code;
    std::string description;
    int nature;
    bool analytic;
    bool activated;
    bool correlated;
};

/// Gives `take` exactly the wanted number of accounts, in code order. Every grouping has analytic accounts
/// below it, natures are consistent along a branch and all four are there. The same options give the same
/// accounts. \throws SourceError before the first account when the shape of the code cannot hold the wanted
/// chart.
void generateChart(const SyntheticOptions& options, const std::function<void(const SyntheticAccount&)>& take);

} // namespace veldran::chartgen
