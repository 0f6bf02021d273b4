#pragma once

#include "platform/ado/connection.h"
#include "platform/ado/driver.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::test {

/// What a routine sent, as the database saw it.
struct Request {
    std::string text; ///< the statement, or the procedure's name
    std::vector<ado::BoundParameter> parameters;
    bool prepared = false;
    bool procedure = false;

    /// The value sent under that name. \throws std::out_of_range when none was sent.
    const Value& value(std::string_view name) const;
};

/// A database whose answers the test writes: the module's routines run for real, only the rows are given.
struct ScriptedDatabase {
    /// Answers a request; may throw AdoError. Empty: `nothing`.
    std::function<ado::StatementResult(const Request&)> answer;
    std::vector<Request> requests;
    int prepares = 0;
    int livePrepared = 0;

    /// Requests whose text contains `fragment`.
    std::vector<Request> containing(std::string_view fragment) const;
};

/// An open connection to `database`, which outlives it.
std::shared_ptr<ado::Connection> connectTo(ScriptedDatabase& database);

/// A result of text columns and rows of values.
ado::StatementResult rows(const std::vector<std::string>& columns,
                          const std::vector<std::vector<Value>>& values);
/// The answer of an empty database: no rows to a SELECT, none counted by anything else.
ado::StatementResult nothing(const Request& request);
/// One row as a child query yields it.
std::vector<Value> childRow(const std::string& conto, bool analitico, const Value& attivo, int livello);
/// The columns of a child query.
ado::StatementResult children(const std::vector<std::vector<Value>>& values);

/// The failure that tests order.
[[noreturn]] void fail(int number = 8134, std::string description = "Guasto simulato");

} // namespace veldran::test
