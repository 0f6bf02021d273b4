#pragma once

#include "adapters/tsql/ast_expressions.h"

#include <optional>
#include <string>
#include <vector>

namespace veldran::tsql {

struct SetIdentityInsert {
    QualifiedName table;
    bool on = false;

    bool operator==(const SetIdentityInsert&) const = default;
};

// SET NOCOUNT, XACT_ABORT ON; names in capitals. A value other than ON or OFF is kept in `value`, as in
// SET LOCK_TIMEOUT 5000 or SET TRANSACTION ISOLATION LEVEL READ COMMITTED (one name, one value).
struct SetOption {
    std::vector<std::string> names;
    bool on = false;
    std::optional<std::string> value;

    bool operator==(const SetOption&) const = default;
};

enum class TransactionAction { Begin, Commit, Rollback, Save };

struct TransactionStatement {
    TransactionAction action = TransactionAction::Begin;
    std::optional<std::string> name;

    bool operator==(const TransactionStatement&) const = default;
};

struct Statement;

struct Block {
    std::vector<Statement> statements; // at least one

    bool operator==(const Block&) const = default;
};

struct IfStatement {
    Expression condition;
    Box<Statement> then;
    std::optional<Box<Statement>> otherwise;

    bool operator==(const IfStatement&) const = default;
};

struct WhileStatement {
    Expression condition;
    Box<Statement> body;

    bool operator==(const WhileStatement&) const = default;
};

struct BreakStatement {
    bool operator==(const BreakStatement&) const = default;
};

struct ContinueStatement {
    bool operator==(const ContinueStatement&) const = default;
};

struct VariableDeclaration {
    NodeSpan span;
    std::string name;
    DataType type;
    std::optional<Expression> initial;

    bool operator==(const VariableDeclaration&) const = default;
};

struct DeclareStatement {
    std::vector<VariableDeclaration> variables;

    bool operator==(const DeclareStatement&) const = default;
};

struct SetVariable {
    std::string variable;
    Expression value;

    bool operator==(const SetVariable&) const = default;
};

struct ReturnStatement {
    std::optional<Expression> value;

    bool operator==(const ReturnStatement&) const = default;
};

struct PrintStatement {
    Expression message;

    bool operator==(const PrintStatement&) const = default;
};

// RAISERROR(message, severity, state, arguments...)
struct RaiseErrorStatement {
    std::vector<Expression> arguments; // at least three

    bool operator==(const RaiseErrorStatement&) const = default;
};

// THROW number, message, state
struct ThrowStatement {
    Expression number;
    Expression message;
    Expression state;

    bool operator==(const ThrowStatement&) const = default;
};

struct ExecuteArgument {
    std::optional<std::string> name; // @P = value; without it the argument goes by position
    Expression value;                // DefaultValue when the procedure's own default is asked for
    bool output = false;

    bool operator==(const ExecuteArgument&) const = default;
};

struct ExecuteStatement {
    std::optional<std::string> returnVariable; // EXEC @V = P ...
    QualifiedName procedure;
    std::vector<ExecuteArgument> arguments;

    bool operator==(const ExecuteStatement&) const = default;
};

} // namespace veldran::tsql
