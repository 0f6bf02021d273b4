#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace veldran::sql {

/// A statement text from its lines, joined by carriage return and line feed.
std::string lines(std::initializer_list<std::string_view> lines);

/// Text and further lines; nothing is added when there are none.
std::string withLines(std::string text, std::initializer_list<std::string_view> lines);

/// A marker of a statement text ("@CODICE_DITTA") and what stands in its place.
struct Marker {
    std::string_view name;
    std::string value;
};

/// `text` with every occurrence of each marker replaced, one marker after the other in the order given.
/// No quoting is added: a value is written as a literal of the statement.
std::string substituted(std::string text, std::initializer_list<Marker> markers);

} // namespace veldran::sql
