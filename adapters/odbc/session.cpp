#include "adapters/odbc/session.h"

#include "adapters/odbc/procedures.h"
#include "adapters/odbc/statement.h"

#include <string>

namespace veldran::odbc {

namespace {

class PreparedText : public ado::PreparedStatement {
public:
    PreparedText(Link& link, BaseTables& tables, std::string_view text,
                 std::span<const ado::ParameterInfo> parameters)
        : statement_(link, tables) {
        statement_.prepare(text, parameters);
    }
    ado::StatementResult execute(std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& settings) override {
        return statement_.execute(parameters, settings);
    }

private:
    Statement statement_;
};

class KeptText : public ado::PreparedStatement {
public:
    KeptText(Link& link, BaseTables& tables, std::string_view text)
        : link_(link), tables_(tables), text_(text) {
        checkMarkers(text, 0);
    }

    ado::StatementResult execute(std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& settings) override {
        return Statement(link_, tables_).executeDirect(text_, parameters, settings);
    }

private:
    Link& link_;
    BaseTables& tables_;
    std::string text_;
};

} // namespace

ado::StatementResult OdbcSession::execute(std::string_view text,
                                          std::span<const ado::BoundParameter> parameters,
                                          const ado::ExecuteSettings& settings) {
    return Statement(link_, tables_).executeDirect(text, parameters, settings);
}

std::unique_ptr<ado::PreparedStatement> OdbcSession::prepare(std::string_view text,
                                                             std::span<const ado::ParameterInfo> parameters) {
    if (parameters.empty()) {
        return std::make_unique<KeptText>(link_, tables_, text);
    }
    return std::make_unique<PreparedText>(link_, tables_, text, parameters);
}

std::vector<ado::ParameterInfo> OdbcSession::describeProcedure(std::string_view name) {
    return procedureParameters(link_, name);
}

ado::StatementResult OdbcSession::callProcedure(std::string_view name,
                                                std::span<const ado::BoundParameter> parameters,
                                                const ado::ExecuteSettings& settings) {
    return Statement(link_, tables_).executeDirect(callText(name, parameters), parameters, settings);
}

} // namespace veldran::odbc
