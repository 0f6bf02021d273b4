#include "adapters/markers/marker_text.h"

#include "platform/text.h"

#include <algorithm>

namespace veldran {

namespace {

bool isAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Behind the closing delimiter; a doubled delimiter is a character of the content.
std::size_t endOfQuoted(std::string_view text, std::size_t begin, char close) {
    std::size_t at = begin + 1;
    while (at < text.size()) {
        if (text[at] != close) {
            ++at;
        } else if (at + 1 < text.size() && text[at + 1] == close) {
            at += 2;
        } else {
            return at + 1;
        }
    }
    return text.size();
}

std::size_t endOfLineComment(std::string_view text, std::size_t begin) {
    return std::min(text.find('\n', begin), text.size());
}

// Comments between "/*" and "*/" nest.
std::size_t endOfBlockComment(std::string_view text, std::size_t begin) {
    int depth = 0;
    std::size_t at = begin;
    while (at < text.size()) {
        if (text.substr(at).starts_with("/*")) {
            ++depth;
            at += 2;
        } else if (text.substr(at).starts_with("*/")) {
            at += 2;
            if (--depth == 0) {
                return at;
            }
        } else {
            ++at;
        }
    }
    return text.size();
}

// Where what begins here ends, when markers have no meaning in it; `begin` itself otherwise.
std::size_t endOfOpaque(std::string_view text, std::size_t begin) {
    const std::string_view rest = text.substr(begin);
    if (rest.front() == '\'' || rest.front() == '"') {
        return endOfQuoted(text, begin, rest.front());
    }
    if (rest.front() == '[') {
        return endOfQuoted(text, begin, ']');
    }
    if (rest.starts_with("--")) {
        return endOfLineComment(text, begin);
    }
    return rest.starts_with("/*") ? endOfBlockComment(text, begin) : begin;
}

} // namespace

std::string resolveMarkers(std::string_view text, const std::vector<Marker>& markers) {
    // Most texts have no marker at all.
    const bool possible = std::any_of(markers.begin(), markers.end(), [&](const Marker& marker) {
        return !marker.text.empty() && (text.find(marker.text.front()) != std::string_view::npos ||
                                        isAsciiLetter(marker.text.front()));
    });
    if (!possible) {
        return std::string(text);
    }
    std::string result;
    result.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = endOfOpaque(text, at);
        if (end > at) {
            result.append(text.substr(at, end - at));
            at = end;
            continue;
        }
        const auto found = std::find_if(markers.begin(), markers.end(), [&](const Marker& marker) {
            return !marker.text.empty() &&
                   equalsIgnoringAsciiCase(text.substr(at, marker.text.size()), marker.text);
        });
        if (found == markers.end()) {
            result.push_back(text[at++]);
        } else {
            result.append(found->value());
            at += found->text.size();
        }
    }
    return result;
}

} // namespace veldran
