#pragma once

#include "adapters/embedded/executor.h"
#include "adapters/embedded/session_state.h"
#include "platform/ado/driver.h"

namespace veldran::embedded {

/// A session with a database in one file. Working tables, settings and the transaction live in it.
class EmbeddedSession : public ado::Session {
public:
    explicit EmbeddedSession(std::unique_ptr<SqliteDatabase> database);
    ~EmbeddedSession() override;

    ado::StatementResult execute(std::string_view text, std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& settings) override;
    std::unique_ptr<ado::PreparedStatement> prepare(std::string_view text,
                                                    std::span<const ado::ParameterInfo> parameters) override;
    std::vector<ado::ParameterInfo> describeProcedure(std::string_view name) override;
    ado::StatementResult callProcedure(std::string_view name, std::span<const ado::BoundParameter> parameters,
                                       const ado::ExecuteSettings& settings) override;
    void begin() override { state_.begin(); }
    void commit() override { state_.commit(); }
    void rollback() override { state_.rollback(); }

    /// Runs one batch of a script, whose first line is called `line` in messages.
    ado::StatementResult executeBatch(const std::string& text, std::size_t line);
    /// The SQLite text of one statement, as it would run now, with its literals in their places. For tests
    /// and for looking into a slow statement.
    std::string explain(std::string_view text, std::span<const ado::ParameterInfo> parameters = {});

    SessionState& state() { return state_; }

private:
    friend class EmbeddedStatement;
    /// `text` is the plan's, or one of its shape; `values` are those of the plan's markers.
    ado::StatementResult run(Plan& plan, std::string_view text, const std::vector<Stored>& values,
                             const ado::ExecuteSettings& settings, bool scoped);

    SessionState state_;
};

} // namespace veldran::embedded
