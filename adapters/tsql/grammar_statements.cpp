#include "adapters/tsql/grammar.h"
#include "adapters/tsql/messages.h"

#include <array>
#include <utility>

namespace veldran::tsql {

namespace {

constexpr std::array compoundAssignments = std::to_array<std::pair<std::string_view, ArithmeticOperator>>({
    {"+=", ArithmeticOperator::Add},
    {"-=", ArithmeticOperator::Subtract},
    {"*=", ArithmeticOperator::Multiply},
    {"/=", ArithmeticOperator::Divide},
    {"%=", ArithmeticOperator::Modulo},
    {"&=", ArithmeticOperator::BitAnd},
    {"|=", ArithmeticOperator::BitOr},
    {"^=", ArithmeticOperator::BitXor},
});

} // namespace

// batch = {statement | ";"} <end>
Batch Grammar::batch() {
    Batch result;
    result.statements = statementsUntil({});
    result.parameterCount = markers_;
    return result;
}

// The statements up to the keyword `closing`, which is left standing, or to the end of the text without one.
std::vector<Statement> Grammar::statementsUntil(std::string_view closing) {
    std::vector<Statement> statements;
    const auto finished = [&] { return closing.empty() ? tokens_.at(TokenKind::End) : tokens_.at(closing); };
    while (!finished()) {
        if (!tokens_.accept(";")) {
            statements.push_back(statement());
        }
    }
    return statements;
}

Statement Grammar::statement() {
    const Nesting nesting(tokens_);
    const SourcePosition begin = tokens_.position();
    StatementNode node = statementNode();
    return {tokens_.since(begin), std::move(node)};
}

// statement = query | insert | update | deleteFrom | create | alter | drop | truncate | set | declare
//           | begin | transaction | ifStatement | whileStatement | "BREAK" | "CONTINUE" | returnStatement
//           | "PRINT" value | raiseError | throwStatement | execute
StatementNode Grammar::statementNode() {
    if (tokens_.at("SELECT") || tokens_.at("(")) {
        return SelectStatement{query()};
    }
    if (tokens_.at("INSERT")) {
        return insert();
    }
    if (tokens_.at("UPDATE")) {
        return update();
    }
    if (tokens_.at("DELETE")) {
        return deleteFrom();
    }
    if (tokens_.at("CREATE")) {
        return create();
    }
    if (tokens_.at("ALTER")) {
        return alter();
    }
    if (tokens_.at("DROP")) {
        return drop();
    }
    if (tokens_.at("TRUNCATE")) {
        return truncate();
    }
    if (tokens_.at("SET")) {
        return set();
    }
    if (tokens_.at("DECLARE")) {
        return declare();
    }
    if (tokens_.at("BEGIN")) {
        return begin();
    }
    if (tokens_.accept("COMMIT")) {
        return transaction(TransactionAction::Commit);
    }
    if (tokens_.accept("ROLLBACK")) {
        return transaction(TransactionAction::Rollback);
    }
    if (tokens_.accept("SAVE")) {
        return transaction(TransactionAction::Save);
    }
    if (tokens_.at("IF")) {
        return ifStatement();
    }
    if (tokens_.at("WHILE")) {
        return whileStatement();
    }
    if (tokens_.accept("BREAK")) {
        return BreakStatement{};
    }
    if (tokens_.accept("CONTINUE")) {
        return ContinueStatement{};
    }
    if (tokens_.at("RETURN")) {
        return returnStatement();
    }
    if (tokens_.accept("PRINT")) {
        return PrintStatement{value()};
    }
    if (tokens_.at("RAISERROR")) {
        return raiseError();
    }
    if (tokens_.at("THROW")) {
        return throwStatement();
    }
    if (tokens_.at("EXEC") || tokens_.at("EXECUTE")) {
        return execute();
    }
    tokens_.refuse();
}

// insert = "INSERT" ["INTO"] qualifiedName ["(" name {"," name} ")"]
//          (insertRows | query | "DEFAULT" "VALUES")
InsertStatement Grammar::insert() {
    tokens_.expect("INSERT");
    tokens_.accept("INTO");
    InsertStatement result;
    result.table = qualifiedName();
    if (tokens_.at("(") && !atParenthesisedQuery()) {
        tokens_.take();
        do {
            result.columns.push_back(tokens_.takeIdentifier());
        } while (tokens_.accept(","));
        tokens_.expect(")");
    }
    if (tokens_.at("VALUES")) {
        result.source = insertRows();
    } else if (tokens_.accept("DEFAULT")) {
        tokens_.expect("VALUES");
        result.source = InsertDefaults{};
    } else if (tokens_.at("SELECT") || tokens_.at("(")) {
        result.source = query();
    } else {
        tokens_.refuse("VALUES o SELECT");
    }
    return result;
}

// insertRows = "VALUES" "(" valueOrDefault {"," valueOrDefault} ")" {"," "(" ... ")"}
InsertValues Grammar::insertRows() {
    tokens_.expect("VALUES");
    InsertValues values;
    do {
        const SourcePosition begin = tokens_.position();
        tokens_.expect("(");
        ValuesRow row;
        do {
            row.push_back(valueOrDefault());
        } while (tokens_.accept(","));
        tokens_.expect(")");
        if (!values.rows.empty() && values.rows.front().size() != row.size()) {
            throw differentRowLengths(begin);
        }
        values.rows.push_back(std::move(row));
    } while (tokens_.accept(","));
    return values;
}

// update = "UPDATE" qualifiedName "SET" assignment {"," assignment} ["FROM" fromList] ["WHERE" condition]
UpdateStatement Grammar::update() {
    tokens_.expect("UPDATE");
    UpdateStatement result;
    result.target = qualifiedName();
    tokens_.expect("SET");
    do {
        result.assignments.push_back(assignment());
    } while (tokens_.accept(","));
    if (tokens_.accept("FROM")) {
        result.from = fromList();
    }
    if (tokens_.accept("WHERE")) {
        result.where = condition();
    }
    return result;
}

// assignment = qualifiedName ("=" valueOrDefault | compound value)
Assignment Grammar::assignment() {
    const SourcePosition begin = tokens_.position();
    QualifiedName column = qualifiedName();
    if (tokens_.accept("=")) {
        return {std::move(column), valueOrDefault()};
    }
    Expression computed = assigned(begin, ColumnReference{column});
    return {std::move(column), std::move(computed)};
}

// assigned = "=" value | ("+=" | "-=" | "*=" | "/=" | "%=" | "&=" | "|=" | "^=") value
// The compound forms become the operation they stand for, with the target as its first operand.
Expression Grammar::assigned(const SourcePosition& begin, ExpressionNode target) {
    const SourceSpan targetSpan = tokens_.since(begin);
    if (tokens_.accept("=")) {
        return value();
    }
    for (const auto& [spelling, op] : compoundAssignments) {
        if (tokens_.accept(spelling)) {
            const Nesting nesting(tokens_);
            Arithmetic operation{Expression{targetSpan, std::move(target)}, {}};
            operation.steps.push_back({op, value()});
            return {tokens_.since(begin), std::move(operation)};
        }
    }
    tokens_.refuse("'='");
}

// valueOrDefault = "DEFAULT" | value
Expression Grammar::valueOrDefault() {
    const SourcePosition begin = tokens_.position();
    if (tokens_.accept("DEFAULT")) {
        return {tokens_.since(begin), DefaultValue{}};
    }
    return value();
}

// deleteFrom = "DELETE" ["FROM"] qualifiedName ["FROM" fromList] ["WHERE" condition]
DeleteStatement Grammar::deleteFrom() {
    tokens_.expect("DELETE");
    tokens_.accept("FROM");
    DeleteStatement result;
    result.target = qualifiedName();
    if (tokens_.accept("FROM")) {
        result.from = fromList();
    }
    if (tokens_.accept("WHERE")) {
        result.where = condition();
    }
    return result;
}

std::string Grammar::takeVariable() {
    if (!tokens_.at(TokenKind::Variable) || tokens_.peek().text.starts_with("@@")) {
        tokens_.refuse("il nome di una variabile");
    }
    return tokens_.take().text;
}

} // namespace veldran::tsql
