#pragma once

#include "platform/ado/constants.h"
#include "platform/value.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
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

/// The columns of results that may be many: those of one statement that runs again and again.
using SharedColumns = std::shared_ptr<const std::vector<ColumnInfo>>;

/// All rows of one result, held at the client. NCHAR values are padded with blanks to their size.
class RowSet {
public:
    explicit RowSet(std::vector<ColumnInfo> columns)
        : RowSet(std::make_shared<const std::vector<ColumnInfo>>(std::move(columns))) {}
    explicit RowSet(SharedColumns columns) : columns_(std::move(columns)), width_(columns_->size()) {}

    const std::vector<ColumnInfo>& columns() const { return *columns_; }
    /// Complete rows.
    std::size_t rowCount() const { return width_ == 0 ? 0 : cells_ / width_; }

    const Value& cell(std::size_t row, std::size_t column) const {
        return blocks_[row / blockRows][row % blockRows * width_ + column];
    }
    Value& cell(std::size_t row, std::size_t column) {
        return blocks_[row / blockRows][row % blockRows * width_ + column];
    }

    /// Appends the next cell of the row being read, made of what a Value is made of; a row is complete after
    /// `columns().size()` cells.
    template<class... Content>
    void append(Content&&... content) {
        if (cells_ == blocks_.size() * blockRows * width_) {
            addBlock();
        }
        blocks_.back().emplace_back(std::forward<Content>(content)...);
        ++cells_; // only now: what failed for want of memory has not happened
    }

    /// Appends a row of NULLs to complete rows: the whole row, or nothing for want of memory.
    void appendNulls();

private:
    // Full blocks stay where they are while more is read: a large result is not moved again and again.
    static constexpr std::size_t blockRows = 1024;
    void addBlock();

    SharedColumns columns_; // shared with the statement, which may run again
    std::size_t width_;
    std::vector<std::vector<Value>> blocks_; ///< of so many rows each, the last one of as many as there are
    std::size_t cells_ = 0;
};

} // namespace veldran::ado
