#include "adapters/embedded/catalogue.h"

#include "adapters/embedded/collation.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/parsing.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <span>
#include <sstream>
#include <utility>

namespace veldran::embedded {

namespace {

constexpr std::string_view kindTable = "table";
constexpr std::string_view kindIndex = "index";
constexpr std::string_view kindProcedure = "procedure";
constexpr std::string_view kindFunction = "function";

// Begins the names of indexes that nobody declared.
constexpr std::string_view ownIndexPrefix = "veldran_";

// Numbers of working tables stay apart from those of the file.
constexpr std::int64_t temporaryIdBase = 1'000'000'000;

std::string kindOf(const Routine& routine) {
    return std::string(routine.kind == RoutineKind::Procedure ? kindProcedure : kindFunction);
}

[[noreturn]] void failDamaged(const std::string& path, std::string_view name) {
    fail(824, "HY000",
         "Il database è danneggiato (" + path + "): la definizione di '" + std::string(name) +
             "' non si legge.");
}

// A name is reachable with no schema, with DBO, and working tables with their database as well.
bool isReachable(const tsql::QualifiedName& name) {
    const auto part = [&](std::size_t fromEnd) -> std::string_view {
        return name.parts.size() > fromEnd ? std::string_view(name.parts[name.parts.size() - 1 - fromEnd])
                                           : std::string_view();
    };
    const bool schema = part(1).empty() || equalsIgnoringAsciiCase(part(1), "dbo");
    const bool temporary = name.last().starts_with('#');
    const bool database = part(2).empty() || (temporary && equalsIgnoringAsciiCase(part(2), "tempdb"));
    return schema && database && part(3).empty();
}

std::string indexName(const Table& table, std::string_view name) {
    return table.name + "." + std::string(name);
}

std::string columnList(const Table& table, const std::vector<std::size_t>& columns) {
    std::string text;
    for (const std::size_t column : columns) {
        text += (text.empty() ? "" : ", ") + quoteName(table.columns[column].name);
    }
    return text;
}

std::string createIndexSql(const Table& table, std::string_view name, const std::string& list, bool unique) {
    return std::string("CREATE ") + (unique ? "UNIQUE " : "") + "INDEX " + table.schema() + "." +
           quoteName(indexName(table, name)) + " ON " + quoteName(table.name) + " (" + list + ")";
}

// The code, then what else is sought, so that a row need not be looked at to be passed over.
std::vector<std::size_t> ownIndexColumns(const Table& table, const std::string& code,
                                         const std::vector<std::string>& sought) {
    std::vector<std::size_t> columns{*table.indexOf(code)};
    for (const std::string& name : sought) {
        const auto column = table.indexOf(name);
        if (column && name != code && !table.columns[*column].identity &&
            table.columns[*column].type.kind != TypeKind::Bit) {
            columns.push_back(*column);
        }
    }
    return columns;
}

std::string createTableSql(const Table& table) {
    std::string sql = "CREATE TABLE " + table.sqlName() + " (";
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const Column& column = table.columns[i];
        sql += (i == 0 ? "" : ", ") + quoteName(column.name) + " ";
        // SQLite's row number, never given twice: the identity property.
        sql += column.identity ? "INTEGER PRIMARY KEY AUTOINCREMENT" : storageType(column.type);
        sql += column.nullable ? "" : " NOT NULL";
    }
    for (const Key& key : table.keys) {
        if (key.storage == KeyStorage::Clustered) {
            return sql + ", PRIMARY KEY (" + columnList(table, key.columns) + ")) WITHOUT ROWID";
        }
    }
    return sql + ")";
}

} // namespace

void createCatalogueTables(SqliteDatabase& database, const std::string& schema) {
    database.execute("CREATE TABLE IF NOT EXISTS " + schema +
                     ".veldran_catalogue (id INTEGER PRIMARY KEY AUTOINCREMENT, kind TEXT NOT NULL, "
                     "name TEXT NOT NULL COLLATE NOCASE, parent TEXT NOT NULL COLLATE NOCASE, "
                     "definition TEXT NOT NULL, UNIQUE (parent, name))");
}

Catalogue::Catalogue(SqliteDatabase& database) : database_(database) {
    createCatalogueTables(database, "temp");
}

// What changes in the session leaves the file's version as it is, and what is known of it.
void Catalogue::changed(bool inFile) {
    ++generation_;
    if (inFile) {
        schemaVersion_ = fileSchemaVersion();
    }
}

void Catalogue::forget() {
    entries_.clear();
    ++indexState_;
    loaded_ = false;
    ++generation_;
}

std::int64_t Catalogue::fileSchemaVersion() {
    if (!schemaVersionQuery_) {
        schemaVersionQuery_ = database_.prepare("PRAGMA main.schema_version");
    }
    const ResetGuard guard(schemaVersionQuery_);
    return schemaVersionQuery_.step() ? schemaVersionQuery_.integer(0) : 0;
}

bool Catalogue::refresh() {
    if (!loaded_ || fileSchemaVersion() == schemaVersion_) {
        return false;
    }
    forget();
    return true;
}

void Catalogue::ensureLoaded() {
    if (loaded_) {
        return;
    }
    entries_.clear();
    schemaVersion_ = fileSchemaVersion();
    load("main");
    load("temp");
    loadIndexes("main");
    loadIndexes("temp");
    loaded_ = true;
}

void Catalogue::load(const std::string& schema) {
    SqliteStatement rows = database_.prepare("SELECT id, kind, name, definition FROM " + schema +
                                             ".veldran_catalogue WHERE kind <> 'index'");
    const ResetGuard guard(rows);
    while (rows.step()) {
        Entry entry;
        entry.id = rows.integer(0) + (schema == "temp" ? temporaryIdBase : 0);
        const std::string name(rows.text(2));
        const std::string text(rows.text(3));
        tsql::Batch batch = parseText(text);
        const bool one = batch.statements.size() == 1;
        if (rows.text(1) == kindTable) {
            const auto* definition =
                one ? std::get_if<tsql::CreateTable>(&batch.statements.front().node) : nullptr;
            if (definition == nullptr) {
                failDamaged(database_.path(), name);
            }
            entry.table = std::make_shared<const Table>(tableFromDefinition(*definition, text));
        } else {
            const bool procedure = rows.text(1) == kindProcedure;
            const auto* node = one ? &batch.statements.front().node : nullptr;
            if (node == nullptr || !(procedure ? std::holds_alternative<tsql::CreateProcedure>(*node)
                                               : std::holds_alternative<tsql::CreateFunction>(*node))) {
                failDamaged(database_.path(), name);
            }
            entry.routine = std::make_shared<const Routine>(Routine{
                procedure ? RoutineKind::Procedure : RoutineKind::Function, name, text, std::move(batch)});
        }
        entries_.insert_or_assign(toUpper(rows.text(2)), std::move(entry));
    }
}

// The definition of an index is its columns, one a line. Behind them and a tab stands what builds one that
// was put off; it is there when SQLite knows it, so that a rollback takes back the building too.
void Catalogue::loadIndexes(const std::string& schema) {
    SqliteStatement rows =
        database_.prepare("SELECT parent, name, definition, EXISTS (SELECT 1 FROM " + schema +
                          ".sqlite_master AS m WHERE m.type = 'index' AND m.name = parent || '.' || c.name) "
                          "FROM " +
                          schema + ".veldran_catalogue AS c WHERE kind = 'index'");
    const ResetGuard guard(rows);
    while (rows.step()) {
        TableIndex& index = entries_[toUpper(rows.text(0))].indexes[std::string(rows.text(1))];
        const std::string_view definition = rows.text(2);
        const std::size_t end = std::min(definition.find('\t'), definition.size());
        std::istringstream lines{std::string(definition.substr(0, end))};
        for (std::string line; std::getline(lines, line);) {
            index.columns.push_back(line);
        }
        if (end < definition.size() && rows.integer(3) == 0) {
            index.pending = definition.substr(end + 1);
        }
    }
}

const Catalogue::Entry* Catalogue::find(const tsql::QualifiedName& name) {
    if (!isReachable(name)) {
        return nullptr;
    }
    ensureLoaded();
    const std::string key = toUpper(name.last());
    auto found = entries_.find(key);
    if (found == entries_.end() && !name.last().starts_with('#')) {
        refresh();
        ensureLoaded();
        found = entries_.find(key);
    }
    return found == entries_.end() ? nullptr : &found->second;
}

std::shared_ptr<const Table> Catalogue::findTable(const tsql::QualifiedName& name) {
    const Entry* entry = find(name);
    return entry == nullptr ? nullptr : entry->table;
}

std::shared_ptr<const Table> Catalogue::table(const tsql::QualifiedName& name) {
    auto found = findTable(name);
    if (!found) {
        failUnknownObject(writtenName(name));
    }
    return found;
}

std::shared_ptr<const Routine> Catalogue::findRoutine(const tsql::QualifiedName& name) {
    const Entry* entry = find(name);
    return entry == nullptr ? nullptr : entry->routine;
}

std::optional<UniqueRule> Catalogue::uniqueRule(std::string_view table,
                                                const std::vector<std::string>& columns) {
    const auto found = entries_.find(toUpper(table));
    if (found == entries_.end() || !found->second.table) {
        return std::nullopt;
    }
    const Table& definition = *found->second.table;
    for (const Key& key : definition.keys) {
        std::vector<std::string> names;
        for (const std::size_t column : key.columns) {
            names.push_back(definition.columns[column].name);
        }
        if (names == columns) {
            return UniqueRule{key.primary ? UniqueRule::Kind::PrimaryKey : UniqueRule::Kind::UniqueKey,
                              key.name};
        }
    }
    const Column* identity = definition.identityColumn();
    if (identity != nullptr && columns.size() == 1 && columns.front() == identity->name) {
        return UniqueRule{UniqueRule::Kind::RowNumber, identity->name};
    }
    for (const auto& [name, index] : found->second.indexes) {
        if (index.columns == columns) {
            return UniqueRule{UniqueRule::Kind::Index, name};
        }
    }
    return std::nullopt;
}

std::optional<std::int64_t> Catalogue::objectId(std::string_view text, std::string_view type) {
    const auto name = parseObjectName(text);
    // A working table is not found without its database, as on the server.
    if (!name || (name->last().starts_with('#') && name->parts.size() < 3)) {
        return std::nullopt;
    }
    const Entry* entry = find(*name);
    return entry != nullptr && isOfType(*entry, type) ? std::optional(entry->id) : std::nullopt;
}

bool Catalogue::isOfType(const Entry& entry, std::string_view type) {
    if (type.empty()) {
        return true;
    }
    if (entry.table) {
        return equalsIgnoringAsciiCase(type, "U");
    }
    if (entry.routine->kind == RoutineKind::Procedure) {
        return equalsIgnoringAsciiCase(type, "P");
    }
    const bool isTable = std::holds_alternative<tsql::InlineTableBody>(entry.routine->function().body);
    return equalsIgnoringAsciiCase(type, isTable ? "IF" : "FN");
}

void Catalogue::checkNameIsFree(const tsql::QualifiedName& name) {
    if (find(name) != nullptr) {
        failObjectExists(name.last());
    }
    const std::string lower = toLower(name.last());
    if (lower.starts_with("sqlite_") || lower.starts_with("veldran_")) {
        fail(errorNotSupported, "42000", "Il nome '" + name.last() + "' è riservato al database.");
    }
    if (name.last().find('.') != std::string::npos) {
        fail(errorNotSupported, "42000", "Il nome '" + name.last() + "' contiene un punto.");
    }
}

std::int64_t Catalogue::store(const std::string& schema, std::string_view kind, std::string_view name,
                              std::string_view parent, std::string_view definition) {
    SqliteStatement row = database_.prepare(
        "INSERT INTO " + schema + ".veldran_catalogue (kind, name, parent, definition) VALUES (?, ?, ?, ?)");
    int column = 1;
    for (const std::string_view value : {kind, name, parent, definition}) {
        row.bind(column++, value);
    }
    row.run();
    return sqlite3_last_insert_rowid(database_.handle()) + (schema == "temp" ? temporaryIdBase : 0);
}

void Catalogue::remove(const std::string& schema, std::string_view kind, std::string_view name,
                       std::string_view parent) {
    SqliteStatement row = database_.prepare("DELETE FROM " + schema +
                                            ".veldran_catalogue WHERE kind = ? AND name = ? AND parent = ?");
    row.bind(1, kind);
    row.bind(2, name);
    row.bind(3, parent);
    row.run();
}

void Catalogue::createTable(const Table& table) {
    checkNameIsFree({{}, {table.name}});
    database_.execute(createTableSql(table));
    for (const Key& key : table.keys) {
        createKeyIndex(table, key);
    }
    if (table.identityColumn() != nullptr && table.identitySeed != 1) {
        SqliteStatement seed = database_.prepare("INSERT INTO " + std::string(table.schema()) +
                                                 ".sqlite_sequence (name, seq) VALUES (?, ?)");
        seed.bind(1, std::string_view(table.name));
        seed.bind(2, table.identitySeed - 1);
        seed.run();
    }
    const std::int64_t id = store(table.schema(), kindTable, table.name, {}, definitionOf(table));
    entries_[toUpper(table.name)] = {std::make_shared<const Table>(table), nullptr, id, {}};
    changed(!table.isTemporary());
}

void Catalogue::createKeyIndex(const Table& table, const Key& key) {
    if (key.storage == KeyStorage::Index) {
        database_.execute(createIndexSql(table, key.name, columnList(table, key.columns), true));
    }
}

void Catalogue::dropTable(const Table& table) {
    const std::string name = table.name;
    const std::string schema = table.schema();
    database_.execute("DROP TABLE " + table.sqlName());
    remove(schema, kindTable, name, {});
    SqliteStatement indexes =
        database_.prepare("DELETE FROM " + schema + ".veldran_catalogue WHERE parent = ?");
    indexes.bind(1, std::string_view(name));
    indexes.run();
    entries_.erase(toUpper(name));
    ++indexState_;
    changed(schema == "main");
}

void Catalogue::redefineTable(const Table& table) {
    SqliteStatement row =
        database_.prepare("UPDATE " + std::string(table.schema()) +
                          ".veldran_catalogue SET definition = ? WHERE kind = 'table' AND name = ?");
    row.bind(1, std::string_view(definitionOf(table)));
    row.bind(2, std::string_view(table.name));
    row.run();
    entries_[toUpper(table.name)].table = std::make_shared<const Table>(table);
    changed(!table.isTemporary());
}

void Catalogue::createIndex(const Table& table, const std::string& name,
                            const std::vector<tsql::IndexColumn>& columns, bool unique) {
    std::string list;
    std::string definition;
    std::vector<std::string> names;
    for (const tsql::IndexColumn& column : columns) {
        const auto index = table.indexOf(column.name);
        if (!index) {
            fail(1911, "42000",
                 "Il nome di colonna '" + column.name + "' non esiste nella tabella '" + table.name + "'.");
        }
        names.push_back(table.columns[*index].name);
        definition += names.back() + "\n";
        list += (list.empty() ? "" : ", ") + quoteName(names.back()) + (column.descending ? " DESC" : "");
    }
    SqliteStatement known = database_.prepare("SELECT 1 FROM " + std::string(table.schema()) +
                                              ".veldran_catalogue WHERE parent = ? AND name = ?");
    known.bind(1, std::string_view(table.name));
    known.bind(2, std::string_view(name));
    const bool taken = known.step();
    known.reset();
    if (toLower(name).starts_with(ownIndexPrefix)) {
        fail(errorNotSupported, "42000", "Il nome '" + name + "' è riservato al database.");
    }
    if (taken) {
        fail(1913, "42S11",
             "Un indice o una statistica denominata '" + name + "' esiste già nella tabella '" + table.name +
                 "'.");
    }
    TableIndex index{std::move(names), createIndexSql(table, name, list, unique)};
    if (table.isTemporary() && !unique) {
        definition += "\t" + index.pending;
    } else {
        build(index);
    }
    store(table.schema(), kindIndex, name, table.name, definition);
    entries_[toUpper(table.name)].indexes[name] = std::move(index);
    ++indexState_;
    changed(!table.isTemporary());
}

bool Catalogue::buildIndexes(const std::string& name, const std::vector<std::string>& columns) {
    ensureLoaded();
    const auto found = entries_.find(toUpper(name));
    if (found == entries_.end() || !found->second.table) {
        return true;
    }
    Entry& entry = found->second;
    const std::vector<TableIndex*> wanted = indexesToBuild(entry.indexes, *entry.table, columns);
    for (TableIndex* index : wanted) {
        build(*index);
    }
    const auto code = codeWithoutIndex(entry.indexes, *entry.table, columns);
    // Looking through the table once costs less than an index of it, looking twice does not.
    const bool again = code && ++entry.searches[*code] > 1;
    if (again) {
        const std::string ownName = std::string(ownIndexPrefix) + *code;
        const std::vector<std::size_t> own = ownIndexColumns(*entry.table, *code, columns);
        database_.execute(createIndexSql(*entry.table, ownName, columnList(*entry.table, own), false));
        std::string definition;
        for (const std::size_t column : own) {
            entry.indexes[ownName].columns.push_back(entry.table->columns[column].name);
            definition += entry.table->columns[column].name + "\n";
        }
        store(entry.table->schema(), kindIndex, ownName, entry.table->name, definition);
    }
    if (!wanted.empty() || again) {
        weighIndexes(*entry.table);
    }
    return !code || again;
}

void Catalogue::buildIndexes(const Table& table) {
    bool built = false;
    for (auto& [name, index] : entries_[toUpper(table.name)].indexes) {
        built = build(index) || built;
    }
    if (built) {
        weighIndexes(table);
    }
}

bool Catalogue::build(TableIndex& index) {
    if (index.pending.empty()) {
        return false;
    }
    database_.execute(index.pending);
    index.pending.clear();
    return true;
}

const TableIndexes& Catalogue::indexesOf(const Table& table) {
    ensureLoaded();
    return entries_[toUpper(table.name)].indexes;
}

// Without being told, SQLite takes an index of flags for as good as one of codes. A look at some hundred
// entries of each is enough.
void Catalogue::weighIndexes(const Table& table) {
    database_.execute("PRAGMA analysis_limit = 400; ANALYZE " + table.sqlName());
    SqliteStatement weights = database_.prepare("SELECT stat FROM temp.sqlite_stat1 WHERE idx = ?");
    for (auto& [name, index] : entries_[toUpper(table.name)].indexes) {
        const std::string known = indexName(table, name);
        weights.bind(1, std::string_view(known));
        if (weights.step()) {
            // All rows, then those that share the first column, and so on.
            std::istringstream numbers{std::string(weights.text(0))};
            std::int64_t rows = 0;
            numbers >> rows;
            index.alike.clear();
            for (std::int64_t alike = 0; numbers >> alike;) {
                index.alike.push_back(alike);
            }
        }
        weights.reset();
    }
    ++indexState_;
}

void Catalogue::dropIndex(const Table& table, const std::string& name) {
    SqliteStatement known =
        database_.prepare("SELECT name FROM " + std::string(table.schema()) +
                          ".veldran_catalogue WHERE kind = 'index' AND parent = ? AND name = ?");
    known.bind(1, std::string_view(table.name));
    known.bind(2, std::string_view(name));
    const bool exists = known.step();
    known.reset();
    if (!exists) {
        fail(3701, "42S12",
             "Impossibile eliminare l'indice '" + table.name + "." + name + "' perché non esiste.");
    }
    database_.execute("DROP INDEX IF EXISTS " + std::string(table.schema()) + "." +
                      quoteName(indexName(table, name)));
    remove(table.schema(), kindIndex, name, table.name);
    forget(); // a name may be written in another case
}

void Catalogue::createRoutine(const Routine& routine, tsql::DefinitionMode mode) {
    const auto existing = findRoutine({{}, {routine.name}});
    if (mode == tsql::DefinitionMode::Alter && !existing) {
        failUnknownObject(routine.name);
    }
    if (existing && mode != tsql::DefinitionMode::Create && existing->kind == routine.kind) {
        dropRoutine(*existing);
    }
    checkNameIsFree({{}, {routine.name}});
    if (routine.name.starts_with('#')) {
        fail(errorNotSupported, "42000",
             "Le routine temporanee non sono disponibili nel database incorporato.");
    }
    const std::int64_t id = store("main", kindOf(routine), routine.name, {}, routine.text);
    entries_[toUpper(routine.name)] = {nullptr, std::make_shared<const Routine>(routine), id, {}};
    // The schema of the file did not change for SQLite; its version is what other programs look at.
    database_.execute("PRAGMA main.schema_version = " + std::to_string(fileSchemaVersion() + 1));
    changed(true);
}

void Catalogue::dropRoutine(const Routine& routine) {
    const std::string name = routine.name;
    remove("main", kindOf(routine), name, {});
    entries_.erase(toUpper(name));
    database_.execute("PRAGMA main.schema_version = " + std::to_string(fileSchemaVersion() + 1));
    changed(true);
}

} // namespace veldran::embedded
