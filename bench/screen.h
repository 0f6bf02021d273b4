#pragma once

#include "bench/subject.h"

#include <memory>

namespace veldran::bench {

/// The embedded database with the module's own statements.
std::unique_ptr<Subject> makeScreen(const ChartFile& file);

} // namespace veldran::bench
