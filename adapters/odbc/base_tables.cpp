#include "adapters/odbc/base_tables.h"

#include "adapters/tsql/parser.h"
#include "platform/text.h"

#include <algorithm>

namespace veldran::odbc {

namespace {

/// Texts with values in them come by the thousand; only those with markers come again.
constexpr std::size_t mostShapes = 500;

bool beginsWith(std::string_view text, std::string_view word) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    return equalsIgnoringAsciiCase(text.substr(0, word.size()), word);
}

bool isWorkingTable(std::string_view name) {
    return name.starts_with('#');
}

const tsql::KeyConstraint* primaryKey(const tsql::TableConstraint& constraint) {
    const auto* const key = std::get_if<tsql::KeyConstraint>(&constraint);
    return key != nullptr && key->kind == tsql::KeyKind::PrimaryKey ? key : nullptr;
}

std::vector<std::string> columnsOf(const tsql::KeyConstraint& key) {
    std::vector<std::string> names;
    for (const tsql::IndexColumn& column : key.columns) {
        names.push_back(column.name);
    }
    return names;
}

BaseTable tableOf(const tsql::CreateTable& create) {
    BaseTable table;
    for (const tsql::ColumnDefinition& column : create.columns) {
        table.columns.push_back(
            {column.name, column.nullable.value_or(!column.identity), column.identity.has_value()});
        for (const tsql::TableConstraint& constraint : column.constraints) {
            if (primaryKey(constraint) != nullptr) {
                table.key = {column.name};
            }
        }
    }
    for (const tsql::TableConstraint& constraint : create.constraints) {
        if (const auto* const key = primaryKey(constraint)) {
            table.key = columnsOf(*key);
        }
    }
    for (BaseTable::Column& column : table.columns) {
        column.nullable =
            column.nullable && std::none_of(table.key.begin(), table.key.end(), [&](const auto& name) {
                return equalsIgnoringAsciiCase(name, column.name);
            });
    }
    return table;
}

/// A key of which the result holds only a part names no row.
void markKey(std::vector<ado::ColumnInfo>& columns, const std::vector<std::string>& key) {
    const auto find = [&](const std::string& name) {
        return std::find_if(columns.begin(), columns.end(), [&](const ado::ColumnInfo& column) {
            return equalsIgnoringAsciiCase(column.baseColumn, name);
        });
    };
    const bool whole = std::all_of(key.begin(), key.end(),
                                   [&](const std::string& name) { return find(name) != columns.end(); });
    for (const std::string& name : key) {
        if (whole) {
            find(name)->key = true;
        }
    }
}

} // namespace

void BaseTables::executed(std::string_view text) {
    if (!beginsWith(text, "CREATE") && !beginsWith(text, "ALTER") && !beginsWith(text, "DROP")) {
        return;
    }
    try {
        for (const tsql::Statement& statement : tsql::parseBatch(text).statements) {
            if (const auto* const create = std::get_if<tsql::CreateTable>(&statement.node)) {
                created(create->name.last(), tableOf(*create));
            } else if (const auto* const alter = std::get_if<tsql::AlterTableAdd>(&statement.node)) {
                altered(*alter);
            } else if (const auto* const drop = std::get_if<tsql::DropStatement>(&statement.node)) {
                for (const tsql::DropTarget& target : drop->targets) {
                    tables_.erase(withFoldedCase(target.name.last()));
                }
            }
        }
    } catch (const tsql::SyntaxError&) {
        tables_.clear(); // something was defined, and it is not known what
    }
}

void BaseTables::created(const std::string& name, BaseTable table) {
    if (isWorkingTable(name)) {
        tables_[withFoldedCase(name)] = std::move(table);
    } else {
        tables_.erase(withFoldedCase(name)); // another schema may have one of that name
    }
}

void BaseTables::altered(const tsql::AlterTableAdd& alter) {
    const auto* const key = std::get_if<tsql::KeyConstraint>(&alter.addition);
    if (key != nullptr && key->kind == tsql::KeyKind::PrimaryKey && isWorkingTable(alter.table.last())) {
        tables_[withFoldedCase(alter.table.last())].key = columnsOf(*key);
    } else {
        tables_.erase(withFoldedCase(alter.table.last()));
    }
}

void BaseTables::prepare(std::string_view text) {
    shape_ = shapeOf(text);
    table_ = shape_ ? tableNamed(shape_->table) : nullptr;
}

std::optional<SelectShape> BaseTables::shapeOf(std::string_view text) {
    if (!beginsWith(text, "SELECT")) {
        return std::nullopt;
    }
    const std::string known(text);
    const auto found = shapes_.find(known);
    if (found != shapes_.end()) {
        return found->second;
    }
    if (shapes_.size() >= mostShapes) {
        shapes_.clear();
    }
    return shapes_.emplace(known, selectShape(text)).first->second;
}

// Inside a transaction the catalogue is left alone: a question that the server refuses could undo it.
const BaseTable* BaseTables::tableNamed(const std::string& name) {
    ObjectName object = objectName(name);
    const std::string known = withFoldedCase(object.name);
    const auto found = tables_.find(known);
    if (found != tables_.end()) {
        return &found->second;
    }
    if (link_.inTransaction()) {
        return nullptr;
    }
    if (isWorkingTable(object.name) && link_.speaksTransactSql()) {
        object.catalogue = "tempdb";
    }
    return &tables_.emplace(known, fromCatalogue(object)).first->second;
}

BaseTable BaseTables::fromCatalogue(const ObjectName& object) {
    constexpr std::size_t columnName = 3; // as the catalogue function orders its columns
    BaseTable table;
    try {
        const auto rows = primaryKeys(link_, object);
        for (std::size_t row = 0; row < rows->rowCount(); ++row) {
            table.key.push_back(nullSafeText(rows->cell(row, columnName)));
        }
    } catch (const ado::AdoError&) {
        if (link_.isLost()) {
            throw;
        }
        table.key.clear(); // rows without a known key can be read
    }
    return table;
}

void BaseTables::describe(std::vector<ado::ColumnInfo>& columns) const {
    if (!shape_ || (!shape_->allColumns && shape_->columns.size() != columns.size())) {
        return;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto base = shape_->allColumns ? std::optional(columns[i].name) : shape_->columns[i];
        if (base) {
            columns[i].baseTable = shape_->table;
            columns[i].baseColumn = *base;
        }
    }
    if (table_ == nullptr) {
        return;
    }
    for (ado::ColumnInfo& column : columns) {
        for (const BaseTable::Column& known : table_->columns) {
            if (equalsIgnoringAsciiCase(known.name, column.baseColumn)) {
                column.nullable = known.nullable;
                column.identity = column.identity || known.identity;
            }
        }
    }
    markKey(columns, table_->key);
}

} // namespace veldran::odbc
