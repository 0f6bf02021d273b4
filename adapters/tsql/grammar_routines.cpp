#include "adapters/tsql/grammar.h"
#include "adapters/tsql/messages.h"

#include <utility>

namespace veldran::tsql {

bool Grammar::atRoutine() const {
    return tokens_.at("PROCEDURE") || tokens_.at("PROC") || tokens_.at("FUNCTION");
}

// routine = procedure | function
// It stands alone in its batch: what follows it belongs to its body, and nothing may come before it.
StatementNode Grammar::routine(DefinitionMode mode, const SourcePosition& begin, bool firstInBatch) {
    const bool isFunction = tokens_.at("FUNCTION");
    if (!firstInBatch) {
        throw mustBeFirstInBatch(isFunction ? "CREATE/ALTER FUNCTION" : "CREATE/ALTER PROCEDURE", begin);
    }
    tokens_.take();
    if (isFunction) {
        return function(mode);
    }
    return procedure(mode);
}

// procedure = qualifiedName [parameters | "(" parameters ")"] "AS" statement {statement} <end>
CreateProcedure Grammar::procedure(DefinitionMode mode) {
    CreateProcedure result;
    result.mode = mode;
    result.name = qualifiedName();
    if (tokens_.accept("(")) {
        result.parameters = routineParameters();
        tokens_.expect(")");
    } else if (tokens_.at(TokenKind::Variable)) {
        result.parameters = routineParameters();
    }
    tokens_.expect("AS");
    const SourcePosition body = tokens_.position();
    result.body = statementsUntil({});
    if (result.body.empty()) {
        tokens_.refuse("il corpo della procedura");
    }
    result.bodySpan = tokens_.since(body);
    return result;
}

// function = qualifiedName "(" [parameters] ")" "RETURNS" (tableFunction | scalarFunction) <end>
CreateFunction Grammar::function(DefinitionMode mode) {
    CreateFunction result;
    result.mode = mode;
    result.name = qualifiedName();
    tokens_.expect("(");
    if (!tokens_.at(")")) {
        result.parameters = routineParameters();
    }
    tokens_.expect(")");
    tokens_.expect("RETURNS");
    if (tokens_.accept("TABLE")) {
        tableFunction(result);
    } else {
        scalarFunction(result);
    }
    while (tokens_.accept(";")) {
    }
    if (!tokens_.at(TokenKind::End)) {
        tokens_.refuse();
    }
    return result;
}

// tableFunction = "TABLE" ["WITH" "SCHEMABINDING"] ["AS"] "RETURN" query
void Grammar::tableFunction(CreateFunction& result) {
    result.schemaBinding = acceptSchemaBinding();
    tokens_.accept("AS");
    const SourcePosition body = tokens_.position();
    tokens_.expect("RETURN");
    result.body = InlineTableBody{query()};
    result.bodySpan = tokens_.since(body);
}

// scalarFunction = dataType ["WITH" "SCHEMABINDING"] ["AS"] "BEGIN" statement {statement} "END"
void Grammar::scalarFunction(CreateFunction& result) {
    ScalarFunctionBody scalar;
    scalar.returns = dataType();
    result.schemaBinding = acceptSchemaBinding();
    tokens_.accept("AS");
    const SourcePosition body = tokens_.position();
    tokens_.expect("BEGIN");
    scalar.statements = statementsUntil("END");
    if (scalar.statements.empty()) {
        tokens_.refuse("il corpo della funzione");
    }
    tokens_.expect("END");
    result.body = std::move(scalar);
    result.bodySpan = tokens_.since(body);
}

// parameters = parameter {"," parameter}
std::vector<RoutineParameter> Grammar::routineParameters() {
    std::vector<RoutineParameter> parameters;
    do {
        parameters.push_back(routineParameter());
    } while (tokens_.accept(","));
    return parameters;
}

// parameter = variable ["AS"] dataType ["=" constant] ["OUT" | "OUTPUT"]
RoutineParameter Grammar::routineParameter() {
    const SourcePosition begin = tokens_.position();
    RoutineParameter parameter;
    parameter.name = takeVariable();
    tokens_.accept("AS");
    parameter.type = dataType();
    if (tokens_.accept("=")) {
        parameter.defaultValue = constant();
    }
    parameter.output = acceptOutput();
    parameter.span = tokens_.since(begin);
    return parameter;
}

bool Grammar::acceptSchemaBinding() {
    if (!tokens_.accept("WITH")) {
        return false;
    }
    tokens_.expect("SCHEMABINDING");
    return true;
}

} // namespace veldran::tsql
