#pragma once

#include "adapters/tsql/token.h"

#include <string_view>
#include <vector>

namespace veldran::tsql {

// Cuts a text into tokens; blanks and comments ("--" to the end of the line, nested "/* */") fall away. The
// last token is always End, standing after the last character. `origin` is the place of the first character.
// \throws SyntaxError for a string, delimited identifier or comment that is not closed, and for a character
// that begins no token.
std::vector<Token> tokenize(std::string_view text, const SourcePosition& origin = {});

} // namespace veldran::tsql
