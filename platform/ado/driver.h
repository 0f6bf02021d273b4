#pragma once

#include "platform/ado/errors.h"
#include "platform/ado/row_set.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What a database adapter implements. Everything above it (connections, commands, recordsets, batch writes)
/// is written once. Every function that touches the database throws AdoError and leaves the session usable.
namespace veldran::ado {

/// How a parameter is declared to the database.
struct ParameterInfo {
    std::string name; ///< with its "@"; markers are bound by position, procedure parameters by name
    DataTypeEnum type = adEmpty;
    ParameterDirectionEnum direction = adParamInput;
    int size = 0; ///< characters; 0 for types of fixed size
    std::uint8_t precision = 0;
    std::uint8_t scale = 0;

    friend bool operator==(const ParameterInfo&, const ParameterInfo&) = default;
};

struct BoundParameter {
    ParameterInfo info;
    Value value;

    friend bool operator==(const BoundParameter&, const BoundParameter&) = default;
};

struct ExecuteSettings {
    int commandTimeout = 30; ///< seconds; 0 is no limit
    bool wantsRows = true;   ///< false: rows, if the statement yields any, may be dropped unread

    friend bool operator==(const ExecuteSettings&, const ExecuteSettings&) = default;
};

struct StatementResult {
    std::unique_ptr<RowSet> rows;   ///< the first result that has columns; empty when there is none
    std::int64_t rowsAffected = -1; ///< of the last statement that counts rows; -1 when none does
    Errors messages;                ///< what the database says of a success: warnings and the like
};

/// A text command parsed and planned once, executed many times on the session that prepared it.
class PreparedStatement {
public:
    virtual ~PreparedStatement() = default;
    virtual StatementResult execute(std::span<const BoundParameter> parameters,
                                    const ExecuteSettings& settings) = 0;
};

/// One session with the database. Temporary tables, identity settings and the transaction live in it.
/// Closed by destruction, which never throws; an open transaction is rolled back.
class Session {
public:
    virtual ~Session() = default;

    /// Executes a text: one statement or a batch. "?" markers are bound to `parameters` in their order.
    virtual StatementResult execute(std::string_view text, std::span<const BoundParameter> parameters,
                                    const ExecuteSettings& settings) = 0;
    virtual std::unique_ptr<PreparedStatement> prepare(std::string_view text,
                                                       std::span<const ParameterInfo> parameters) = 0;
    /// The parameters of a stored procedure in the order of their declaration, as the database reports them.
    virtual std::vector<ParameterInfo> describeProcedure(std::string_view name) = 0;
    /// Parameters are matched by name, blind to case.
    virtual StatementResult callProcedure(std::string_view name, std::span<const BoundParameter> parameters,
                                          const ExecuteSettings& settings) = 0;

    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
};

/// Opens sessions. Outlives every session it opened.
class Driver {
public:
    virtual ~Driver() = default;
    /// \throws AdoError that names what is wrong with the connection string, the file or the server.
    virtual std::unique_ptr<Session> open(const std::string& connectionString, const std::string& user,
                                          const std::string& password) = 0;
};

} // namespace veldran::ado
