#include "tests/tsql/expression_generator.h"

namespace veldran::tsql::test {
namespace {

// Names of every sort: plain, reserved, accented, with delimiters inside, of functions and of constructs.
const std::vector<std::string> names{"A",   "CONTO",  "#TESTATA", "ORDER", "left",  "CAST", "a b",   "a]b",
                                     "\"",  "è",      "GO",       "APPLY", "MAX",   "N",    "THROW", "1abc",
                                     "_x$", "OUTPUT", "IN",       "@x",    "COUNT", "--",   "?"};

template<typename Node>
Expression of(Node node) {
    return {{}, std::move(node)};
}

std::string arbitraryName() {
    return *rc::gen::elementOf(names);
}

QualifiedName arbitraryNameOf(std::size_t maximumParts) {
    QualifiedName name;
    name.parts.push_back(arbitraryName());
    const auto further = *rc::gen::inRange<std::size_t>(0, maximumParts);
    for (std::size_t part = 0; part < further; ++part) {
        name.parts.push_back(*rc::gen::inRange(0, 4) == 0 ? std::string() : arbitraryName());
    }
    if (name.parts.back().empty()) {
        name.parts.back() = arbitraryName();
    }
    return name;
}

Literal arbitraryLiteral() {
    switch (*rc::gen::inRange(0, 7)) {
    case 0:
        return {};
    case 1:
        return {LiteralKind::Integer, std::to_string(*rc::gen::inRange(0, 100000))};
    case 2:
        return {LiteralKind::Decimal, std::to_string(*rc::gen::inRange(0, 100)) + ".50"};
    case 3:
        return {LiteralKind::Float, "1.5E-3"};
    case 4:
        return {LiteralKind::Binary, "0x0aF"};
    case 5:
        return {LiteralKind::String, *rc::gen::arbitrary<std::string>()};
    default:
        return {LiteralKind::NationalString, *rc::gen::arbitrary<std::string>()};
    }
}

DataType arbitraryType() {
    return *rc::gen::elementOf(std::vector<DataType>{{{}, "INT", {}, false},
                                                     {{}, "NCHAR", {10}, false},
                                                     {{}, "DECIMAL", {5, 2}, false},
                                                     {{}, "NVARCHAR", {}, true}});
}

std::vector<Expression> arbitraryValues(int depth, std::size_t minimum) {
    const auto count = *rc::gen::inRange<std::size_t>(minimum, minimum + 3);
    std::vector<Expression> values;
    while (values.size() < count) {
        values.push_back(*arbitraryValue(depth));
    }
    return values;
}

Arithmetic arbitraryChain(int depth) {
    using enum ArithmeticOperator;
    const std::vector<ArithmeticOperator> operators = *rc::gen::arbitrary<bool>()
                                                          ? std::vector{Add, Subtract, BitAnd, BitOr, BitXor}
                                                          : std::vector{Multiply, Divide, Modulo};
    Arithmetic chain{*arbitraryValue(depth), {}};
    const auto steps = *rc::gen::inRange<std::size_t>(1, 4);
    while (chain.steps.size() < steps) {
        const ArithmeticOperator op = *rc::gen::elementOf(operators);
        chain.steps.push_back({op, *arbitraryValue(depth)});
    }
    return chain;
}

Case arbitraryCase(int depth) {
    Case choice;
    if (*rc::gen::arbitrary<bool>()) {
        choice.operand = *arbitraryValue(depth);
    }
    const auto branches = *rc::gen::inRange<std::size_t>(1, 3);
    while (choice.branches.size() < branches) {
        Expression when = choice.operand ? *arbitraryValue(depth) : *arbitraryCondition(depth);
        choice.branches.push_back({std::move(when), *arbitraryValue(depth)});
    }
    if (*rc::gen::arbitrary<bool>()) {
        choice.otherwise = *arbitraryValue(depth);
    }
    return choice;
}

FunctionCall arbitraryCall(int depth) {
    FunctionCall call;
    call.name = arbitraryNameOf(3);
    switch (*rc::gen::inRange(0, 4)) {
    case 0:
        call.star = true;
        break;
    case 1:
        call.distinct = true;
        call.arguments = {*arbitraryValue(depth)};
        break;
    case 2:
        call.arguments = arbitraryValues(depth, 0);
        call.over = Over{arbitraryValues(depth, 0), {{*arbitraryValue(depth), *rc::gen::arbitrary<bool>()}}};
        break;
    default:
        call.arguments = arbitraryValues(depth, 0);
        break;
    }
    return call;
}

// Markers are left out: their numbers follow from the order of the text.
Expression leaf() {
    switch (*rc::gen::inRange(0, 3)) {
    case 0:
        return of(ColumnReference{arbitraryNameOf(4)});
    case 1:
        return of(Variable{"@V1"});
    default:
        return of(arbitraryLiteral());
    }
}

Expression value(int depth) {
    if (depth <= 0) {
        return leaf();
    }
    const int below = depth - 1;
    switch (*rc::gen::inRange(0, 9)) {
    case 0: {
        using enum UnaryOperator;
        const UnaryOperator op = *rc::gen::elementOf(std::vector{Plus, Minus, BitNot});
        return of(Unary{op, *arbitraryValue(below)});
    }
    case 1:
    case 2:
        return of(arbitraryChain(below));
    case 3:
        return of(arbitraryCase(below));
    case 4: {
        const bool convert = *rc::gen::arbitrary<bool>();
        Cast cast{*arbitraryValue(below), arbitraryType(), convert, std::nullopt};
        if (convert && *rc::gen::arbitrary<bool>()) {
            cast.style = *arbitraryValue(below);
        }
        return of(std::move(cast));
    }
    case 5:
        return of(Collate{*arbitraryValue(below), arbitraryName()});
    case 6:
        return of(arbitraryCall(below));
    case 7:
        return of(ScalarSubquery{*arbitraryQuery(below)});
    default:
        return leaf();
    }
}

Expression condition(int depth) {
    const int below = depth - 1;
    const bool negated = *rc::gen::arbitrary<bool>();
    if (depth <= 0) {
        return of(IsNull{leaf(), negated});
    }
    switch (*rc::gen::inRange(0, 8)) {
    case 0: {
        using enum ComparisonOperator;
        const auto op =
            *rc::gen::elementOf(std::vector{Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual});
        return of(Comparison{op, *arbitraryValue(below), *arbitraryValue(below)});
    }
    case 1:
    case 2: {
        Logical chain{*rc::gen::elementOf(std::vector{LogicalOperator::And, LogicalOperator::Or}), {}};
        const auto count = *rc::gen::inRange<std::size_t>(2, 4);
        while (chain.operands.size() < count) {
            chain.operands.push_back(*arbitraryCondition(below));
        }
        return of(std::move(chain));
    }
    case 3:
        return of(Not{*arbitraryCondition(below)});
    case 4:
        return of(Between{*arbitraryValue(below), *arbitraryValue(below), *arbitraryValue(below), negated});
    case 5:
        return of(InList{*arbitraryValue(below), arbitraryValues(below, 1), negated});
    case 6: {
        Like like{*arbitraryValue(below), *arbitraryValue(below), std::nullopt, negated};
        if (*rc::gen::arbitrary<bool>()) {
            like.escape = *arbitraryValue(below);
        }
        return of(std::move(like));
    }
    default:
        if (*rc::gen::arbitrary<bool>()) {
            return of(InQuery{*arbitraryValue(below), *arbitraryQuery(below), negated});
        }
        return of(Exists{*arbitraryQuery(below)});
    }
}

std::optional<std::string> arbitraryAlias() {
    return *rc::gen::arbitrary<bool>() ? std::optional(arbitraryName()) : std::nullopt;
}

TablePrimary arbitraryPrimary(int depth) {
    switch (*rc::gen::inRange(0, depth > 0 ? 3 : 1)) {
    case 1:
        return {{}, TableFunction{arbitraryNameOf(2), arbitraryValues(depth - 1, 0), arbitraryAlias()}};
    case 2:
        return {{}, DerivedTable{*arbitraryQuery(depth - 1), arbitraryName(), {}}};
    default:
        return {{}, NamedTable{arbitraryNameOf(4), arbitraryAlias(), {}}};
    }
}

TableSource arbitrarySource(int depth) {
    using enum JoinKind;
    TableSource source{{}, arbitraryPrimary(depth), {}};
    const auto joins = *rc::gen::inRange<std::size_t>(0, 3);
    while (source.joins.size() < joins) {
        const JoinKind kind =
            *rc::gen::elementOf(std::vector{Inner, LeftOuter, Cross, CrossApply, OuterApply});
        JoinStep step{{}, kind, arbitraryPrimary(depth), std::nullopt};
        if (kind == Inner || kind == LeftOuter) {
            step.on = *arbitraryCondition(depth - 1);
        }
        source.joins.push_back(std::move(step));
    }
    return source;
}

SelectSpecification arbitrarySelect(int depth) {
    SelectSpecification select;
    select.distinct = *rc::gen::arbitrary<bool>();
    if (*rc::gen::arbitrary<bool>()) {
        select.top = *arbitraryValue(0);
    }
    for (Expression& item : arbitraryValues(depth, 1)) {
        select.items.push_back({{}, SelectValue{std::move(item), arbitraryAlias()}});
    }
    const auto sources = *rc::gen::inRange<std::size_t>(0, 3);
    while (select.from.size() < sources) {
        select.from.push_back(arbitrarySource(depth));
    }
    if (*rc::gen::arbitrary<bool>()) {
        select.where = *arbitraryCondition(depth);
        select.groupBy = arbitraryValues(depth, 0);
        select.having = *arbitraryCondition(depth);
    }
    return select;
}

Query query(int depth) {
    Query result{{}, {arbitrarySelect(depth)}, {}, {}};
    const auto unions = *rc::gen::inRange<std::size_t>(0, 3);
    while (result.unions.size() < unions) {
        const bool all = *rc::gen::arbitrary<bool>();
        QueryTerm term{arbitrarySelect(depth)};
        // A grouped operand is only ever a union or ordered itself: plain parentheses leave no node.
        if (depth > 0 && *rc::gen::arbitrary<bool>()) {
            Query grouped{{}, std::move(term), {}, {}};
            grouped.orderBy.push_back({*arbitraryValue(0), false});
            term.node = Box<Query>(std::move(grouped));
        }
        result.unions.push_back({all, std::move(term)});
    }
    if (*rc::gen::arbitrary<bool>()) {
        result.orderBy.push_back({*arbitraryValue(depth), *rc::gen::arbitrary<bool>()});
    }
    return result;
}

} // namespace

rc::Gen<Expression> arbitraryValue(int depth) {
    return rc::gen::exec([depth] { return value(depth); });
}

rc::Gen<Expression> arbitraryCondition(int depth) {
    return rc::gen::exec([depth] { return condition(depth); });
}

rc::Gen<Query> arbitraryQuery(int depth) {
    return rc::gen::exec([depth] { return query(depth); });
}

} // namespace veldran::tsql::test
