#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::odbc {

/// What a query's text tells about where its columns come from: only queries over one table, whose rows are
/// that table's rows, can be written back.
struct SelectShape {
    std::string table; ///< as written, parts joined by points
    bool allColumns = false;
    /// Column by column when not `allColumns`: the table's column, or nothing for a computed one.
    std::vector<std::optional<std::string>> columns;
};

/// Nothing for a text that is no single query over one table, groups rows or computes all its columns.
std::optional<SelectShape> selectShape(std::string_view text);

} // namespace veldran::odbc
