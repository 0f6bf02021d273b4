#include "sql/statement.h"

#include "platform/text.h"

namespace veldran::sql {

namespace {
constexpr std::string_view lineBreak = "\r\n";
}

std::string withLines(std::string text, std::initializer_list<std::string_view> lines) {
    for (const std::string_view line : lines) {
        if (!text.empty()) {
            text += lineBreak;
        }
        text += line;
    }
    return text;
}

std::string lines(std::initializer_list<std::string_view> lines) {
    return withLines({}, lines);
}

std::string substituted(std::string text, std::initializer_list<Marker> markers) {
    for (const Marker& marker : markers) {
        text = replaceAll(std::move(text), marker.name, marker.value);
    }
    return text;
}

} // namespace veldran::sql
