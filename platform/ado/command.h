#pragma once

#include "platform/ado/connection.h"
#include "platform/ado/parameter.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace veldran::ado {

class Recordset;

/// A statement text or a stored procedure with its parameters, kept and executed many times.
///
/// Text commands bind their "?" markers to the parameters in the order of `Parameters::Append`, whatever
/// their names; the names serve the caller (`Parameters()["@CONTO"]`). A stored procedure's parameters are
/// matched by name; one that was never given a value is not sent, so that the procedure's own default
/// applies. A text command's parameter that was never given a value is NULL.
///
/// A `Prepared` text command is prepared at its first execution on a connection and once only; it is prepared
/// again after its text, the declaration of its parameters (not their values) or its connection changed, or
/// after the connection was closed and opened again.
class Command : public std::enable_shared_from_this<Command> {
public:
    /// Commands live in shared_ptr: a recordset keeps the command that it was opened from, for `Requery`.
    static std::shared_ptr<Command> create();
    ~Command();
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    std::shared_ptr<Connection> ActiveConnection() const { return connection_; }
    /// Gives up the prepared statement. nullptr detaches the command.
    /// \throws AdoError 3709 when the connection is closed.
    void ActiveConnection(std::shared_ptr<Connection> connection);
    const std::string& CommandText() const { return text_; }
    /// The text, or the name of the procedure or table, as `CommandType` says.
    void CommandText(std::string text);
    CommandTypeEnum CommandType() const { return type_; }
    /// Unspecified and unknown are taken as text.
    void CommandType(CommandTypeEnum type);
    /// Seconds; 0 is no limit. 30 unless set.
    int CommandTimeout() const { return timeout_; }
    /// \throws AdoError 3001 when negative.
    void CommandTimeout(int seconds);
    bool Prepared() const { return prepared_; }
    void Prepared(bool prepared);
    /// Kept for callers that set it; names never bind a text's markers.
    bool NamedParameters() const { return namedParameters_; }
    void NamedParameters(bool named) { namedParameters_ = named; }

    ado::Parameters& Parameters() { return parameters_; }
    /// A parameter that is not yet part of the command: append it to `Parameters()`.
    Parameter CreateParameter(std::string name = {}, DataTypeEnum type = adEmpty,
                              ParameterDirectionEnum direction = adParamInput, int size = 0) const;
    Parameter CreateParameter(std::string name, DataTypeEnum type, ParameterDirectionEnum direction, int size,
                              Value value) const;

    /// Executes and returns the rows as a read-only recordset on its first record; the recordset is closed
    /// (State 0) when the statement yields no result with columns. Empty with `adExecuteNoRecords`.
    /// `recordsAffected`, when given, receives the number of rows of the last statement that counts rows, or
    /// -1. \throws AdoError 3709 without an open connection, what `Parameter::bound` throws, and every
    /// failure of the database; all of them are also listed by the connection's `Errors`.
    std::shared_ptr<Recordset> Execute(std::int64_t* recordsAffected = nullptr,
                                       int options = adOptionUnspecified);

private:
    friend class Parameters;
    friend class Recordset;
    Command();
    StatementResult run(bool wantsRows);
    StatementResult runText(Session& session, const ExecuteSettings& settings);
    std::vector<BoundParameter> boundValues();
    void forgetPrepared() { statement_.reset(); }

    std::shared_ptr<Connection> connection_; // shared with everyone who works on this connection
    std::string text_;
    CommandTypeEnum type_ = adCmdText;
    int timeout_ = 30;
    bool prepared_ = false;
    bool namedParameters_ = false;
    ado::Parameters parameters_;
    std::shared_ptr<PreparedSlot> statement_; // shared with the connection, which empties it when it closes
    std::vector<ParameterInfo> preparedFor_;  // the declarations that `statement_` was prepared with
};

} // namespace veldran::ado
