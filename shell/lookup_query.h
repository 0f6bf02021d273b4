#pragma once

#include "platform/services/lookup.h"
#include "shell/lookup_model.h"

#include <optional>
#include <string>
#include <vector>

namespace veldran::shell {

/// The description of `request.code` in the company's database; none when the code is unknown.
/// \throws AdoError
std::optional<std::string> queryDescription(const services::LookupRequest& request);

/// All codes that the request admits, in the order of their codes. Of codes with a structure only those of
/// the last level are offered: the others only group. \throws AdoError
std::vector<LookupRow> queryRows(const services::LookupRequest& request);

} // namespace veldran::shell
