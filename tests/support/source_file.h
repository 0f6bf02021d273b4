#pragma once

#include <string>

namespace veldran::test {

/// The content of a file of the source tree. \throws std::runtime_error when it cannot be read.
std::string sourceFile(const std::string& path);

} // namespace veldran::test
