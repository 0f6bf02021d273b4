#pragma once

#include "adapters/odbc/handle.h"
#include "platform/ado/row_set.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldran::odbc {

/// Reads the current result of a statement: its columns, and all its rows to the end.
class ResultReader {
public:
    /// \throws AdoError with the driver's diagnostics.
    explicit ResultReader(SQLHSTMT statement, SQLSMALLINT columns);

    std::vector<ado::ColumnInfo>& columns() { return columns_; }
    /// To be called once. \throws AdoError with the driver's diagnostics; 8115 for a number that has more
    /// digits than a value holds.
    std::unique_ptr<ado::RowSet> rows();

private:
    ado::ColumnInfo describe(SQLUSMALLINT ordinal) const;
    Value read(SQLUSMALLINT ordinal, const ado::ColumnInfo& column);
    std::optional<std::u16string> readText(SQLUSMALLINT ordinal);
    Value readDecimal(SQLUSMALLINT ordinal, const ado::ColumnInfo& column);
    template<class Number>
    Value readNumber(SQLUSMALLINT ordinal, SQLSMALLINT bufferType);
    void check(SQLRETURN code) const;

    SQLHSTMT statement_;
    std::vector<ado::ColumnInfo> columns_;
    std::u16string buffer_;
};

} // namespace veldran::odbc
