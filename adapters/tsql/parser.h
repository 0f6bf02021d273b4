#pragma once

#include "adapters/tsql/ast.h"

#include <string_view>

namespace veldran::tsql {

// How deeply constructs may nest (parentheses, subqueries, CASE, blocks). Deeper texts are refused with error
// 191 before they can exhaust the stack; every tree that parsing yields is at most this deep in constructs.
inline constexpr int maximumNesting = 128;

// Parses one batch (a text without GO lines). An empty text gives an empty batch. `origin` is the place of
// the text's first character in the script it was cut from, so that refusals name places of the script.
// \throws SyntaxError for anything that is not understood.
Batch parseBatch(std::string_view text, const SourcePosition& origin = {});

// Parses a text that is one value or one condition and nothing else.
// \throws SyntaxError for anything that is not understood.
Expression parseExpression(std::string_view text);

} // namespace veldran::tsql
