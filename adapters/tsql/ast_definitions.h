#pragma once

#include "adapters/tsql/ast_expressions.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace veldran::tsql {

enum class KeyKind { PrimaryKey, Unique };

enum class Clustering { Unspecified, Clustered, Nonclustered };

struct IndexColumn {
    std::string name;
    bool descending = false;

    bool operator==(const IndexColumn&) const = default;
};

// [CONSTRAINT name] PRIMARY KEY | UNIQUE [CLUSTERED | NONCLUSTERED] (columns); inline in a column definition
// the columns are empty: the key is that column.
struct KeyConstraint {
    NodeSpan span;
    std::optional<std::string> name;
    KeyKind kind = KeyKind::PrimaryKey;
    Clustering clustering = Clustering::Unspecified;
    std::vector<IndexColumn> columns;

    bool operator==(const KeyConstraint&) const = default;
};

// [CONSTRAINT name] CHECK (condition)
struct CheckConstraint {
    NodeSpan span;
    std::optional<std::string> name;
    Expression condition;

    bool operator==(const CheckConstraint&) const = default;
};

using TableConstraint = std::variant<KeyConstraint, CheckConstraint>;

// [CONSTRAINT name] DEFAULT value
struct DefaultConstraint {
    std::optional<std::string> name;
    Expression value;

    bool operator==(const DefaultConstraint&) const = default;
};

struct IdentityProperty {
    std::int64_t seed = 1;
    std::int64_t increment = 1;

    bool operator==(const IdentityProperty&) const = default;
};

struct ColumnDefinition {
    NodeSpan span;
    std::string name;
    DataType type;
    std::optional<std::string> collation;
    std::optional<bool> nullable; // as written; absent when neither NULL nor NOT NULL was
    std::optional<IdentityProperty> identity;
    std::optional<DefaultConstraint> defaultValue;
    std::vector<TableConstraint> constraints; // inline keys and checks

    bool operator==(const ColumnDefinition&) const = default;
};

struct CreateTable {
    QualifiedName name;
    std::vector<ColumnDefinition> columns; // at least one
    std::vector<TableConstraint> constraints;

    bool operator==(const CreateTable&) const = default;
};

// ALTER TABLE name ADD <constraint or column>
struct AlterTableAdd {
    QualifiedName table;
    std::variant<KeyConstraint, CheckConstraint, ColumnDefinition> addition;

    bool operator==(const AlterTableAdd&) const = default;
};

struct CreateIndex {
    bool unique = false;
    Clustering clustering = Clustering::Unspecified;
    std::string name;
    QualifiedName table;
    std::vector<IndexColumn> columns;

    bool operator==(const CreateIndex&) const = default;
};

enum class DropKind { Table, Index, Procedure, Function };

struct DropTarget {
    QualifiedName name;
    std::optional<QualifiedName> table; // the ON table of an index, and only of an index

    bool operator==(const DropTarget&) const = default;
};

struct DropStatement {
    DropKind kind = DropKind::Table;
    bool ifExists = false;
    std::vector<DropTarget> targets;

    bool operator==(const DropStatement&) const = default;
};

struct TruncateTable {
    QualifiedName name;

    bool operator==(const TruncateTable&) const = default;
};

} // namespace veldran::tsql
