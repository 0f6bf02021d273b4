#pragma once

#include "adapters/tsql/ast_expressions.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace veldran::tsql {

// * or T.*
struct AllColumns {
    std::optional<QualifiedName> qualifier;

    bool operator==(const AllColumns&) const = default;
};

// expression [AS] alias, or alias = expression.
struct SelectValue {
    Expression expression;
    std::optional<std::string> alias;

    bool operator==(const SelectValue&) const = default;
};

// @V = expression
struct SelectAssignment {
    std::string variable;
    Expression expression;

    bool operator==(const SelectAssignment&) const = default;
};

struct SelectItem {
    NodeSpan span;
    std::variant<AllColumns, SelectValue, SelectAssignment> node;

    bool operator==(const SelectItem&) const = default;
};

struct TableSource;

// A table or working table by name; lock hints are kept as written, in capitals.
struct NamedTable {
    QualifiedName name;
    std::optional<std::string> alias;
    std::vector<std::string> hints;

    bool operator==(const NamedTable&) const = default;
};

// (SELECT ...) AS alias [(column, ...)]
struct DerivedTable {
    Box<Query> query;
    std::string alias;
    std::vector<std::string> columns;

    bool operator==(const DerivedTable&) const = default;
};

// F(a, b) [AS alias]: a table-valued function.
struct TableFunction {
    QualifiedName name;
    std::vector<Expression> arguments;
    std::optional<std::string> alias;

    bool operator==(const TableFunction&) const = default;
};

// (A INNER JOIN B ON ...)
struct NestedJoin {
    Box<TableSource> source;

    bool operator==(const NestedJoin&) const = default;
};

struct TablePrimary {
    NodeSpan span;
    std::variant<NamedTable, DerivedTable, TableFunction, NestedJoin> node;

    bool operator==(const TablePrimary&) const = default;
};

enum class JoinKind { Inner, LeftOuter, Cross, CrossApply, OuterApply };

struct JoinStep {
    NodeSpan span;
    JoinKind kind = JoinKind::Inner;
    TablePrimary right;
    std::optional<Expression> on; // there exactly for Inner and LeftOuter

    bool operator==(const JoinStep&) const = default;
};

// One item of a FROM list: a primary and the joins applied to it from left to right.
struct TableSource {
    NodeSpan span;
    TablePrimary first;
    std::vector<JoinStep> joins;

    bool operator==(const TableSource&) const = default;
};

struct SelectSpecification {
    NodeSpan span;
    bool distinct = false;
    std::optional<Expression> top; // row count
    std::vector<SelectItem> items; // at least one
    std::optional<QualifiedName> into;
    std::vector<TableSource> from; // comma list; empty without FROM
    std::optional<Expression> where;
    std::vector<Expression> groupBy;
    std::optional<Expression> having;

    bool operator==(const SelectSpecification&) const = default;
};

// A SELECT, or a whole query in parentheses.
struct QueryTerm {
    std::variant<SelectSpecification, Box<Query>> node;

    bool operator==(const QueryTerm&) const = default;
};

struct UnionStep {
    bool all = false;
    QueryTerm right;

    bool operator==(const UnionStep&) const = default;
};

// first [UNION [ALL] right]... [ORDER BY ...]; unions are applied from left to right.
struct Query {
    NodeSpan span;
    QueryTerm first;
    std::vector<UnionStep> unions;
    std::vector<OrderItem> orderBy;

    bool operator==(const Query&) const = default;
};

} // namespace veldran::tsql
