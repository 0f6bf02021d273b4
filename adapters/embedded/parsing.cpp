#include "adapters/embedded/parsing.h"

#include "adapters/embedded/errors.h"
#include "adapters/tsql/lexer.h"
#include "adapters/tsql/parser.h"

namespace veldran::embedded {

tsql::Batch parseText(std::string_view text, std::size_t line) {
    try {
        return tsql::parseBatch(text, {0, line, 1});
    } catch (const tsql::SyntaxError& error) {
        fail(error.number(), error.sqlState(), error.what());
    }
}

std::optional<tsql::QualifiedName> parseObjectName(std::string_view text) {
    tsql::QualifiedName name;
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
