#pragma once

#include "adapters/tsql/token.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::tsql {

// The tokens of a text with a reading place in front of one of them, and the count of open constructs.
// Reading only moves forward: the grammar decides by looking ahead.
class TokenStream {
public:
    explicit TokenStream(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

    // The token `ahead` places further on; End from the end of the text onwards.
    const Token& peek(std::size_t ahead = 0) const {
        return tokens_[std::min(next_ + ahead, tokens_.size() - 1)];
    }
    bool at(std::string_view spelling) const { return peek().is(spelling); }
    bool at(std::string_view first, std::string_view second) const { return at(first) && peek(1).is(second); }
    bool at(TokenKind kind) const { return peek().kind == kind; }
    bool atStart() const { return next_ == 0; }

    const Token& take();
    bool accept(std::string_view spelling);

    // Takes the keyword or symbol. \throws SyntaxError when another token stands here.
    void expect(std::string_view spelling);

    // Takes an identifier, delimited or not, and gives its characters. Reserved words are no identifiers.
    // \throws SyntaxError when none stands here.
    std::string takeIdentifier();
    static bool isIdentifier(const Token& token);

    // Takes an integer that fits 64 bits, with an optional sign. \throws SyntaxError otherwise.
    std::int64_t takeInteger();

    // Where the next token begins, and the stretch from there to the last token taken.
    const SourcePosition& position() const { return peek().span.begin; }
    SourceSpan since(const SourcePosition& begin) const;

    // The token that begins at this place, which must be the begin of one already taken.
    const Token& tokenAt(const SourcePosition& begin) const;

    // \throws SyntaxError naming the next token.
    [[noreturn]] void refuse(std::string_view expected = {}) const;

private:
    friend class Nesting;

    std::vector<Token> tokens_;
    std::size_t next_ = 0;
    int nesting_ = 0;
};

// One open construct, for as long as it lives. \throws SyntaxError (191) when too many are open.
class Nesting {
public:
    explicit Nesting(TokenStream& tokens);
    ~Nesting() { --tokens_.nesting_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    TokenStream& tokens_;
};

} // namespace veldran::tsql
