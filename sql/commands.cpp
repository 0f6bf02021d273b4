#include "sql/commands.h"

#include "platform/ado/recordset.h"

#include <utility>

namespace veldran::sql {

namespace {

std::shared_ptr<ado::Command> newCommand(const std::shared_ptr<ado::Connection>& connection,
                                         ado::CommandTypeEnum type, std::string text) {
    auto command = ado::Command::create();
    command->ActiveConnection(connection);
    command->CommandType(type);
    command->CommandText(std::move(text));
    command->CommandTimeout(0);
    return command;
}

} // namespace

std::int64_t execute(ado::Connection& connection, const std::string& text) {
    std::int64_t affected = -1;
    connection.Execute(text, &affected, ado::adCmdText | ado::adExecuteNoRecords);
    return affected;
}

std::shared_ptr<ado::Recordset> query(ado::Connection& connection, const std::string& text) {
    return connection.Execute(text, nullptr, ado::adCmdText);
}

std::shared_ptr<ado::Command> textCommand(const std::shared_ptr<ado::Connection>& connection,
                                          std::string text, std::initializer_list<ado::Parameter> parameters,
                                          Preparation preparation) {
    auto command = newCommand(connection, ado::adCmdText, std::move(text));
    command->Prepared(preparation == Preparation::Prepared);
    for (const ado::Parameter& parameter : parameters) {
        command->Parameters().Append(parameter);
    }
    return command;
}

std::shared_ptr<ado::Command> procedureCommand(const std::shared_ptr<ado::Connection>& connection,
                                               std::string name) {
    auto command = newCommand(connection, ado::adCmdStoredProc, std::move(name));
    command->Parameters().Refresh();
    return command;
}

ado::Parameter contoParameter(std::string name) {
    return ado::Parameter(std::move(name), ado::adWChar, ado::adParamInput, lunghezzaConto);
}

ado::Parameter numericParameter(std::string name) {
    ado::Parameter parameter(std::move(name), ado::adNumeric, ado::adParamInput, 0);
    parameter.Precision(2);
    parameter.NumericScale(0);
    return parameter;
}

void release(std::shared_ptr<ado::Command>& command) {
    if (command) {
        command->ActiveConnection(nullptr);
        command.reset();
    }
}

} // namespace veldran::sql
