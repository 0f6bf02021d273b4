#pragma once

#include <string>
#include <vector>

namespace veldran::odbc {

/// Drivers that speak the same dialect of connection strings.
enum class DriverFamily {
    Vendor, ///< "ODBC Driver 18 for SQL Server" and its like
    FreeTds,
    Other ///< of another database, or hidden behind a data source name
};

struct ChosenDriver {
    std::string name;
    DriverFamily family = DriverFamily::Other;
};

/// What a driver's name, or the path of its library, says about it.
DriverFamily familyOf(const std::string& driver);

/// The driver for SQL Server among the installed ones: the vendor's newest, else FreeTDS, else what an old
/// system has. `wanted`, when not empty, names the one to take; a path is taken unseen.
/// \throws AdoError IM002 when there is none, or when the wanted one is not installed.
ChosenDriver chooseDriver(const std::string& wanted, const std::vector<std::string>& installed);

/// Whether the library itself is named, in place of a driver that the manager knows.
bool isLibraryPath(const std::string& driver);

} // namespace veldran::odbc
