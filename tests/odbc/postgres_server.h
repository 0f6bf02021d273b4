#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace veldran::test {

/// A PostgreSQL server of this test program's own, on loopback, with a database in a temporary directory. It
/// is started when it is first asked for, serves all tests, and ends with the program.
class PostgresServer {
public:
    /// \throws std::runtime_error when the server does not start.
    static const PostgresServer& instance();
    /// Whether server and ODBC driver are installed.
    static bool isInstalled();

    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    std::string connectionString() const;
    int port() const { return port_; }

private:
    PostgresServer();
    ~PostgresServer();
    void waitUntilItAnswers() const;
    void prepareDatabase() const;

    std::filesystem::path directory_;
    int port_ = 0;
    pid_t process_ = -1;
};

} // namespace veldran::test
