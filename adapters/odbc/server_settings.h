#pragma once

#include "adapters/odbc/connection_text.h"

#include <string>
#include <utility>
#include <vector>

namespace veldran::odbc {

enum class Encryption { Unsaid, Off, On, Strict };

/// What a connection string for SQL Server says, whatever keys it says it with.
struct ServerSettings {
    std::string provider; ///< empty in ODBC form
    std::string driver;
    std::string server; ///< "host", "host\instance", "host,port"
    std::string port;
    std::string database;
    std::string user;
    std::string password;
    bool integrated = false; ///< the user of the operating system signs in
    int loginTimeout = 15;
    int packetSize = 0;
    Encryption encryption = Encryption::Unsaid;
    bool trustsCertificate = false;
    std::string application;
    std::string workstation;
    std::string language;
    /// What is the driver's own business, under its ODBC key.
    std::vector<std::pair<std::string, std::string>> passed;
};

/// \throws AdoError 08001 that names the key that is unknown, repeated or has a wrong value.
ServerSettings readServerSettings(const std::vector<ConnectionEntry>& entries);

} // namespace veldran::odbc
