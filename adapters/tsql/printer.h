#pragma once

#include "adapters/tsql/ast.h"

#include <string>

namespace veldran::tsql {

// Canonical T-SQL of a tree: keywords in capitals, names delimited where they must be, parentheses where the
// shape needs them. Parsing the text gives an equal tree back.
std::string toText(const Expression& expression);
std::string toText(const Query& query);
std::string toText(const Batch& batch);

} // namespace veldran::tsql
