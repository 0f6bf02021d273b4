#include "platform/ado/command.h"

#include "platform/ado/raise.h"
#include "platform/ado/recordset.h"
#include "platform/ado/statement_text.h"

#include <algorithm>
#include <utility>

namespace veldran::ado {

std::shared_ptr<Command> Command::create() {
    return std::shared_ptr<Command>(new Command);
}

Command::Command() : parameters_(*this) {}

Command::~Command() = default;

void Command::ActiveConnection(std::shared_ptr<Connection> connection) {
    if (connection && connection->State() != adStateOpen) {
        raise(adErrInvalidConnection);
    }
    if (connection != connection_) {
        forgetPrepared();
        parameters_.asked_ = false;
        connection_ = std::move(connection);
    }
}

void Command::CommandText(std::string text) {
    if (text != text_) {
        forgetPrepared();
        parameters_.asked_ = false;
        text_ = std::move(text);
    }
}

void Command::CommandType(CommandTypeEnum type) {
    if (type != type_) {
        forgetPrepared();
        parameters_.asked_ = false;
        type_ = type;
    }
}

void Command::CommandTimeout(int seconds) {
    if (seconds < 0) {
        raise(adErrInvalidArgument, "(CommandTimeout " + std::to_string(seconds) + ")");
    }
    timeout_ = seconds;
}

void Command::Prepared(bool prepared) {
    prepared_ = prepared;
    if (!prepared) {
        forgetPrepared();
    }
}

Parameter Command::CreateParameter(std::string name, DataTypeEnum type, ParameterDirectionEnum direction,
                                   int size) const {
    return Parameter(std::move(name), type, direction, size);
}

Parameter Command::CreateParameter(std::string name, DataTypeEnum type, ParameterDirectionEnum direction,
                                   int size, Value value) const {
    Parameter parameter(std::move(name), type, direction, size);
    parameter.Value(std::move(value));
    return parameter;
}

std::shared_ptr<Recordset> Command::Execute(std::int64_t* recordsAffected, int options) {
    const bool wantsRows = options == adOptionUnspecified || (options & adExecuteNoRecords) == 0;
    StatementResult result = run(wantsRows);
    if (recordsAffected != nullptr) {
        *recordsAffected = result.rowsAffected;
    }
    if (!wantsRows) {
        return nullptr;
    }
    auto recordset = std::make_shared<Recordset>();
    recordset->adopt(std::move(result), shared_from_this());
    return recordset;
}

StatementResult Command::run(bool wantsRows) {
    if (!connection_) {
        raise(adErrInvalidConnection);
    }
    const ExecuteSettings settings{timeout_, wantsRows};
    return connection_->guarded([&](Session& session) {
        if (type_ == adCmdStoredProc) {
            parameters_.fillFromProcedure();
            return session.callProcedure(text_, boundValues(), settings);
        }
        return runText(session, settings);
    });
}

StatementResult Command::runText(Session& session, const ExecuteSettings& settings) {
    const std::vector<BoundParameter> values = boundValues();
    if (!prepared_) {
        return executeText(session, type_, text_, values, settings);
    }
    const auto declares = [](const ParameterInfo& known, const BoundParameter& value) {
        return known == value.info;
    };
    if (!statement_ || !statement_->statement ||
        !std::equal(preparedFor_.begin(), preparedFor_.end(), values.begin(), values.end(), declares)) {
        forgetPrepared(); // the old statement goes before the new one comes: two would hold the database's
                          // locks
        std::vector<ParameterInfo> declarations;
        for (const BoundParameter& value : values) {
            declarations.push_back(value.info);
        }
        statement_ = connection_->prepare(session, statementText(type_, text_), declarations);
        preparedFor_ = std::move(declarations);
    }
    return statement_->statement->execute(values, settings);
}

std::vector<BoundParameter> Command::boundValues() {
    std::vector<BoundParameter> values;
    values.reserve(parameters_.items_.size());
    for (const auto& parameter : parameters_.items_) {
        const bool procedure = type_ == adCmdStoredProc;
        if (parameter->Direction() == adParamReturnValue || (procedure && !parameter->hasValue())) {
            continue;
        }
        if (parameter->Direction() == adParamOutput || parameter->Direction() == adParamInputOutput) {
            raise(adErrFeatureNotAvailable, "(parametro di uscita " + parameter->Name() + ")");
        }
        values.push_back(parameter->bound());
    }
    return values;
}

} // namespace veldran::ado
