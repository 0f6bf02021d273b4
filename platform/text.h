#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace veldran {

constexpr char toLowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Names of columns, parameters, keys and files' entries are ASCII and blind to case.
inline bool equalsIgnoringAsciiCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return toLowerAscii(x) == toLowerAscii(y); });
}

/// Length as the database counts it, for NCHAR(n): in UTF-16 units.
std::size_t utf16Length(std::string_view utf8);
/// `utf8` in lower case: ASCII and the accented letters of the western European languages.
std::string withFoldedCase(std::string_view utf8);
/// The same letters of `utf8` in upper case.
std::string withRaisedCase(std::string_view utf8);
/// Order of two texts blind to case and to trailing blanks: less than, equal to or greater than 0.
int compareBlindly(std::string_view a, std::string_view b);

/// `text` with every occurrence of `what` replaced; no quoting is added.
/// Nothing is replaced when `what` is empty.
inline std::string replaceAll(std::string text, std::string_view what, std::string_view with) {
    if (what.empty()) {
        return text;
    }
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
}

} // namespace veldran
