#pragma once

#include "adapters/embedded/tsql/ast_definitions.h"
#include "adapters/embedded/tsql/ast_queries.h"

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace veldran::tsql {

struct SelectStatement {
    Query query;

    bool operator==(const SelectStatement&) const = default;
};

using ValuesRow = std::vector<Expression>;

struct InsertValues {
    std::vector<ValuesRow> rows; // at least one, all of one length

    bool operator==(const InsertValues&) const = default;
};

// INSERT INTO T DEFAULT VALUES
struct InsertDefaults {
    bool operator==(const InsertDefaults&) const = default;
};

struct InsertStatement {
    QualifiedName table;
    std::vector<std::string> columns; // empty: all of them, in the table's order
    std::variant<InsertValues, Query, InsertDefaults> source;

    bool operator==(const InsertStatement&) const = default;
};

// COLUMN = value; the column may carry its table's name.
struct Assignment {
    QualifiedName column;
    Expression value;

    bool operator==(const Assignment&) const = default;
};

struct UpdateStatement {
    QualifiedName target; // a table, or the alias of a source of FROM
    std::vector<Assignment> assignments;
    std::vector<TableSource> from;
    std::optional<Expression> where;

    bool operator==(const UpdateStatement&) const = default;
};

struct DeleteStatement {
    QualifiedName target; // a table, or the alias of a source of FROM
    std::vector<TableSource> from;
    std::optional<Expression> where;

    bool operator==(const DeleteStatement&) const = default;
};

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

struct RoutineParameter {
    NodeSpan span;
    std::string name; // with its at-sign
    DataType type;
    std::optional<Expression> defaultValue;
    bool output = false;

    bool operator==(const RoutineParameter&) const = default;
};

enum class DefinitionMode { Create, CreateOrAlter, Alter };

// The body runs to the end of the batch. The span of the whole statement is the source text to be stored.
struct CreateProcedure {
    DefinitionMode mode = DefinitionMode::Create;
    QualifiedName name;
    std::vector<RoutineParameter> parameters;
    std::vector<Statement> body;
    NodeSpan bodySpan;

    bool operator==(const CreateProcedure&) const = default;
};

// RETURNS type AS BEGIN ... END
struct ScalarFunctionBody {
    DataType returns;
    std::vector<Statement> statements;

    bool operator==(const ScalarFunctionBody&) const = default;
};

// RETURNS TABLE AS RETURN (SELECT ...)
struct InlineTableBody {
    Query query;

    bool operator==(const InlineTableBody&) const = default;
};

struct CreateFunction {
    DefinitionMode mode = DefinitionMode::Create;
    QualifiedName name;
    std::vector<RoutineParameter> parameters;
    bool schemaBinding = false;
    std::variant<ScalarFunctionBody, InlineTableBody> body;
    NodeSpan bodySpan;

    bool operator==(const CreateFunction&) const = default;
};

using StatementNode =
    std::variant<SelectStatement, InsertStatement, UpdateStatement, DeleteStatement, CreateTable,
                 AlterTableAdd, CreateIndex, DropStatement, TruncateTable, SetIdentityInsert, SetOption,
                 TransactionStatement, Block, IfStatement, WhileStatement, BreakStatement, ContinueStatement,
                 DeclareStatement, SetVariable, ReturnStatement, PrintStatement, RaiseErrorStatement,
                 ThrowStatement, ExecuteStatement, CreateProcedure, CreateFunction>;

struct Statement {
    NodeSpan span;
    StatementNode node;

    bool operator==(const Statement&) const = default;
};

// What is sent in one go: the statements of a text, and how many "?" markers they hold together.
struct Batch {
    std::vector<Statement> statements;
    std::size_t parameterCount = 0;

    bool operator==(const Batch&) const = default;
};

} // namespace veldran::tsql
