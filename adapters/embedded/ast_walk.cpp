#include "adapters/embedded/ast_walk.h"

#include "adapters/embedded/overloaded.h"
#include "adapters/tsql/token.h"

#include <algorithm>
#include <array>
#include <functional>

namespace veldran::embedded {

namespace {

using Visit = std::function<void(const tsql::Expression&)>;

void forEachOperand(const tsql::Expression& expression, const Visit& visit) {
    std::visit(
        Overloaded{
            [&](const tsql::Unary& n) { visit(*n.operand); },
            [&](const tsql::Arithmetic& n) {
                visit(*n.first);
                for (const auto& step : n.steps) {
                    visit(*step.operand);
                }
            },
            [&](const tsql::Comparison& n) {
                visit(*n.left);
                visit(*n.right);
            },
            [&](const tsql::Logical& n) { std::for_each(n.operands.begin(), n.operands.end(), visit); },
            [&](const tsql::Not& n) { visit(*n.operand); },
            [&](const tsql::Between& n) {
                visit(*n.operand);
                visit(*n.low);
                visit(*n.high);
            },
            [&](const tsql::InList& n) {
                visit(*n.operand);
                std::for_each(n.values.begin(), n.values.end(), visit);
            },
            [&](const tsql::InQuery& n) { visit(*n.operand); },
            [&](const tsql::Like& n) {
                visit(*n.operand);
                visit(*n.pattern);
            },
            [&](const tsql::IsNull& n) { visit(*n.operand); },
            [&](const tsql::Case& n) {
                if (n.operand) {
                    visit(**n.operand);
                }
                for (const auto& branch : n.branches) {
                    visit(*branch.when);
                    visit(*branch.then);
                }
                if (n.otherwise) {
                    visit(**n.otherwise);
                }
            },
            [&](const tsql::Cast& n) { visit(*n.operand); },
            [&](const tsql::Collate& n) { visit(*n.operand); },
            [&](const tsql::FunctionCall& n) {
                std::for_each(n.arguments.begin(), n.arguments.end(), visit);
            },
            [](const auto&) {},
        },
        expression.node);
}

bool isAggregate(const tsql::Expression& expression) {
    constexpr std::array<std::string_view, 6> names{"COUNT", "COUNT_BIG", "SUM", "AVG", "MIN", "MAX"};
    const auto* call = std::get_if<tsql::FunctionCall>(&expression.node);
    return call != nullptr && call->name.parts.size() == 1 &&
           std::find(names.begin(), names.end(), tsql::toUpper(call->name.last())) != names.end();
}

// A column of the grouping may be written with or without its table.
bool sameColumn(const tsql::Expression& a, const tsql::Expression& b) {
    const auto* x = std::get_if<tsql::ColumnReference>(&a.node);
    const auto* y = std::get_if<tsql::ColumnReference>(&b.node);
    return x != nullptr && y != nullptr && tsql::equalNames(x->name.last(), y->name.last());
}

} // namespace

const tsql::ColumnReference* ungroupedColumn(const tsql::Expression& expression,
                                             const std::vector<tsql::Expression>& groupBy) {
    const bool grouped = std::any_of(groupBy.begin(), groupBy.end(), [&](const tsql::Expression& item) {
        return item == expression || sameColumn(item, expression);
    });
    if (grouped || isAggregate(expression)) {
        return nullptr;
    }
    if (const auto* column = std::get_if<tsql::ColumnReference>(&expression.node)) {
        return column;
    }
    const tsql::ColumnReference* found = nullptr;
    forEachOperand(expression, [&](const tsql::Expression& operand) {
        if (found == nullptr) {
            found = ungroupedColumn(operand, groupBy);
        }
    });
    return found;
}

const tsql::Expression* firstSubquery(const tsql::Expression& value) {
    if (std::holds_alternative<tsql::ScalarSubquery>(value.node) ||
        std::holds_alternative<tsql::Exists>(value.node)) {
        return &value;
    }
    const tsql::Expression* found = nullptr;
    forEachOperand(value, [&](const tsql::Expression& operand) {
        if (found == nullptr) {
            found = firstSubquery(operand);
        }
    });
    return found;
}

} // namespace veldran::embedded
