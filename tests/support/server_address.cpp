#include "tests/support/server_address.h"

#include "platform/text.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace veldran::test {

namespace {

/// The end of the entry that `text` begins with: the first semicolon outside braces.
std::size_t endOfEntry(std::string_view text) {
    bool braced = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == ';' && !braced) {
            return at;
        }
        braced = text[at] == '{' || (braced && text[at] != '}');
    }
    return text.size();
}

} // namespace

ServerAddress::ServerAddress(const std::string& connectionString) {
    for (std::string_view rest = connectionString; !rest.empty();) {
        const std::string_view entry = rest.substr(0, endOfEntry(rest));
        rest.remove_prefix(std::min(rest.size(), entry.size() + 1));
        const std::string_view key = entry.substr(0, entry.find('='));
        const std::string value(entry.substr(std::min(entry.size(), key.size() + 1)));
        if (equalsIgnoringAsciiCase(key, "Port")) {
            port_ = static_cast<std::uint16_t>(std::stoi(value));
            apart_ = true;
        } else if (equalsIgnoringAsciiCase(key, "Server")) {
            const std::string place = value.starts_with("tcp:") ? value.substr(4) : value;
            const std::size_t comma = place.find(',');
            host_ = place.substr(0, comma);
            if (comma != std::string::npos) {
                port_ = static_cast<std::uint16_t>(std::stoi(place.substr(comma + 1)));
            }
        } else if (!entry.empty()) {
            others_ += std::string(entry) + ";";
        }
    }
    if (host_.empty() || host_.find('\\') != std::string::npos) {
        throw std::invalid_argument("the tests need a server's address and port, not an instance's name");
    }
}

std::string ServerAddress::at(const std::string& host, std::uint16_t port) const {
    const std::string number = std::to_string(port);
    return others_ + "Server=" + host + (apart_ ? ";Port=" : ",") + number;
}

} // namespace veldran::test
