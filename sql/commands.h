#pragma once

#include "platform/ado/command.h"

#include <initializer_list>
#include <memory>
#include <string>

namespace veldran::sql {

/// Executes a text that yields no rows. \return the rows it counted, -1 when it counts none.
/// \throws AdoError every failure of the database.
std::int64_t execute(ado::Connection& connection, const std::string& text);

/// The rows of a text. \throws AdoError every failure of the database.
std::shared_ptr<ado::Recordset> query(ado::Connection& connection, const std::string& text);

/// Whether a kept text command is prepared at its first execution.
enum class Preparation { None, Prepared };

/// A text command without time limit, its "?" markers named by `parameters` in their order.
/// Shared as ADO commands are: the recordsets opened from it keep it.
std::shared_ptr<ado::Command> textCommand(const std::shared_ptr<ado::Connection>& connection,
                                          std::string text, std::initializer_list<ado::Parameter> parameters,
                                          Preparation preparation = Preparation::None);

/// A stored-procedure command without time limit; its parameters are those that the provider reports.
/// \throws AdoError when the provider cannot describe the procedure.
std::shared_ptr<ado::Command> procedureCommand(const std::shared_ptr<ado::Connection>& connection,
                                               std::string name);

/// Characters of an account code.
inline constexpr int lunghezzaConto = 10;
/// Characters of a transaction type's code.
inline constexpr int lunghezzaCausale = 4;

/// Input parameter of an account code: fixed-length Unicode text of its whole length.
ado::Parameter contoParameter(std::string name);
/// Input parameter numeric(2, 0): chart codes and natures.
ado::Parameter numericParameter(std::string name);

/// Detaches a kept command from its connection and lets go of it; nothing happens when there is none.
void release(std::shared_ptr<ado::Command>& command);

} // namespace veldran::sql
