#include "adapters/tsql/script.h"

#include "adapters/tsql/lexer.h"
#include "adapters/tsql/messages.h"

#include <charconv>

namespace veldran::tsql {

namespace {

// What a GO line says, and where its last word ends.
struct Separator {
    int repetitions = 1;
    std::size_t tokens = 1;
};

bool beginsLine(const std::vector<Token>& tokens, std::size_t index) {
    return index == 0 || tokens[index - 1].span.end.line < tokens[index].span.begin.line;
}

bool isSeparator(const std::vector<Token>& tokens, std::size_t index) {
    return tokens[index].is("GO") && beginsLine(tokens, index);
}

Separator readSeparator(const std::vector<Token>& tokens, std::size_t index) {
    Separator separator;
    const std::size_t line = tokens[index].span.begin.line;
    const Token* next = &tokens[index + 1];
    if (next->kind == TokenKind::Integer && next->span.begin.line == line) {
        const char* end = next->text.data() + next->text.size();
        const auto [stop, error] = std::from_chars(next->text.data(), end, separator.repetitions);
        if (error != std::errc{} || stop != end || separator.repetitions < 1) {
            throw incorrectSyntax(*next);
        }
        ++separator.tokens;
        ++next;
    }
    if (next->kind != TokenKind::End && next->span.begin.line == line) {
        throw incorrectSyntax(*next);
    }
    return separator;
}

} // namespace

std::vector<ScriptBatch> splitScript(std::string_view script) {
    const std::vector<Token> tokens = tokenize(script);
    std::vector<ScriptBatch> batches;
    std::size_t first = 0;
    for (std::size_t index = 0; index < tokens.size(); ++index) {
        const bool separates = isSeparator(tokens, index);
        if (!separates && tokens[index].kind != TokenKind::End) {
            continue;
        }
        const Separator separator = separates ? readSeparator(tokens, index) : Separator{};
        if (first < index) {
            const SourcePosition begin = tokens[first].span.begin;
            const std::size_t length = tokens[index - 1].span.end.offset - begin.offset;
            batches.push_back(
                {std::string(script.substr(begin.offset, length)), begin, separator.repetitions});
        }
        index += separator.tokens - 1;
        first = index + 1;
    }
    return batches;
}

} // namespace veldran::tsql
