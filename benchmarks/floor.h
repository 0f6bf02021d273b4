#pragma once

#include "benchmarks/chart_file.h"
#include "benchmarks/subject.h"

#include <memory>

namespace veldran::bench {

/// The same work done by hand on SQLite, with the same tables and every index that the screen declares, as
/// plain prepared statements. It knows what the screen's statements cannot say: that codes are digits, that
/// accounts come in order, which rows a flag changes. What it reads it keeps as plain data.
std::unique_ptr<Subject> makeFloor(const ChartFile& file);

} // namespace veldran::bench
