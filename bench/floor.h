#pragma once

#include "bench/subject.h"

#include <memory>

namespace veldran::bench {

/// The same work done by hand on SQLite, which knows what the statements cannot say: that codes are digits,
/// that accounts come in order, which rows a flag changes.
std::unique_ptr<Subject> makeFloor(const ChartFile& file);

} // namespace veldran::bench
