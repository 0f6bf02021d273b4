#pragma once

#include "adapters/odbc/connection_string.h"
#include "adapters/odbc/handle.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace veldran::odbc {

/// One connection with a server, and what is known of its state: whether it still stands, and whether the
/// server has undone the open transaction by itself.
///
/// Transactions are opened and ended by statements, in the driver's autocommit mode: so a transaction that
/// the server has undone (a deadlock's victim) is noticed, and nothing that follows is written outside it.
class Link {
public:
    /// \throws AdoError what the driver says, behind a sentence that tells a refused sign-in from a server
    /// that cannot be reached. The password is in none of it.
    Link(const EnvironmentHandle& environment, const ConnectionTarget& target);
    /// An open transaction is rolled back.
    ~Link();
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    SQLHDBC handle() const { return connection_.get(); }
    /// Whether the server is SQL Server or speaks as it does.
    bool speaksTransactSql() const { return transactSql_; }
    bool isLost() const { return state_ == State::Lost; }
    bool inTransaction() const { return state_ == State::InTransaction; }

    /// \throws AdoError 08S01 when the connection was lost, 3998 when the server has undone the transaction
    /// that is to be ended first.
    void requireUsable() const;
    /// What a failure means for the connection is noted; then it is thrown.
    [[noreturn]] void fail(ado::Errors errors);

    void begin();
    /// \throws AdoError 3998 when the server has undone the transaction.
    void commit();
    /// A transaction that the server has undone already, or that went with the connection, is rolled back.
    void rollback();

private:
    enum class State { Idle, InTransaction, Undone, Lost };

    void connect(const ConnectionTarget& target);
    void settle();
    /// \param seconds after which it is given up; 0 is no limit
    void run(std::u16string_view text, std::uintptr_t seconds = 0);
    bool isDead() const;
    bool transactionIsGone();

    ConnectionHandle connection_;
    State state_ = State::Idle;
    bool connected_ = false;
    bool transactSql_ = false;
};

} // namespace veldran::odbc
