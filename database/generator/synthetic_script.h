#pragma once

#include "database/generator/demo_model.h"
#include "database/generator/synthetic_chart.h"

#include <ostream>

namespace veldran::chartgen {

/// Company and chart that a generated chart is written under.
struct SyntheticPlace {
    int company = 90;
    int chart = 90;
};

/// Chart of the cost accounts that generated correlations name.
inline constexpr int syntheticCostChart = 900;

/// What a generated chart needs around it: the company, an empty chart of accounts, a small cost-accounting
/// chart, one causale that admits its kinds.
DemoModel syntheticFrame(const SyntheticOptions& options, const SyntheticPlace& place);

/// Rows of the correlation that every correlated account of a generated chart carries, for the causale of the
/// frame.
Correlation syntheticCorrelation(const SyntheticPlace& place, const std::string& account);

/// Writes the frame and the generated accounts, activations and correlations as a T-SQL script that may be
/// run again. \throws SourceError as generateChart.
void writeSyntheticScript(const SyntheticOptions& options, const SyntheticPlace& place, std::ostream& out);

} // namespace veldran::chartgen
