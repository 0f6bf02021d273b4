#pragma once

#include "adapters/embedded/fragment.h"
#include "adapters/tsql/ast_expressions.h"

#include <optional>
#include <utility>
#include <vector>

namespace veldran::embedded {

/// a op b, typed as the server types it: "+" joins texts or adds numbers, whole numbers divide to whole
/// numbers, decimals keep their scale. Overflow and division by zero are refused when the statement runs.
/// \throws AdoError when the operator does not exist for the types.
Fragment applyArithmetic(tsql::ArithmeticOperator op, const Fragment& a, const Fragment& b);
Fragment negated(const Fragment& value);

/// a op b with both sides brought to a common type; texts compare by the collation.
Condition compare(tsql::ComparisonOperator op, const Fragment& a, const Fragment& b);
/// Both sides as `compare` would see them.
std::pair<Fragment, Fragment> comparable(const Fragment& a, const Fragment& b);

/// value IN (list).
Condition isAmong(const Fragment& value, const std::vector<Fragment>& list, bool negate);
/// value LIKE pattern, with an optional escape text.
Condition isLike(const Fragment& value, const Fragment& pattern, const std::optional<Fragment>& escape,
                 bool negate);

} // namespace veldran::embedded
