#pragma once

#include "adapters/tsql/ast_conditions.h"
#include "adapters/tsql/ast_values.h"
#include "adapters/tsql/source.h"

#include <variant>

namespace veldran::tsql {

using ExpressionNode =
    std::variant<Literal, ColumnReference, Variable, ParameterMarker, DefaultValue, Unary, Arithmetic,
                 Comparison, Logical, Not, Between, InList, InQuery, Like, IsNull, Exists, ScalarSubquery,
                 Case, Cast, Collate, FunctionCall, IdentityFunction>;

// A value or a condition. Parentheses leave no node of their own: the tree's shape says what they said.
struct Expression {
    NodeSpan span;
    ExpressionNode node;

    bool operator==(const Expression&) const = default;
};

// Whether the expression is a condition (true, false or unknown) rather than a value. The parser lets
// conditions stand only where conditions are asked for, and values only where values are.
bool isCondition(const Expression& expression);

} // namespace veldran::tsql
