#include "database/generator/source_text.h"

#include "database/generator/source_error.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace veldran::chartgen {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string> splitTrimmed(std::string_view text, std::string_view separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (true) {
        const auto end = text.find(separator, start);
        const auto part =
            end == std::string_view::npos ? text.substr(start) : text.substr(start, end - start);
        parts.emplace_back(trimmed(part));
        if (end == std::string_view::npos)
            return parts;
        start = end + separator.size();
    }
}

SourceText parseSource(const std::string& name, std::string_view content) {
    SourceText source{name, {}};
    int number = 0;
    while (!content.empty()) {
        const auto end = content.find('\n');
        const auto line = content.substr(0, end);
        content = end == std::string_view::npos ? std::string_view{} : content.substr(end + 1);
        ++number;
        if (line.find('\t') != std::string_view::npos)
            throw SourceError(name, number, "a tabulator is not allowed, indent with blanks");
        const auto text = trimmed(line);
        if (text.empty() || text.front() == '#')
            continue;
        const auto blanks = line.find_first_not_of(' ');
        if (blanks % 2 != 0)
            throw SourceError(name, number, "the indentation is not a multiple of two blanks");
        source.lines.push_back({number, static_cast<int>(blanks / 2), std::string(text)});
    }
    return source;
}

SourceText readSource(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    if (!file || !(content << file.rdbuf()))
        throw SourceError("cannot read " + path);
    return parseSource(std::filesystem::path(path).filename().string(), content.str());
}

int parseNumber(const SourceText& source, const SourceLine& line, const std::string& text, int lowest,
                int highest) {
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    if (failure != std::errc{} || stop != end || number < lowest || number > highest)
        throw SourceError(source.name, line.number,
                          "\"" + text + "\" is not a number from " + std::to_string(lowest) + " to " +
                              std::to_string(highest));
    return number;
}

} // namespace veldran::chartgen
