#pragma once

#include "adapters/embedded/types.h"
#include "adapters/tsql/ast.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::embedded {

struct Column {
    std::string name;
    SqlType type;
    bool nullable = true;
    bool identity = false;
    std::string defaultText; ///< T-SQL of the default value; empty without one

    bool operator==(const Column&) const = default;
};

/// How SQLite keeps a key.
enum class KeyStorage {
    Clustered, ///< the table is stored in the order of this key
    RowNumber, ///< the identity column, which is SQLite's own row number
    Index      ///< a unique index
};

struct Key {
    std::string name;
    bool primary = false;
    KeyStorage storage = KeyStorage::Index;
    std::vector<std::size_t> columns;

    bool operator==(const Key&) const = default;
};

/// A table or working table ("#" in its name) as the binder sees it.
struct Table {
    std::string name;
    std::vector<Column> columns;
    std::vector<Key> keys;
    std::int64_t identitySeed = 1;

    bool isTemporary() const { return name.starts_with('#'); }
    const char* schema() const { return isTemporary() ? "temp" : "main"; }
    /// The table as SQLite names it, with its schema.
    std::string sqlName() const;
    std::optional<std::size_t> indexOf(std::string_view column) const;
    const Column* identityColumn() const;
    const Key* primaryKey() const;
    bool isClustered() const;
    /// What SQLite calls the row's number, by a name that none of the columns has.
    std::string rowNumber() const;
    /// Columns that find one row: SQLite's row number, or the clustered key.
    std::vector<std::string> locator() const;
    bool isKeyColumn(std::size_t column) const;

    /// Same columns and keys: a statement bound to the one is good for the other.
    bool operator==(const Table&) const = default;
};

enum class RoutineKind { Procedure, Function };

/// A stored procedure or function, kept as its text.
struct Routine {
    RoutineKind kind = RoutineKind::Procedure;
    std::string name;
    std::string text;
    tsql::Batch batch; ///< one CREATE statement

    const tsql::CreateProcedure& procedure() const;
    const tsql::CreateFunction& function() const;
};

/// The table as a CREATE TABLE statement declares it, types resolved. \throws AdoError
Table tableFromDefinition(const tsql::CreateTable& definition, std::string_view text);
/// The key that ALTER TABLE ... ADD gives a table that exists. \throws AdoError for unknown or nullable
/// columns.
Key addedKey(const Table& table, const tsql::KeyConstraint& constraint);
/// A column that ALTER TABLE ... ADD gives it. \throws AdoError
void addColumn(Table& table, const tsql::ColumnDefinition& definition, std::string_view text);
/// The table as T-SQL, in the form that the catalogue keeps.
std::string definitionOf(const Table& table);

} // namespace veldran::embedded
