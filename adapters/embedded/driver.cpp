#include "adapters/embedded/driver.h"

#include "adapters/embedded/file.h"
#include "adapters/embedded/session.h"

namespace veldran::embedded {

std::unique_ptr<ado::Session> EmbeddedDriver::open(const std::string& connectionString, const std::string&,
                                                   const std::string&) {
    return std::make_unique<EmbeddedSession>(openDatabase(parseConnectionString(connectionString)));
}

} // namespace veldran::embedded
