#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::embedded {

/// A column of a working table that has the same number in every row, as SQLite stores it.
struct UniformColumn {
    std::string table;
    std::string column;
    std::int64_t value = 0;
};

/// What is known of working tables from the queries that filled them: columns that were selected as a
/// constant or were compared with one. It holds until rows come or the column is assigned.
class UniformColumns {
public:
    void add(const UniformColumn& column) { values_[column.table][column.column] = column.value; }
    void forget(std::string_view table);
    /// \return whether anything was known of these columns
    bool forget(std::string_view table, const std::vector<std::string>& columns);
    void forgetAll() { values_.clear(); }

    /// What all rows have, if that is known and a number.
    std::optional<std::int64_t> valueOf(std::string_view table, std::string_view column) const;

private:
    using Values = std::map<std::string, std::int64_t, std::less<>>; // by column
    std::map<std::string, Values, std::less<>> values_;              // by table
};

} // namespace veldran::embedded
