#include "adapters/embedded/conversion.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/sqlite.h"
#include "adapters/embedded/translator.h"
#include "adapters/embedded/translator_frames.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <set>

namespace veldran::embedded {

namespace {

// What follows WHERE, or nothing when every row is meant.
std::string whereClause(const Condition& where) {
    return where.isTrue() ? "" : " WHERE " + where.sql;
}

// Whether a subquery in the text reads the table: nothing else names a table with its schema.
bool readsTable(const std::string& sql, const Table& table) {
    return sql.find(table.sqlName()) != std::string::npos;
}

bool joinsInnerOnly(const std::vector<tsql::TableSource>& from) {
    const auto inner = [](const tsql::JoinStep& step) {
        return (step.kind == tsql::JoinKind::Inner || step.kind == tsql::JoinKind::Cross) &&
               !std::holds_alternative<tsql::NestedJoin>(step.right.node);
    };
    return std::all_of(from.begin(), from.end(), [&](const tsql::TableSource& source) {
        return !std::holds_alternative<tsql::NestedJoin>(source.first.node) &&
               std::all_of(source.joins.begin(), source.joins.end(), inner);
    });
}

// The comparisons that all hold for a row that meets the condition.
void collectEquals(const tsql::Expression& node, std::vector<const tsql::Comparison*>& equals) {
    if (const auto* logical = std::get_if<tsql::Logical>(&node.node);
        logical != nullptr && logical->op == tsql::LogicalOperator::And) {
        for (const tsql::Expression& operand : logical->operands) {
            collectEquals(operand, equals);
        }
    } else if (const auto* comparison = std::get_if<tsql::Comparison>(&node.node);
               comparison != nullptr && comparison->op == tsql::ComparisonOperator::Equal) {
        equals.push_back(comparison);
    }
}

// The place of the column among those of the source.
std::optional<std::size_t> placeOf(const Fragment& column, const Source& source) {
    const auto found =
        std::find_if(source.columns.begin(), source.columns.end(),
                     [&](const SourceColumn& candidate) { return candidate.value.sql == column.sql; });
    return found == source.columns.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(found - source.columns.begin()));
}

// Whether these columns tell the rows of the source apart.
bool tellRowsApart(const Source& source, const std::set<std::size_t>& columns) {
    if (!source.table) {
        return source.distinct && columns.size() == source.columns.size();
    }
    return std::any_of(source.table->keys.begin(), source.table->keys.end(), [&](const Key& key) {
        return std::all_of(key.columns.begin(), key.columns.end(),
                           [&](std::size_t column) { return columns.contains(column); });
    });
}

// Whether the value of a row that has to be written is the flag that it does not have: then the query that
// tells it need not be run once more.
bool isOtherFlag(const Column& column, const Fragment& value) {
    return column.type.kind == TypeKind::Bit && !column.nullable && value.type == column.type &&
           !value.nullable && value.sql.find("SELECT ") != std::string::npos;
}

std::string locatorList(const Table& table, const std::string& prefix) {
    std::string list;
    for (const std::string& column : table.locator()) {
        list += (list.empty() ? "" : ", ") + prefix + column;
    }
    return list;
}

std::string tuple(const std::string& list) {
    return list.find(", ") == std::string::npos ? list : "(" + list + ")";
}

} // namespace

// The target is the source of that alias, or of that table; a table that FROM does not name stands beside it.
Translator::Target Translator::changeTarget(const tsql::QualifiedName& name,
                                            const std::vector<tsql::TableSource>& from, Scope& scope) {
    for (std::size_t i = 0; i < scope.sources.size(); ++i) {
        if (equalsIgnoringAsciiCase(scope.sources[i].name, name.last())) {
            if (!scope.sources[i].table) {
                fail(4405, "42000", "'" + name.last() + "' non è aggiornabile perché non è una tabella.");
            }
            return {scope.sources[i].table, i, scope.sources.size() > 1, false};
        }
    }
    const auto target = table(name);
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < scope.sources.size(); ++i) {
        const auto& source = scope.sources[i].table;
        if (source && equalsIgnoringAsciiCase(source->name, target->name)) {
            if (found) {
                fail(8154, "42000", "La tabella '" + name.last() + "' è ambigua.");
            }
            found = i;
        }
    }
    if (found) {
        return {scope.sources[*found].table, *found, scope.sources.size() > 1, false};
    }
    addTable(scope, target, target->name, target->name);
    return {target, scope.sources.size() - 1, !from.empty(), true};
}

std::vector<Translator::AssignedColumn> Translator::assignments(const tsql::UpdateStatement& statement,
                                                                const Target& target) {
    std::vector<AssignedColumn> result;
    for (const tsql::Assignment& assignment : statement.assignments) {
        const auto index = target.table->indexOf(assignment.column.last());
        if (!index) {
            failUnknownColumn(assignment.column.last());
        }
        const Column& column = target.table->columns[*index];
        if (column.identity) {
            fail(8102, "42000", "Impossibile aggiornare la colonna Identity '" + column.name + "'.");
        }
        const auto again = [&](const AssignedColumn& other) { return other.column == *index; };
        if (std::any_of(result.begin(), result.end(), again)) {
            fail(264, "42000",
                 "Il nome di colonna '" + column.name + "' è specificato più volte nella clausola SET.");
        }
        const bool isDefault = std::holds_alternative<tsql::DefaultValue>(assignment.value.node);
        Fragment value = isDefault ? defaultOf(*target.table, *index)
                                   : convert(expression(assignment.value), column.type,
                                             ConversionMode::Assign, column.name);
        result.push_back({*index, std::move(value)});
    }
    return result;
}

Program Translator::finishChange(std::string sql, const Table& target) {
    Program program = finish(std::move(sql));
    program.changesFile = !target.isTemporary();
    program.changesTable = target.isTemporary() ? target.name : std::string();
    return program;
}

TranslatedStatement Translator::update(const tsql::UpdateStatement& statement) {
    Scope scope;
    std::vector<Condition> conditions;
    std::string from;
    // With inner joins alone SQLite's own UPDATE ... FROM serves: the sources beside the target are joined to
    // it. Any other FROM becomes a query that finds the target's rows and the new values.
    const bool direct = joinsInnerOnly(statement.from);
    std::vector<std::string> parts;
    if (direct) {
        for (const tsql::TableSource& source : statement.from) {
            parts.push_back(primary(source.first, scope, conditions, false));
            for (const tsql::JoinStep& step : source.joins) {
                parts.push_back(primary(step.right, scope, conditions, false));
                if (step.on) {
                    const ScopeFrame frame(*this, scope);
                    conditions.push_back(truth(*step.on));
                }
            }
        }
    } else {
        from = fromList(statement.from, scope, conditions);
    }
    const Target target = changeTarget(statement.target, statement.from, scope);
    if (direct) {
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (i != target.source) {
                from += (from.empty() ? "" : ", ") + parts[i];
            }
        }
    } else if (target.added) {
        from += ", " + target.table->sqlName();
    }
    const ScopeFrame frame(*this, scope);
    if (statement.where) {
        conditions.push_back(truth(*statement.where));
    }
    const std::vector<AssignedColumn> assigned = assignments(statement, target);
    return writeUpdate(statement, target, assigned, from, allOf(std::move(conditions)), scope);
}

// Whether FROM surely offers each row of the target once at most: it names the target alone, or one source
// more whose rows are told apart by columns that equal columns of the target.
bool Translator::meetsOnce(const tsql::UpdateStatement& statement, const Target& target, const Scope& scope) {
    if (scope.sources.size() == 1) {
        return true;
    }
    if (scope.sources.size() > 2 || target.added) {
        return false;
    }
    std::vector<const tsql::Comparison*> equals;
    for (const tsql::TableSource& source : statement.from) {
        for (const tsql::JoinStep& step : source.joins) {
            const bool inner = step.kind == tsql::JoinKind::Inner || step.kind == tsql::JoinKind::Cross;
            if (!inner && (step.kind != tsql::JoinKind::LeftOuter || target.source != 0)) {
                return false;
            }
            if (step.on) {
                collectEquals(*step.on, equals);
            }
        }
    }
    if (statement.where) {
        collectEquals(*statement.where, equals);
    }
    const Source& own = scope.sources[target.source];
    const Source& other = scope.sources[1 - target.source];
    std::set<std::size_t> matched;
    for (const tsql::Comparison* equal : equals) {
        const auto* left = std::get_if<tsql::ColumnReference>(&equal->left->node);
        const auto* right = std::get_if<tsql::ColumnReference>(&equal->right->node);
        if (left == nullptr || right == nullptr) {
            continue;
        }
        const Fragment a = column(left->name);
        const Fragment b = column(right->name);
        // Many texts may stand for one number.
        if (a.type.isText() != b.type.isText()) {
            continue;
        }
        for (const auto& [mine, theirs] : {std::pair(a, b), std::pair(b, a)}) {
            if (const auto place = placeOf(theirs, other); place && placeOf(mine, own)) {
                matched.insert(*place);
            }
        }
    }
    return tellRowsApart(other, matched);
}

// Whether the condition joins the target to one other working table by their row numbers and says nothing
// else.
bool Translator::joinsRowNumbers(const Target& target, const std::string& condition, const Scope& scope) {
    if (scope.sources.size() != 2 || target.added) {
        return false;
    }
    std::array<std::string, 2> numbers;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const Source& source = scope.sources[i];
        const Column* identity =
            source.table && source.table->isTemporary() ? source.table->identityColumn() : nullptr;
        if (identity == nullptr) {
            return false;
        }
        numbers[i] = quoteName(source.alias) + "." + quoteName(identity->name);
    }
    return condition == numbers[0] + " = " + numbers[1] || condition == numbers[1] + " = " + numbers[0];
}

// Of an UPDATE that joins row numbers: what it carries back, if that is one column to the one of its name.
// For the rows of a range the other table is asked row by row: for a join SQLite would lay the rows aside in
// a table first.
std::optional<WriteBack> Translator::writeBackOf(const Target& target,
                                                 const std::vector<AssignedColumn>& assigned,
                                                 const Scope& scope) {
    const Source& own = scope.sources[target.source];
    const Source& other = scope.sources[1 - target.source];
    const Column& column = target.table->columns[assigned.front().column];
    const auto place = other.table->indexOf(column.name);
    if (assigned.size() != 1 || !place || !(other.table->columns[*place].type == column.type) ||
        assigned.front().value.sql != quoteName(other.alias) + "." + quoteName(column.name)) {
        return std::nullopt;
    }
    const std::string name = quoteName(column.name);
    const std::string mine = quoteName(own.alias) + ".";
    const std::string theirs = quoteName(other.alias) + ".";
    const std::string number = mine + quoteName(target.table->identityColumn()->name);
    const std::string row = " FROM " + other.table->sqlName() + " AS " + quoteName(other.alias) + " WHERE " +
                            theirs + quoteName(other.table->identityColumn()->name) + " = " + number;
    return WriteBack{other.table->name, target.table->name, column.name,
                     "UPDATE " + target.table->sqlName() + " AS " + quoteName(own.alias) + " SET " + name +
                         " = (SELECT " + theirs + name + row + ") WHERE " + number +
                         " BETWEEN ?1 AND ?2 AND EXISTS (SELECT 1" + row + " AND ts_changed(" + mine + name +
                         ", " + theirs + name + "))"};
}

TranslatedStatement Translator::writeUpdate(const tsql::UpdateStatement& statement, const Target& target,
                                            const std::vector<AssignedColumn>& assigned,
                                            const std::string& from, Condition where, const Scope& scope) {
    const Table& table = *target.table;
    const std::string alias = scope.sources[target.source].alias;
    std::string named = table.sqlName() + (alias == table.name ? "" : " AS " + quoteName(alias));
    const bool movesKeys = std::any_of(assigned.begin(), assigned.end(), [&](const AssignedColumn& column) {
        return std::any_of(table.keys.begin(), table.keys.end(), [&](const Key& key) {
            return std::find(key.columns.begin(), key.columns.end(), column.column) != key.columns.end();
        });
    });
    // Writing a row costs far more than looking at it, above all where indexes hang on it. The condition is
    // asked once more before a row is counted, because SQLite tests the parts of a condition in an order of
    // its own.
    const bool spares =
        !movesKeys && where.sql.find("SELECT ") == std::string::npos && meetsOnce(statement, target, scope);
    const std::string joinCondition = where.sql;
    std::string counts;
    if (spares) {
        std::string changes;
        for (const AssignedColumn& column : assigned) {
            changes += (changes.empty() ? "ts_changed(" : ", ") + quoteName(alias) + "." +
                       quoteName(table.columns[column.column].name) + ", " + column.value.sql;
        }
        changes += ")";
        if (!where.isTrue()) {
            changes = "CASE WHEN " + where.sql + " THEN " + changes + " END";
        }
        const auto rows = where.isTrue() && assigned.size() == 1
                              ? rowsToWrite(statement, target, assigned.front(), scope)
                              : std::nullopt;
        if (rows) {
            counts = "SELECT count(*) FROM " + table.sqlName();
        }
        if (rows && rows->value) {
            const std::string& name = table.columns[assigned.front().column].name;
            Program program = finishChange("UPDATE " + named + " SET " + quoteName(name) + " = " +
                                               std::to_string(*rows->value) + " WHERE " + rows->condition.sql,
                                           table);
            program.counts = std::move(counts);
            program.updates = {name};
            return program;
        }
        where = allOf({where,
                       rows ? rows->condition : makeKnown(Truth::True),
                       {std::move(changes), Condition::Form::Predicate, std::nullopt}});
    }
    const auto span = spanInOriginal(where, scope);
    where = span ? allOf({where, *span}) : withImplied(where, scope);
    if (span) {
        named += " NOT INDEXED"; // SQLite would prefer any index of the copy, even of a flag
    }
    const bool joinsOnly = joinsInnerOnly(statement.from);
    const std::string sources = joinsOnly ? named + (from.empty() ? "" : ", " + from) : from;
    // Without FROM, SQLite writes a row before it looks at the next: a subquery would read what was written.
    const bool readsItself =
        from.empty() && (readsTable(joinCondition, table) ||
                         std::any_of(assigned.begin(), assigned.end(), [&](const AssignedColumn& column) {
                             return readsTable(column.value.sql, table);
                         }));
    const bool direct = joinsOnly && !readsItself;
    const bool carriesBack =
        spares && direct && slots_.empty() && joinsRowNumbers(target, joinCondition, scope);
    std::string sql = "UPDATE " + (direct ? named : table.sqlName()) + " SET ";
    std::string values;
    for (std::size_t i = 0; i < assigned.size(); ++i) {
        const std::string place = "\"v" + std::to_string(i) + "\"";
        const Column& column = table.columns[assigned[i].column];
        const std::string name = quoteName(column.name);
        const std::string value = spares && assigned.size() == 1 && isOtherFlag(column, assigned[i].value)
                                      ? "1 - " + quoteName(alias) + "." + name
                                      : assigned[i].value.sql;
        sql += (i == 0 ? "" : ", ") + name + " = " + (direct ? value : "\"$\"." + place);
        values += ", " + assigned[i].value.sql + " AS " + place;
    }
    const std::string prefix = quoteName(alias) + ".";
    if (direct) {
        sql += (from.empty() ? "" : " FROM " + from) + whereClause(where);
    } else {
        std::string keys;
        std::string match;
        const std::vector<std::string> locator = table.locator();
        for (std::size_t i = 0; i < locator.size(); ++i) {
            const std::string place = "\"k" + std::to_string(i) + "\"";
            keys += (i == 0 ? "" : ", ") + prefix + locator[i] + " AS " + place;
            match += (i == 0 ? "" : " AND ") + quoteName(table.name) + "." + locator[i] + " = \"$\"." + place;
        }
        sql += " FROM (SELECT " + keys + values + " FROM " + sources + whereClause(where) +
               ") AS \"$\" WHERE " + match;
    }
    if (!movesKeys) {
        Program program = finishChange(std::move(sql), table);
        program.sparesRows = spares;
        program.counts = std::move(counts);
        for (const AssignedColumn& column : assigned) {
            program.updates.push_back(table.columns[column.column].name);
        }
        if (carriesBack) {
            program.writesBack = writeBackOf(target, assigned, scope);
        }
        return program;
    }
    KeyUpdateProgram program;
    std::string columns;
    std::string fresh;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const std::string name = quoteName(table.columns[i].name);
        const auto changed =
            std::find_if(assigned.begin(), assigned.end(),
                         [&](const AssignedColumn& candidate) { return candidate.column == i; });
        columns += (i == 0 ? "" : ", ") + name;
        fresh += ", " + (changed == assigned.end() ? prefix + name : changed->value.sql);
    }
    const std::string locators = locatorList(table, prefix);
    std::string places;
    for (std::size_t i = 0; i < table.locator().size(); ++i) {
        places += (i == 0 ? "" : ", ") + ("\"k" + std::to_string(i) + "\"");
    }
    std::string freshPlaces;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        freshPlaces += (i == 0 ? "" : ", ") + ("\"c" + std::to_string(i) + "\"");
    }
    program.stage = "INSERT OR IGNORE INTO temp.\"veldran_stage\" (" + places + ", " + freshPlaces +
                    ") SELECT " + locators + fresh + " FROM " + sources + whereClause(where);
    program.remove = "DELETE FROM " + table.sqlName() + " WHERE " + tuple(locatorList(table, "")) +
                     " IN (SELECT " + places + " FROM temp.\"veldran_stage\")";
    program.insert = "INSERT INTO " + table.sqlName() + " (" + columns + ") SELECT " + freshPlaces +
                     " FROM temp.\"veldran_stage\"";
    program.target = table;
    program.direct = finishChange(std::move(sql), table);
    return program;
}

Program Translator::erase(const tsql::DeleteStatement& statement) {
    Scope scope;
    std::vector<Condition> conditions;
    const std::string from = fromList(statement.from, scope, conditions);
    const Target target = changeTarget(statement.target, statement.from, scope);
    const ScopeFrame frame(*this, scope);
    if (statement.where) {
        conditions.push_back(truth(*statement.where));
    }
    const Condition where = allOf(std::move(conditions));
    const Table& table = *target.table;
    // As in an UPDATE, what a subquery reads of the table has to be as it was before.
    if (!target.joined && !readsTable(where.sql, table)) {
        const std::string& alias = scope.sources[target.source].alias;
        return finishChange("DELETE FROM " + table.sqlName() +
                                (alias == table.name ? "" : " AS " + quoteName(alias)) + whereClause(where),
                            table);
    }
    const std::string prefix = quoteName(scope.sources[target.source].alias) + ".";
    const std::string added = target.added ? table.sqlName() : std::string();
    const std::string sources = from + (from.empty() || added.empty() ? "" : ", ") + added;
    return finishChange("DELETE FROM " + table.sqlName() + " WHERE " + tuple(locatorList(table, "")) +
                            " IN (SELECT " + locatorList(table, prefix) + " FROM " + sources +
                            whereClause(where) + ")",
                        table);
}

} // namespace veldran::embedded
