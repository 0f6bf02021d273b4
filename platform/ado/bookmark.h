#pragma once

#include <cstddef>
#include <cstdint>

namespace veldran::ado {

/// Names one row of a set of rows. A plain value: it is valid for the recordset that gave it and for all its
/// clones, stays valid while other rows come and go, and ends with a requery. Default-constructed it names no
/// row.
class Bookmark {
public:
    Bookmark() = default;

    friend bool operator==(const Bookmark&, const Bookmark&) = default;
    /// Both name rows of one set.
    bool sharesRowsWith(const Bookmark& other) const { return rows_ == other.rows_; }

private:
    friend class Recordset;
    Bookmark(std::uint64_t rows, std::size_t row) : rows_(rows), row_(row) {}

    std::uint64_t rows_ = 0; // which set of rows; 0 is none
    std::size_t row_ = 0;
};

} // namespace veldran::ado
