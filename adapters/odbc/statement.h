#pragma once

#include "adapters/odbc/base_tables.h"
#include "adapters/odbc/parameters.h"
#include "platform/ado/driver.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace veldran::odbc {

/// One statement handle: a text executed once, or prepared and executed many times. Every execution reads all
/// results of the text to their end, since a connection carries only one at a time.
class Statement {
public:
    /// \throws AdoError as `Link::requireUsable`.
    Statement(Link& link, BaseTables& tables);
    /// A server that does not answer is taken leave of for some seconds, and no longer.
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// \throws AdoError; what is wrong with a text a driver may tell only when the text executes.
    void prepare(std::string_view text, std::span<const ado::ParameterInfo> parameters);
    /// Executes the prepared text.
    ado::StatementResult execute(std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& settings);
    /// Executes a text without preparing it; without parameters it is sent as a plain batch.
    ado::StatementResult executeDirect(std::string_view text, std::span<const ado::BoundParameter> parameters,
                                       const ado::ExecuteSettings& settings);

private:
    void announce(std::string_view text, const ado::ExecuteSettings& settings);
    ado::StatementResult results(SQLRETURN code, const ado::ExecuteSettings& settings);
    ado::Errors drain(SQLRETURN code, const ado::ExecuteSettings& settings, ado::StatementResult& result);
    void takeResult(ado::StatementResult& result, const ado::ExecuteSettings& settings);
    void limitExecution(int seconds);
    void bind(std::span<const ado::BoundParameter> parameters);

    Link& link_;
    BaseTables& tables_; // completes what a result tells of its columns
    std::string text_;   // the prepared one
    StatementHandle handle_;
    std::unique_ptr<ParameterBuffers> buffers_;
    int timeLimit_ = 0;
};

/// \throws AdoError 8144 or 8178 when a text does not have as many markers as there are parameters: drivers
/// send such a text, or fail without a word. A text that cannot be read as T-SQL is left to the server.
void checkMarkers(std::string_view text, std::size_t parameters);

} // namespace veldran::odbc
