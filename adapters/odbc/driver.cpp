#include "adapters/odbc/driver.h"

#include "adapters/odbc/connection_string.h"
#include "adapters/odbc/session.h"
#include "adapters/odbc/utf16.h"

#include <array>

namespace veldran::odbc {

namespace {

/// A connection that came back from a pool could bring the working tables of another session with it.
EnvironmentHandle environmentWithoutPool() {
    SQLSetEnvAttr(SQL_NULL_HANDLE, SQL_ATTR_CONNECTION_POOLING, attribute(SQL_CP_OFF), SQL_IS_UINTEGER);
    return {SQL_HANDLE_ENV, SQL_NULL_HANDLE};
}

} // namespace

OdbcDriver::OdbcDriver() : environment_(environmentWithoutPool()) {
    if (!succeeded(SQLSetEnvAttr(environment_.get(), SQL_ATTR_ODBC_VERSION, attribute(SQL_OV_ODBC3),
                                 SQL_IS_UINTEGER))) {
        failWithDiagnostics(SQL_HANDLE_ENV, environment_.get());
    }
}

std::unique_ptr<ado::Session> OdbcDriver::open(const std::string& connectionString, const std::string& user,
                                               const std::string& password) {
    return std::make_unique<OdbcSession>(
        environment_, connectionTarget(connectionString, user, password, installedDrivers()));
}

std::vector<std::string> OdbcDriver::installedDrivers() const {
    std::vector<std::string> names;
    std::array<char16_t, 256> name{};
    std::array<char16_t, 4096> attributes{};
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT attributesLength = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (succeeded(SQLDriversW(environment_.get(), direction, wide(name.data()),
                                 static_cast<SQLSMALLINT>(name.size()), &nameLength, wide(attributes.data()),
                                 static_cast<SQLSMALLINT>(attributes.size()), &attributesLength))) {
        names.push_back(toUtf8(name.data()));
        direction = SQL_FETCH_NEXT;
    }
    return names;
}

} // namespace veldran::odbc
