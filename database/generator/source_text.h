#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veldran::chartgen {

/// A line of a source table: its number (1-based), its indentation in steps of two blanks and its text,
/// trimmed.
struct SourceLine {
    int number;
    int indent;
    std::string text;
};

/// A source table, without blank lines and lines that begin with "#".
struct SourceText {
    std::string name;
    std::vector<SourceLine> lines;
};

/// Reads a UTF-8 source table. `name` is what messages call it.
/// \throws SourceError for a tabulator or an odd indentation.
SourceText parseSource(const std::string& name, std::string_view content);

/// Reads the file and parses it; messages call it by its file name.
/// \throws SourceError when the file cannot be read, or as parseSource.
SourceText readSource(const std::string& path);

std::string_view trimmed(std::string_view text);

/// Parts between separators, each trimmed; empty parts are kept.
std::vector<std::string> splitTrimmed(std::string_view text, std::string_view separator);

/// Number written in decimal.
/// \throws SourceError naming the place when the text is not a number from `lowest` to `highest`.
int parseNumber(const SourceText& source, const SourceLine& line, const std::string& text, int lowest,
                int highest);

} // namespace veldran::chartgen
