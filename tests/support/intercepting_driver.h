#pragma once

#include "platform/ado/driver.h"

#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace veldran::test {

/// What reaches a database session.
enum class Sent { Direct, Prepare, Prepared, Procedure, Describe, Begin, Commit, Rollback };

const char* nameOf(Sent how);

/// One message to a session, on its way to the database.
struct Message {
    Sent how = Sent::Direct;
    std::string
        text; ///< the statement or the procedure's name; "BEGIN TRANSACTION" and so on for transactions
    std::vector<ado::BoundParameter> parameters; ///< of Prepare: without values
    ado::ExecuteSettings settings;

    friend bool operator==(const Message&, const Message&) = default;
};

/// For the output of failed tests.
void PrintTo(const Message& message, std::ostream* out);

/// Looks at every message before the database gets it, and may throw AdoError in the database's place.
class Interceptor {
public:
    virtual ~Interceptor() = default;
    /// A connection is about to be opened.
    virtual void opening(const std::string& /*connectionString*/) {}
    virtual void sending(const Message& message) = 0;
};

/// Decorates a driver with an interceptor. Both are shared with the test, which may let go of the driver
/// first.
class InterceptingDriver : public ado::Driver {
public:
    InterceptingDriver(std::shared_ptr<ado::Driver> inner, std::shared_ptr<Interceptor> interceptor)
        : inner_(std::move(inner)), interceptor_(std::move(interceptor)) {}

    std::unique_ptr<ado::Session> open(const std::string& connectionString, const std::string& user,
                                       const std::string& password) override;

private:
    std::shared_ptr<ado::Driver> inner_;
    std::shared_ptr<Interceptor> interceptor_;
};

} // namespace veldran::test
