#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace veldran::tsql {

// A place in a statement text. The offset counts bytes from 0; line and column count from 1, the column in
// characters (UTF-8 code points), because that is what a person counts when reading the message.
struct SourcePosition {
    std::size_t offset = 0;
    std::size_t line = 1;
    std::size_t column = 1;

    bool operator==(const SourcePosition&) const = default;
};

// A stretch of text; `end` is the place just after its last character.
struct SourceSpan {
    SourcePosition begin;
    SourcePosition end;

    bool operator==(const SourceSpan&) const = default;
};

// The span of a syntax node. Where a node stands is no part of what it says: two nodes that differ only in
// their spans are equal, which is what makes a printed and re-read tree comparable with its original.
struct NodeSpan : SourceSpan {
    NodeSpan() = default;
    NodeSpan(const SourceSpan& span) : SourceSpan(span) {}

    friend bool operator==(const NodeSpan&, const NodeSpan&) { return true; }
};

// SQL Server's numbers for the refusals of a front end.
enum class SyntaxErrorNumber : int {
    IncorrectSyntax = 102,
    UnclosedString = 105,
    MustBeFirstInBatch = 111,
    UnclosedComment = 113,
    IncorrectSyntaxNearKeyword = 156,
    NestedTooDeeply = 191,
    ConditionExpected = 4145,
    DifferentRowLengths = 10709,
};

// A text that is not a statement of the language. `what()` is an Italian sentence for the user that quotes
// the text at the place and ends with its line and column.
class SyntaxError : public std::runtime_error {
public:
    SyntaxError(SyntaxErrorNumber number, const std::string& message, const SourcePosition& position)
        : std::runtime_error(message), number_(number), position_(position) {}

    int number() const { return static_cast<int>(number_); }
    const char* sqlState() const { return "42000"; }
    const SourcePosition& position() const { return position_; }

private:
    SyntaxErrorNumber number_;
    SourcePosition position_;
};

} // namespace veldran::tsql
