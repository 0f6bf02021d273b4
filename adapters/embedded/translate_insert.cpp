#include "adapters/embedded/conversion.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/sqlite.h"
#include "adapters/embedded/translator.h"
#include "adapters/embedded/translator_frames.h"
#include "adapters/tsql/parser.h"
#include "platform/text.h"

#include <algorithm>

namespace veldran::embedded {

namespace {

std::string quotedColumns(const Table& table, const std::vector<std::size_t>& columns) {
    std::string list;
    for (const std::size_t column : columns) {
        list += (list.empty() ? "" : ", ") + quoteName(table.columns[column].name);
    }
    return list;
}

[[noreturn]] void failUnlisted(const Table& table) {
    fail(8101, "23000",
         "È possibile specificare un valore esplicito per la colonna Identity della tabella '" + table.name +
             "' solo con un elenco di colonne e con IDENTITY_INSERT impostata su ON.");
}

void checkIdentity(const Table& table, const std::vector<std::size_t>& columns, bool listed,
                   bool identityInsert) {
    const bool given = std::any_of(columns.begin(), columns.end(),
                                   [&](std::size_t column) { return table.columns[column].identity; });
    if (given && identityInsert && !listed) {
        failUnlisted(table);
    }
    if (given && !identityInsert) {
        fail(544, "23000",
             "Impossibile inserire un valore esplicito per la colonna Identity nella tabella '" + table.name +
                 "' quando IDENTITY_INSERT è impostata su OFF.");
    }
    if (!given && identityInsert) {
        fail(545, "23000",
             "È necessario specificare un valore esplicito per la colonna Identity della tabella '" +
                 table.name + "' quando IDENTITY_INSERT è impostata su ON.");
    }
}

// A table that keeps its rows in the order of a key has no place for another one: sorting them first would be
// for nothing, unless TOP takes the first ones.
void dropIdleOrder(BoundQuery& query, const Table& target) {
    const bool taken = std::any_of(query.arms.begin(), query.arms.end(),
                                   [](const BoundSelect& arm) { return !arm.limit.empty(); });
    if (target.isClustered() && !taken) {
        query.orderBy.clear();
    }
}

} // namespace

std::vector<std::size_t> Translator::insertColumns(const tsql::InsertStatement& statement,
                                                   const Table& target) {
    const bool identityInsert = equalsIgnoringAsciiCase(context_.identityInsert, target.name);
    std::vector<std::size_t> columns;
    if (statement.columns.empty()) {
        for (std::size_t i = 0; i < target.columns.size(); ++i) {
            if (!target.columns[i].identity || identityInsert) {
                columns.push_back(i);
            }
        }
    }
    for (const std::string& name : statement.columns) {
        const auto index = target.indexOf(name);
        if (!index) {
            failUnknownColumn(name);
        }
        if (std::find(columns.begin(), columns.end(), *index) != columns.end()) {
            fail(264, "42000",
                 "Il nome di colonna '" + name + "' è specificato più volte nell'elenco di colonne.");
        }
        columns.push_back(*index);
    }
    if (target.identityColumn() != nullptr) {
        checkIdentity(target, columns, !statement.columns.empty(), identityInsert);
    }
    return columns;
}

Fragment Translator::defaultOf(const Table& target, std::size_t column) {
    const Column& definition = target.columns[column];
    if (definition.defaultText.empty()) {
        return makeConstant(std::monostate{}, definition.type);
    }
    const Scope nothing;
    const ScopeFrame frame(*this, nothing);
    const Fragment value = expression(tsql::parseExpression(definition.defaultText));
    return convert(value, definition.type, ConversionMode::Assign, definition.name);
}

std::string Translator::valuesRows(const tsql::InsertValues& source, const Table& target,
                                   const std::vector<std::size_t>& columns,
                                   std::vector<std::size_t>& omitted) {
    std::string sql = "VALUES ";
    for (std::size_t row = 0; row < source.rows.size(); ++row) {
        const tsql::ValuesRow& values = source.rows[row];
        if (values.size() != columns.size()) {
            fail(values.size() < columns.size() ? 109 : 110, "21S01",
                 "Il numero di valori della clausola VALUES non corrisponde al numero di colonne di INSERT.");
        }
        sql += row == 0 ? "(" : ", (";
        for (std::size_t i = 0; i < values.size(); ++i) {
            const Column& column = target.columns[columns[i]];
            const bool isDefault = std::holds_alternative<tsql::DefaultValue>(values[i].node);
            const Fragment value =
                isDefault ? defaultOf(target, columns[i])
                          : convert(expression(values[i]), column.type, ConversionMode::Assign, column.name);
            sql += (i == 0 ? "" : ", ") + value.sql;
        }
        for (const std::size_t column : omitted) {
            sql += ", " + defaultOf(target, column).sql;
        }
        sql += ")";
    }
    return sql;
}

Program Translator::insert(const tsql::InsertStatement& statement) {
    const auto target = table(statement.table);
    Program program = writeInsert(statement, *target);
    program.changesFile = !target->isTemporary();
    program.changesTable = target->isTemporary() ? target->name : std::string();
    program.inserts = true;
    program.numbersRows = target->identityColumn() != nullptr;
    return program;
}

Program Translator::writeInsert(const tsql::InsertStatement& statement, const Table& target) {
    std::vector<std::size_t> columns = insertColumns(statement, target);
    if (std::holds_alternative<tsql::InsertDefaults>(statement.source)) {
        columns.clear();
    }
    std::vector<std::size_t> omitted;
    for (std::size_t i = 0; i < target.columns.size(); ++i) {
        if (std::find(columns.begin(), columns.end(), i) == columns.end() &&
            !target.columns[i].defaultText.empty()) {
            omitted.push_back(i);
        }
    }
    // Without a list of columns a value for each of them names the identity column as well.
    const auto checkCount = [&](std::size_t count) {
        if (count != columns.size() && count == target.columns.size() && statement.columns.empty()) {
            failUnlisted(target);
        }
    };
    std::string source;
    std::optional<RowCopy> copies;
    if (const auto* values = std::get_if<tsql::InsertValues>(&statement.source)) {
        checkCount(values->rows.front().size());
        source = valuesRows(*values, target, columns, omitted);
    } else if (const auto* node = std::get_if<tsql::Query>(&statement.source)) {
        BoundQuery bound = query(*node, nullptr);
        checkCount(bound.items().size());
        if (bound.items().size() != columns.size()) {
            fail(bound.items().size() < columns.size() ? 120 : 121, "21S01",
                 "Il numero di espressioni dell'elenco di selezione di INSERT non corrisponde al numero di "
                 "colonne.");
        }
        if (!omitted.empty() && !bound.isPlain()) {
            refuse(node->span,
                   "INSERT da una query con DISTINCT o UNION in una tabella con valori predefiniti "
                   "omessi non è disponibile");
        }
        dropIdleOrder(bound, target);
        std::vector<SqlType> types;
        std::vector<std::string> names;
        for (const std::size_t column : columns) {
            types.push_back(target.columns[column].type);
            names.push_back(target.columns[column].name);
        }
        for (const std::size_t column : omitted) {
            bound.items().push_back({names.back(), defaultOf(target, column), {}, {}});
            types.push_back(target.columns[column].type);
            names.push_back(target.columns[column].name);
        }
        copies = rowCopyOf(bound, target, names);
        source = writeConverted(bound, types, names);
    } else if (omitted.empty()) {
        return finish("INSERT INTO " + target.sqlName() + " DEFAULT VALUES");
    } else {
        source = "VALUES (";
        for (const std::size_t column : omitted) {
            source += (column == omitted.front() ? "" : ", ") + defaultOf(target, column).sql;
        }
        source += ")";
    }
    columns.insert(columns.end(), omitted.begin(), omitted.end());
    Program program =
        finish("INSERT INTO " + target.sqlName() + " (" + quotedColumns(target, columns) + ") " + source);
    program.copies = std::move(copies);
    return program;
}

} // namespace veldran::embedded
