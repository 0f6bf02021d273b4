#pragma once

#include "adapters/odbc/driver.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace veldran::test {

/// A server that the behaviour of real servers is tried on: what it does to a session, said in its own words.
class BehaviourServer {
public:
    virtual ~BehaviourServer() = default;
    /// Why it cannot be tried; empty when it can.
    virtual std::string whyMissing() const = 0;
    virtual std::string connectionString() const = 0;
    /// A connection string to a server that is not there.
    virtual std::string deadConnectionString() const = 0;
    /// Gives the number of its own session.
    virtual std::string sessionNumber() const = 0;
    /// Ends a session by its number.
    virtual std::string kill(const std::string& number) const = 0;
    /// Runs for many seconds.
    virtual std::string longStatement() const = 0;
    /// Makes the session wait a fifth of a second for a lock.
    virtual std::string shortLockWait() const = 0;
    /// A row with a text of nine thousand "è".
    virtual std::string longText() const = 0;
    /// Says "attenzione" to whom executes it, and succeeds.
    virtual std::string remark() const = 0;
    virtual bool isDeadlock(const ado::Error& error) const = 0;
    virtual bool isLockTimeout(const ado::Error& error) const = 0;
};

using MakeBehaviourServer = std::unique_ptr<BehaviourServer> (*)();

/// What a session does when the server, or the way to it, fails. A table VLDOB_TAB of two rows is made before
/// each test.
class OdbcBehaviour : public ::testing::TestWithParam<MakeBehaviourServer> {
protected:
    void SetUp() override;
    void TearDown() override;

    std::unique_ptr<ado::Session> open() { return driver.open(server->connectionString(), "", ""); }
    static ado::StatementResult run(ado::Session& session, const std::string& text, int timeout = 0) {
        return session.execute(text, {}, {timeout, true});
    }
    /// The errors that a text ends with; the test fails when it succeeds.
    static ado::Errors failureOf(ado::Session& session, const std::string& text, int timeout = 0);
    std::string numberOf(ado::Session& session);
    /// The rows of the table, seen by a session of its own: "1:10 2:20".
    std::string stored();

    odbc::OdbcDriver driver; // outlives the sessions
    std::unique_ptr<BehaviourServer> server = GetParam()();
};

} // namespace veldran::test
