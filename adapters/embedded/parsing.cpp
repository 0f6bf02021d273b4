#include "adapters/embedded/parsing.h"

#include "adapters/embedded/errors.h"
#include "adapters/tsql/lexer.h"
#include "adapters/tsql/parser.h"

#include <algorithm>

namespace veldran::embedded {

tsql::Batch parseText(std::string_view text, std::size_t line) {
    try {
        return tsql::parseBatch(text, {0, line, 1});
    } catch (const tsql::SyntaxError& error) {
        fail(error.number(), error.sqlState(), error.what());
    }
}

namespace {

// Most names are one word of plain letters: nothing has to be taken apart.
bool isPlainWord(std::string_view text) {
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; };
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    return !text.empty() && isLetter(text.front()) &&
           std::all_of(text.begin(), text.end(), [&](char c) { return isLetter(c) || isDigit(c); });
}

} // namespace

std::optional<tsql::QualifiedName> parseObjectName(std::string_view text) {
    tsql::QualifiedName name;
    if (isPlainWord(text)) {
        name.parts.emplace_back(text);
        return name;
    }
    bool wantsPart = true;
    try {
        for (const tsql::Token& token : tsql::tokenize(text)) {
            const bool isPart =
                token.kind == tsql::TokenKind::Word || token.kind == tsql::TokenKind::DelimitedIdentifier;
            if (isPart && wantsPart) {
                name.parts.push_back(token.text);
                wantsPart = false;
            } else if (token.is(".")) {
                if (wantsPart) {
                    name.parts.emplace_back();
                }
                wantsPart = true;
            } else if (token.kind != tsql::TokenKind::End) {
                return std::nullopt;
            }
        }
    } catch (const tsql::SyntaxError&) {
        return std::nullopt;
    }
    return name.parts.empty() || wantsPart ? std::nullopt : std::optional(name);
}

std::string writtenName(const tsql::QualifiedName& name) {
    std::string text;
    for (const std::string& part : name.parts) {
        text += (text.empty() ? "" : ".") + part;
    }
    return text;
}

} // namespace veldran::embedded
