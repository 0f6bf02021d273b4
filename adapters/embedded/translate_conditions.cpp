#include "adapters/embedded/anti_join.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/operators.h"
#include "adapters/embedded/overloaded.h"
#include "adapters/embedded/sqlite.h"
#include "adapters/embedded/translator.h"
#include "adapters/embedded/translator_frames.h"

namespace veldran::embedded {

Condition Translator::truth(const tsql::Expression& node) {
    const SeekFrame frame(*this);
    return std::visit(
        Overloaded{
            [&](const tsql::Comparison& n) {
                const Fragment left = expression(*n.left);
                return compare(n.op, left, expression(*n.right));
            },
            [&](const tsql::Logical& n) {
                std::vector<Condition> operands;
                for (const tsql::Expression& operand : n.operands) {
                    operands.push_back(truth(operand));
                }
                return n.op == tsql::LogicalOperator::And ? allOf(std::move(operands))
                                                          : anyOf(std::move(operands));
            },
            [&](const tsql::Not& n) { return negationOf(truth(*n.operand)); },
            [&](const tsql::Between& n) {
                const Fragment value = expression(*n.operand);
                std::vector<Condition> ends;
                ends.push_back(compare(tsql::ComparisonOperator::GreaterOrEqual, value, expression(*n.low)));
                ends.push_back(compare(tsql::ComparisonOperator::LessOrEqual, value, expression(*n.high)));
                Condition result = allOf(std::move(ends));
                return n.negated ? negationOf(std::move(result)) : result;
            },
            [&](const tsql::InList& n) {
                const Fragment value = expression(*n.operand);
                return isAmong(value, expressions(n.values), n.negated);
            },
            [&](const tsql::InQuery& n) { return inQuery(n, node.span); },
            [&](const tsql::Like& n) {
                const Fragment value = expression(*n.operand);
                const Fragment pattern = expression(*n.pattern);
                std::optional<Fragment> escape;
                if (n.escape) {
                    escape = expression(**n.escape);
                }
                return isLike(value, pattern, escape, n.negated);
            },
            [&](const tsql::IsNull& n) { return isNull(n); },
            [&](const tsql::Exists& n) -> Condition {
                if (taken_ != &node) {
                    return exists(n);
                }
                return takenFor_.constant
                           ? makeKnown(takenFor_.isNullConstant() ? Truth::False : Truth::True)
                           : Condition{takenFor_.sql, Condition::Form::Predicate, std::nullopt};
            },
            [&](const auto&) -> Condition { refuse(node.span, "Un valore non è una condizione"); },
        },
        node.node);
}

Condition Translator::isNull(const tsql::IsNull& node) {
    const Fragment value = expression(*node.operand);
    if (value.isNullConstant() || !value.nullable) {
        return makeKnown(value.isNullConstant() != node.negated ? Truth::True : Truth::False);
    }
    return {value.operand() + (node.negated ? " IS NOT NULL" : " IS NULL"), Condition::Form::Predicate,
            std::nullopt};
}

Condition Translator::exists(const tsql::Exists& node) {
    BoundQuery bound = query(*node.query, scope_);
    BoundSelect& first = bound.arms.front();
    bound.orderBy.clear();
    if (bound.arms.size() == 1 && !first.grouped) {
        // Which columns are selected does not matter, only whether there is a row.
        first.distinct = false;
        first.items.resize(1);
        first.items.front().value = makeConstant(std::int64_t{1}, integerType(TypeKind::Int));
        if (first.limit == " LIMIT 1") {
            first.limit.clear();
        }
    }
    Condition result{"EXISTS (" + write(bound, false, false) + ")", Condition::Form::Predicate, std::nullopt};
    if (bound.arms.size() == 1 && !first.grouped && first.having.empty() && first.limit.empty() &&
        first.onlyTable) {
        result.tests = membership(first, result.sql);
    }
    return result;
}

Condition Translator::inQuery(const tsql::InQuery& node, const tsql::NodeSpan& span) {
    const Fragment value = expression(*node.operand);
    const std::optional<tsql::Query> plainer = withoutAntiJoin(*node.query);
    BoundQuery bound = query(plainer ? *plainer : *node.query, scope_);
    if (bound.items().size() != 1) {
        fail(
            116, "42000",
            "È possibile specificare una sola espressione nell'elenco di selezione di una sottoquery (riga " +
                std::to_string(span.begin.line) + ").");
    }
    SelectedItem& item = bound.items().front();
    auto [left, right] = comparable(value, item.value);
    std::string sql;
    if (right.sql == item.value.sql) {
        sql = write(bound, false, false);
    } else if (bound.isPlain()) {
        item.value = right;
        sql = write(bound, false, false);
    } else {
        Fragment outer = item.value;
        outer.sql = "\"v\"";
        outer.simple = true;
        outer.constant.reset();
        item.name = "v";
        sql = "SELECT " + comparable(value, outer).second.sql + " FROM (" + write(bound, true, true) + ")";
    }
    Condition result;
    result.sql = collatedText(left).operand() + (node.negated ? " NOT IN (" : " IN (") + sql + ")";
    return result;
}

} // namespace veldran::embedded
