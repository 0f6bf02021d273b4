#pragma once

#include "adapters/tsql/box.h"

#include <optional>
#include <vector>

namespace veldran::tsql {

struct Expression;
struct Query;

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

} // namespace veldran::tsql
