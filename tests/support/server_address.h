#pragma once

#include <cstdint>
#include <string>

namespace veldran::test {

/// Where an ODBC connection string finds its server, and the same string for a server elsewhere.
class ServerAddress {
public:
    /// Understands "Server=host;Port=1433", "Server=host,1433" and "Server=tcp:host,1433"; the port is 1433
    /// unless it is told. \throws std::invalid_argument when there is no server, or one named by an instance.
    explicit ServerAddress(const std::string& connectionString);

    const std::string& host() const { return host_; }
    std::uint16_t port() const { return port_; }
    /// The connection string with another place for its server, else unchanged.
    std::string at(const std::string& host, std::uint16_t port) const;

private:
    std::string host_;
    std::uint16_t port_ = 1433;
    std::string others_; // the entries that tell nothing of the place
    bool apart_ = false; // the port is an entry of its own
};

} // namespace veldran::test
