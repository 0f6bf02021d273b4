#include "adapters/embedded/conversion.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/sqlite.h"
#include "adapters/embedded/translator.h"
#include "adapters/embedded/translator_frames.h"
#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace veldran::embedded {

namespace {

const tsql::InlineTableBody& tableBody(const Routine& routine) {
    return std::get<tsql::InlineTableBody>(routine.function().body);
}

bool isTableFunction(const Routine* routine) {
    return routine != nullptr && routine->kind == RoutineKind::Function &&
           std::holds_alternative<tsql::InlineTableBody>(routine->function().body);
}

} // namespace

void Translator::addTable(Scope& scope, std::shared_ptr<const Table> table, const std::string& name,
                          const std::string& alias) {
    for (const Source& source : scope.sources) {
        if (equalsIgnoringAsciiCase(source.name, name)) {
            fail(1013, "42000",
                 "Gli oggetti \"" + name + "\" nella clausola FROM hanno lo stesso nome esposto.");
        }
    }
    Source source{name, alias, table, {}};
    ++occurrences_;
    const std::string prefix = quoteName(alias) + ".";
    source.columns.reserve(table->columns.size());
    for (const Column& column : table->columns) {
        Fragment value;
        value.sql = prefix + quoteName(column.name);
        value.type = column.type;
        value.nullable = column.nullable;
        value.collated = column.type.isText();
        value.minimumLength = column.type.isFixedText() ? column.type.length : 0;
        value.table = table.get();
        value.column = &column;
        value.occurrence = occurrences_;
        source.columns.push_back({column.name, std::move(value)});
    }
    scope.sources.push_back(std::move(source));
}

void Translator::addDerived(Scope& scope, const BoundQuery& query, const std::string& name,
                            const std::vector<std::string>& columnNames, const tsql::NodeSpan& span) {
    if (!columnNames.empty() && columnNames.size() != query.items().size()) {
        fail(8158, "42000",
             "'" + name + "' ha un numero di colonne diverso da quello specificato nell'elenco.");
    }
    Source source{name, name, nullptr, {}};
    for (std::size_t i = 0; i < query.items().size(); ++i) {
        const SelectedItem& item = query.items()[i];
        const std::string columnName = columnNames.empty() ? item.name : columnNames[i];
        if (columnName.empty()) {
            fail(8155, "42000",
                 "Nessun nome di colonna specificato per la colonna " + std::to_string(i + 1) + " di '" +
                     name + "' (riga " + std::to_string(span.begin.line) + ").");
        }
        for (const SourceColumn& other : source.columns) {
            if (equalsIgnoringAsciiCase(other.name, columnName)) {
                fail(8156, "42000",
                     "La colonna '" + columnName + "' è stata specificata più volte per '" + name + "'.");
            }
        }
        Fragment value;
        value.sql = quoteName(name) + "." + quoteName(columnName);
        value.type = item.value.type;
        value.nullable = item.value.nullable;
        value.collated = item.value.type.isText();
        value.minimumLength = item.value.minimumLength;
        value.range = item.value.range;
        source.columns.push_back({columnName, std::move(value)});
    }
    scope.sources.push_back(std::move(source));
}

void Translator::makeNullable(Scope& scope, std::size_t from) {
    for (std::size_t i = from; i < scope.sources.size(); ++i) {
        for (SourceColumn& column : scope.sources[i].columns) {
            column.value.nullable = true;
            column.value.constant.reset();
        }
    }
}

std::string Translator::fromList(const std::vector<tsql::TableSource>& sources, Scope& scope,
                                 std::vector<Condition>& conditions) {
    std::string sql;
    for (const tsql::TableSource& source : sources) {
        sql += (sql.empty() ? "" : ", ") + joined(source, scope, conditions, false);
    }
    return sql;
}

std::string Translator::joined(const tsql::TableSource& source, Scope& scope,
                               std::vector<Condition>& conditions, bool outerSide) {
    std::string sql = primary(source.first, scope, conditions, outerSide);
    for (const tsql::JoinStep& step : source.joins) {
        if (step.kind == tsql::JoinKind::CrossApply || step.kind == tsql::JoinKind::OuterApply) {
            if (outerSide) {
                refuse(step.span, "APPLY dentro un join esterno tra parentesi non è disponibile");
            }
            sql += applied(step, scope, conditions);
            continue;
        }
        const bool outer = step.kind == tsql::JoinKind::LeftOuter;
        const std::size_t before = scope.sources.size();
        const int occurrencesBefore = occurrences_;
        sql +=
            (outer ? " LEFT JOIN " : " JOIN ") + primary(step.right, scope, conditions, outerSide || outer);
        if (step.on) {
            const ScopeFrame frame(*this, scope);
            // All rows on the left of an outer join are wanted: no index helps to find them.
            const int saved = std::exchange(soughtBehind_, outer ? occurrencesBefore : soughtBehind_);
            sql += " ON " + truth(*step.on).sql;
            soughtBehind_ = saved;
        }
        if (outer) {
            makeNullable(scope, before);
        }
    }
    return sql;
}

std::string Translator::primary(const tsql::TablePrimary& node, Scope& scope,
                                std::vector<Condition>& conditions, bool outerSide) {
    if (const auto* named = std::get_if<tsql::NamedTable>(&node.node)) {
        return namedTable(*named, scope);
    }
    if (const auto* derived = std::get_if<tsql::DerivedTable>(&node.node)) {
        return derivedTable(*derived, scope);
    }
    if (const auto* function = std::get_if<tsql::TableFunction>(&node.node)) {
        return tableFunction(*function, scope, node.span);
    }
    return "(" + joined(*std::get<tsql::NestedJoin>(node.node).source, scope, conditions, outerSide) + ")";
}

std::string Translator::namedTable(const tsql::NamedTable& node, Scope& scope) {
    const auto found = table(node.name);
    const std::string name = node.alias.value_or(found->name);
    // The body of a function stands inside the caller's query: its tables get names of their own.
    const std::string alias = inlined_ == nullptr ? name : name + "$" + std::to_string(++aliases_);
    addTable(scope, found, name, alias);
    return found->sqlName() + (alias == found->name ? "" : " AS " + quoteName(alias));
}

std::string Translator::derivedTable(const tsql::DerivedTable& node, Scope& scope) {
    BoundQuery bound = query(*node.query, scope.outer);
    for (std::size_t i = 0; i < node.columns.size() && i < bound.items().size(); ++i) {
        bound.items()[i].name = node.columns[i];
    }
    addDerived(scope, bound, node.alias, node.columns, node.query->span);
    scope.sources.back().distinct = bound.arms.size() == 1 && bound.arms.front().distinct;
    return "(" + write(bound, true, true) + ") AS " + quoteName(node.alias);
}

std::string Translator::tableFunction(const tsql::TableFunction& node, Scope& scope,
                                      const tsql::NodeSpan& span) {
    const auto found = routine(node.name);
    if (!isTableFunction(found.get())) {
        failUnknownObject(node.name.last());
    }
    std::vector<Fragment> arguments;
    {
        // Without APPLY the arguments see only the query around.
        const Scope empty{scope.outer, {}};
        const ScopeFrame frame(*this, empty);
        arguments = expressions(node.arguments);
    }
    const std::string name = node.alias.value_or(node.name.last());
    const auto parameters = boundParameters(found->function().parameters, arguments, found->name, span);
    const InlineFrame frame(*this, *found, parameters);
    BoundQuery bound = query(tableBody(*found).query, nullptr);
    const std::string sql = "(" + write(bound, true, true) + ") AS " + quoteName(name);
    addDerived(scope, bound, name, {}, span);
    return sql;
}

// SQLite has no lateral join. A body that only selects and joins is merged into the query around it: its
// tables are joined and its condition is added, which is what APPLY means for such a body.
std::string Translator::applied(const tsql::JoinStep& step, Scope& scope,
                                std::vector<Condition>& conditions) {
    const auto* function = std::get_if<tsql::TableFunction>(&step.right.node);
    if (function == nullptr) {
        refuse(step.span, "APPLY è disponibile solo con una funzione con valori di tabella");
    }
    const auto found = routine(function->name);
    if (!isTableFunction(found.get())) {
        failUnknownObject(function->name.last());
    }
    std::vector<Fragment> arguments;
    {
        const ScopeFrame frame(*this, scope);
        arguments = expressions(function->arguments);
    }
    const tsql::Query& body = tableBody(*found).query;
    const auto* select = std::get_if<tsql::SelectSpecification>(&body.first.node);
    const bool merges = select != nullptr && body.unions.empty() && body.orderBy.empty() &&
                        !select->distinct && !select->top && select->groupBy.empty() && !select->having &&
                        !select->from.empty();
    if (!merges) {
        refuse(step.span, "APPLY su una funzione con raggruppamenti, unioni o TOP non è disponibile");
    }
    const bool outer = step.kind == tsql::JoinKind::OuterApply;
    const bool oneTable = select->from.size() == 1 && select->from.front().joins.empty();
    if (outer && !oneTable) {
        refuse(step.span, "OUTER APPLY su una funzione con più tabelle non è disponibile");
    }
    const auto parameters = boundParameters(found->function().parameters, arguments, found->name, step.span);
    const InlineFrame frame(*this, *found, parameters);
    Scope inner;
    std::vector<Condition> wheres;
    const std::string from = fromList(select->from, inner, wheres);
    BoundSelect bound;
    const ScopeFrame innerFrame(*this, inner);
    if (select->where) {
        wheres.push_back(truth(*select->where));
    }
    const bool aggregatesBefore = std::exchange(aggregates_, false);
    bindItems(*select, bound, inner);
    if (std::exchange(aggregates_, aggregatesBefore)) {
        refuse(step.span, "APPLY su una funzione con aggregazioni non è disponibile");
    }
    Source source{function->alias.value_or(function->name.last()), {}, nullptr, {}};
    for (const SelectedItem& item : bound.items) {
        Fragment value = item.value;
        if (outer && value.column == nullptr) {
            refuse(step.span, "OUTER APPLY con colonne calcolate non è disponibile");
        }
        value.nullable = value.nullable || outer;
        source.columns.push_back({item.name, std::move(value)});
    }
    scope.sources.push_back(std::move(source));
    Condition where = allOf(std::move(wheres));
    if (outer) {
        return " LEFT JOIN " + from + " ON " + where.sql;
    }
    if (!where.isTrue()) {
        conditions.push_back(std::move(where));
    }
    return " JOIN " + from;
}

} // namespace veldran::embedded
