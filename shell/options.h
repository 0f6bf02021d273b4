#pragma once

#include <filesystem>
#include <optional>

namespace veldran::shell {

/// What the command line asks for.
struct Options {
    std::optional<std::filesystem::path> companyFile;
    std::optional<std::filesystem::path> component;
    std::optional<std::filesystem::path> database; ///< an embedded database to use instead of the company's
    std::optional<std::filesystem::path> tour;     ///< where the pictures of the guided tour go
    bool demoReset = false;
};

/// \return the exit code when the program is to end at once: help was asked for, or an option is wrong
std::optional<int> parseOptions(int argc, char** argv, Options& options);

} // namespace veldran::shell
