#include "adapters/odbc/utf16.h"

#include "adapters/odbc/errors.h"

#include <stdexcept>

namespace veldran::odbc {

namespace {

constexpr char32_t firstSupplementary = 0x10000;
constexpr char32_t lastCharacter = 0x10FFFF;
constexpr char32_t replacement = 0xFFFD;

constexpr bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// How many bytes the character takes that begins with this byte; 0 for a byte that begins none.
constexpr std::size_t lengthFrom(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return 2;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return 3;
    }
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

/// The smallest character that needs so many bytes.
constexpr char32_t smallest(std::size_t length) {
    constexpr char32_t limits[] = {0, 0, 0x80, 0x800, firstSupplementary};
    return limits[length];
}

char32_t characterAt(std::string_view utf8, std::size_t at, std::size_t length) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    if (length == 0 || at + length > utf8.size()) {
        throw std::invalid_argument("not UTF-8");
    }
    char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(utf8[at + i]);
        if ((byte & 0xC0U) != 0x80U) {
            throw std::invalid_argument("not UTF-8");
        }
        character = (character << 6U) | (byte & 0x3FU);
    }
    if (character < smallest(length) || character > lastCharacter || isHighSurrogate(character) ||
        isLowSurrogate(character)) {
        throw std::invalid_argument("not UTF-8");
    }
    return character;
}

void append(std::string& utf8, char32_t character) {
    const auto put = [&](char32_t bits) { utf8.push_back(static_cast<char>(bits)); };
    if (character < 0x80) {
        put(character);
        return;
    }
    if (character < 0x800) {
        put(0xC0U | (character >> 6U));
    } else {
        if (character < firstSupplementary) {
            put(0xE0U | (character >> 12U));
        } else {
            put(0xF0U | (character >> 18U));
            put(0x80U | ((character >> 12U) & 0x3FU));
        }
        put(0x80U | ((character >> 6U) & 0x3FU));
    }
    put(0x80U | (character & 0x3FU));
}

} // namespace

std::u16string toUtf16(std::string_view utf8) {
    std::u16string utf16;
    utf16.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t length = lengthFrom(static_cast<unsigned char>(utf8[at]));
        const char32_t character = characterAt(utf8, at, length);
        at += length;
        if (character < firstSupplementary) {
            utf16.push_back(static_cast<char16_t>(character));
        } else {
            const char32_t rest = character - firstSupplementary;
            utf16.push_back(static_cast<char16_t>(0xD800U + (rest >> 10U)));
            utf16.push_back(static_cast<char16_t>(0xDC00U + (rest & 0x3FFU)));
        }
    }
    return utf16;
}

std::u16string textToSend(std::string_view utf8) {
    try {
        return toUtf16(utf8);
    } catch (const std::invalid_argument&) {
        fail(errorUnspecified, "42000", "Il testo per il database non è UTF-8.");
    }
}

std::string toUtf8(std::u16string_view utf16) {
    std::string utf8;
    utf8.reserve(utf16.size());
    for (std::size_t at = 0; at < utf16.size(); ++at) {
        char32_t character = utf16[at];
        if (isHighSurrogate(character) && at + 1 < utf16.size() && isLowSurrogate(utf16[at + 1])) {
            character = firstSupplementary + ((character - 0xD800U) << 10U) + (utf16[++at] - 0xDC00U);
        } else if (isHighSurrogate(character) || isLowSurrogate(character)) {
            character = replacement;
        }
        append(utf8, character);
    }
    return utf8;
}

} // namespace veldran::odbc
