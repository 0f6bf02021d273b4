#pragma once

#include "tests/support/chart_builder.h"
#include "tests/support/counting_driver.h"
#include "tests/support/test_server.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace veldran::test {

/// A directory of its own that goes with this object.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// A real database, made by the scripts that every database is made by, and filled with one chart: embedded,
/// in a temporary directory, or that of the server which the run has chosen.
class TestDatabase {
public:
    explicit TestDatabase(const Chart& chart);
    /// As it is before the scripts have run: neither tables nor routines.
    static constexpr struct WithoutObjects {
    } withoutObjects{};
    explicit TestDatabase(WithoutObjects tag);

    const std::string& connectionString() const { return connectionString_; }
    const std::shared_ptr<CountingDriver>& driver() const { return driver_; }
    /// The server that holds it; nothing when it is embedded.
    TestServer* server() const { return server_; }
    /// Sessions that forms hold; those of this object are not counted.
    int openSessions() const { return driver_->counts().openSessions; }
    int livePreparedStatements() const { return driver_->counts().livePreparedStatements; }

    /// Rows as text, read in another session, as another program sees them: NULL is "NULL", a bit "1" or
    /// "0", blanks at the end are left out.
    std::vector<std::vector<std::string>> rows(const std::string& select) const;
    /// Executes statements in another session, in one transaction.
    void run(const std::vector<std::string>& statements) const;

private:
    explicit TestDatabase(TestServer::Objects objects); // without rows

    template<class Work>
    void inSession(Work work) const;

    TestServer* server_;
    std::unique_ptr<TestServer::Occupation> occupation_;
    TemporaryDirectory directory_; // empty when a server holds the database
    std::string connectionString_;
    std::shared_ptr<ado::Driver> real_; // shared with its sessions
    std::shared_ptr<CountingDriver> driver_;
};

/// The rows of a result in the form of `TestDatabase::rows`.
std::vector<std::vector<std::string>> asText(const ado::RowSet& rows);
std::string asText(const Value& value);

} // namespace veldran::test
