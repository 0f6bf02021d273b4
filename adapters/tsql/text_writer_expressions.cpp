#include "adapters/tsql/text_writer.h"
#include "adapters/tsql/token.h"

#include <algorithm>

namespace veldran::tsql {

namespace {

std::string_view spelling(ArithmeticOperator op) {
    switch (op) {
    case ArithmeticOperator::Add:
        return " + ";
    case ArithmeticOperator::Subtract:
        return " - ";
    case ArithmeticOperator::Multiply:
        return " * ";
    case ArithmeticOperator::Divide:
        return " / ";
    case ArithmeticOperator::Modulo:
        return " % ";
    case ArithmeticOperator::BitAnd:
        return " & ";
    case ArithmeticOperator::BitOr:
        return " | ";
    case ArithmeticOperator::BitXor:
        return " ^ ";
    }
    return {};
}

std::string_view spelling(ComparisonOperator op) {
    switch (op) {
    case ComparisonOperator::Equal:
        return " = ";
    case ComparisonOperator::NotEqual:
        return " <> ";
    case ComparisonOperator::Less:
        return " < ";
    case ComparisonOperator::LessOrEqual:
        return " <= ";
    case ComparisonOperator::Greater:
        return " > ";
    case ComparisonOperator::GreaterOrEqual:
        return " >= ";
    }
    return {};
}

bool isProduct(ArithmeticOperator op) {
    return op == ArithmeticOperator::Multiply || op == ArithmeticOperator::Divide ||
           op == ArithmeticOperator::Modulo;
}

// Not reserved, but at the head of an expression the grammar reads them as constructs of their own.
bool readsAsConstruct(std::string_view upper) {
    return upper == "CAST" || upper == "THROW";
}

// Whether the name is read back whole without delimiters: a regular identifier that is no keyword.
bool isRegular(std::string_view name) {
    const auto letter = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '#';
    };
    const auto continues = [&](char c) {
        return letter(c) || (c >= '0' && c <= '9') || c == '@' || c == '$';
    };
    const std::string upper = toUpper(name);
    return !name.empty() && letter(name.front()) && std::all_of(name.begin(), name.end(), continues) &&
           !isReservedWord(upper) && !readsAsConstruct(upper);
}

void appendDoubled(std::string& text, std::string_view value, char delimiter) {
    for (const char character : value) {
        text += character;
        if (character == delimiter) {
            text += delimiter;
        }
    }
}

} // namespace

TextWriter::Binding TextWriter::bindingOf(const Expression& expression) {
    if (const auto* logical = std::get_if<Logical>(&expression.node)) {
        return logical->op == LogicalOperator::Or ? Binding::Disjunction : Binding::Conjunction;
    }
    if (std::holds_alternative<Not>(expression.node)) {
        return Binding::Negation;
    }
    if (isCondition(expression)) {
        return Binding::Predicate;
    }
    if (const auto* arithmetic = std::get_if<Arithmetic>(&expression.node)) {
        return isProduct(arithmetic->steps.front().op) ? Binding::Product : Binding::Sum;
    }
    if (const auto* unary = std::get_if<Unary>(&expression.node)) {
        // "~-A" ends in what the sign reaches over, so it is as loose as a sign itself.
        const bool reaches =
            unary->op != UnaryOperator::BitNot || bindingOf(*unary->operand) == Binding::Sign;
        return reaches ? Binding::Sign : Binding::Inverted;
    }
    return std::holds_alternative<Collate>(expression.node) ? Binding::Collated : Binding::Atom;
}

void TextWriter::write(const Expression& expression, Binding atLeast) {
    const bool parenthesised = bindingOf(expression) < atLeast;
    word("(", parenthesised);
    std::visit([&](const auto& alternative) { node(alternative); }, expression.node);
    word(")", parenthesised);
}

void TextWriter::node(const Literal& literal) {
    if (literal.kind == LiteralKind::Null) {
        text_ += "NULL";
        return;
    }
    if (literal.kind != LiteralKind::String && literal.kind != LiteralKind::NationalString) {
        text_ += literal.value;
        return;
    }
    word("N", literal.kind == LiteralKind::NationalString);
    text_ += '\'';
    appendDoubled(text_, literal.value, '\'');
    text_ += '\'';
}

// A sign takes the whole product behind it, an inversion the next operand only.
void TextWriter::node(const Unary& unary) {
    if (unary.op == UnaryOperator::BitNot) {
        text_ += '~';
        write(*unary.operand, Binding::Sign);
        return;
    }
    const bool minus = unary.op == UnaryOperator::Minus;
    text_ += minus ? '-' : '+';
    const std::size_t operand = text_.size();
    write(*unary.operand, Binding::Product);
    if (minus && text_[operand] == '-') {
        text_.insert(operand, 1, ' '); // two minus signs in a row would begin a comment
    }
}

// In a product a sign may stand without parentheses at the end alone, where there is nothing left to take.
void TextWriter::node(const Arithmetic& chain) {
    const bool product = isProduct(chain.steps.front().op);
    const Binding inner = product ? Binding::Inverted : Binding::Product;
    const Binding last = product ? Binding::Sign : Binding::Product;
    write(*chain.first, inner);
    for (const ArithmeticStep& step : chain.steps) {
        text_ += spelling(step.op);
        write(*step.operand, &step == &chain.steps.back() ? last : inner);
    }
}

void TextWriter::node(const Comparison& comparison) {
    write(*comparison.left, Binding::Sum);
    text_ += spelling(comparison.op);
    write(*comparison.right, Binding::Sum);
}

void TextWriter::node(const Logical& chain) {
    const bool isOr = chain.op == LogicalOperator::Or;
    std::string_view separator;
    for (const Expression& operand : chain.operands) {
        text_ += separator;
        write(operand, isOr ? Binding::Conjunction : Binding::Negation);
        separator = isOr ? " OR " : " AND ";
    }
}

void TextWriter::node(const Not& negation) {
    text_ += "NOT ";
    write(*negation.operand, Binding::Negation);
}

void TextWriter::node(const Between& between) {
    write(*between.operand, Binding::Sum);
    text_ += between.negated ? " NOT BETWEEN " : " BETWEEN ";
    write(*between.low, Binding::Sum);
    text_ += " AND ";
    write(*between.high, Binding::Sum);
}

void TextWriter::node(const InList& in) {
    write(*in.operand, Binding::Sum);
    text_ += in.negated ? " NOT IN (" : " IN (";
    values(in.values);
    text_ += ')';
}

void TextWriter::node(const InQuery& in) {
    write(*in.operand, Binding::Sum);
    text_ += in.negated ? " NOT IN " : " IN ";
    node(in.query);
}

void TextWriter::node(const Like& like) {
    write(*like.operand, Binding::Sum);
    text_ += like.negated ? " NOT LIKE " : " LIKE ";
    write(*like.pattern, Binding::Sum);
    if (like.escape) {
        text_ += " ESCAPE ";
        write(**like.escape, Binding::Sum);
    }
}

void TextWriter::node(const IsNull& isNull) {
    write(*isNull.operand, Binding::Sum);
    text_ += isNull.negated ? " IS NOT NULL" : " IS NULL";
}

void TextWriter::node(const Exists& exists) {
    text_ += "EXISTS ";
    node(exists.query);
}

void TextWriter::node(const ScalarSubquery& subquery) {
    node(subquery.query);
}

void TextWriter::node(const Case& choice) {
    text_ += "CASE";
    if (choice.operand) {
        text_ += ' ';
        write(**choice.operand);
    }
    for (const CaseBranch& branch : choice.branches) {
        text_ += " WHEN ";
        write(*branch.when);
        text_ += " THEN ";
        write(*branch.then);
    }
    if (choice.otherwise) {
        text_ += " ELSE ";
        write(**choice.otherwise);
    }
    text_ += " END";
}

void TextWriter::node(const Cast& cast) {
    if (!cast.convert) {
        text_ += "CAST(";
        write(*cast.operand);
        text_ += " AS ";
        write(cast.type);
        text_ += ')';
        return;
    }
    text_ += "CONVERT(";
    write(cast.type);
    text_ += ", ";
    write(*cast.operand);
    if (cast.style) {
        text_ += ", ";
        write(**cast.style);
    }
    text_ += ')';
}

void TextWriter::node(const Collate& collate) {
    write(*collate.operand, Binding::Atom);
    text_ += " COLLATE ";
    identifier(collate.collation);
}

void TextWriter::node(const FunctionCall& call) {
    write(call.name);
    text_ += '(';
    word("*", call.star);
    word("DISTINCT ", call.distinct);
    values(call.arguments);
    text_ += ')';
    if (!call.over) {
        return;
    }
    text_ += " OVER (";
    if (!call.over->partitionBy.empty()) {
        text_ += "PARTITION BY ";
        values(call.over->partitionBy);
        word(" ", !call.over->orderBy.empty());
    }
    order(call.over->orderBy);
    text_ += ')';
}

void TextWriter::node(const IdentityFunction& identity) {
    text_ += "IDENTITY(";
    write(identity.type);
    text_ += ", " + std::to_string(identity.seed) + ", " + std::to_string(identity.increment) + ")";
}

void TextWriter::values(const std::vector<Expression>& expressions) {
    std::string_view separator;
    for (const Expression& expression : expressions) {
        text_ += separator;
        write(expression);
        separator = ", ";
    }
}

void TextWriter::order(const std::vector<OrderItem>& items) {
    std::string_view separator = "ORDER BY ";
    for (const OrderItem& item : items) {
        text_ += separator;
        write(*item.expression);
        word(" DESC", item.descending);
        separator = ", ";
    }
}

void TextWriter::identifier(std::string_view name) {
    if (isRegular(name)) {
        text_ += name;
        return;
    }
    text_ += '[';
    appendDoubled(text_, name, ']');
    text_ += ']';
}

void TextWriter::identifiers(const std::vector<std::string>& names) {
    std::string_view separator;
    for (const std::string& name : names) {
        text_ += separator;
        identifier(name);
        separator = ", ";
    }
}

void TextWriter::write(const QualifiedName& name) {
    std::string_view separator;
    for (const std::string& part : name.parts) {
        text_ += separator;
        if (!part.empty()) {
            identifier(part);
        }
        separator = ".";
    }
}

void TextWriter::write(const DataType& type) {
    identifier(type.name);
    if (type.max) {
        text_ += "(MAX)";
        return;
    }
    std::string_view separator = "(";
    for (const std::int64_t argument : type.arguments) {
        text_ += separator;
        text_ += std::to_string(argument);
        separator = ", ";
    }
    word(")", !type.arguments.empty());
}

} // namespace veldran::tsql
