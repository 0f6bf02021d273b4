#include "adapters/embedded/ast_walk.h"
#include "adapters/embedded/sqlite.h"
#include "adapters/embedded/translator.h"
#include "adapters/embedded/translator_frames.h"

#include <algorithm>
#include <charconv>

namespace veldran::embedded {

namespace {

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::optional<std::int64_t> wholeNumber(const std::string& text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

// Plain comparisons never fail, for whatever pairs of rows they are asked and in whatever order.
bool isPlain(const std::string& sql) {
    return sql.find('(') == std::string::npos;
}

// What the embedded database refuses while a statement runs it refuses in a function of its own.
bool canFail(const std::string& sql) {
    return sql.find("ts_") != std::string::npos;
}

// The columns of the index, from its first, that are sought or known, if a code is sought among them.
std::optional<std::vector<std::string>> leadingColumns(const TableIndex& index, const Table& table,
                                                       const std::vector<std::string>& sought,
                                                       const UniformColumns& uniform) {
    std::vector<std::string> columns;
    bool withCode = false;
    for (const std::string& column : index.columns) {
        if (contains(sought, column)) {
            withCode = withCode || table.columns[*table.indexOf(column)].type.isFixedText();
        } else if (!uniform.valueOf(table.name, column)) {
            break;
        }
        columns.push_back(column);
    }
    return withCode ? std::optional(std::move(columns)) : std::nullopt;
}

} // namespace

// Of SELECT ... INTO: a constant, or a column that WHERE compares with one.
std::vector<UniformColumn> Translator::uniformColumns(const BoundQuery& query, const Table& table) {
    std::vector<UniformColumn> result;
    if (query.arms.size() != 1 || !table.isTemporary()) {
        return result;
    }
    const BoundSelect& select = query.arms.front();
    for (const SelectedItem& item : select.items) {
        const auto place = table.indexOf(item.name);
        if (!place || !item.value.type.isExact() || !(table.columns[*place].type == item.value.type)) {
            continue;
        }
        if (const auto* constant = item.value.integerConstant()) {
            result.push_back({table.name, table.columns[*place].name, *constant});
        }
        for (const ColumnTest& test : select.condition.tests) {
            const auto number = wholeNumber(test.other);
            if (item.value.column != nullptr && test.column == item.value.column &&
                test.occurrence == item.value.occurrence && test.equality && !test.byQuery() && number) {
                result.push_back({table.name, table.columns[*place].name, *number});
                break;
            }
        }
    }
    return result;
}

// SET c = ISNULL((SELECT ... WHERE S.x = c.y), 0) and the like over a whole table: where S has no row for it,
// a row gets a constant. Rows that have to be written are then among those that S leads to and those that do
// not have the constant yet, and looking for these costs less than asking S for each row of the table. They
// are asked for their new value as ever, so that the others alone must be known: their value is what binding
// makes of it when the query finds nothing. Where every row has the constant and every partner gives the same
// value, nothing need be asked.
std::optional<RowsToWrite> Translator::rowsToWrite(const tsql::UpdateStatement& statement,
                                                   const Target& target, const AssignedColumn& assigned,
                                                   const Scope& scope) {
    const Column& column = target.table->columns[assigned.column];
    // Of texts that are equal one may differ from the constant. The rows of a table of the file cannot be
    // counted under the same lock.
    if (!target.table->isTemporary() || target.table->isClustered() || !column.type.isInteger()) {
        return std::nullopt;
    }
    const tsql::Expression& value = statement.assignments.front().value;
    if (std::holds_alternative<tsql::DefaultValue>(value.node)) {
        return std::nullopt;
    }
    const std::vector<Sought> soughtBefore = sought_;
    const auto partner =
        target.joined ? joinedPartner(statement, target, scope) : subqueryPartner(value, target, scope);
    const auto reached = partner ? rowsReached(*partner, *target.table) : std::nullopt;
    const auto constant = reached && !failsWithoutPartner(*partner, value, scope)
                              ? valueWithout(*partner, value, scope)
                              : std::nullopt;
    const auto held = context_.copies.uniform().valueOf(target.table->name, column.name);
    const bool alike = constant && held == *constant; // what every row has already
    const auto common = alike ? valueWith(*partner, value, scope) : std::nullopt;
    sought_ = soughtBefore; // what was bound once more is not looked for twice
    const auto fits = [&](std::int64_t number) { return rangeOf(column.type).contains({number, number}); };
    if (!constant || !fits(*constant)) {
        return std::nullopt;
    }
    sought_.push_back({target.table->name, partner->occurrence, reached->columns});
    uniform_.insert(uniform_.end(), reached->relies.begin(), reached->relies.end());
    const std::string alias = quoteName(scope.sources[target.source].alias);
    const std::string own = alias + "." + quoteName(column.name);
    const std::string number = "." + target.table->rowNumber();
    std::string rows = alias + number + " IN (";
    if (alike) {
        uniform_.push_back({target.table->name, column.name, *constant});
    } else {
        const std::string other = quoteName(target.table->name + "$" + std::to_string(++aliases_));
        rows.append("SELECT ").append(other).append(number + " FROM ").append(target.table->sqlName());
        rows.append(" AS ").append(other).append(" WHERE ").append(other).append(".");
        rows.append(quoteName(column.name)).append(" IS NOT ").append(std::to_string(*constant));
        rows.append(" UNION ALL ");
    }
    rows.append(reached->numbers).append(")");
    const bool together = common && fits(*common);
    if (together) {
        rows.append(" AND ").append(own).append(" IS NOT ").append(std::to_string(*common));
    }
    return RowsToWrite{{std::move(rows), Condition::Form::Predicate, std::nullopt},
                       together ? common : std::nullopt};
}

std::optional<Partner> Translator::subqueryPartner(const tsql::Expression& value, const Target& target,
                                                   const Scope& scope) {
    const tsql::Expression* subquery = firstSubquery(value);
    if (subquery == nullptr) {
        return std::nullopt;
    }
    const auto* exists = std::get_if<tsql::Exists>(&subquery->node);
    const tsql::Query& query =
        exists != nullptr ? *exists->query : *std::get<tsql::ScalarSubquery>(subquery->node).query;
    const auto* select = std::get_if<tsql::SelectSpecification>(&query.first.node);
    if (select == nullptr || !query.unions.empty() || select->having) {
        return std::nullopt;
    }
    Partner partner;
    partner.subquery = subquery;
    partner.alias = target.table->name + "$" + std::to_string(++aliases_);
    Scope outer;
    addTable(outer, target.table, scope.sources[target.source].name, partner.alias);
    partner.occurrence = occurrences_;
    Scope inner;
    const BoundSelect bound = selectArm(*select, &outer, inner);
    // Without a row to be found an aggregate, as HAVING, has one nevertheless.
    if (bound.grouped || !bound.onlyTable) {
        return std::nullopt;
    }
    partner.type = bound.items.front().value.type;
    // Without TOP 1 more than one row is an error, TOP 0 gives none, and an order may fail.
    const Fragment& item = bound.items.front().value;
    const bool first = bound.limit == " LIMIT 1";
    if (exists != nullptr) {
        if (first || bound.limit.empty()) {
            partner.found = makeConstant(std::int64_t{1}, integerType(TypeKind::Int));
        }
    } else if (first && query.orderBy.empty() && item.constant && !item.isNullConstant()) {
        partner.found = item;
    }
    partner.from = bound.from;
    partner.condition = bound.condition;
    return partner;
}

std::optional<Partner> Translator::joinedPartner(const tsql::UpdateStatement& statement, const Target& target,
                                                 const Scope& scope) {
    if (scope.sources.size() != 2 || target.source != 0 || target.added || statement.from.size() != 1 ||
        statement.from.front().joins.size() != 1) {
        return std::nullopt;
    }
    const tsql::JoinStep& step = statement.from.front().joins.front();
    if (step.kind != tsql::JoinKind::LeftOuter || std::holds_alternative<tsql::NestedJoin>(step.right.node)) {
        return std::nullopt;
    }
    Partner partner;
    partner.alias = target.table->name + "$" + std::to_string(++aliases_);
    Scope found;
    std::vector<Condition> none;
    partner.from = primary(step.right, found, none, false);
    addTable(found, target.table, scope.sources[target.source].name, partner.alias);
    partner.occurrence = occurrences_;
    const ScopeFrame frame(*this, found);
    partner.condition = truth(*step.on);
    return partner;
}

// The numbers of the target's rows that partners lead to by an index; none when no index does.
std::optional<ReachedRows> Translator::rowsReached(const Partner& partner, const Table& target) {
    const Condition& condition = partner.condition;
    if (condition.known || !isPlain(condition.sql) || canFail(partner.from)) {
        return std::nullopt;
    }
    const std::string alias = quoteName(partner.alias);
    std::vector<std::string> sought;
    for (const ColumnTest& test : condition.tests) {
        if (test.occurrence == partner.occurrence && test.equality &&
            test.other.find(alias + ".") == std::string::npos) {
            sought.push_back(test.column->name);
        }
    }
    const UniformColumns& uniform = context_.copies.uniform();
    std::vector<std::string> columns;
    for (const auto& [name, index] : context_.catalogue.indexesOf(target)) {
        auto leading = leadingColumns(index, target, sought, uniform);
        if (leading && leading->size() > columns.size()) {
            columns = std::move(*leading);
        }
    }
    if (columns.empty()) {
        return std::nullopt;
    }
    ReachedRows rows;
    rows.numbers = "SELECT " + alias + "." + target.rowNumber() + " FROM " + partner.from + " CROSS JOIN " +
                   target.sqlName() + " AS " + alias + " WHERE " + condition.sql;
    for (const std::string& column : columns) {
        if (!contains(sought, column)) {
            const std::int64_t value = *uniform.valueOf(target.name, column);
            rows.numbers.append(" AND ").append(alias).append(".").append(quoteName(column));
            rows.numbers.append(" = ").append(std::to_string(value));
            rows.relies.push_back({target.name, column, value});
        }
    }
    rows.columns = std::move(columns);
    return rows;
}

// What a row without a partner gets, if binding decides it.
std::optional<std::int64_t> Translator::valueWithout(const Partner& partner, const tsql::Expression& value,
                                                     const Scope& scope) {
    Scope alone = scope;
    if (partner.subquery == nullptr) {
        for (SourceColumn& column : alone.sources.back().columns) {
            column.value = makeConstant(std::monostate{}, column.value.type);
        }
    }
    return valueTaking(partner, makeConstant(std::monostate{}, partner.type), value, alone);
}

// What a row with a partner gets, if it is the same for all. What equals something is not NULL.
std::optional<std::int64_t> Translator::valueWith(const Partner& partner, const tsql::Expression& value,
                                                  const Scope& scope) {
    if (partner.subquery != nullptr) {
        return partner.found ? valueTaking(partner, *partner.found, value, scope) : std::nullopt;
    }
    Scope together = scope;
    for (SourceColumn& column : together.sources.back().columns) {
        const bool equals = std::any_of(
            partner.condition.tests.begin(), partner.condition.tests.end(),
            [&](const ColumnTest& test) { return test.equality && test.other == column.value.sql; });
        column.value.nullable = column.value.nullable && !equals;
    }
    return valueTaking(partner, {}, value, together);
}

std::optional<std::int64_t> Translator::valueTaking(const Partner& partner, const Fragment& found,
                                                    const tsql::Expression& value, const Scope& scope) {
    const auto result = bindTaking(partner, found, value, scope);
    const auto* constant = result ? result->integerConstant() : nullptr;
    return constant != nullptr && result->type.isInteger() ? std::optional(*constant) : std::nullopt;
}

// What is combined with NULL falls away when the text is bound, though asking a row for it may fail. So the
// value is bound with something unknown instead, which keeps all of it; being 0, that fails nowhere itself.
bool Translator::failsWithoutPartner(const Partner& partner, const tsql::Expression& value,
                                     const Scope& scope) {
    const auto makeUnknown = [](Fragment& column) {
        if (column.type.isExact()) {
            column.range = Range{0, 0};
        }
    };
    Fragment unknown;
    unknown.sql = "\"$\"";
    unknown.type = partner.type;
    makeUnknown(unknown);
    Scope together = scope;
    if (partner.subquery == nullptr) {
        for (SourceColumn& column : together.sources.back().columns) {
            makeUnknown(column.value);
        }
    }
    const auto result = bindTaking(partner, unknown, value, together);
    return !result || canFail(result->sql);
}

// Nothing when binding refuses the value, which the database does no sooner than a row gets it.
std::optional<Fragment> Translator::bindTaking(const Partner& partner, const Fragment& found,
                                               const tsql::Expression& value, const Scope& scope) {
    const ScopeFrame frame(*this, scope);
    taken_ = partner.subquery;
    takenFor_ = found;
    std::optional<Fragment> result;
    try {
        result = expression(value);
    } catch (const ado::AdoError&) {
        result.reset();
    }
    taken_ = nullptr;
    return result;
}

} // namespace veldran::embedded
