#pragma once

#include "platform/ado/driver.h"

#include <string_view>

namespace veldran::embedded {

/// Runs a script whose batches are separated by GO lines, one after the other, and stops at the first error.
/// Batches that ran stay. \throws AdoError whose text begins with the script line where the failing batch
/// stands (or, for a syntax error, where the error is).
void runScript(ado::Session& session, std::string_view script);

} // namespace veldran::embedded
