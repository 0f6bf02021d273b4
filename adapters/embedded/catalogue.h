#pragma once

#include "adapters/embedded/sqlite.h"
#include "adapters/embedded/table.h"
#include "adapters/embedded/working_indexes.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldran::embedded {

/// Makes the table that a catalogue keeps its objects in. \throws AdoError
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
    /// An index of a working table that guards nothing is only noted: it is built when a statement that it
    /// serves comes, and most are never needed before the table goes.
    void createIndex(const Table& table, const std::string& name,
                     const std::vector<tsql::IndexColumn>& columns, bool unique);
    void dropIndex(const Table& table, const std::string& name);
    /// Builds what serves conditions on these columns of a working table: indexes that were put off, and one
    /// of the catalogue's own for a code that none finds, the second time it is looked for. \return false
    /// when the next time may build more, although `indexState` is the same
    bool buildIndexes(const std::string& table, const std::vector<std::string>& columns);
    /// Builds what was put off for the working table: copies of it are to be found by its indexes.
    void buildIndexes(const Table& table);
    /// Of a table that is there.
    const TableIndexes& indexesOf(const Table& table);
    /// Grows with every index that comes or goes.
    std::uint64_t indexState() const { return indexState_; }
    void createRoutine(const Routine& routine, tsql::DefinitionMode mode);
    void dropRoutine(const Routine& routine);

    /// Grows whenever what is remembered may have changed.
    std::uint64_t generation() const { return generation_; }
    /// Forgets what is remembered: after a rollback.
    void forget();
    /// Forgets what is remembered of the file when another program has changed its schema.
    /// True when that was so.
    bool refresh();

private:
    void changed(bool inFile);
    void load(const std::string& schema);
    void loadIndexes(const std::string& schema);
    void ensureLoaded();
    bool build(TableIndex& index); ///< false when it is there already
    void weighIndexes(const Table& table);
    std::int64_t store(const std::string& schema, std::string_view kind, std::string_view name,
                       std::string_view parent, std::string_view definition);
    void remove(const std::string& schema, std::string_view kind, std::string_view name,
                std::string_view parent);
    void checkNameIsFree(const tsql::QualifiedName& name);

    struct Entry {
        std::shared_ptr<const Table> table;     // shared with the statements bound to it
        std::shared_ptr<const Routine> routine; // shared with the statements bound to it
        std::int64_t id = 0;
        TableIndexes indexes{};                ///< of a table
        std::map<std::string, int> searches{}; ///< for a code that no index finds, by its column
    };
    static bool isOfType(const Entry& entry, std::string_view type);
    using Entries = std::map<std::string, Entry>; // by name in capitals
    const Entry* find(const tsql::QualifiedName& name);

    std::int64_t fileSchemaVersion();

    SqliteDatabase& database_;
    SqliteStatement schemaVersionQuery_;
    Entries entries_;
    bool loaded_ = false;
    std::uint64_t indexState_ = 1;
    std::int64_t schemaVersion_ = -1;
    std::uint64_t generation_ = 1;
};

} // namespace veldran::embedded
