#pragma once

#include "platform/services/lookup.h"

namespace veldran {

/// How account codes of a chart with that many levels are cut into display groups.
/// Outside 2 to 5 levels codes have no structure.
services::CodeStructure StrutturaConto(int livelli);

} // namespace veldran
