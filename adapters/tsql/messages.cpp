#include "adapters/tsql/messages.h"

namespace veldran::tsql {

namespace {

// Enough to recognise the place by; a statement of a thousand lines does not belong in a message box.
constexpr std::size_t quotedBytes = 40;

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The text between quotes, on one line and cut at a character's boundary when it is long.
std::string quoted(std::string_view text) {
    std::size_t length = text.size();
    if (length > quotedBytes) {
        length = quotedBytes;
        while (length > 0 && continuesCharacter(text[length])) {
            --length;
        }
    }
    std::string shown(text.substr(0, length));
    for (char& character : shown) {
        if (static_cast<unsigned char>(character) < 0x20U) {
            character = ' ';
        }
    }
    return "'" + shown + (length < text.size() ? "...'" : "'");
}

std::string placed(const SourcePosition& position) {
    return " (riga " + std::to_string(position.line) + ", colonna " + std::to_string(position.column) + ")";
}

} // namespace

SyntaxError incorrectSyntax(const Token& token, std::string_view expected) {
    std::string message = "Sintassi non corretta ";
    if (token.kind == TokenKind::End) {
        message += "alla fine del testo";
    } else {
        message += token.reserved ? "vicino alla parola chiave " : "vicino a ";
        message += quoted(token.text);
    }
    message += placed(token.span.begin);
    if (!expected.empty()) {
        message += ": manca " + std::string(expected);
    }
    const auto number =
        token.reserved ? SyntaxErrorNumber::IncorrectSyntaxNearKeyword : SyntaxErrorNumber::IncorrectSyntax;
    return {number, message, token.span.begin};
}

SyntaxError incorrectSyntax(std::string_view text, const SourcePosition& position) {
    return {SyntaxErrorNumber::IncorrectSyntax,
            "Sintassi non corretta vicino a " + quoted(text) + placed(position), position};
}

SyntaxError unclosedString(std::string_view text, const SourcePosition& opening) {
    return {SyntaxErrorNumber::UnclosedString,
            "Virgolette non chiuse dopo la stringa di caratteri " + quoted(text) + placed(opening), opening};
}

SyntaxError unclosedComment(const SourcePosition& opening) {
    return {SyntaxErrorNumber::UnclosedComment, "Commento non chiuso: manca '*/'" + placed(opening), opening};
}

SyntaxError mustBeFirstInBatch(std::string_view statement, const SourcePosition& position) {
    return {SyntaxErrorNumber::MustBeFirstInBatch,
            quoted(statement) + " deve essere la prima istruzione del gruppo" + placed(position), position};
}

SyntaxError nestedTooDeeply(const SourcePosition& position) {
    return {SyntaxErrorNumber::NestedTooDeeply,
            "L'istruzione contiene troppi livelli di annidamento" + placed(position), position};
}

SyntaxError differentRowLengths(const SourcePosition& position) {
    return {SyntaxErrorNumber::DifferentRowLengths,
            "Le righe di VALUES devono avere tutte lo stesso numero di valori" + placed(position), position};
}

SyntaxError conditionExpected(const Token& token) {
    const std::string near =
        token.kind == TokenKind::End ? "alla fine del testo" : "vicino a " + quoted(token.text);
    return {SyntaxErrorNumber::ConditionExpected,
            "Espressione non booleana dove è richiesta una condizione, " + near + placed(token.span.begin),
            token.span.begin};
}

} // namespace veldran::tsql
