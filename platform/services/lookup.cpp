#include "platform/services/lookup.h"

#include <algorithm>
#include <optional>

namespace veldran::services {

namespace {

bool isDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool startsNoCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// Where the character with the 0-based number `character` begins in UTF-8 `text`; its size when it has
/// fewer.
std::size_t byteOf(std::string_view text, int character) {
    std::size_t at = 0;
    while (at < text.size() && (startsNoCharacter(text[at]) || character-- > 0)) {
        ++at;
    }
    return at;
}

/// The code of a display form; none when it is not one.
std::optional<std::string> fromGroups(const CodeStructure& structure, std::string_view typed) {
    std::string code(static_cast<std::size_t>(structure.codeLength), '0');
    bool anyDigit = false;
    for (const CodeStructure::Group& group : structure.groups) {
        const auto slash = typed.find(structure.separator);
        const std::string_view part = trimmed(typed.substr(0, slash));
        const auto length = static_cast<std::size_t>(group.length);
        if (part.size() > length || !isDigits(part)) {
            return std::nullopt;
        }
        anyDigit = anyDigit || !part.empty();
        part.copy(code.data() + group.start + (length - part.size()), part.size());
        if (slash == std::string_view::npos) {
            return anyDigit ? std::optional(code) : std::nullopt;
        }
        typed.remove_prefix(slash + 1);
    }
    // A separator may stand behind the last group, but no further group.
    return anyDigit && trimmed(typed).empty() ? std::optional(code) : std::nullopt;
}

} // namespace

int CodeStructure::displayLength() const {
    return codeLength + std::max(static_cast<int>(groups.size()) - 1, 0);
}

std::string CodeStructure::display(std::string_view code) const {
    if (groups.empty() || (filledWithZeros && code.size() < static_cast<std::size_t>(codeLength))) {
        return std::string(code);
    }
    std::string text;
    const auto add = [&](int start, int length) {
        const std::size_t begin = byteOf(code, start);
        if (begin < code.size()) {
            if (!text.empty()) {
                text += separator;
            }
            text += code.substr(begin, byteOf(code, start + length) - begin);
        }
    };
    for (const Group& group : groups) {
        add(group.start, group.length);
    }
    if (!filledWithZeros) {
        add(codeLength, static_cast<int>(code.size()));
    }
    return text;
}

std::string CodeStructure::codeOf(std::string_view typed) const {
    typed = trimmed(typed);
    std::string code(typed);
    if (typed.empty() || codeLength == 0) {
        return code;
    }
    if (!filledWithZeros) {
        std::erase(code, separator);
        return code;
    }
    if (typed.find(separator) != std::string_view::npos) {
        return fromGroups(*this, typed).value_or(code);
    }
    if (isDigits(typed) && code.size() < static_cast<std::size_t>(codeLength)) {
        code.resize(static_cast<std::size_t>(codeLength), '0');
    }
    return code;
}

std::string CodeFormatter::Format(std::string_view code, bool separated, char filler) const {
    const auto last = code.find_last_not_of(' ');
    std::string completed(code.substr(0, last == std::string_view::npos ? 0 : last + 1));
    const auto length =
        completed.size() -
        static_cast<std::size_t>(std::count_if(completed.begin(), completed.end(), startsNoCharacter));
    for (const CodeStructure::Group& group : structure_.groups) {
        const auto start = static_cast<std::size_t>(group.start);
        const auto end = start + static_cast<std::size_t>(group.length);
        if (start < length && length < end) {
            completed.append(end - length, filler);
        }
    }
    return separated ? structure_.display(completed) : completed;
}

} // namespace veldran::services
