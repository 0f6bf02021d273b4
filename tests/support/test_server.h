#pragma once

#include "platform/ado/driver.h"
#include "platform/ado/errors.h"
#include "tests/support/tcp_proxy.h"

#include <memory>
#include <string>

namespace veldran::test {

/// The environment variable that holds the ODBC connection string of the server for tests.
inline constexpr const char* serverVariable = "VELDRAN_TEST_ODBC";

/// A T-SQL server whose database belongs to the tests of this process: the screen's tables and routines are
/// made by the project's scripts, and whatever the tables hold is removed.
class TestServer {
public:
    /// Has every TestDatabase of this process be made on a server instead of embedded.
    /// \param driver what opens sessions there; shared with them
    static void choose(std::string connectionString, std::shared_ptr<ado::Driver> driver);
    /// The chosen server; nothing on a run over embedded databases. Connects at the first call.
    static TestServer* chosen();

    /// What its sessions are opened by; shared with them.
    const std::shared_ptr<ado::Driver>& driver() const { return driver_; }
    /// Leads through `network`.
    const std::string& connectionString() const { return throughNetwork_; }
    /// What lies between the connections of a test and the server, to be broken by the test.
    TcpProxy& network() { return network_; }
    /// A session past `network`. One for the whole process, in a forked one another.
    ado::Session& session();
    /// One more session past `network`, for a test that has it wait for another.
    std::unique_ptr<ado::Session> newSession() const;

    /// Whether the database holds the screen's tables and routines.
    enum class Objects { Made, Missing };

    /// A test's stay in the database, which it finds without rows and behind a network without faults.
    /// One at a time: \throws std::logic_error for a second one.
    class Occupation {
    public:
        explicit Occupation(TestServer& server, Objects objects = Objects::Made);
        ~Occupation() { server_.occupied_ = false; }
        Occupation(const Occupation&) = delete;
        Occupation& operator=(const Occupation&) = delete;

    private:
        TestServer& server_;
    };

private:
    TestServer(const std::string& connectionString, std::shared_ptr<ado::Driver> driver);
    void removeObjects();
    void makeObjects();

    std::string direct_;
    TcpProxy network_;
    std::string throughNetwork_;
    std::shared_ptr<ado::Driver> driver_;
    std::unique_ptr<ado::Session> session_;
    int sessionOwner_ = 0; // the process that opened the session
    bool occupied_ = false;
    bool sparse_ = false; ///< the last stay asked for no objects: which there are now is not known
};

/// Whether an error is the one that SQL Server numbers so. A server that speaks T-SQL without being SQL
/// Server has one number for all errors that it does not map.
bool isNumbered(const ado::Error& error, int number);

} // namespace veldran::test
