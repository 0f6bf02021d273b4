#pragma once

#include "adapters/tsql/lexer.h"
#include "adapters/tsql/parser.h"
#include "adapters/tsql/printer.h"
#include "adapters/tsql/script.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace veldran::tsql::test {

// The place that `position` should be, counted anew from the text.
inline SourcePosition placeOf(std::string_view text, std::size_t offset) {
    SourcePosition place;
    place.offset = offset;
    for (const char byte : text.substr(0, offset)) {
        if (byte == '\n') {
            ++place.line;
            place.column = 1;
        } else if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U) {
            ++place.column;
        }
    }
    return place;
}

inline std::optional<std::string> wrongRefusal(std::string_view text, const SyntaxError& error) {
    if (error.position().offset > text.size()) {
        return "refused outside the text: " + std::string(error.what());
    }
    if (error.position() != placeOf(text, error.position().offset)) {
        return "line or column do not belong to the offset: " + std::string(error.what());
    }
    return std::nullopt;
}

// What must hold of every text whatever: it parses, and then its printed form parses to the same tree; or it
// is refused with a SyntaxError that names a place inside it. Nothing when it holds, else what was wrong.
inline std::optional<std::string> brokenInvariant(std::string_view text) {
    try {
        splitScript(text);
    } catch (const SyntaxError& error) {
        if (auto wrong = wrongRefusal(text, error)) {
            return wrong;
        }
    }
    std::optional<Batch> batch;
    try {
        batch = parseBatch(text);
    } catch (const SyntaxError& error) {
        return wrongRefusal(text, error);
    }
    const std::string printed = toText(*batch);
    try {
        if (parseBatch(printed) != *batch) {
            return "printed as a different tree: " + printed;
        }
    } catch (const SyntaxError& error) {
        return "printed as \"" + printed + "\", which is refused: " + error.what();
    }
    return std::nullopt;
}

} // namespace veldran::tsql::test
