#include "adapters/tsql/parser.h"

#include "adapters/tsql/grammar.h"
#include "adapters/tsql/lexer.h"

namespace veldran::tsql {

Batch parseBatch(std::string_view text, const SourcePosition& origin) {
    return Grammar(TokenStream(tokenize(text, origin))).batch();
}

Expression parseExpression(std::string_view text) {
    return Grammar(TokenStream(tokenize(text))).loneExpression();
}

} // namespace veldran::tsql
