#pragma once

#include "adapters/tsql/ast_changes.h"
#include "adapters/tsql/ast_control.h"
#include "adapters/tsql/ast_definitions.h"
#include "adapters/tsql/ast_queries.h"
#include "adapters/tsql/ast_routines.h"

#include <cstddef>
#include <variant>
#include <vector>

namespace veldran::tsql {

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
