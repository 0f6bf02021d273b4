#pragma once

#include "platform/ado/driver.h"

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace veldran::ado {

class Recordset;

/// Where a prepared statement lives: a command keeps it, its connection empties it before the session ends.
struct PreparedSlot {
    std::unique_ptr<PreparedStatement> statement;
};

/// One session with a database.
///
/// Every failure of an operation on the connection, on its commands and on its recordsets throws AdoError and
/// is listed, whole, by `Errors` until the next operation that reaches the database begins; so are the
/// messages, SQLSTATE 01..., that come with a success.
class Connection : public std::enable_shared_from_this<Connection> {
public:
    /// Connections live in shared_ptr: commands and recordsets refer to the connection they belong to.
    /// The driver is shared because it outlives its sessions, whoever lets go of it first.
    static std::shared_ptr<Connection> create(std::shared_ptr<Driver> driver);
    /// Closes; an open transaction is rolled back.
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    const std::string& ConnectionString() const { return connectionString_; }
    /// \throws AdoError 3705 while the connection is open.
    void ConnectionString(std::string connectionString);
    /// Seconds; 0 is no limit. 30 unless set. Used by this object's own `Execute` and by recordsets opened
    /// from a text.
    int CommandTimeout() const { return commandTimeout_; }
    /// \throws AdoError 3001 when negative.
    void CommandTimeout(int seconds);

    /// An empty `connectionString` means the property's value; another one becomes the property's value.
    /// \throws AdoError 3705 when already open, 3251 for asynchronous options, and what the driver throws.
    void Open(const std::string& connectionString = {}, const std::string& user = {},
              const std::string& password = {}, int options = adConnectUnspecified);
    /// Gives up the prepared statements of the connection's commands and closes the recordsets that are still
    /// attached to it; what they had pending is lost. The objects themselves stay valid: executing such a
    /// command is refused (3709) until the connection is open again, using such a recordset (3704) until it
    /// is opened again. \throws AdoError 3704 when not open, 3246 while a transaction is open.
    void Close();
    ObjectStateEnum State() const { return session_ ? adStateOpen : adStateClosed; }

    /// Executes a text (or, with `adCmdStoredProc` in `options`, a procedure without parameters; with
    /// `adCmdTable`, all rows of a table). Empty with `adExecuteNoRecords`, otherwise as `Command::Execute`.
    /// \throws AdoError 3709 when the connection is closed, and every failure of the database.
    std::shared_ptr<Recordset> Execute(const std::string& text, std::int64_t* recordsAffected = nullptr,
                                       int options = adCmdText);

    /// Transactions do not nest. \returns the nesting level, always 1.
    /// \throws AdoError 3709 when closed, `adErrTransactionExists` when one is open.
    int BeginTrans();
    /// After a failure the transaction is still open and can be rolled back.
    /// \throws AdoError 3709 when closed, `adErrNoTransaction` without a transaction, and what the database
    /// reports.
    void CommitTrans();
    /// `Errors` still lists what led to it. After a failure the transaction counts as ended: the database has
    /// already undone it.
    /// \throws AdoError 3709 when closed, `adErrNoTransaction` without a transaction, and what the database
    /// reports.
    void RollbackTrans();
    /// Whether `BeginTrans` was called and neither commit nor rollback has followed.
    bool inTransaction() const { return inTransaction_; }

    /// What the last operation has reported: of a failure first the cause, of a success the messages.
    const ado::Errors& Errors() const { return errors_; }

private:
    friend class Command;
    friend class Parameters;
    friend class Recordset;
    explicit Connection(std::shared_ptr<Driver> driver);

    /// Runs `operation(session)` with `Errors` empty at its start and filled by its failure, or with what a
    /// statement's result says.
    template<class Operation>
    decltype(auto) guarded(Operation&& operation) {
        return recorded([&]() -> decltype(auto) {
            using Result = std::invoke_result_t<Operation, Session&>;
            if constexpr (std::is_same_v<Result, StatementResult>) {
                StatementResult result = operation(openSession());
                errors_ = std::move(result.messages);
                return result;
            } else {
                return operation(openSession());
            }
        });
    }
    template<class Operation>
    decltype(auto) recorded(Operation&& operation) {
        errors_.clear();
        try {
            return operation();
        } catch (const AdoError& error) {
            errors_ = error.errors();
            throw;
        }
    }
    void record(const AdoError& error) { errors_ = error.errors(); }
    Session& openSession();
    std::shared_ptr<PreparedSlot> prepare(Session& session, std::string_view text,
                                          const std::vector<ParameterInfo>& parameters);
    /// Distinguishes the sessions that this connection has had; 0 while closed.
    std::uint64_t sessionNumber() const { return session_ ? sessionNumber_ : 0; }
    void endSession() noexcept;

    std::shared_ptr<Driver> driver_; // shared with the connection factory and its other connections
    std::unique_ptr<Session> session_;
    std::vector<std::weak_ptr<PreparedSlot>> prepared_;
    std::string connectionString_;
    int commandTimeout_ = 30;
    bool inTransaction_ = false;
    std::uint64_t sessionNumber_ = 0;
    ado::Errors errors_;
};

} // namespace veldran::ado
