#pragma once

#include "platform/services/lookup.h"
#include "shell/lookup_model.h"

#include <optional>
#include <string>
#include <vector>

namespace veldran::shell {

/// The description of `request.code` in the company's database; none when the code is unknown, only groups
/// others, is reserved to another company, or is of a kind that the request does not admit.
/// \throws AdoError
std::optional<std::string> queryDescription(const services::LookupRequest& request);

/// How the codes of a chart of cost accounting are cut into groups: those whose length is not 0, one behind
/// the other. No structure for an unknown chart. \throws AdoError
services::CodeStructure queryStructure(const std::shared_ptr<ado::Connection>& connection, std::int32_t pdc);

/// All codes that the request admits, in the order of their codes. Of codes with a structure only those of
/// the last level are offered: the others only group. \throws AdoError
std::vector<LookupRow> queryRows(const services::LookupRequest& request);

} // namespace veldran::shell
