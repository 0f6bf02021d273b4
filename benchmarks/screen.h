#pragma once

#include "benchmarks/chart_file.h"
#include "benchmarks/subject.h"

#include <memory>

namespace veldran::bench {

/// The component, loaded at run time and driven through its contract by a host without windows, on the
/// embedded database.
std::unique_ptr<Subject> makeScreen(const ChartFile& file);

} // namespace veldran::bench
