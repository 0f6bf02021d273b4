#pragma once

#include "adapters/odbc/handle.h"
#include "platform/ado/driver.h"

#include <string>
#include <vector>

namespace veldran::odbc {

/// Sessions with SQL Server through an ODBC driver: the vendor's or FreeTDS. Connection strings in ODBC form
/// and in OLE DB form are understood; docs/integrator.md lists their keys.
class OdbcDriver : public ado::Driver {
public:
    /// \throws AdoError when the driver manager cannot be initialised.
    OdbcDriver();
    std::unique_ptr<ado::Session> open(const std::string& connectionString, const std::string& user,
                                       const std::string& password) override;

    /// The names of the installed drivers, as the driver manager lists them.
    std::vector<std::string> installedDrivers() const;

private:
    EnvironmentHandle environment_;
};

} // namespace veldran::odbc
