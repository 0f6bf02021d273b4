#pragma once

#include "adapters/embedded/sqlite.h"
#include "adapters/embedded/tsql/ast.h"
#include "adapters/embedded/types.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
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
void createCatalogueTables(SqliteDatabase& database, const std::string& schema);

/// What exists in the file and in the session. It lives in tables of the file and of the session, so that it
/// is part of every transaction; in memory it is only remembered.
class Catalogue : public ObjectResolver {
public:
    explicit Catalogue(SqliteDatabase& database);

    /// By the last part of the name; empty when there is none.
    std::shared_ptr<const Table> findTable(const tsql::QualifiedName& name);
    /// \throws AdoError 208
    std::shared_ptr<const Table> table(const tsql::QualifiedName& name);
    std::shared_ptr<const Routine> findRoutine(const tsql::QualifiedName& name);
    std::optional<std::int64_t> objectId(std::string_view name, std::string_view type) override;

    std::optional<UniqueRule> uniqueRule(std::string_view table,
                                         const std::vector<std::string>& columns) override;

    /// \throws AdoError 2714 when the name is taken
    void createTable(const Table& table);
    void dropTable(const Table& table);
    /// Replaces the remembered definition: keys or columns were added.
    void redefineTable(const Table& table);
    /// Makes the unique index that stands for a key, where SQLite does not keep the key otherwise.
    void createKeyIndex(const Table& table, const Key& key);
    void createIndex(const Table& table, const std::string& name,
                     const std::vector<tsql::IndexColumn>& columns, bool unique);
    void dropIndex(const Table& table, const std::string& name);
    void createRoutine(const Routine& routine, tsql::DefinitionMode mode);
    void dropRoutine(const Routine& routine);
    std::vector<std::string> temporaryTables();

    /// Grows whenever what is remembered may have changed.
    std::uint64_t generation() const { return generation_; }
    /// Forgets what is remembered: after a rollback.
    void forget();
    /// Forgets what is remembered of the file when another program has changed its schema.
    /// True when that was so.
    bool refresh();

private:
    void changed();
    void load(const std::string& schema);
    void loadIndexes(const std::string& schema);
    void ensureLoaded();
    std::int64_t store(const std::string& schema, std::string_view kind, std::string_view name,
                       std::string_view parent, std::string_view definition);
    void remove(const std::string& schema, std::string_view kind, std::string_view name,
                std::string_view parent);
    void checkNameIsFree(const tsql::QualifiedName& name);

    struct Entry {
        std::shared_ptr<const Table> table;     // shared with the statements bound to it
        std::shared_ptr<const Routine> routine; // shared with the statements bound to it
        std::int64_t id = 0;
        std::map<std::string, std::vector<std::string>>
            indexes; ///< of a table: the columns by the index's name
    };
    static bool isOfType(const Entry& entry, std::string_view type);
    using Entries = std::map<std::string, Entry>; // by name in capitals
    const Entry* find(const tsql::QualifiedName& name);

    std::int64_t fileSchemaVersion();

    SqliteDatabase& database_;
    SqliteStatement schemaVersionQuery_;
    Entries entries_;
    bool loaded_ = false;
    std::int64_t schemaVersion_ = -1;
    std::uint64_t generation_ = 1;
};

} // namespace veldran::embedded
