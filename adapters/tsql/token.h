#pragma once

#include "adapters/tsql/source.h"

#include <string>
#include <string_view>

namespace veldran::tsql {

enum class TokenKind {
    Word,                // SELECT, CONTO, #TESTATA: keywords and regular identifiers
    DelimitedIdentifier, // [a name] or "a name"
    Variable,            // @CONTO, @@ROWCOUNT
    Marker,              // ?
    String,              // 'text'
    NationalString,      // N'text'
    Integer,             // 12
    Decimal,             // 12.50
    Float,               // 1.25E2
    Binary,              // 0x0AFF
    Symbol,              // ( ) , . ; and the operators
    End                  // after the last character
};

// One lexical unit. `text` is its value: delimiters removed and doubled delimiters undone for strings and
// delimited identifiers, the characters as written for everything else. `upper` is the text in capitals for a
// Word (keywords are case blind) and for nothing else.
struct Token {
    TokenKind kind = TokenKind::End;
    std::string text;
    std::string upper;
    bool reserved = false; // a Word that the language keeps for itself
    SourceSpan span;

    // True for the keyword or symbol of this spelling; delimited identifiers and strings never match.
    bool is(std::string_view spelling) const {
        return (kind == TokenKind::Word && upper == spelling) ||
               (kind == TokenKind::Symbol && text == spelling);
    }
};

// Whether the word, in capitals, is one of the language's reserved keywords.
bool isReservedWord(std::string_view upperCaseWord);

// ASCII capitals; other characters pass unchanged.
std::string toUpper(std::string_view text);

// Names are case blind throughout the language.
bool equalNames(std::string_view left, std::string_view right);

} // namespace veldran::tsql
