#pragma once

#include "adapters/embedded/sqlite.h"
#include "platform/ado/errors.h"

#include <string>

namespace veldran::embedded {

/// SQLite's constraint failure in SQL Server's words: NOT NULL 515, key 2627, unique index 2601, check 547.
/// `code` is the extended result code, `message` SQLite's own ("UNIQUE constraint failed: T.A, T.B");
/// `objects` knows the names of keys and indexes, and may be null.
ado::Error constraintError(int code, const std::string& message, ObjectResolver* objects);

} // namespace veldran::embedded
