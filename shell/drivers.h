#pragma once

#include "platform/ado/driver.h"

#include <filesystem>
#include <memory>
#include <string>

namespace veldran::shell {

/// The driver that serves a connection string: the embedded database for "Provider=..." naming it, SQL Server
/// through ODBC for one of its providers or for "Driver=...", "DSN=..." or "Server=...". Statements sent
/// through it may name the company code by the marker "<DITTA>". \throws AdoError 3706 when no driver of this
/// host serves the connection string, 08001 when it is written wrongly.
std::shared_ptr<ado::Driver> driverFor(const std::string& connectionString,
                                       const std::string& companyCode); // shared: as connections want it

/// The connection string of an embedded database file.
/// \param create make the file when it is missing
std::string embeddedConnectionString(const std::filesystem::path& file, bool create = false);

/// The file of an embedded database that a connection string opens; empty for another database.
std::filesystem::path embeddedFile(const std::string& connectionString);

/// What a connection string connects to, for the user: a file's name or a server's database, never a
/// password.
std::string databaseName(const std::string& connectionString);

} // namespace veldran::shell
