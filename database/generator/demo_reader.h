#pragma once

#include "database/generator/demo_model.h"

#include <string>

namespace veldran::chartgen {

/// Reads the source tables of the demo companies from their folder: charts.txt (which names the outlines),
/// cost_accounts.txt, cost_items.txt, causali.txt, activations.txt and correlations.txt. Each file tells its
/// own format in its first lines. \throws SourceError naming file and line.
DemoModel readDemo(const std::string& folder);

} // namespace veldran::chartgen
