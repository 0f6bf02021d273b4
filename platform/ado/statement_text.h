#pragma once

#include "platform/ado/driver.h"

#include <span>
#include <string>
#include <string_view>

namespace veldran::ado {

/// The command type among the options of an `Execute` or `Open`; text where they name none.
CommandTypeEnum commandTypeIn(int options);

/// The statement that a source of this type stands for: itself, or for `adCmdTable` all rows of the table it
/// names.
std::string statementText(CommandTypeEnum type, const std::string& source);

/// Executes what a text or a table's name stands for.
StatementResult executeText(Session& session, CommandTypeEnum type, const std::string& source,
                            std::span<const BoundParameter> parameters, const ExecuteSettings& settings);

/// Executes a source that has no parameters.
StatementResult executeSource(Session& session, CommandTypeEnum type, const std::string& source,
                              const ExecuteSettings& settings);

/// A name as an identifier of T-SQL, in brackets.
std::string quotedName(std::string_view name);
/// The name of a table, each part of a dotted name in brackets by itself.
std::string quotedTable(std::string_view name);

} // namespace veldran::ado
