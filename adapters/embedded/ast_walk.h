#pragma once

#include "adapters/tsql/ast.h"

#include <vector>

namespace veldran::embedded {

/// The first column that stands outside every aggregate and is no part of the grouping; null when there is
/// none. Subqueries are not looked into.
const tsql::ColumnReference* ungroupedColumn(const tsql::Expression& expression,
                                             const std::vector<tsql::Expression>& groupBy);

/// The first subquery in the value that is a value or EXISTS; null when there is none.
const tsql::Expression* firstSubquery(const tsql::Expression& value);

} // namespace veldran::embedded
