#include "adapters/tsql/grammar.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veldran::tsql {

namespace {

constexpr std::array switches = std::to_array<std::string_view>({
    "ANSI_NULLS",
    "ANSI_NULL_DFLT_ON",
    "ANSI_PADDING",
    "ANSI_WARNINGS",
    "ARITHABORT",
    "CONCAT_NULL_YIELDS_NULL",
    "IMPLICIT_TRANSACTIONS",
    "NOCOUNT",
    "NUMERIC_ROUNDABORT",
    "QUOTED_IDENTIFIER",
    "XACT_ABORT",
});

bool isSwitch(const Token& token) {
    return token.kind == TokenKind::Word &&
           std::find(switches.begin(), switches.end(), token.upper) != switches.end();
}

} // namespace

// begin = "BEGIN" ("TRAN" | "TRANSACTION") [name] | "BEGIN" statement {statement} "END"
StatementNode Grammar::begin() {
    tokens_.expect("BEGIN");
    if (tokens_.at("TRAN") || tokens_.at("TRANSACTION")) {
        return transaction(TransactionAction::Begin);
    }
    Block block;
    block.statements = statementsUntil("END");
    if (block.statements.empty()) {
        tokens_.refuse();
    }
    tokens_.expect("END");
    return block;
}

// transaction = ("BEGIN" | "COMMIT" | "ROLLBACK" | "SAVE") [("TRAN" | "TRANSACTION" | "WORK") [name]]
// BEGIN and SAVE need the word; SAVE needs the name.
TransactionStatement Grammar::transaction(TransactionAction action) {
    TransactionStatement result{action, std::nullopt};
    if (action == TransactionAction::Save) {
        if (!tokens_.accept("TRAN")) {
            tokens_.expect("TRANSACTION");
        }
        result.name = tokens_.takeIdentifier();
        return result;
    }
    if (tokens_.accept("TRAN") || tokens_.accept("TRANSACTION")) {
        if (TokenStream::isIdentifier(tokens_.peek()) && !tokens_.at("THROW")) {
            result.name = tokens_.takeIdentifier();
        }
    } else {
        tokens_.accept("WORK");
    }
    return result;
}

// ifStatement = "IF" condition statement [[";"] "ELSE" statement]
IfStatement Grammar::ifStatement() {
    tokens_.expect("IF");
    Expression test = condition();
    IfStatement result{std::move(test), statement(), std::nullopt};
    if (tokens_.at(";", "ELSE")) {
        tokens_.take();
    }
    if (tokens_.accept("ELSE")) {
        result.otherwise = statement();
    }
    return result;
}

// whileStatement = "WHILE" condition statement
WhileStatement Grammar::whileStatement() {
    tokens_.expect("WHILE");
    Expression test = condition();
    return {std::move(test), statement()};
}

// declare = "DECLARE" variable ["AS"] dataType ["=" value] {"," variable ...}
DeclareStatement Grammar::declare() {
    tokens_.expect("DECLARE");
    DeclareStatement result;
    do {
        const SourcePosition begin = tokens_.position();
        VariableDeclaration variable;
        variable.name = takeVariable();
        tokens_.accept("AS");
        variable.type = dataType();
        if (tokens_.accept("=")) {
            variable.initial = value();
        }
        variable.span = tokens_.since(begin);
        result.variables.push_back(std::move(variable));
    } while (tokens_.accept(","));
    return result;
}

// set = "SET" variable assigned | "SET" "IDENTITY_INSERT" qualifiedName ("ON" | "OFF")
//     | "SET" setIsolationLevel | "SET" setOption
StatementNode Grammar::set() {
    tokens_.expect("SET");
    if (tokens_.at(TokenKind::Variable)) {
        const SourcePosition begin = tokens_.position();
        std::string variable = takeVariable();
        Expression computed = assigned(begin, Variable{variable});
        return SetVariable{std::move(variable), std::move(computed)};
    }
    if (tokens_.accept("IDENTITY_INSERT")) {
        SetIdentityInsert result;
        result.table = qualifiedName();
        result.on = tokens_.accept("ON");
        if (!result.on) {
            tokens_.expect("OFF");
        }
        return result;
    }
    if (tokens_.at("TRANSACTION")) {
        return setIsolationLevel();
    }
    return setOption();
}

// setOption = switch {"," switch} ("ON" | "OFF") | "LOCK_TIMEOUT" integer
SetOption Grammar::setOption() {
    SetOption option;
    if (tokens_.at("LOCK_TIMEOUT")) {
        option.names.push_back(tokens_.take().upper);
        option.value = std::to_string(tokens_.takeInteger());
        return option;
    }
    do {
        if (!isSwitch(tokens_.peek())) {
            tokens_.refuse();
        }
        option.names.push_back(tokens_.take().upper);
    } while (tokens_.accept(","));
    option.on = tokens_.accept("ON");
    if (!option.on) {
        tokens_.expect("OFF");
    }
    return option;
}

// setIsolationLevel = "TRANSACTION" "ISOLATION" "LEVEL"
//     ("READ" ("UNCOMMITTED" | "COMMITTED") | "REPEATABLE" "READ" | "SERIALIZABLE" | "SNAPSHOT")
SetOption Grammar::setIsolationLevel() {
    tokens_.expect("TRANSACTION");
    tokens_.expect("ISOLATION");
    tokens_.expect("LEVEL");
    SetOption option;
    option.names.emplace_back("TRANSACTION ISOLATION LEVEL");
    if (tokens_.accept("SERIALIZABLE")) {
        option.value = "SERIALIZABLE";
    } else if (tokens_.accept("SNAPSHOT")) {
        option.value = "SNAPSHOT";
    } else if (tokens_.accept("REPEATABLE")) {
        tokens_.expect("READ");
        option.value = "REPEATABLE READ";
    } else {
        tokens_.expect("READ");
        if (tokens_.accept("UNCOMMITTED")) {
            option.value = "READ UNCOMMITTED";
        } else {
            tokens_.expect("COMMITTED");
            option.value = "READ COMMITTED";
        }
    }
    return option;
}

// returnStatement = "RETURN" [value]
ReturnStatement Grammar::returnStatement() {
    tokens_.expect("RETURN");
    ReturnStatement result;
    if (atValue()) {
        result.value = value();
    }
    return result;
}

// raiseError = "RAISERROR" "(" value "," value "," value {"," value} ")"
RaiseErrorStatement Grammar::raiseError() {
    tokens_.expect("RAISERROR");
    tokens_.expect("(");
    RaiseErrorStatement result;
    result.arguments.push_back(value());
    tokens_.expect(",");
    result.arguments.push_back(value());
    tokens_.expect(",");
    result.arguments.push_back(value());
    while (tokens_.accept(",")) {
        result.arguments.push_back(value());
    }
    tokens_.expect(")");
    return result;
}

// throwStatement = "THROW" value "," value "," value
ThrowStatement Grammar::throwStatement() {
    tokens_.expect("THROW");
    Expression number = value();
    tokens_.expect(",");
    Expression message = value();
    tokens_.expect(",");
    Expression state = value();
    return {std::move(number), std::move(message), std::move(state)};
}

// execute = ("EXEC" | "EXECUTE") [variable "="] qualifiedName [executeArgument {"," executeArgument}]
ExecuteStatement Grammar::execute() {
    tokens_.take();
    ExecuteStatement result;
    if (tokens_.at(TokenKind::Variable)) {
        result.returnVariable = takeVariable();
        tokens_.expect("=");
    }
    result.procedure = qualifiedName();
    if (tokens_.at(TokenKind::Variable) || tokens_.at(TokenKind::Marker) || tokens_.at("DEFAULT") ||
        atConstant()) {
        do {
            result.arguments.push_back(executeArgument());
        } while (tokens_.accept(","));
    }
    return result;
}

// executeArgument = [variable "="] ("DEFAULT" | (variable | "?") ["OUT" | "OUTPUT"] | constant)
ExecuteArgument Grammar::executeArgument() {
    std::optional<std::string> name;
    if (tokens_.at(TokenKind::Variable) && tokens_.peek(1).is("=")) {
        name = takeVariable();
        tokens_.take();
    }
    const SourcePosition begin = tokens_.position();
    if (tokens_.accept("DEFAULT")) {
        return {std::move(name), {tokens_.since(begin), DefaultValue{}}, false};
    }
    if (tokens_.at(TokenKind::Variable) || tokens_.at(TokenKind::Marker)) {
        Expression argument = primary();
        const bool output = acceptOutput();
        return {std::move(name), std::move(argument), output};
    }
    return {std::move(name), constant(), false};
}

bool Grammar::acceptOutput() {
    return tokens_.accept("OUTPUT") || tokens_.accept("OUT");
}

bool Grammar::atConstant() const {
    switch (tokens_.peek().kind) {
    case TokenKind::String:
    case TokenKind::NationalString:
    case TokenKind::Integer:
    case TokenKind::Decimal:
    case TokenKind::Float:
    case TokenKind::Binary:
        return true;
    default:
        return tokens_.at("NULL") || tokens_.at("-") || tokens_.at("+");
    }
}

// Whether a value can begin here; the words that begin statements are reserved, THROW alone is not.
bool Grammar::atValue() const {
    if (atConstant() || tokens_.at(TokenKind::Variable) || tokens_.at(TokenKind::Marker)) {
        return true;
    }
    if (tokens_.at("(") || tokens_.at("~") || tokens_.at("CASE")) {
        return true;
    }
    if (TokenStream::isIdentifier(tokens_.peek())) {
        return !tokens_.at("THROW");
    }
    return tokens_.at(TokenKind::Word) && tokens_.peek(1).is("(") &&
           (tokens_.at("CONVERT") || tokens_.at("COALESCE") || tokens_.at("NULLIF") || tokens_.at("LEFT") ||
            tokens_.at("RIGHT"));
}

} // namespace veldran::tsql
