#pragma once

#include <functional>
#include <ostream>
#include <string>

namespace veldran::chartgen {

/// Writes a file that appears whole or not at all: `write` fills it aside, and only then does it take its
/// name. Whatever `write` throws leaves an older file of that name as it was. \throws SourceError when the
/// file cannot be written, and what `write` throws
void writeWholeFile(const std::string& path, const std::function<void(std::ostream&)>& write);

} // namespace veldran::chartgen
