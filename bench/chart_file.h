#pragma once

#include "bench/subject.h"

namespace veldran::bench {

/// The chart of that size, generated when it is not there yet. With two levels one account has 20,000
/// analytic accounts below it. What it is expected to give is counted in the file itself.
const ChartFile& chartFile(std::int64_t accounts, int levels);

/// A copy that may be written; removed with the object.
struct ChartCopy {
    explicit ChartCopy(const ChartFile& original);
    ~ChartCopy();
    ChartCopy(const ChartCopy&) = delete;
    ChartCopy& operator=(const ChartCopy&) = delete;
    ChartFile file;
};

inline constexpr int company = 90;
inline constexpr int chartCode = 90;

} // namespace veldran::bench
