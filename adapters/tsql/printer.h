#pragma once

#include "adapters/tsql/ast.h"

#include <string>

namespace veldran::tsql {

// Canonical T-SQL of a tree: keywords in capitals, names delimited where they must be, parentheses where the
// shape needs them. Parsing the text gives an equal tree back.
std::string toText(const Expression& expression);
std::string toText(const Query& query);
std::string toText(const Statement& statement);
std::string toText(const Batch& batch);

std::string toText(const QualifiedName& name);
std::string toText(const DataType& type);

} // namespace veldran::tsql
