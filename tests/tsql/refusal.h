#pragma once

#include "adapters/tsql/parser.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

namespace veldran::tsql::test {

// How a text was refused; number 0 when it was not.
struct Refusal {
    int number = 0;
    std::size_t line = 0;
    std::size_t column = 0;

    bool operator==(const Refusal&) const = default;
    friend std::ostream& operator<<(std::ostream& stream, const Refusal& refusal) {
        return stream << refusal.number << " (riga " << refusal.line << ", colonna " << refusal.column << ")";
    }
};

inline Refusal refusalOf(std::string_view text) {
    try {
        parseBatch(text);
    } catch (const SyntaxError& error) {
        return {error.number(), error.position().line, error.position().column};
    }
    return {};
}

inline std::string messageOf(std::string_view text) {
    try {
        parseBatch(text);
    } catch (const SyntaxError& error) {
        return error.what();
    }
    return {};
}

// The one statement of a text, as the kind it is expected to be. \throws std::bad_variant_access otherwise.
template<typename Kind>
Kind parsed(std::string_view text) {
    Batch batch = parseBatch(text);
    EXPECT_EQ(batch.statements.size(), 1U) << text;
    return std::get<Kind>(batch.statements.at(0).node);
}

} // namespace veldran::tsql::test
