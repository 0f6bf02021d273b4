#include "adapters/embedded/collation.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace veldran::embedded {

namespace {

struct BaseLetters {
    char32_t first;
    char32_t last;
    char base;
};

// Lower-case letters with a mark that T-SQL collations sort with their base letter.
constexpr std::array<BaseLetters, 30> baseLetters{
    {{0xE0, 0xE5, 'a'},   {0xE7, 0xE7, 'c'},   {0xE8, 0xEB, 'e'},   {0xEC, 0xEF, 'i'},
     {0xF1, 0xF1, 'n'},   {0xF2, 0xF6, 'o'},   {0xF9, 0xFC, 'u'},   {0xFD, 0xFD, 'y'},
     {0xFF, 0xFF, 'y'},   {0x101, 0x105, 'a'}, {0x107, 0x10D, 'c'}, {0x10F, 0x10F, 'd'},
     {0x113, 0x11B, 'e'}, {0x11D, 0x123, 'g'}, {0x125, 0x125, 'h'}, {0x129, 0x12F, 'i'},
     {0x135, 0x135, 'j'}, {0x137, 0x137, 'k'}, {0x13A, 0x13E, 'l'}, {0x144, 0x148, 'n'},
     {0x14D, 0x151, 'o'}, {0x155, 0x159, 'r'}, {0x15B, 0x161, 's'}, {0x163, 0x165, 't'},
     {0x169, 0x173, 'u'}, {0x175, 0x175, 'w'}, {0x177, 0x177, 'y'}, {0x17A, 0x17E, 'z'},
     {0x131, 0x131, 'i'}, {0x17F, 0x17F, 's'}}};

struct Weight {
    char32_t letter;
    char32_t mark; // tells apart what shares a letter; 0 for an unmarked one
};

Weight weigh(char32_t character) {
    const char32_t lower = toLower(character);
    if (lower < 0x80) {
        return {lower, 0};
    }
    for (const auto& [first, last, base] : baseLetters) {
        if (lower >= first && lower <= last) {
            return {static_cast<char32_t>(base), lower};
        }
    }
    return {lower, 0};
}

constexpr std::array<unsigned char, 128> asciiLower = [] {
    std::array<unsigned char, 128> table{};
    for (unsigned i = 0; i < table.size(); ++i) {
        table[i] = static_cast<unsigned char>(i >= 'A' && i <= 'Z' ? i + 32 : i);
    }
    return table;
}();

int sign(char32_t a, char32_t b) {
    return a < b ? -1 : 1;
}

int compareByWeights(std::string_view a, std::string_view b) {
    int marks = 0;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size()) {
        const Weight x = weigh(i < a.size() ? nextCharacter(a, i) : U' ');
        const Weight y = weigh(j < b.size() ? nextCharacter(b, j) : U' ');
        if (x.letter != y.letter) {
            return sign(x.letter, y.letter);
        }
        if (marks == 0 && x.mark != y.mark) {
            marks = sign(x.mark, y.mark);
        }
    }
    return marks;
}

// Of how many bytes from their beginning the texts are surely the same; stops up to seven bytes early.
std::size_t equalBytes(std::string_view a, std::string_view b, std::size_t common) {
    std::size_t i = 0;
    for (; i + sizeof(std::uint64_t) <= common; i += sizeof(std::uint64_t)) {
        std::uint64_t x = 0;
        std::uint64_t y = 0;
        std::memcpy(&x, a.data() + i, sizeof x);
        std::memcpy(&y, b.data() + i, sizeof y);
        if (x != y) {
            break;
        }
    }
    return i;
}

bool isEven(char32_t character) {
    return character % 2 == 0;
}

} // namespace

char32_t nextCharacter(std::string_view text, std::size_t& at) {
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char lead = byte(at++);
    const unsigned extra = lead >= 0xF0 && lead < 0xF8   ? 3U
                           : lead >= 0xE0 && lead < 0xF0 ? 2U
                           : lead >= 0xC2 && lead < 0xE0 ? 1U
                                                         : 0U;
    if (extra == 0 || at + extra > text.size()) {
        return lead;
    }
    char32_t character = lead & (0x3FU >> extra);
    for (unsigned k = 0; k < extra; ++k) {
        if ((byte(at + k) & 0xC0U) != 0x80U) {
            return lead;
        }
        character = (character << 6U) | (byte(at + k) & 0x3FU);
    }
    at += extra;
    return character;
}

void appendCharacter(std::string& text, char32_t character) {
    const auto put = [&](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0U | (character >> 6U));
        put(0x80U | (character & 0x3FU));
    } else if (character < 0x10000) {
        put(0xE0U | (character >> 12U));
        put(0x80U | ((character >> 6U) & 0x3FU));
        put(0x80U | (character & 0x3FU));
    } else {
        put(0xF0U | (character >> 18U));
        put(0x80U | ((character >> 12U) & 0x3FU));
        put(0x80U | ((character >> 6U) & 0x3FU));
        put(0x80U | (character & 0x3FU));
    }
}

char32_t toLower(char32_t c) {
    if (c < 0x80) {
        return asciiLower[c];
    }
    if ((c >= 0xC0 && c <= 0xDE && c != 0xD7) || (c >= 0x391 && c <= 0x3A9) || (c >= 0x410 && c <= 0x42F)) {
        return c + 32;
    }
    if (c >= 0x400 && c <= 0x40F) {
        return c + 80;
    }
    if (((c >= 0x100 && c <= 0x137 && c != 0x130 && c != 0x131) || (c >= 0x14A && c <= 0x177)) && isEven(c)) {
        return c + 1;
    }
    if (((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) && !isEven(c)) {
        return c + 1;
    }
    return c == 0x178 ? 0xFF : c;
}

char32_t toUpper(char32_t c) {
    if (c < 0x80) {
        return c >= 'a' && c <= 'z' ? c - 32 : c;
    }
    if ((c >= 0xE0 && c <= 0xFE && c != 0xF7) || (c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2) ||
        (c >= 0x430 && c <= 0x44F)) {
        return c - 32;
    }
    if (c >= 0x450 && c <= 0x45F) {
        return c - 80;
    }
    if (((c >= 0x100 && c <= 0x137 && c != 0x131) || (c >= 0x14A && c <= 0x177)) && !isEven(c)) {
        return c - 1;
    }
    if (((c >= 0x13A && c <= 0x148) || (c >= 0x17A && c <= 0x17E)) && isEven(c)) {
        return c - 1;
    }
    return c == 0xFF ? 0x178 : c;
}

std::string toLower(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        appendCharacter(result, toLower(nextCharacter(text, at)));
    }
    return result;
}

std::string toUpper(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        appendCharacter(result, toUpper(nextCharacter(text, at)));
    }
    return result;
}

int compareText(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    std::size_t i = equalBytes(a, b, common);
    for (; i < common; ++i) {
        const auto x = static_cast<unsigned char>(a[i]);
        const auto y = static_cast<unsigned char>(b[i]);
        if (x == y) {
            continue;
        }
        if ((x | y) >= 0x80) {
            return compareByWeights(a, b);
        }
        if (asciiLower[x] != asciiLower[y]) {
            // A mark further left cannot matter: a different letter outweighs every mark.
            return asciiLower[x] < asciiLower[y] ? -1 : 1;
        }
    }
    const std::string_view rest = i < a.size() ? a.substr(i) : b.substr(i);
    for (const char c : rest) {
        if (c != ' ') {
            if (static_cast<unsigned char>(c) >= 0x80) {
                return compareByWeights(a, b);
            }
            const int longer = static_cast<unsigned char>(c) < ' ' ? -1 : 1;
            return i < a.size() ? longer : -longer;
        }
    }
    return 0;
}

} // namespace veldran::embedded
