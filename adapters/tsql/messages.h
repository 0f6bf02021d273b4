#pragma once

#include "adapters/tsql/token.h"

#include <string>
#include <string_view>

namespace veldran::tsql {

// The refusals of the front end, worded once. Each names the place as "(riga L, colonna C)".

// The text at the token has no business there: 156 for a reserved word, 102 for anything else. `expected`,
// when not empty, says what would have been right.
SyntaxError incorrectSyntax(const Token& token, std::string_view expected = {});

// The same for a stretch of raw text at a place.
SyntaxError incorrectSyntax(std::string_view text, const SourcePosition& position);

SyntaxError unclosedString(std::string_view text, const SourcePosition& opening);
SyntaxError unclosedComment(const SourcePosition& opening);
SyntaxError mustBeFirstInBatch(std::string_view statement, const SourcePosition& position);
SyntaxError nestedTooDeeply(const SourcePosition& position);

// A row of VALUES at this place has more or fewer values than the first one.
SyntaxError differentRowLengths(const SourcePosition& position);

// A value stands where a condition is asked for; `token` is what follows it.
SyntaxError conditionExpected(const Token& token);

} // namespace veldran::tsql
