#pragma once

#include "adapters/tsql/ast_queries.h"

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

} // namespace veldran::tsql
