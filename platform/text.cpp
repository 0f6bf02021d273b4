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

std::string withFoldedCase(std::string_view utf8) {
    std::string folded(utf8);
    for (std::size_t i = 0; i < folded.size(); ++i) {
        const auto byte = static_cast<unsigned char>(folded[i]);
        if (byte < 0x80U) {
            folded[i] = toLowerAscii(folded[i]);
        } else if (byte == 0xC3U && i + 1 < folded.size()) {
            const auto next = static_cast<unsigned char>(folded[++i]);
            if (next >= 0x80U && next <= 0x9EU &&
                next != 0x97U) { // À to Þ; 0x97 is the sign of multiplication
                folded[i] = static_cast<char>(next + 0x20U);
            }
        }
    }
    return folded;
}

int compareBlindly(std::string_view a, std::string_view b) {
    return withFoldedCase(withoutTrailingBlanks(a)).compare(withFoldedCase(withoutTrailingBlanks(b)));
}

} // namespace veldran
