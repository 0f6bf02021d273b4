#pragma once

#include <cstdint>
#include <string>

namespace veldran::chartgen {

/// Description of the account at that place (0-based) among its siblings. `turn` shifts and `levelsBelow` (0
/// for an analytic account) chooses the words; under one parent, with one turn, no two places give the same
/// text.
std::string describeAccount(int nature, int levelsBelow, std::int64_t turn, std::int64_t place);

} // namespace veldran::chartgen
