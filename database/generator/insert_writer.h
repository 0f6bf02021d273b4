#pragma once

#include <ostream>
#include <string>
#include <string_view>

namespace veldran::chartgen {

/// A Unicode text literal, quotes doubled.
std::string textLiteral(std::string_view text);

/// "NULL" for 0, else the number.
std::string numberOrNull(int number);

/// Writes the rows of one table as INSERT ... VALUES statements of at most 500 rows, each in a batch of its
/// own.
class InsertWriter {
public:
    /// `columns` is the list between the parentheses. The stream outlives the writer.
    InsertWriter(std::ostream& out, std::string_view table, std::string_view columns);
    InsertWriter(const InsertWriter&) = delete;
    InsertWriter& operator=(const InsertWriter&) = delete;

    /// `values` is the list between the parentheses.
    void row(std::string_view values);

    /// Ends the last statement. Rows may follow; without rows nothing is written.
    void finish();

private:
    std::ostream& out_;
    std::string head_;
    int rows_ = 0; // in the statement being written
};

} // namespace veldran::chartgen
