#pragma once

#include "adapters/tsql/ast_names.h"
#include "adapters/tsql/box.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace veldran::tsql {

struct Expression;
struct Query;

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

} // namespace veldran::tsql
