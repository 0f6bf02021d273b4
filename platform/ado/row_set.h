#pragma once

#include "platform/ado/constants.h"
#include "platform/value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::ado {

/// What a driver knows of one column of a result.
struct ColumnInfo {
    std::string name;
    DataTypeEnum type = adVarWChar;
    int definedSize = 0; ///< characters for text, bytes for numbers
    std::uint8_t precision = 0;
    std::uint8_t scale = 0;
    bool nullable = true;
    bool identity = false;
    bool key = false;      ///< part of the base table's primary key, which is in the result whole
    std::string baseTable; ///< empty when the column is computed or the driver cannot tell
    std::string baseColumn;
};

/// All rows of one result, held at the client. NCHAR values are padded with blanks to their size.
class RowSet {
public:
    explicit RowSet(std::vector<ColumnInfo> columns) : columns_(std::move(columns)) {}

    const std::vector<ColumnInfo>& columns() const { return columns_; }
    std::size_t rowCount() const { return columns_.empty() ? 0 : cells_.size() / columns_.size(); }
    /// Index of a column by name, blind to case.
    std::optional<std::size_t> indexOf(std::string_view name) const;

    const Value& cell(std::size_t row, std::size_t column) const {
        return cells_[row * columns_.size() + column];
    }
    Value& cell(std::size_t row, std::size_t column) { return cells_[row * columns_.size() + column]; }

    /// Appends the next cell of the row being read; a row is complete after `columns().size()` cells.
    void append(Value value) { cells_.push_back(std::move(value)); }
    void reserveRows(std::size_t rows) { cells_.reserve(rows * columns_.size()); }

private:
    std::vector<ColumnInfo> columns_;
    std::vector<Value> cells_;
};

} // namespace veldran::ado
