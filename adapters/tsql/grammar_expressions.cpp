#include "adapters/tsql/grammar.h"
#include "adapters/tsql/messages.h"

#include <array>
#include <utility>

namespace veldran::tsql {

namespace {

template<typename Operator>
using Spelling = std::pair<std::string_view, Operator>;

constexpr std::array comparisonOperators = std::to_array<Spelling<ComparisonOperator>>({
    {"=", ComparisonOperator::Equal},
    {"<>", ComparisonOperator::NotEqual},
    {"!=", ComparisonOperator::NotEqual},
    {"<", ComparisonOperator::Less},
    {"!>", ComparisonOperator::LessOrEqual},
    {"<=", ComparisonOperator::LessOrEqual},
    {">", ComparisonOperator::Greater},
    {"!<", ComparisonOperator::GreaterOrEqual},
    {">=", ComparisonOperator::GreaterOrEqual},
});

constexpr std::array additiveOperators = std::to_array<Spelling<ArithmeticOperator>>({
    {"+", ArithmeticOperator::Add},
    {"-", ArithmeticOperator::Subtract},
    {"&", ArithmeticOperator::BitAnd},
    {"|", ArithmeticOperator::BitOr},
    {"^", ArithmeticOperator::BitXor},
});

constexpr std::array multiplicativeOperators = std::to_array<Spelling<ArithmeticOperator>>({
    {"*", ArithmeticOperator::Multiply},
    {"/", ArithmeticOperator::Divide},
    {"%", ArithmeticOperator::Modulo},
});

constexpr std::array unaryOperators = std::to_array<Spelling<UnaryOperator>>({
    {"+", UnaryOperator::Plus},
    {"-", UnaryOperator::Minus},
    {"~", UnaryOperator::BitNot},
});

template<typename Operators>
auto operatorAt(const TokenStream& tokens, const Operators& operators)
    -> std::optional<typename Operators::value_type::second_type> {
    const Token& token = tokens.peek();
    if (token.kind != TokenKind::Symbol) {
        return std::nullopt; // as most places are where an operator could stand
    }
    for (const auto& [spelling, op] : operators) {
        if (token.text == spelling) {
            return op;
        }
    }
    return std::nullopt;
}

} // namespace

// loneExpression = disjunction <end>
Expression Grammar::loneExpression() {
    Expression expression = disjunction();
    if (!tokens_.at(TokenKind::End)) {
        tokens_.refuse();
    }
    return expression;
}

// condition = disjunction, which must not be a value
Expression Grammar::condition() {
    Expression expression = disjunction();
    requireCondition(expression);
    return expression;
}

// value = additive, which must not be a condition
Expression Grammar::value() {
    const Nesting nesting(tokens_);
    Expression expression = additive();
    requireValue(expression);
    return expression;
}

// disjunction = conjunction {"OR" conjunction}
Expression Grammar::disjunction() {
    const Nesting nesting(tokens_);
    return logicalChain("OR", LogicalOperator::Or, &Grammar::conjunction);
}

// conjunction = negation {"AND" negation}
Expression Grammar::conjunction() {
    return logicalChain("AND", LogicalOperator::And, &Grammar::negation);
}

// An operand alone stays what it is, be it a value; a chain is made of conditions.
Expression Grammar::logicalChain(std::string_view connective, LogicalOperator op, Production operand) {
    const SourcePosition begin = tokens_.position();
    Expression first = (this->*operand)();
    if (!tokens_.at(connective)) {
        return first;
    }
    requireCondition(first);
    Logical chain{op, {}};
    chain.operands.push_back(std::move(first));
    while (tokens_.accept(connective)) {
        chain.operands.push_back((this->*operand)());
        requireCondition(chain.operands.back());
    }
    return {tokens_.since(begin), std::move(chain)};
}

// negation = "NOT" negation | predicate
Expression Grammar::negation() {
    if (!tokens_.at("NOT")) {
        return predicate();
    }
    const Nesting nesting(tokens_);
    const SourcePosition begin = tokens_.position();
    tokens_.take();
    Expression operand = negation();
    requireCondition(operand);
    return {tokens_.since(begin), Not{std::move(operand)}};
}

// predicate = "EXISTS" "(" query ")"
//           | additive [comparison | isNull | ["NOT"] (between | in | like)]
Expression Grammar::predicate() {
    const SourcePosition begin = tokens_.position();
    if (tokens_.accept("EXISTS")) {
        Box<Query> rows = parenthesisedQuery();
        return {tokens_.since(begin), Exists{std::move(rows)}};
    }
    Expression operand = additive();
    if (const auto op = operatorAt(tokens_, comparisonOperators)) {
        return comparison(std::move(operand), *op);
    }
    if (tokens_.at("IS")) {
        return isNull(std::move(operand));
    }
    const bool negated = tokens_.at("NOT");
    const Token& word = tokens_.peek(negated ? 1 : 0);
    if (word.is("BETWEEN")) {
        return between(std::move(operand), negated);
    }
    if (word.is("IN")) {
        return in(std::move(operand), negated);
    }
    if (word.is("LIKE")) {
        return like(std::move(operand), negated);
    }
    return operand;
}

// comparison = ("=" | "<>" | "!=" | "<" | "<=" | "!>" | ">" | ">=" | "!<") additive
Expression Grammar::comparison(Expression left, ComparisonOperator op) {
    requireValue(left);
    const SourcePosition begin = left.span.begin;
    tokens_.take();
    Expression right = additive();
    requireValue(right);
    return {tokens_.since(begin), Comparison{op, std::move(left), std::move(right)}};
}

// isNull = "IS" ["NOT"] "NULL"
Expression Grammar::isNull(Expression operand) {
    requireValue(operand);
    const SourcePosition begin = operand.span.begin;
    tokens_.expect("IS");
    const bool negated = tokens_.accept("NOT");
    tokens_.expect("NULL");
    return {tokens_.since(begin), IsNull{std::move(operand), negated}};
}

// between = "BETWEEN" additive "AND" additive
Expression Grammar::between(Expression operand, bool negated) {
    requireValue(operand);
    const SourcePosition begin = operand.span.begin;
    if (negated) {
        tokens_.expect("NOT");
    }
    tokens_.expect("BETWEEN");
    Expression low = additive();
    requireValue(low);
    tokens_.expect("AND");
    Expression high = additive();
    requireValue(high);
    return {tokens_.since(begin), Between{std::move(operand), std::move(low), std::move(high), negated}};
}

// in = "IN" ("(" query ")" | "(" value {"," value} ")")
Expression Grammar::in(Expression operand, bool negated) {
    requireValue(operand);
    const SourcePosition begin = operand.span.begin;
    if (negated) {
        tokens_.expect("NOT");
    }
    tokens_.expect("IN");
    if (atParenthesisedQuery()) {
        Box<Query> rows = parenthesisedQuery();
        return {tokens_.since(begin), InQuery{std::move(operand), std::move(rows), negated}};
    }
    tokens_.expect("(");
    std::vector<Expression> values = valueList();
    tokens_.expect(")");
    return {tokens_.since(begin), InList{std::move(operand), std::move(values), negated}};
}

// like = "LIKE" additive ["ESCAPE" additive]
Expression Grammar::like(Expression operand, bool negated) {
    requireValue(operand);
    const SourcePosition begin = operand.span.begin;
    if (negated) {
        tokens_.expect("NOT");
    }
    tokens_.expect("LIKE");
    Expression pattern = additive();
    requireValue(pattern);
    std::optional<Box<Expression>> escape;
    if (tokens_.accept("ESCAPE")) {
        Expression character = additive();
        requireValue(character);
        escape = std::move(character);
    }
    return {tokens_.since(begin), Like{std::move(operand), std::move(pattern), std::move(escape), negated}};
}

// additive = multiplicative {("+" | "-" | "&" | "|" | "^") multiplicative}
Expression Grammar::additive() {
    return arithmeticChain(additiveOperators, &Grammar::multiplicative);
}

// multiplicative = unary {("*" | "/" | "%") unary}
Expression Grammar::multiplicative() {
    return arithmeticChain(multiplicativeOperators, &Grammar::unary);
}

// An operand alone stays what it is, be it a condition; a chain is made of values.
Expression Grammar::arithmeticChain(ArithmeticOperators operators, Production operand) {
    const SourcePosition begin = tokens_.position();
    Expression first = (this->*operand)();
    auto op = operatorAt(tokens_, operators);
    if (!op) {
        return first;
    }
    requireValue(first);
    Arithmetic chain{std::move(first), {}};
    for (; op; op = operatorAt(tokens_, operators)) {
        tokens_.take();
        Expression next = (this->*operand)();
        requireValue(next);
        chain.steps.push_back({*op, std::move(next)});
    }
    return {tokens_.since(begin), std::move(chain)};
}

// unary = ("+" | "-") multiplicative | "~" unary | collated
// A sign binds more loosely than "*", "/" and "%": a / -b * c is a / -(b * c), as the server has it.
Expression Grammar::unary() {
    const auto op = operatorAt(tokens_, unaryOperators);
    if (!op) {
        return collated();
    }
    const Nesting nesting(tokens_);
    const SourcePosition begin = tokens_.position();
    tokens_.take();
    Expression operand = *op == UnaryOperator::BitNot ? unary() : multiplicative();
    requireValue(operand);
    return {tokens_.since(begin), Unary{*op, std::move(operand)}};
}

// collated = primary ["COLLATE" name]
Expression Grammar::collated() {
    const SourcePosition begin = tokens_.position();
    Expression operand = primary();
    if (!tokens_.at("COLLATE")) {
        return operand;
    }
    requireValue(operand);
    tokens_.take();
    std::string collation = tokens_.takeIdentifier();
    return {tokens_.since(begin), Collate{std::move(operand), std::move(collation)}};
}

// parenthesised = "(" query ")" | "(" disjunction ")"
Expression Grammar::parenthesised() {
    const SourcePosition begin = tokens_.position();
    if (atParenthesisedQuery()) {
        Box<Query> rows = parenthesisedQuery();
        return {tokens_.since(begin), ScalarSubquery{std::move(rows)}};
    }
    tokens_.expect("(");
    Expression inner = disjunction();
    tokens_.expect(")");
    inner.span = tokens_.since(begin);
    return inner;
}

// valueList = value {"," value}
std::vector<Expression> Grammar::valueList() {
    std::vector<Expression> values;
    do {
        values.push_back(value());
    } while (tokens_.accept(","));
    return values;
}

// What follows a value is where a condition could still have been made of it.
void Grammar::requireCondition(const Expression& expression) const {
    if (!isCondition(expression)) {
        throw conditionExpected(tokens_.peek());
    }
}

void Grammar::requireValue(const Expression& expression) const {
    if (isCondition(expression)) {
        throw incorrectSyntax(tokens_.tokenAt(expression.span.begin), "un valore al posto della condizione");
    }
}

} // namespace veldran::tsql
