#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace veldran::test {

/// What an account's code tells, by the number of levels of its chart. Empty where the database has NULL.
struct AccountFacts {
    std::optional<std::string> display; ///< CONTOF
    std::optional<std::string> header;  ///< CODEHEADER
    std::optional<std::string> parent;
    std::array<std::optional<std::string>, 5> ancestors; ///< LIVELLO1 to LIVELLO5
    std::optional<int> level;
    std::optional<bool> analytic;
};

/// The facts of a ten-character code, read from tables of positions rather than computed as the statements
/// do, so that one rendering checks the other.
AccountFacts factsOf(int levels, const std::string& code);

/// Every pattern of zero and non-zero digits over the ten positions: 1,024 codes, in code order.
std::vector<std::string> everyCodeShape();

} // namespace veldran::test
