#pragma once

#include "benchmarks/results.h"

namespace veldran::bench {

/// One morning's work on a chart, done twice action by action: by the screen and by hand, or, unless
/// `screenFirst`, the other way round. What each has
/// shown and stored is compared with the other and with the chart before an action counts.
/// \throws std::runtime_error that names the action whose result was wrong
void playRound(const ChartKind& kind, bool screenFirst, Results& results);

} // namespace veldran::bench
