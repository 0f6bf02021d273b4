#pragma once

#include "adapters/tsql/ast.h"

#include <rapidcheck.h>

namespace veldran::tsql::test {

// Values and conditions of every kind of node, nested to a small depth. Spans are left at their defaults.
rc::Gen<Expression> arbitraryValue(int depth);
rc::Gen<Expression> arbitraryCondition(int depth);

// Queries with joins, unions, groups and orders over such expressions.
rc::Gen<Query> arbitraryQuery(int depth);

} // namespace veldran::tsql::test
