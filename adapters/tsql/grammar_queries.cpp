#include "adapters/tsql/grammar.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veldran::tsql {

namespace {

constexpr std::array lockHints = std::to_array<std::string_view>({
    "HOLDLOCK",
    "NOLOCK",
    "NOWAIT",
    "PAGLOCK",
    "READCOMMITTED",
    "READPAST",
    "READUNCOMMITTED",
    "REPEATABLEREAD",
    "ROWLOCK",
    "SERIALIZABLE",
    "TABLOCK",
    "TABLOCKX",
    "UPDLOCK",
    "XLOCK",
});

} // namespace

// query = queryTerm {"UNION" ["ALL"] queryTerm} ["ORDER" "BY" orderList]
Query Grammar::query() {
    const Nesting nesting(tokens_);
    const SourcePosition begin = tokens_.position();
    Query result;
    result.first = queryTerm();
    while (tokens_.accept("UNION")) {
        const bool all = tokens_.accept("ALL");
        result.unions.push_back({all, queryTerm()});
    }
    if (tokens_.accept("ORDER")) {
        tokens_.expect("BY");
        result.orderBy = orderList();
    }
    if (auto* inner = std::get_if<Box<Query>>(&result.first.node);
        inner != nullptr && result.unions.empty() && result.orderBy.empty()) {
        return Query(std::move(**inner));
    }
    result.span = tokens_.since(begin);
    return result;
}

// queryTerm = selectSpecification | "(" query ")"
QueryTerm Grammar::queryTerm() {
    if (tokens_.at("(")) {
        return {parenthesisedQuery()};
    }
    return {selectSpecification()};
}

// selectSpecification = "SELECT" ["ALL" | "DISTINCT"] [top] selectItem {"," selectItem}
//     ["INTO" qualifiedName] ["FROM" fromList] ["WHERE" condition]
//     ["GROUP" "BY" valueList] ["HAVING" condition]
SelectSpecification Grammar::selectSpecification() {
    const SourcePosition begin = tokens_.position();
    SelectSpecification select;
    tokens_.expect("SELECT");
    select.distinct = tokens_.accept("DISTINCT");
    if (!select.distinct) {
        tokens_.accept("ALL");
    }
    select.top = top();
    do {
        select.items.push_back(selectItem());
    } while (tokens_.accept(","));
    if (tokens_.accept("INTO")) {
        select.into = qualifiedName();
    }
    if (tokens_.accept("FROM")) {
        select.from = fromList();
    }
    if (tokens_.accept("WHERE")) {
        select.where = condition();
    }
    if (tokens_.accept("GROUP")) {
        tokens_.expect("BY");
        select.groupBy = valueList();
    }
    if (tokens_.accept("HAVING")) {
        select.having = condition();
    }
    select.span = tokens_.since(begin);
    return select;
}

// top = ["TOP" (integer | "(" value ")")]
std::optional<Expression> Grammar::top() {
    if (!tokens_.accept("TOP")) {
        return std::nullopt;
    }
    if (tokens_.at(TokenKind::Integer)) {
        const Token& count = tokens_.take();
        return Expression{count.span, Literal{LiteralKind::Integer, count.text}};
    }
    tokens_.expect("(");
    Expression count = value();
    tokens_.expect(")");
    return count;
}

// selectItem = "*" | name {"." name} "." "*" | variable "=" value | (name | string) "=" value
//            | value [["AS"] (name | string)]
SelectItem Grammar::selectItem() {
    const SourcePosition begin = tokens_.position();
    if (tokens_.accept("*")) {
        return {tokens_.since(begin), AllColumns{}};
    }
    if (atAllColumns()) {
        QualifiedName qualifier;
        do {
            qualifier.parts.push_back(tokens_.takeIdentifier());
            qualifier.span = tokens_.since(begin);
            tokens_.expect(".");
        } while (!tokens_.at("*"));
        tokens_.take();
        return {tokens_.since(begin), AllColumns{std::move(qualifier)}};
    }
    if (tokens_.at(TokenKind::Variable) && tokens_.peek(1).is("=")) {
        std::string variable = tokens_.take().text;
        tokens_.take();
        Expression assignedValue = value();
        return {tokens_.since(begin), SelectAssignment{std::move(variable), std::move(assignedValue)}};
    }
    const auto isAlias = [](const Token& token) {
        return TokenStream::isIdentifier(token) || (token.kind == TokenKind::String && !token.text.empty());
    };
    if (isAlias(tokens_.peek()) && tokens_.peek(1).is("=")) {
        std::string alias = tokens_.take().text;
        tokens_.take();
        Expression named = value();
        return {tokens_.since(begin), SelectValue{std::move(named), std::move(alias)}};
    }
    SelectValue item{value(), std::nullopt};
    const bool announced = tokens_.accept("AS");
    if (isAlias(tokens_.peek())) {
        item.alias = tokens_.take().text;
    } else if (announced) {
        tokens_.refuse("un alias");
    }
    return {tokens_.since(begin), std::move(item)};
}

bool Grammar::atAllColumns() const {
    std::size_t ahead = 0;
    while (TokenStream::isIdentifier(tokens_.peek(ahead)) && tokens_.peek(ahead + 1).is(".")) {
        ahead += 2;
    }
    return ahead > 0 && tokens_.peek(ahead).is("*");
}

// fromList = tableSource {"," tableSource}
std::vector<TableSource> Grammar::fromList() {
    std::vector<TableSource> sources;
    do {
        sources.push_back(tableSource());
    } while (tokens_.accept(","));
    return sources;
}

// tableSource = tablePrimary {joinKind tablePrimary ["ON" condition]}
// ON follows exactly the inner and the left outer join.
TableSource Grammar::tableSource() {
    const Nesting nesting(tokens_);
    const SourcePosition begin = tokens_.position();
    TableSource source;
    source.first = tablePrimary();
    for (SourcePosition step = tokens_.position(); const auto kind = joinKind(); step = tokens_.position()) {
        JoinStep join;
        join.kind = *kind;
        join.right = tablePrimary();
        if (*kind == JoinKind::Inner || *kind == JoinKind::LeftOuter) {
            tokens_.expect("ON");
            join.on = condition();
        }
        join.span = tokens_.since(step);
        source.joins.push_back(std::move(join));
    }
    source.span = tokens_.since(begin);
    return source;
}

// joinKind = ["INNER"] "JOIN" | "LEFT" ["OUTER"] "JOIN" | "CROSS" ("JOIN" | "APPLY") | "OUTER" "APPLY"
std::optional<JoinKind> Grammar::joinKind() {
    if (tokens_.accept("JOIN")) {
        return JoinKind::Inner;
    }
    if (tokens_.accept("INNER")) {
        tokens_.expect("JOIN");
        return JoinKind::Inner;
    }
    if (tokens_.accept("LEFT")) {
        tokens_.accept("OUTER");
        tokens_.expect("JOIN");
        return JoinKind::LeftOuter;
    }
    if (tokens_.accept("CROSS")) {
        if (tokens_.accept("APPLY")) {
            return JoinKind::CrossApply;
        }
        tokens_.expect("JOIN");
        return JoinKind::Cross;
    }
    if (tokens_.accept("OUTER")) {
        tokens_.expect("APPLY");
        return JoinKind::OuterApply;
    }
    return std::nullopt;
}

// tablePrimary = derivedTable | "(" tableSource ")" | qualifiedName "(" [valueList] ")" [tableAlias]
//              | qualifiedName [tableAlias] [tableHints]
TablePrimary Grammar::tablePrimary() {
    const SourcePosition begin = tokens_.position();
    if (atParenthesisedQuery()) {
        DerivedTable table = derivedTable();
        return {tokens_.since(begin), std::move(table)};
    }
    if (tokens_.accept("(")) {
        TableSource source = tableSource();
        tokens_.expect(")");
        return {tokens_.since(begin), NestedJoin{std::move(source)}};
    }
    QualifiedName name = qualifiedName();
    if (tokens_.accept("(")) {
        TableFunction function;
        function.name = std::move(name);
        if (!tokens_.at(")")) {
            function.arguments = valueList();
        }
        tokens_.expect(")");
        function.alias = tableAlias();
        return {tokens_.since(begin), std::move(function)};
    }
    NamedTable table;
    table.name = std::move(name);
    table.alias = tableAlias();
    table.hints = tableHints();
    return {tokens_.since(begin), std::move(table)};
}

// derivedTable = "(" query ")" tableAlias ["(" name {"," name} ")"]
DerivedTable Grammar::derivedTable() {
    Box<Query> rows = parenthesisedQuery();
    auto alias = tableAlias();
    if (!alias) {
        tokens_.refuse("un alias");
    }
    DerivedTable table{std::move(rows), std::move(*alias), {}};
    if (tokens_.accept("(")) {
        do {
            table.columns.push_back(tokens_.takeIdentifier());
        } while (tokens_.accept(","));
        tokens_.expect(")");
    }
    return table;
}

// tableHints = ["WITH" "(" hint {"," hint} ")"]
std::vector<std::string> Grammar::tableHints() {
    std::vector<std::string> hints;
    if (!tokens_.accept("WITH")) {
        return hints;
    }
    tokens_.expect("(");
    do {
        const std::string& word = tokens_.peek().upper;
        if (std::find(lockHints.begin(), lockHints.end(), word) == lockHints.end()) {
            tokens_.refuse();
        }
        hints.push_back(word);
        tokens_.take();
    } while (tokens_.accept(","));
    tokens_.expect(")");
    return hints;
}

// tableAlias = [["AS"] name]
std::optional<std::string> Grammar::tableAlias() {
    if (tokens_.accept("AS") || TokenStream::isIdentifier(tokens_.peek())) {
        return tokens_.takeIdentifier();
    }
    return std::nullopt;
}

// orderList = value ["ASC" | "DESC"] {"," value ["ASC" | "DESC"]}
std::vector<OrderItem> Grammar::orderList() {
    std::vector<OrderItem> items;
    do {
        OrderItem item{value(), false};
        item.descending = tokens_.accept("DESC");
        if (!item.descending) {
            tokens_.accept("ASC");
        }
        items.push_back(std::move(item));
    } while (tokens_.accept(","));
    return items;
}

// parenthesisedQuery = "(" query ")"
Box<Query> Grammar::parenthesisedQuery() {
    tokens_.expect("(");
    Query inner = query();
    tokens_.expect(")");
    return inner;
}

// Whether the parenthesis here opens a query rather than an expression. "(SELECT" does; when more parentheses
// come before SELECT the outermost one does exactly when a UNION or an ORDER BY stands directly inside it.
bool Grammar::atParenthesisedQuery() const {
    std::size_t ahead = 0;
    while (tokens_.peek(ahead).is("(")) {
        ++ahead;
    }
    if (ahead == 0 || !tokens_.peek(ahead).is("SELECT")) {
        return false;
    }
    if (ahead == 1) {
        return true;
    }
    for (std::size_t open = ahead; open > 0 && tokens_.peek(ahead).kind != TokenKind::End; ++ahead) {
        const Token& token = tokens_.peek(ahead);
        if (token.is("(")) {
            ++open;
        } else if (token.is(")")) {
            --open;
        } else if (open == 1 && (token.is("UNION") || token.is("ORDER"))) {
            return true;
        }
    }
    return false;
}

} // namespace veldran::tsql
