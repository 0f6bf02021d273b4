#pragma once

#include "adapters/odbc/link.h"
#include "platform/ado/driver.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::odbc {

/// The parameters of a procedure in the order of their declaration, without its return value, as the driver's
/// catalogue functions report them. `name` may have a schema before it.
/// \throws AdoError 2812 when there is no such procedure.
std::vector<ado::ParameterInfo> procedureParameters(Link& link, std::string_view name);

/// The text that calls a procedure with one marker for each of these parameters, by their names.
/// \throws AdoError 3708 for a name that cannot be a parameter's.
std::string callText(std::string_view name, std::span<const ado::BoundParameter> parameters);

} // namespace veldran::odbc
