#pragma once

#include <string>
#include <vector>

namespace veldran::chartgen {

inline constexpr int minLevels = 2;
inline constexpr int maxLevels = 5;
inline constexpr int codeLength = 10;

/// Highest number that the group of that level holds: 99, 9999 or 99999.
/// \throws SourceError when the chart cannot have that many levels or that level.
int groupCapacity(int levels, int level);

/// Account code of the account whose group numbers are given from level 1 down; the groups not given are
/// zeros. \throws SourceError when there are more groups than levels or a number does not fit its group.
std::string composeCode(int levels, const std::vector<int>& groups);

} // namespace veldran::chartgen
