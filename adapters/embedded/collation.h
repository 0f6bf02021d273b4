#pragma once

#include <string>
#include <string_view>

/// The order and equality of text: blind to case and to trailing blanks, not to accents. Letters with accents
/// sort with their letter. Covers Latin-1, Latin Extended-A, Greek and Cyrillic; other characters compare by
/// code point.
namespace veldran::embedded {

/// Name of the collation in the SQLite files; part of the file format.
inline constexpr const char* collationName = "TSQL";

/// Negative, zero or positive. A total order; the shorter text counts as filled with blanks.
int compareText(std::string_view a, std::string_view b);

/// Decodes the character at `at` and moves `at` behind it; a broken sequence is taken byte by byte.
char32_t nextCharacter(std::string_view text, std::size_t& at);
void appendCharacter(std::string& text, char32_t character);

char32_t toLower(char32_t character);
char32_t toUpper(char32_t character);
std::string toLower(std::string_view text);
std::string toUpper(std::string_view text);

} // namespace veldran::embedded
