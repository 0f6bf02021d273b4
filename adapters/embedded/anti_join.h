#pragma once

#include "adapters/tsql/ast.h"

#include <optional>

namespace veldran::embedded {

/// SELECT A.x FROM A LEFT JOIN B ON A.y = B.z WHERE B.z IS NULL asks which rows of A have no partner in B,
/// row by row. Where only the set of answers counts, as behind IN, the same is asked once for each pair of
/// x and y that there is: SELECT x FROM (SELECT DISTINCT x, y FROM A) WHERE NOT EXISTS (... FROM B ...).
/// Empty for a query of any other shape.
std::optional<tsql::Query> withoutAntiJoin(const tsql::Query& query);

} // namespace veldran::embedded
