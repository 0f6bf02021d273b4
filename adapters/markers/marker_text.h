#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace veldran {

/// A marker as it stands in texts, such as "<DITTA>", and what is put in its place. The value is asked for
/// each time, because the host's context may change while a connection is open.
struct Marker {
    std::string text;
    std::function<std::string()> value;
};

/// `text` with the markers replaced wherever they stand outside string literals, delimited names and
/// comments; no quoting is added. Markers are blind to case, as keywords are. An unknown marker stays, for
/// the database to refuse.
std::string resolveMarkers(std::string_view text, const std::vector<Marker>& markers);

} // namespace veldran
