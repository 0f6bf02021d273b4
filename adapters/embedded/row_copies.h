#pragma once

#include "adapters/embedded/sqlite.h"
#include "adapters/embedded/uniform_columns.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Which rows of a working table may differ from the rows they were copied from.
namespace veldran::embedded {

/// A statement that copies rows of one working table into another with their numbers and, plainly, these
/// columns.
struct RowCopy {
    std::string from;
    std::string to;
    std::vector<std::string> columns;
};

/// A statement that gives every row of `to` the value that the row of the same number has in `from`.
struct WriteBack {
    std::string from;
    std::string to;
    std::string column;
    std::string ofRange; ///< the same for the rows with numbers from ?1 to ?2
};

/// A column that a working table has from the one it was copied from.
struct CopiedColumn {
    std::string original;
    std::string copy;
    std::string column;
};

/// Whether a working table had few of the rows of its original; see `RowCopies::isSparse`.
struct CopyShare {
    std::string copy;
    bool sparse = false;
};

/// Remembers of each working table that was filled with rows of another, row number by row number, which rows
/// an UPDATE has changed since, on either side. A statement that carries a column back over the whole of such
/// a table has to look at those rows only. What cannot be followed row by row (rows that come or go, a
/// rollback) ends the memory, and the statement runs as it is written.
class RowCopies {
public:
    /// A table was made of rows copied from one that has about `originalRows`.
    void made(const RowCopy& copy, std::int64_t rows, std::int64_t originalRows);
    /// More rows were copied.
    void added(const RowCopy& copy, std::int64_t rows);
    /// A statement other than a copy and an UPDATE has changed the table, or it is gone.
    void forget(std::string_view table);
    void forgetAll();
    /// A new table was filled with rows that all have these.
    void filled(const std::vector<UniformColumn>& columns);

    /// Grows whenever an answer of the following four may have changed; never 0.
    std::uint64_t state() const { return state_; }

    /// The working table that all rows of this one were copied from; nullptr when there is none.
    const std::string* originalOf(std::string_view copy) const;
    /// Whether the copy has so few rows of its original that an index of its own costs less than passing over
    /// those that it lacks.
    bool isSparse(std::string_view copy) const;
    /// Whether every row of the copy has the column as the row of its number has it in the original.
    bool isAlike(const CopiedColumn& column) const;
    /// Columns of working tables that have one value in all rows.
    const UniformColumns& uniform() const { return uniform_; }

    /// Numbers of the rows that may differ, ascending and each once; nullptr when that is not known.
    const std::vector<std::int64_t>* differing(const WriteBack& writeBack);
    /// Rows that such a statement meets; as long as `differing` is known.
    std::int64_t rows(const WriteBack& writeBack) const;
    /// The statement has run: no row differs any more.
    void settle(const WriteBack& writeBack);

    /// While it lives, rows that an UPDATE of these columns of the table changes are noted.
    class Watch {
    public:
        Watch(RowCopies& copies, SqliteDatabase& database, const std::string& table,
              const std::vector<std::string>& columns);
        ~Watch();
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;

    private:
        static void noted(void* watch, int operation, const char* schema, const char* table,
                          sqlite3_int64 row);

        RowCopies& copies_;
        SqliteDatabase& database_;
        std::string table_;
        std::vector<std::vector<std::int64_t>*> notes_;
        bool isLost_ = false; ///< a row could not be noted for want of memory
    };

private:
    struct Pair {
        std::string from;
        std::string to;
        std::int64_t rows = 0;
        std::int64_t originalRows = 0;
        std::map<std::string, std::vector<std::int64_t>> changed; ///< row numbers by column
    };
    Pair* find(const WriteBack& writeBack);

    std::vector<Pair> pairs_;
    UniformColumns uniform_;
    std::uint64_t state_ = 1;
};

} // namespace veldran::embedded
