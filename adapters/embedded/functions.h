#pragma once

#include <sqlite3.h>

namespace veldran::embedded {

struct FunctionState;

/// Registers the collation and the functions that emitted statements call. Their names begin with "ts_";
/// refusals are left in `state` (which outlives the database handle's use) and reach the caller as AdoError.
void registerFunctions(sqlite3* database, FunctionState& state);

} // namespace veldran::embedded
