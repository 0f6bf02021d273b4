#pragma once

#include "benchmarks/subject.h"

#include <array>
#include <string>
#include <vector>

namespace veldran::bench {

/// A chart to be generated. With `wide`, which needs two levels, one account has that many accounts below it.
struct ChartKind {
    std::int64_t accounts = 0;
    int levels = 5;
    std::int64_t wide = 0;

    friend auto operator<=>(const ChartKind&, const ChartKind&) = default;
};

inline constexpr int company = 90;
inline constexpr int chartCode = 90;
inline constexpr const char* storedCausale = "PROV"; ///< of every correlated account, three rows
inline constexpr const char* otherCausale = "VEND";  ///< of `ChartFile::edited` too, six rows
/// Known, without correlations: some to be keyed, some to be duplicated onto.
inline constexpr std::array<const char*, 3> newCausali{"ACQU", "CASS", "RESI"};
inline constexpr std::array<const char*, 3> freeCausali{"GIRO", "RATE", "STOR"};

/// A generated company: its file, and what the screen must show of it. Counted in the file itself.
struct ChartFile {
    ChartKind kind;
    std::string path;
    std::int64_t accounts = 0;
    std::int64_t activated = 0;
    std::int64_t correlated = 0;
    /// From a root to the grouping with the most accounts right below it, all of them economic.
    std::vector<Place> branch;
    std::int64_t widest = 0;     ///< accounts right below the last of `branch`
    std::vector<Place> siblings; ///< groupings beside the second of `branch`
    Place leaf;                  ///< one of them
    std::string hidden;          ///< an account of `balance`
    Place edited;                ///< an account below `branch` with two correlations
    Place bare;                  ///< another one, without any
};

/// The chart of that kind, generated when it is not there yet.
const ChartFile& chartFile(const ChartKind& kind);

/// A copy that may be written; removed with the object.
struct ChartCopy {
    ChartCopy(const ChartFile& original, const std::string& suffix);
    ~ChartCopy();
    ChartCopy(const ChartCopy&) = delete;
    ChartCopy& operator=(const ChartCopy&) = delete;
    ChartFile file;
};

/// What the actions have left in the file, as text that differs when a row does.
std::string storedState(const std::string& path);

/// The rows of `otherCausale`: an origin and five destinations.
CorrelationRows sixRows();

} // namespace veldran::bench
