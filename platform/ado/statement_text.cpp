#include "platform/ado/statement_text.h"

#include "platform/text.h"

namespace veldran::ado {

CommandTypeEnum commandTypeIn(int options) {
    if (options != adOptionUnspecified && (options & adCmdStoredProc) != 0) {
        return adCmdStoredProc;
    }
    return options != adOptionUnspecified && (options & adCmdTable) != 0 ? adCmdTable : adCmdText;
}

std::string statementText(CommandTypeEnum type, const std::string& source) {
    return type == adCmdTable ? "SELECT * FROM " + quotedTable(source) : source;
}

StatementResult executeText(Session& session, CommandTypeEnum type, const std::string& source,
                            std::span<const BoundParameter> parameters, const ExecuteSettings& settings) {
    return type == adCmdTable ? session.execute(statementText(type, source), parameters, settings)
                              : session.execute(source, parameters, settings);
}

StatementResult executeSource(Session& session, CommandTypeEnum type, const std::string& source,
                              const ExecuteSettings& settings) {
    if (type == adCmdStoredProc) {
        return session.callProcedure(source, {}, settings);
    }
    return executeText(session, type, source, {}, settings);
}

std::string quotedName(std::string_view name) {
    return "[" + replaceAll(std::string(name), "]", "]]") + "]";
}

std::string quotedTable(std::string_view name) {
    std::string quoted;
    for (std::size_t dot = name.find('.'); dot != std::string_view::npos; dot = name.find('.')) {
        quoted += quotedName(name.substr(0, dot)) + ".";
        name.remove_prefix(dot + 1);
    }
    return quoted + quotedName(name);
}

} // namespace veldran::ado
