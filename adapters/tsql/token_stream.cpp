#include "adapters/tsql/token_stream.h"

#include "adapters/tsql/messages.h"
#include "adapters/tsql/parser.h"

#include <algorithm>
#include <charconv>

namespace veldran::tsql {

const Token& TokenStream::take() {
    const Token& token = peek();
    next_ = std::min(next_ + 1, tokens_.size() - 1);
    return token;
}

bool TokenStream::accept(std::string_view spelling) {
    if (!at(spelling)) {
        return false;
    }
    take();
    return true;
}

void TokenStream::expect(std::string_view spelling) {
    if (!accept(spelling)) {
        refuse("'" + std::string(spelling) + "'");
    }
}

bool TokenStream::isIdentifier(const Token& token) {
    return token.kind == TokenKind::DelimitedIdentifier || (token.kind == TokenKind::Word && !token.reserved);
}

std::string TokenStream::takeIdentifier() {
    if (!isIdentifier(peek())) {
        refuse("un nome");
    }
    return take().text;
}

std::int64_t TokenStream::takeInteger() {
    const bool negative = accept("-");
    if (!negative) {
        accept("+");
    }
    const Token& token = peek();
    const std::string digits = (negative ? "-" : "") + token.text;
    std::int64_t value = 0;
    const char* end = digits.data() + digits.size();
    if (token.kind != TokenKind::Integer || std::from_chars(digits.data(), end, value).ec != std::errc{}) {
        refuse("un numero intero");
    }
    take();
    return value;
}

SourceSpan TokenStream::since(const SourcePosition& begin) const {
    if (next_ == 0 || tokens_[next_ - 1].span.end.offset < begin.offset) {
        return {begin, begin};
    }
    return {begin, tokens_[next_ - 1].span.end};
}

const Token& TokenStream::tokenAt(const SourcePosition& begin) const {
    return *std::lower_bound(tokens_.begin(), tokens_.end(), begin,
                             [](const Token& token, const SourcePosition& place) {
                                 return token.span.begin.offset < place.offset;
                             });
}

void TokenStream::refuse(std::string_view expected) const {
    throw incorrectSyntax(peek(), expected);
}

Nesting::Nesting(TokenStream& tokens) : tokens_(tokens) {
    if (tokens_.nesting_ >= maximumNesting) {
        throw nestedTooDeeply(tokens_.position());
    }
    ++tokens_.nesting_;
}

} // namespace veldran::tsql
