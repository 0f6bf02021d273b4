#pragma once

#include "adapters/odbc/base_tables.h"
#include "platform/ado/driver.h"

namespace veldran::odbc {

/// A session with a server.
class OdbcSession : public ado::Session {
public:
    OdbcSession(const EnvironmentHandle& environment, const ConnectionTarget& target)
        : link_(environment, target), tables_(link_) {}

    ado::StatementResult execute(std::string_view text, std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& settings) override;
    /// A text without parameters is kept, not prepared: a working table that it makes would end with a
    /// prepared text's own scope.
    std::unique_ptr<ado::PreparedStatement> prepare(std::string_view text,
                                                    std::span<const ado::ParameterInfo> parameters) override;
    std::vector<ado::ParameterInfo> describeProcedure(std::string_view name) override;
    ado::StatementResult callProcedure(std::string_view name, std::span<const ado::BoundParameter> parameters,
                                       const ado::ExecuteSettings& settings) override;
    void begin() override { link_.begin(); }
    void commit() override { link_.commit(); }
    void rollback() override { link_.rollback(); }

private:
    Link link_;
    BaseTables tables_;
};

} // namespace veldran::odbc
