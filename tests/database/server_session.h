#pragma once

#include "platform/ado/driver.h"
#include "tests/support/test_database.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veldran::test {

using TextRows = std::vector<std::vector<std::string>>;

/// One session that stays open, with its working tables, as the screen's own connection does.
class ServerSession {
public:
    explicit ServerSession(const TestDatabase& database);
    explicit ServerSession(std::unique_ptr<ado::Session> session) : session_(std::move(session)) {}

    void run(const std::string& text);
    /// Rows of a query, as `asText` writes them.
    TextRows rows(const std::string& query);
    /// The one value of a query that yields one row of one column.
    std::string value(const std::string& query);
    /// Names of a procedure's parameters as the database reports them, in lower case, without the return
    /// value.
    std::vector<std::string> parametersOf(const std::string& procedure);
    /// Calls a procedure as the screen does: with the parameters that the database reports, set by name.
    /// \throws std::invalid_argument for a name that the procedure does not have.
    ado::StatementResult result(const std::string& procedure, const std::map<std::string, Value>& values);
    /// The rows of the same call.
    TextRows call(const std::string& procedure, const std::map<std::string, Value>& values);
    /// Runs every batch of a script of the source tree.
    void load(const std::string& script);
    void loadFile(const std::string& path);

    ado::Session& session() { return *session_; }

private:
    std::unique_ptr<ado::Session> session_;
};

} // namespace veldran::test
