#pragma once

#include "shell/places.h"

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

namespace veldran::shell {

/// The demo database could not be made; `what()` is Italian and names the script and the place in it.
class DemoError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The company file of the demo company, and where its database lies: in the user's folder.
std::filesystem::path demoCompanyFile(const Places& places);
std::filesystem::path demoDatabaseFile(const Places& places);
/// Whether a company file opens the demo company's database; false for a file that cannot be read.
bool opensDemoDatabase(const std::filesystem::path& companyFile, const Places& places);

/// Told between the steps: what is being done, and how far the whole is (0 to 1).
using DemoProgress = std::function<void(const std::string& step, double done)>;

/// Makes the demo company's database from the scripts in `scripts`. The file appears whole or not at all: an
/// interrupted creation leaves nothing that a later start could mistake for it. An existing file is replaced.
/// \throws DemoError
void createDemoDatabase(const std::filesystem::path& file, const std::filesystem::path& scripts,
                        const DemoProgress& progress);

/// The same with a window that shows the progress.
void createDemoDatabaseVisibly(const std::filesystem::path& file, const std::filesystem::path& scripts);

} // namespace veldran::shell
