#include "database/generator/insert_writer.h"

namespace veldran::chartgen {
namespace {

// SQL Server takes 1,000 rows in one VALUES list; half of that keeps a statement small enough to read in a
// message.
constexpr int rowsPerStatement = 500;

} // namespace

std::string textLiteral(std::string_view text) {
    std::string literal = "N'";
    for (const char c : text) {
        if (c == '\'')
            literal += '\'';
        literal += c;
    }
    literal += '\'';
    return literal;
}

std::string numberOrNull(int number) {
    return number == 0 ? "NULL" : std::to_string(number);
}

InsertWriter::InsertWriter(std::ostream& out, std::string_view table, std::string_view columns) : out_(out) {
    head_.append("INSERT INTO ").append(table).append(" (").append(columns).append(") VALUES\n");
}

void InsertWriter::row(std::string_view values) {
    if (rows_ == rowsPerStatement)
        finish();
    out_ << (rows_ == 0 ? std::string_view(head_) : std::string_view(",\n")) << '(' << values << ')';
    ++rows_;
}

void InsertWriter::finish() {
    if (rows_ > 0)
        out_ << "\nGO\n";
    rows_ = 0;
}

} // namespace veldran::chartgen
