#pragma once

#include "platform/ado/constants.h"
#include "platform/ado/errors.h"

#include <string>

namespace veldran::ado {

/// Throws an error of the object model itself (or one it raises in the database's place): the number's
/// Italian text and SQLSTATE, followed by `detail` (what it happened to) when there is one.
[[noreturn]] void raise(int number, const std::string& detail = {});

} // namespace veldran::ado
