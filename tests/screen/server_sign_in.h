#pragma once

#include <string>

namespace veldran::test {

/// An ODBC connection string with another password, and another user where one is named.
std::string withSignIn(const std::string& connectionString, const std::string& user,
                       const std::string& password);

} // namespace veldran::test
