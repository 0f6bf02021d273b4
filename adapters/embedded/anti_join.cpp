#include "adapters/embedded/anti_join.h"

#include "adapters/tsql/token.h"

#include <algorithm>
#include <string>
#include <vector>

namespace veldran::embedded {

namespace {

const tsql::NamedTable* namedTable(const tsql::TablePrimary& primary) {
    return std::get_if<tsql::NamedTable>(&primary.node);
}

std::string exposedName(const tsql::NamedTable& table) {
    return table.alias.value_or(table.name.last());
}

/// The column's name when the expression is a column of that table, written with the table's name.
const std::string* columnOf(const std::string& table, const tsql::Expression& expression) {
    const auto* column = std::get_if<tsql::ColumnReference>(&expression.node);
    if (column == nullptr || column->name.parts.size() != 2 ||
        !tsql::equalNames(column->name.parts.front(), table)) {
        return nullptr;
    }
    return &column->name.last();
}

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& other) { return tsql::equalNames(other, name); });
}

/// Columns of both sides that an ON condition sets equal.
struct Match {
    std::vector<std::string> left;
    std::vector<std::string> right;
};

/// False unless the condition is nothing but equalities of columns from either side.
bool readMatch(const tsql::Expression& on, const std::string& left, const std::string& right, Match& match) {
    if (const auto* logical = std::get_if<tsql::Logical>(&on.node)) {
        return logical->op == tsql::LogicalOperator::And &&
               std::all_of(logical->operands.begin(), logical->operands.end(),
                           [&](const auto& operand) { return readMatch(operand, left, right, match); });
    }
    const auto* equal = std::get_if<tsql::Comparison>(&on.node);
    if (equal == nullptr || equal->op != tsql::ComparisonOperator::Equal) {
        return false;
    }
    for (const auto& [a, b] :
         {std::pair(&*equal->left, &*equal->right), std::pair(&*equal->right, &*equal->left)}) {
        const std::string* mine = columnOf(left, *a);
        const std::string* theirs = columnOf(right, *b);
        if (mine != nullptr && theirs != nullptr) {
            match.left.push_back(*mine);
            match.right.push_back(*theirs);
            return true;
        }
    }
    return false;
}

tsql::Query queryOf(tsql::SelectSpecification select) {
    const tsql::NodeSpan span = select.span;
    return {span, {std::move(select)}, {}, {}};
}

tsql::SelectItem itemOf(tsql::Expression expression) {
    const tsql::NodeSpan span = expression.span;
    return {span, tsql::SelectValue{std::move(expression), std::nullopt}};
}

} // namespace

std::optional<tsql::Query> withoutAntiJoin(const tsql::Query& query) {
    const auto* select = std::get_if<tsql::SelectSpecification>(&query.first.node);
    if (select == nullptr || !query.unions.empty() || !query.orderBy.empty() || select->top || select->into ||
        !select->groupBy.empty() || select->having || !select->where || select->items.size() != 1 ||
        select->from.size() != 1 || select->from.front().joins.size() != 1) {
        return std::nullopt;
    }
    const tsql::TableSource& source = select->from.front();
    const tsql::JoinStep& join = source.joins.front();
    const tsql::NamedTable* left = namedTable(source.first);
    const tsql::NamedTable* right = namedTable(join.right);
    const auto* item = std::get_if<tsql::SelectValue>(&select->items.front().node);
    const auto* unmatched = std::get_if<tsql::IsNull>(&select->where->node);
    if (left == nullptr || right == nullptr || join.kind != tsql::JoinKind::LeftOuter || item == nullptr ||
        unmatched == nullptr || unmatched->negated) {
        return std::nullopt;
    }
    const std::string* selected = columnOf(exposedName(*left), item->expression);
    const std::string* tested = columnOf(exposedName(*right), *unmatched->operand);
    Match match;
    // A column that equals something is not NULL: where it is, there was no partner.
    if (selected == nullptr || tested == nullptr ||
        !readMatch(*join.on, exposedName(*left), exposedName(*right), match) ||
        !contains(match.right, *tested)) {
        return std::nullopt;
    }

    tsql::SelectSpecification pairs;
    pairs.span = select->span;
    pairs.distinct = true;
    pairs.from = {{source.span, source.first, {}}};
    std::vector<std::string> columns{*selected};
    for (const std::string& column : match.left) {
        if (!contains(columns, column)) {
            columns.push_back(column);
        }
    }
    for (const std::string& column : columns) {
        const tsql::QualifiedName name{select->span, {exposedName(*left), column}};
        pairs.items.push_back(itemOf({select->span, tsql::ColumnReference{name}}));
    }

    tsql::SelectSpecification partner;
    partner.span = select->span;
    partner.items = {itemOf({select->span, tsql::Literal{tsql::LiteralKind::Integer, "1"}})};
    partner.from = {{join.span, join.right, {}}};
    partner.where = join.on;

    tsql::SelectSpecification result;
    result.span = select->span;
    result.items = select->items;
    result.from = {{source.span,
                    {source.span, tsql::DerivedTable{queryOf(std::move(pairs)), exposedName(*left), {}}},
                    {}}};
    const tsql::Expression exists{select->span, tsql::Exists{queryOf(std::move(partner))}};
    result.where = tsql::Expression{select->span, tsql::Not{exists}};
    return queryOf(std::move(result));
}

} // namespace veldran::embedded
