#pragma once

#include "adapters/embedded/table.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// Which indexes of a working table are worth their building. A working table is made anew again and again,
/// and most of the indexes declared for it are never used before it goes: each is put off until a condition
/// comes that it serves. A table that others are copied from stays, and its indexes find the rows of its
/// copies.
namespace veldran::embedded {

struct TableIndex {
    std::vector<std::string> columns;
    std::string pending; ///< the SQLite text that builds it; empty when it is there
    /// About how many rows share the first column, the first two, ...; empty until it was weighed.
    std::vector<std::int64_t> alike{};
};
using TableIndexes = std::map<std::string, TableIndex>; // by name

/// The indexes to build now for conditions on these columns, in this order. Of several that serve alike one
/// is enough; an index that would add only columns of type BIT to one that is there is not worth it, because
/// such a column halves the rows at best, nor is one that leaves out the code that the condition names.
std::vector<TableIndex*> indexesToBuild(TableIndexes& indexes, const Table& table,
                                        const std::vector<std::string>& sought);

/// A code among the sought columns that neither a key nor an index finds; none when a key finds the row
/// anyway.
std::optional<std::string> codeWithoutIndex(const TableIndexes& indexes, const Table& table,
                                            const std::vector<std::string>& sought);

/// Columns that a condition compares with values from elsewhere.
struct SearchedColumns {
    std::vector<std::string> equal;
    std::vector<std::string> ranged; ///< above, below or between
};

/// Those of the columns that an index, there or put off, finds rows by: of the one that tells most apart by
/// codes; empty when none has a code that is searched. Columns with few values that stand before the code in
/// an index are stepped over, as SQLite does.
std::vector<std::string> indexedColumns(const TableIndexes& indexes, const Table& table,
                                        const SearchedColumns& searched);

/// Flags that are never NULL and stand between the columns in an index that goes on with a code of them.
std::vector<std::string> flagsBetween(const TableIndexes& indexes, const Table& table,
                                      const std::vector<std::string>& columns);

/// A code among the columns; empty when there is none.
std::vector<std::string> searchedCode(const Table& table, const SearchedColumns& searched);

} // namespace veldran::embedded
