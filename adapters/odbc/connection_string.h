#pragma once

#include "adapters/odbc/driver_choice.h"

#include <string>
#include <vector>

namespace veldran::odbc {

/// What the driver manager is told, made of a connection string in either form.
struct ConnectionTarget {
    DriverFamily family = DriverFamily::Other;
    std::string text;      ///< complete, in ODBC form
    std::string server;    ///< for messages; empty where a data source name hides it
    std::string password;  ///< to be kept out of messages
    int loginTimeout = 15; ///< seconds; 0 is no limit
    int packetSize = 0;    ///< bytes; 0 is the driver's own
};

/// Reads a connection string in ODBC form ("Driver={...};Server=...;UID=...") or in OLE DB form
/// ("Provider=SQLOLEDB;Data Source=server\instance,port;Initial Catalog=..."). The keys of SQL Server's
/// providers and drivers are mapped one by one to those of the chosen driver. A string that names a data
/// source, or another database's driver, is handed on as it is. `user` and `password`, when not empty, take
/// the place of those in the string.
/// \param installedDrivers names, as the driver manager lists them
/// \throws AdoError 08001 that names the key that is unknown, repeated or wrong; IM002 as `chooseDriver`. No
/// text of an error contains the password.
ConnectionTarget connectionTarget(const std::string& connectionString, const std::string& user,
                                  const std::string& password,
                                  const std::vector<std::string>& installedDrivers);

/// The database that a connection string in either form names; empty when it names none, or is written
/// wrongly.
std::string databaseOf(const std::string& connectionString);

/// Whether this adapter is meant: a provider of SQL Server, a driver, a data source or a server is named.
/// \throws AdoError 08001 when the string is written wrongly.
bool isOdbcConnectionString(const std::string& connectionString);

} // namespace veldran::odbc
