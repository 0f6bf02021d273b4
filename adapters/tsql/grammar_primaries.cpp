#include "adapters/tsql/grammar.h"

#include <utility>

namespace veldran::tsql {

namespace {

// At most server, database, schema and object.
constexpr std::size_t maximumNameParts = 4;

// Reserved words that name a function nevertheless.
bool namesFunction(const Token& token) {
    return token.is("LEFT") || token.is("RIGHT") || token.is("COALESCE") || token.is("NULLIF");
}

} // namespace

// primary = literal | variable | "?" | parenthesised | caseExpression | cast | convert | identityFunction
//         | nameOrCall
Expression Grammar::primary() {
    const SourcePosition begin = tokens_.position();
    if (auto constant = literal()) {
        return {tokens_.since(begin), std::move(*constant)};
    }
    if (tokens_.at(TokenKind::Variable)) {
        std::string name = tokens_.take().text;
        return {tokens_.since(begin), Variable{std::move(name)}};
    }
    if (tokens_.at(TokenKind::Marker)) {
        tokens_.take();
        return {tokens_.since(begin), ParameterMarker{++markers_}};
    }
    if (tokens_.at("(")) {
        return parenthesised();
    }
    if (tokens_.at("CASE")) {
        return caseExpression();
    }
    if (tokens_.at("CAST", "(")) {
        return cast();
    }
    if (tokens_.at("CONVERT", "(")) {
        return convert();
    }
    if (tokens_.at("IDENTITY", "(")) {
        return identityFunction();
    }
    return nameOrCall();
}

// literal = "NULL" | string | number
std::optional<Literal> Grammar::literal() {
    LiteralKind kind = LiteralKind::Null;
    switch (tokens_.peek().kind) {
    case TokenKind::String:
        kind = LiteralKind::String;
        break;
    case TokenKind::NationalString:
        kind = LiteralKind::NationalString;
        break;
    case TokenKind::Integer:
        kind = LiteralKind::Integer;
        break;
    case TokenKind::Decimal:
        kind = LiteralKind::Decimal;
        break;
    case TokenKind::Float:
        kind = LiteralKind::Float;
        break;
    case TokenKind::Binary:
        kind = LiteralKind::Binary;
        break;
    default:
        return tokens_.accept("NULL") ? std::optional(Literal{}) : std::nullopt;
    }
    return Literal{kind, tokens_.take().text};
}

// constant = ["+" | "-"] literal: what a parameter may have for a default and a call for an argument.
Expression Grammar::constant() {
    const SourcePosition begin = tokens_.position();
    std::optional<UnaryOperator> sign;
    if (tokens_.accept("-")) {
        sign = UnaryOperator::Minus;
    } else if (tokens_.accept("+")) {
        sign = UnaryOperator::Plus;
    }
    const SourcePosition digits = tokens_.position();
    auto written = literal();
    if (!written) {
        tokens_.refuse("una costante");
    }
    Expression expression{tokens_.since(digits), std::move(*written)};
    if (!sign) {
        return expression;
    }
    return {tokens_.since(begin), Unary{*sign, std::move(expression)}};
}

// caseExpression = "CASE" [value] {"WHEN" (value | condition) "THEN" value} ["ELSE" value] "END"
Expression Grammar::caseExpression() {
    const SourcePosition begin = tokens_.position();
    tokens_.expect("CASE");
    Case choice;
    if (!tokens_.at("WHEN")) {
        choice.operand = value();
    }
    do {
        tokens_.expect("WHEN");
        Expression when = choice.operand ? value() : condition();
        tokens_.expect("THEN");
        Expression then = value();
        choice.branches.push_back({std::move(when), std::move(then)});
    } while (tokens_.at("WHEN"));
    if (tokens_.accept("ELSE")) {
        choice.otherwise = value();
    }
    tokens_.expect("END");
    return {tokens_.since(begin), std::move(choice)};
}

// cast = "CAST" "(" value "AS" dataType ")"
Expression Grammar::cast() {
    const SourcePosition begin = tokens_.position();
    tokens_.expect("CAST");
    tokens_.expect("(");
    Expression operand = value();
    tokens_.expect("AS");
    DataType type = dataType();
    tokens_.expect(")");
    return {tokens_.since(begin), Cast{std::move(operand), std::move(type), false, std::nullopt}};
}

// convert = "CONVERT" "(" dataType "," value ["," value] ")"
Expression Grammar::convert() {
    const SourcePosition begin = tokens_.position();
    tokens_.expect("CONVERT");
    tokens_.expect("(");
    DataType type = dataType();
    tokens_.expect(",");
    Expression operand = value();
    std::optional<Box<Expression>> style;
    if (tokens_.accept(",")) {
        style = value();
    }
    tokens_.expect(")");
    return {tokens_.since(begin), Cast{std::move(operand), std::move(type), true, std::move(style)}};
}

// identityFunction = "IDENTITY" "(" dataType ["," integer "," integer] ")"
Expression Grammar::identityFunction() {
    const SourcePosition begin = tokens_.position();
    tokens_.expect("IDENTITY");
    tokens_.expect("(");
    IdentityFunction identity;
    identity.type = dataType();
    if (tokens_.accept(",")) {
        identity.seed = tokens_.takeInteger();
        tokens_.expect(",");
        identity.increment = tokens_.takeInteger();
    }
    tokens_.expect(")");
    return {tokens_.since(begin), std::move(identity)};
}

// nameOrCall = qualifiedName [functionCall] | ("LEFT" | "RIGHT" | "COALESCE" | "NULLIF") functionCall
Expression Grammar::nameOrCall() {
    const SourcePosition begin = tokens_.position();
    if (namesFunction(tokens_.peek()) && tokens_.peek(1).is("(")) {
        const Token& word = tokens_.take();
        return functionCall(begin, QualifiedName{word.span, {word.text}});
    }
    if (!TokenStream::isIdentifier(tokens_.peek())) {
        tokens_.refuse();
    }
    QualifiedName name = qualifiedName();
    if (tokens_.at("(")) {
        return functionCall(begin, std::move(name));
    }
    return {tokens_.since(begin), ColumnReference{std::move(name)}};
}

// functionCall = "(" ["*" | "DISTINCT" value | ["ALL"] valueList] ")" [over]
Expression Grammar::functionCall(const SourcePosition& begin, QualifiedName name) {
    FunctionCall call;
    call.name = std::move(name);
    tokens_.expect("(");
    if (tokens_.accept("*")) {
        call.star = true;
    } else if (tokens_.accept("DISTINCT")) {
        call.distinct = true;
        call.arguments.push_back(value());
    } else if (!tokens_.at(")")) {
        tokens_.accept("ALL");
        call.arguments = valueList();
    }
    tokens_.expect(")");
    if (tokens_.at("OVER")) {
        call.over = over();
    }
    return {tokens_.since(begin), std::move(call)};
}

// over = "OVER" "(" ["PARTITION" "BY" valueList] ["ORDER" "BY" orderList] ")"
Over Grammar::over() {
    Over window;
    tokens_.expect("OVER");
    tokens_.expect("(");
    if (tokens_.accept("PARTITION")) {
        tokens_.expect("BY");
        window.partitionBy = valueList();
    }
    if (tokens_.accept("ORDER")) {
        tokens_.expect("BY");
        window.orderBy = orderList();
    }
    tokens_.expect(")");
    return window;
}

// qualifiedName = name {"." [name]}, at most four parts; the last is never empty
QualifiedName Grammar::qualifiedName() {
    const SourcePosition begin = tokens_.position();
    QualifiedName name;
    name.parts.push_back(tokens_.takeIdentifier());
    while (tokens_.at(".")) {
        if (name.parts.size() == maximumNameParts) {
            tokens_.refuse();
        }
        tokens_.take();
        const bool omitted = tokens_.at(".");
        name.parts.push_back(omitted ? std::string() : tokens_.takeIdentifier());
    }
    if (name.parts.back().empty()) {
        tokens_.refuse("un nome");
    }
    name.span = tokens_.since(begin);
    return name;
}

// dataType = name ["(" ("MAX" | integer {"," integer}) ")"]
DataType Grammar::dataType() {
    const SourcePosition begin = tokens_.position();
    if (!TokenStream::isIdentifier(tokens_.peek())) {
        tokens_.refuse("un tipo di dati");
    }
    DataType type;
    type.name = toUpper(tokens_.take().text);
    if (tokens_.accept("(")) {
        if (tokens_.accept("MAX")) {
            type.max = true;
        } else {
            do {
                if (!tokens_.at(TokenKind::Integer)) {
                    tokens_.refuse("un numero intero");
                }
                type.arguments.push_back(tokens_.takeInteger());
            } while (tokens_.accept(","));
        }
        tokens_.expect(")");
    }
    type.span = tokens_.since(begin);
    return type;
}

} // namespace veldran::tsql
