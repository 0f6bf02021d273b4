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

/// `text` with every occurrence of `what` replaced; no quoting is added.
inline std::string replaceAll(std::string text, std::string_view what, std::string_view with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
}

} // namespace veldran
