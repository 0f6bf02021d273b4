#include "adapters/tsql/lexer.h"

#include "adapters/tsql/messages.h"

namespace veldran::tsql {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

// Bytes beyond ASCII belong to accented letters and are letters too.
bool beginsWord(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '#' ||
           static_cast<unsigned char>(c) >= 0x80U;
}

bool continuesWord(char c) {
    return beginsWord(c) || isDigit(c) || c == '@' || c == '$';
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// Characters of the symbol at the begin of the text: the longest that it can be read as, 0 when it is none.
std::size_t symbolLength(std::string_view text) {
    const char next = text.size() > 1 ? text[1] : '\0';
    switch (text.front()) {
    case '<':
        return next == '=' || next == '>' ? 2 : 1;
    case '!':
        return next == '=' || next == '<' || next == '>' ? 2 : 0;
    case '>':
    case '+':
    case '-':
    case '*':
    case '/':
    case '%':
    case '&':
    case '|':
    case '^':
        return next == '=' ? 2 : 1;
    case '(':
    case ')':
    case ',':
    case '.':
    case ';':
    case '=':
    case '~':
        return 1;
    default:
        return 0;
    }
}

// A token and the blanks before it in the texts that the screen sends.
constexpr std::size_t usualTokenLength = 5;

class Lexer {
public:
    Lexer(std::string_view text, const SourcePosition& origin)
        : text_(text), position_(origin), origin_(origin.offset) {}

    std::vector<Token> run() {
        if (rest().starts_with(byteOrderMark)) {
            skip(byteOrderMark.size());
        }
        std::vector<Token> tokens;
        tokens.reserve(text_.size() / usualTokenLength + 2);
        do {
            skipBlanksAndComments();
            tokens.push_back(next());
        } while (tokens.back().kind != TokenKind::End);
        return tokens;
    }

private:
    std::string_view rest() const { return text_.substr(index_); }
    char peek(std::size_t ahead = 0) const {
        return index_ + ahead < text_.size() ? text_[index_ + ahead] : '\0';
    }
    bool atEnd() const { return index_ >= text_.size(); }

    void skip(std::size_t count = 1) { index_ += count; }

    // Lines and columns are counted only here: most characters are read without their place.
    const SourcePosition& position() {
        for (; counted_ < index_; ++counted_) {
            const auto byte = static_cast<unsigned char>(text_[counted_]);
            if (byte == '\n') {
                ++position_.line;
                position_.column = 1;
            } else if ((byte & 0xC0U) != 0x80U) {
                ++position_.column;
            }
        }
        position_.offset = origin_ + index_;
        return position_;
    }

    void skipBlanksAndComments() {
        while (!atEnd()) {
            if (isBlank(peek())) {
                skip();
            } else if (peek() == '-' && peek(1) == '-') {
                while (!atEnd() && peek() != '\n') {
                    skip();
                }
            } else if (peek() == '/' && peek(1) == '*') {
                skipComment();
            } else {
                return;
            }
        }
    }

    // Comments nest: "/* a /* b */ c */" is one comment.
    void skipComment() {
        const SourcePosition opening = position();
        std::size_t open = 0;
        do {
            if (atEnd()) {
                throw unclosedComment(opening);
            }
            if (rest().starts_with("/*")) {
                ++open;
                skip(2);
            } else if (rest().starts_with("*/")) {
                --open;
                skip(2);
            } else {
                skip();
            }
        } while (open > 0);
    }

    Token next() {
        begin_ = position();
        beginIndex_ = index_;
        if (atEnd()) {
            return finish(TokenKind::End, {});
        }
        const char c = peek();
        if (c == '\'') {
            return delimited(TokenKind::String, '\'');
        }
        if ((c == 'N' || c == 'n') && peek(1) == '\'') {
            skip();
            return delimited(TokenKind::NationalString, '\'');
        }
        if (c == '[') {
            return delimited(TokenKind::DelimitedIdentifier, ']');
        }
        if (c == '"') {
            return delimited(TokenKind::DelimitedIdentifier, '"');
        }
        if (beginsWord(c)) {
            return word();
        }
        if (c == '@') {
            return variable();
        }
        if (isDigit(c) || (c == '.' && isDigit(peek(1)))) {
            return number();
        }
        if (c == '?') {
            skip();
            return finish(TokenKind::Marker, "?");
        }
        return symbol();
    }

    Token finish(TokenKind kind, std::string text) {
        Token token;
        token.kind = kind;
        token.text = std::move(text);
        token.span = {begin_, position()};
        return token;
    }

    std::string written() const { return std::string(text_.substr(beginIndex_, index_ - beginIndex_)); }

    // From the opening delimiter at the cursor to the closing one; a doubled closing one stands for itself.
    Token delimited(TokenKind kind, char closing) {
        skip();
        std::string value;
        while (peek() != closing || peek(1) == closing) {
            if (atEnd()) {
                throw unclosedString(value, begin_);
            }
            if (peek() == closing) {
                skip();
            }
            value += peek();
            skip();
        }
        skip();
        if (kind == TokenKind::DelimitedIdentifier && value.empty()) {
            throw incorrectSyntax(written(), begin_);
        }
        return finish(kind, std::move(value));
    }

    Token word() {
        while (continuesWord(peek())) {
            skip();
        }
        Token token = finish(TokenKind::Word, written());
        token.upper = toUpper(token.text);
        token.reserved = isReservedWord(token.upper);
        return token;
    }

    Token variable() {
        while (peek() == '@') {
            skip();
        }
        const std::size_t name = index_;
        while (continuesWord(peek())) {
            skip();
        }
        if (index_ == name) {
            throw incorrectSyntax(written(), begin_);
        }
        return finish(TokenKind::Variable, written());
    }

    Token number() {
        if (peek() == '0' && (peek(1) == 'x' || peek(1) == 'X')) {
            skip(2);
            while (isHexDigit(peek())) {
                skip();
            }
            return finish(TokenKind::Binary, written());
        }
        TokenKind kind = TokenKind::Integer;
        skipDigits();
        if (peek() == '.') {
            kind = TokenKind::Decimal;
            skip();
            skipDigits();
        }
        if (peek() == 'e' || peek() == 'E') {
            const std::size_t sign = peek(1) == '+' || peek(1) == '-' ? 1 : 0;
            if (isDigit(peek(1 + sign))) {
                kind = TokenKind::Float;
                skip(1 + sign);
                skipDigits();
            }
        }
        return finish(kind, written());
    }

    void skipDigits() {
        while (isDigit(peek())) {
            skip();
        }
    }

    Token symbol() {
        const std::size_t length = symbolLength(rest());
        if (length == 0) {
            skip();
            throw incorrectSyntax(written(), begin_);
        }
        skip(length);
        return finish(TokenKind::Symbol, written());
    }

    std::string_view text_;
    SourcePosition position_; // of the character at `counted_`, but for its offset
    std::size_t origin_;
    SourcePosition begin_;
    std::size_t index_ = 0;
    std::size_t beginIndex_ = 0;
    std::size_t counted_ = 0;
};

} // namespace

std::vector<Token> tokenize(std::string_view text, const SourcePosition& origin) {
    return Lexer(text, origin).run();
}

} // namespace veldran::tsql
