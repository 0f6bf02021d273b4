#include "adapters/embedded/table.h"

#include "adapters/embedded/errors.h"
#include "adapters/embedded/sqlite.h"
#include "platform/text.h"

#include <algorithm>
#include <array>

namespace veldran::embedded {

namespace {

std::string bracketed(std::string_view name) {
    std::string result = "[";
    for (const char c : name) {
        result += c;
        if (c == ']') {
            result += ']';
        }
    }
    return result += ']';
}

[[noreturn]] void refuse(const std::string& sentence) {
    fail(errorNotSupported, "42000", sentence);
}

std::size_t columnNamed(const Table& table, const std::string& name) {
    const auto found = table.indexOf(name);
    if (!found) {
        fail(1911, "42000",
             "Il nome di colonna '" + name + "' non esiste nella tabella '" + table.name + "'.");
    }
    return *found;
}

Key keyFromConstraint(const Table& table, const tsql::KeyConstraint& constraint,
                      const std::string* inlineColumn) {
    Key key;
    key.primary = constraint.kind == tsql::KeyKind::PrimaryKey;
    key.name = constraint.name.value_or((key.primary ? "PK_" : "UQ_") + table.name);
    if (inlineColumn != nullptr) {
        key.columns = {columnNamed(table, *inlineColumn)};
    }
    for (const tsql::IndexColumn& column : constraint.columns) {
        const std::size_t index = columnNamed(table, column.name);
        if (std::find(key.columns.begin(), key.columns.end(), index) != key.columns.end()) {
            fail(1909, "42000", "La colonna '" + column.name + "' compare più volte nella chiave.");
        }
        key.columns.push_back(index);
    }
    const Column* identity = table.identityColumn();
    const bool onIdentity = key.columns.size() == 1 && table.columns[key.columns[0]].identity;
    if (onIdentity) {
        key.storage = KeyStorage::RowNumber;
    } else if (key.primary && constraint.clustering != tsql::Clustering::Nonclustered &&
               identity == nullptr) {
        key.storage = KeyStorage::Clustered;
    }
    return key;
}

void addKey(Table& table, const tsql::TableConstraint& constraint, const std::string* inlineColumn) {
    const auto* definition = std::get_if<tsql::KeyConstraint>(&constraint);
    if (definition == nullptr) {
        refuse("I vincoli CHECK non sono disponibili nel database incorporato.");
    }
    Key key = keyFromConstraint(table, *definition, inlineColumn);
    if (key.primary) {
        if (table.primaryKey() != nullptr) {
            fail(8110, "42000",
                 "Impossibile aggiungere più vincoli PRIMARY KEY alla tabella '" + table.name + "'.");
        }
        for (const std::size_t column : key.columns) {
            table.columns[column].nullable = false;
        }
    }
    table.keys.push_back(std::move(key));
}

} // namespace

std::string Table::sqlName() const {
    return std::string(schema()) + "." + quoteName(name);
}

std::optional<std::size_t> Table::indexOf(std::string_view column) const {
    const auto place = [&](auto isNamed) {
        const auto found = std::find_if(columns.begin(), columns.end(), isNamed);
        return found == columns.end() ? std::nullopt
                                      : std::optional(static_cast<std::size_t>(found - columns.begin()));
    };
    // Most names are spelt as they were declared.
    const auto exact = place([&](const Column& candidate) { return candidate.name == column; });
    return exact ? exact : place([&](const Column& candidate) {
        return equalsIgnoringAsciiCase(candidate.name, column);
    });
}

const Column* Table::identityColumn() const {
    const auto found =
        std::find_if(columns.begin(), columns.end(), [](const Column& c) { return c.identity; });
    return found == columns.end() ? nullptr : &*found;
}

const Key* Table::primaryKey() const {
    const auto found = std::find_if(keys.begin(), keys.end(), [](const Key& key) { return key.primary; });
    return found == keys.end() ? nullptr : &*found;
}

bool Table::isClustered() const {
    return std::any_of(keys.begin(), keys.end(),
                       [](const Key& key) { return key.storage == KeyStorage::Clustered; });
}

std::string Table::rowNumber() const {
    const std::array<const char*, 3> names{"rowid", "_rowid_", "oid"};
    const auto* free = std::find_if(names.begin(), names.end() - 1,
                                    [&](const char* candidate) { return !indexOf(candidate).has_value(); });
    return *free;
}

std::vector<std::string> Table::locator() const {
    if (!isClustered()) {
        return {rowNumber()};
    }
    std::vector<std::string> names;
    for (const std::size_t column : primaryKey()->columns) {
        names.push_back(quoteName(columns[column].name));
    }
    return names;
}

bool Table::isKeyColumn(std::size_t column) const {
    const Key* key = primaryKey();
    return key != nullptr &&
           std::find(key->columns.begin(), key->columns.end(), column) != key->columns.end();
}

void addColumn(Table& table, const tsql::ColumnDefinition& definition, std::string_view text) {
    if (table.indexOf(definition.name)) {
        fail(2705, "42S21",
             "I nomi di colonna di una tabella devono essere univoci: '" + definition.name + "' è ripetuto.");
    }
    Column column;
    column.name = definition.name;
    column.type = resolveType(definition.type);
    column.nullable = definition.nullable.value_or(true);
    if (definition.identity) {
        if (!column.type.isExact() || column.type.kind == TypeKind::Bit || column.type.scale > 0) {
            fail(2749, "42000", "La colonna Identity '" + column.name + "' deve essere di un tipo intero.");
        }
        if (table.identityColumn() != nullptr) {
            fail(2744, "42000", "La tabella '" + table.name + "' ha più colonne Identity.");
        }
        if (definition.identity->increment != 1) {
            refuse("IDENTITY con un incremento diverso da 1 non è disponibile.");
        }
        if (definition.nullable.value_or(false)) {
            fail(8147, "42000", "La colonna Identity '" + column.name + "' non può ammettere valori NULL.");
        }
        column.identity = true;
        column.nullable = false;
        table.identitySeed = definition.identity->seed;
    }
    if (definition.defaultValue) {
        const tsql::NodeSpan& span = definition.defaultValue->value.span;
        column.defaultText = text.substr(span.begin.offset, span.end.offset - span.begin.offset);
    }
    table.columns.push_back(std::move(column));
}

Key addedKey(const Table& table, const tsql::KeyConstraint& constraint) {
    Key key = keyFromConstraint(table, constraint, nullptr);
    if (key.primary && table.primaryKey() != nullptr) {
        fail(1779, "42000", "Nella tabella '" + table.name + "' è già definita una chiave primaria.");
    }
    for (const std::size_t column : key.columns) {
        if (key.primary && table.columns[column].nullable) {
            fail(8111, "42000",
                 "Impossibile definire il vincolo PRIMARY KEY sulla colonna '" + table.columns[column].name +
                     "' della tabella '" + table.name + "', che ammette valori NULL.");
        }
    }
    if (key.storage == KeyStorage::Clustered) {
        key.storage = KeyStorage::Index; // the rows are where they are
    }
    return key;
}

Table tableFromDefinition(const tsql::CreateTable& definition, std::string_view text) {
    Table table;
    table.name = definition.name.last();
    for (const tsql::ColumnDefinition& column : definition.columns) {
        addColumn(table, column, text);
    }
    for (const tsql::ColumnDefinition& column : definition.columns) {
        for (const tsql::TableConstraint& constraint : column.constraints) {
            addKey(table, constraint, &column.name);
        }
    }
    for (const tsql::TableConstraint& constraint : definition.constraints) {
        addKey(table, constraint, nullptr);
    }
    return table;
}

std::string definitionOf(const Table& table) {
    std::string text = "CREATE TABLE " + bracketed(table.name) + "\n(";
    const char* separator = "\n    ";
    for (const Column& column : table.columns) {
        text += separator + bracketed(column.name) + " " + typeText(column.type);
        if (column.identity) {
            text += " IDENTITY(" + std::to_string(table.identitySeed) + ", 1)";
        }
        text += column.nullable ? " NULL" : " NOT NULL";
        if (!column.defaultText.empty()) {
            text += " DEFAULT " + column.defaultText;
        }
        separator = ",\n    ";
    }
    for (const Key& key : table.keys) {
        text += separator + ("CONSTRAINT " + bracketed(key.name)) +
                (key.primary ? " PRIMARY KEY" : " UNIQUE") +
                (key.storage == KeyStorage::Index ? " NONCLUSTERED (" : " CLUSTERED (");
        for (std::size_t i = 0; i < key.columns.size(); ++i) {
            text += (i == 0 ? "" : ", ") + bracketed(table.columns[key.columns[i]].name);
        }
        text += ")";
    }
    return text + "\n)";
}

const tsql::CreateProcedure& Routine::procedure() const {
    return std::get<tsql::CreateProcedure>(batch.statements.front().node);
}

const tsql::CreateFunction& Routine::function() const {
    return std::get<tsql::CreateFunction>(batch.statements.front().node);
}

} // namespace veldran::embedded
