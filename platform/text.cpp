#include "platform/text.h"

#include "platform/value.h"

namespace veldran {

std::size_t utf16Length(std::string_view utf8) {
    std::size_t units = 0;
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0U) != 0x80U) {      // a continuation byte begins no character
            units += byte >= 0xF0U ? 2 : 1; // beyond the basic plane a character takes a surrogate pair
        }
    }
    return units;
}

namespace {

/// ASCII and the accented letters of the western European languages (two bytes, the first is 0xC3; lower case
/// stands 0x20 above upper case), those from the first on moved by `distance`.
std::string withMovedCase(std::string_view utf8, char firstAscii, unsigned char firstAccented, int distance) {
    constexpr unsigned char letters = 26;
    constexpr unsigned char accented = 31;
    constexpr unsigned char sign = 0x17; // of multiplication, of division: no letter
    std::string moved(utf8);
    const auto move = [&](std::size_t at) { moved[at] = static_cast<char>(moved[at] + distance); };
    for (std::size_t i = 0; i < moved.size(); ++i) {
        const auto byte = static_cast<unsigned char>(moved[i]);
        if (static_cast<unsigned char>(byte - static_cast<unsigned char>(firstAscii)) < letters) {
            move(i);
        } else if (byte == 0xC3U && i + 1 < moved.size()) {
            const auto letter =
                static_cast<unsigned char>(static_cast<unsigned char>(moved[++i]) - firstAccented);
            if (letter < accented && letter != sign) {
                move(i);
            }
        }
    }
    return moved;
}

} // namespace

std::string withFoldedCase(std::string_view utf8) {
    return withMovedCase(utf8, 'A', 0x80, 0x20);
}

std::string withRaisedCase(std::string_view utf8) {
    return withMovedCase(utf8, 'a', 0xA0, -0x20);
}

int compareBlindly(std::string_view a, std::string_view b) {
    return withFoldedCase(withoutTrailingBlanks(a)).compare(withFoldedCase(withoutTrailingBlanks(b)));
}

} // namespace veldran
