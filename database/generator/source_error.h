#pragma once

#include <stdexcept>
#include <string>

namespace veldran::chartgen {

/// A mistake in a source table or in the wanted chart, told with its place where there is one.
class SourceError : public std::runtime_error {
public:
    explicit SourceError(const std::string& message) : std::runtime_error(message) {}

    /// `line` is 1-based.
    SourceError(const std::string& file, int line, const std::string& message)
        : std::runtime_error(file + ":" + std::to_string(line) + ": " + message) {}
};

} // namespace veldran::chartgen
