#pragma once

#include "database/generator/demo_model.h"

namespace veldran::chartgen {

/// Refuses demo data that the screen itself would refuse or that breaks a key: codes of the wrong length or
/// given twice, cost codes that do not end on a group of their chart or have no group above them,
/// correlations with rows over 100 percent, without an origin or with cost accounts that the causale and sign
/// do not admit. \throws SourceError saying which row.
void checkDemo(const DemoModel& model);

} // namespace veldran::chartgen
