#pragma once

#include "adapters/embedded/tsql/box.h"
#include "adapters/embedded/tsql/source.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace veldran::tsql {

struct Expression;
struct Query;

// server.database.schema.object, or table.column. One to four parts as written, without delimiters; a part
// between two dots may be empty (TEMPDB..#X), the last never is.
struct QualifiedName {
    NodeSpan span;
    std::vector<std::string> parts;

    const std::string& last() const { return parts.back(); }
    bool operator==(const QualifiedName&) const = default;
};

// NCHAR(10), DECIMAL(5, 2), NVARCHAR(MAX). The name is in capitals; which names exist is the binder's matter.
struct DataType {
    NodeSpan span;
    std::string name;
    std::vector<std::int64_t> arguments; // length, or precision and scale, as written
    bool max = false;

    bool operator==(const DataType&) const = default;
};

enum class LiteralKind { Null, Integer, Decimal, Float, String, NationalString, Binary };

// `value` holds the digits as written, or the characters of a string with its quotes undone; empty for NULL.
struct Literal {
    LiteralKind kind = LiteralKind::Null;
    std::string value;

    bool operator==(const Literal&) const = default;
};

struct ColumnReference {
    QualifiedName name;

    bool operator==(const ColumnReference&) const = default;
};

// @X, or @@ROWCOUNT and its like; the name keeps its at-signs.
struct Variable {
    std::string name;

    bool operator==(const Variable&) const = default;
};

// A "?" marker; ordinal 1 is the first in the text of the batch.
struct ParameterMarker {
    std::size_t ordinal = 1;

    bool operator==(const ParameterMarker&) const = default;
};

// DEFAULT as a value; stands only in VALUES rows and in SET clauses.
struct DefaultValue {
    bool operator==(const DefaultValue&) const = default;
};

enum class UnaryOperator { Plus, Minus, BitNot };

struct Unary {
    UnaryOperator op;
    Box<Expression> operand;

    bool operator==(const Unary&) const = default;
};

enum class ArithmeticOperator { Add, Subtract, Multiply, Divide, Modulo, BitAnd, BitOr, BitXor };

struct ArithmeticStep {
    ArithmeticOperator op;
    Box<Expression> operand;

    bool operator==(const ArithmeticStep&) const = default;
};

// A chain of operators of one precedence, applied from left to right: first op1 e1 op2 e2 ... Chains are
// flat, so a long concatenation is no deeper than a short one. "+" is addition or concatenation: types
// decide.
struct Arithmetic {
    Box<Expression> first;
    std::vector<ArithmeticStep> steps; // at least one

    bool operator==(const Arithmetic&) const = default;
};

enum class ComparisonOperator { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

struct Comparison {
    ComparisonOperator op;
    Box<Expression> left;
    Box<Expression> right;

    bool operator==(const Comparison&) const = default;
};

enum class LogicalOperator { And, Or };

// A flat chain of one connective; at least two operands.
struct Logical {
    LogicalOperator op;
    std::vector<Expression> operands;

    bool operator==(const Logical&) const = default;
};

struct Not {
    Box<Expression> operand;

    bool operator==(const Not&) const = default;
};

struct Between {
    Box<Expression> operand;
    Box<Expression> low;
    Box<Expression> high;
    bool negated = false;

    bool operator==(const Between&) const = default;
};

struct InList {
    Box<Expression> operand;
    std::vector<Expression> values; // at least one
    bool negated = false;

    bool operator==(const InList&) const = default;
};

struct InQuery {
    Box<Expression> operand;
    Box<Query> query;
    bool negated = false;

    bool operator==(const InQuery&) const = default;
};

struct Like {
    Box<Expression> operand;
    Box<Expression> pattern;
    std::optional<Box<Expression>> escape;
    bool negated = false;

    bool operator==(const Like&) const = default;
};

struct IsNull {
    Box<Expression> operand;
    bool negated = false;

    bool operator==(const IsNull&) const = default;
};

struct Exists {
    Box<Query> query;

    bool operator==(const Exists&) const = default;
};

struct ScalarSubquery {
    Box<Query> query;

    bool operator==(const ScalarSubquery&) const = default;
};

struct CaseBranch {
    Box<Expression> when; // a value to compare with in a simple CASE, a condition in a searched one
    Box<Expression> then;

    bool operator==(const CaseBranch&) const = default;
};

// Simple when `operand` is there, searched when it is not.
struct Case {
    std::optional<Box<Expression>> operand;
    std::vector<CaseBranch> branches; // at least one
    std::optional<Box<Expression>> otherwise;

    bool operator==(const Case&) const = default;
};

// CAST(operand AS type), or CONVERT(type, operand [, style]) when `convert` is set.
struct Cast {
    Box<Expression> operand;
    DataType type;
    bool convert = false;
    std::optional<Box<Expression>> style;

    bool operator==(const Cast&) const = default;
};

struct Collate {
    Box<Expression> operand;
    std::string collation;

    bool operator==(const Collate&) const = default;
};

struct OrderItem {
    Box<Expression> expression;
    bool descending = false;

    bool operator==(const OrderItem&) const = default;
};

struct Over {
    std::vector<Expression> partitionBy;
    std::vector<OrderItem> orderBy;

    bool operator==(const Over&) const = default;
};

// F(a, b), DBO.F(a), COUNT(*), COUNT(DISTINCT a), ROW_NUMBER() OVER (ORDER BY a).
struct FunctionCall {
    QualifiedName name;
    std::vector<Expression> arguments;
    bool distinct = false;
    bool star = false;
    std::optional<Over> over;

    bool operator==(const FunctionCall&) const = default;
};

// IDENTITY(INT, 1, 1): a running-number column of a SELECT ... INTO.
struct IdentityFunction {
    DataType type;
    std::int64_t seed = 1;
    std::int64_t increment = 1;

    bool operator==(const IdentityFunction&) const = default;
};

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
