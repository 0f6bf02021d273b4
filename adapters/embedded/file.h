#pragma once

#include "adapters/embedded/sqlite.h"

#include <memory>
#include <string>

/// The file that a database lives in: how it is named, created, recognised and opened.
namespace veldran::embedded {

inline constexpr const char* providerName = "VeldranEmbedded";
/// In the file's header: "VDBE" as a 32-bit number, and the version of its layout.
inline constexpr int fileApplicationId = 0x56444245;
inline constexpr int fileVersion = 1;
inline constexpr int defaultLockTimeout = 5000; ///< milliseconds

struct ConnectionSettings {
    std::string path;
    bool create = false; ///< make the file when it is missing
    int lockTimeout = defaultLockTimeout;
};

/// Reads "Provider=VeldranEmbedded;Data Source=/path/file.vdb[;Mode=ReadWrite|Create][;Lock Timeout=ms]";
/// keys are blind to case. \throws AdoError that names an unknown, repeated, missing or malformed entry.
ConnectionSettings parseConnectionString(const std::string& text);

/// Makes an empty database. The file appears whole or not at all. \throws AdoError when it exists or cannot
/// be made.
void createDatabase(const std::string& path);

/// Opens an existing database for a session. \throws AdoError that names the file when it is missing,
/// foreign, damaged or of another version.
std::unique_ptr<SqliteDatabase> openDatabase(const ConnectionSettings& settings);

} // namespace veldran::embedded
