#include "adapters/embedded/collation.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/executor.h"
#include "platform/text.h"

#include <algorithm>
#include <array>

namespace veldran::embedded {

namespace {

constexpr int maximumNesting = 32;

// Settings that hold here always, so that asking for them changes nothing.
constexpr std::array<std::string_view, 9> settledOn{
    "ANSI_NULLS",        "ANSI_WARNINGS",     "ANSI_PADDING",
    "ARITHABORT",        "QUOTED_IDENTIFIER", "CONCAT_NULL_YIELDS_NULL",
    "ANSI_NULL_DFLT_ON", "ANSI_DEFAULTS",     "NUMERIC_ROUNDABORT"};

std::string capitals(std::string_view name) {
    return toUpper(name);
}

// Ends what lived inside a procedure, whichever way it is left.
class NestingGuard {
public:
    explicit NestingGuard(SessionState& session) : session_(session), noCount_(session.noCount) {
        ++session_.nesting;
    }
    ~NestingGuard() {
        --session_.nesting;
        session_.noCount = noCount_;
    }
    NestingGuard(const NestingGuard&) = delete;
    NestingGuard& operator=(const NestingGuard&) = delete;

private:
    SessionState& session_;
    bool noCount_;
};

} // namespace

std::shared_ptr<Plan> Executor::procedure(const tsql::QualifiedName& name) {
    const auto found = session_.catalogue().findRoutine(name);
    if (!found || found->kind != RoutineKind::Procedure) {
        fail(2812, "42000", "Impossibile trovare la stored procedure '" + name.last() + "'.");
    }
    return session_.planOf(found);
}

std::optional<std::int64_t> Executor::callProcedure(Plan& procedure, std::vector<VariableValue> arguments,
                                                    std::vector<VariableValue>* results) {
    if (session_.nesting >= maximumNesting) {
        fail(217, "42000", "È stato superato il livello massimo di annidamento delle stored procedure (32).");
    }
    const NestingGuard guard(session_);
    Activation activation(procedure, session_);
    activation.text = procedure.text;
    for (VariableValue& argument : arguments) {
        activation.declare(argument.name, argument.type, std::move(argument.value));
    }
    try {
        run(procedure.body(), activation);
    } catch (...) {
        session_.endScopedTables();
        throw;
    }
    session_.endScopedTables();
    if (results != nullptr) {
        for (const VariableValue& argument : arguments) {
            results->push_back(*activation.find(argument.name));
        }
    }
    return activation.returned;
}

void Executor::execute(const tsql::ExecuteStatement& statement, Activation& activation) {
    const std::shared_ptr<Plan> plan = procedure(statement.procedure);
    const std::string& routine = plan->routine->name;
    const auto& parameters = plan->routine->procedure().parameters;
    std::vector<const tsql::ExecuteArgument*> given(parameters.size(), nullptr);
    std::size_t position = 0;
    for (const tsql::ExecuteArgument& argument : statement.arguments) {
        std::size_t index = position++;
        if (argument.name) {
            const auto found = std::find_if(parameters.begin(), parameters.end(), [&](const auto& parameter) {
                return equalsIgnoringAsciiCase(parameter.name, *argument.name);
            });
            if (found == parameters.end()) {
                fail(8145, "42000",
                     *argument.name + " non è un parametro per la procedura '" + routine + "'.");
            }
            index = static_cast<std::size_t>(found - parameters.begin());
        }
        if (index >= parameters.size()) {
            fail(8144, "42000", "Troppi argomenti specificati per la procedura '" + routine + "'.");
        }
        given[index] = &argument;
    }
    std::vector<VariableValue> arguments;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const auto& [name, type] = plan->parameters[i];
        const bool isDefault =
            given[i] == nullptr || std::holds_alternative<tsql::DefaultValue>(given[i]->value.node);
        arguments.push_back(
            {name, type, isDefault ? defaultOf(*plan, i) : evaluate(given[i]->value, &type, activation)});
    }
    std::vector<VariableValue> results;
    const auto returned = callProcedure(*plan, std::move(arguments), &results);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const auto* target = given[i] != nullptr && given[i]->output && parameters[i].output
                                 ? std::get_if<tsql::Variable>(&given[i]->value.node)
                                 : nullptr;
        VariableValue* variable = target == nullptr ? nullptr : activation.find(capitals(target->name));
        if (variable != nullptr) {
            variable->value =
                toStored(fromStored(results[i].value, results[i].type), variable->type, variable->name);
        }
    }
    if (statement.returnVariable) {
        VariableValue* variable = activation.find(capitals(*statement.returnVariable));
        if (variable == nullptr) {
            fail(137, "42000",
                 "La variabile scalare \"" + *statement.returnVariable + "\" deve essere dichiarata.");
        }
        variable->value = returned.value_or(0);
    }
}

Stored Executor::defaultOf(Plan& procedure, std::size_t parameter) {
    const tsql::RoutineParameter& definition = procedure.routine->procedure().parameters[parameter];
    if (!definition.defaultValue) {
        fail(201, "42000",
             "La procedura '" + procedure.routine->name + "' prevede il parametro '" + definition.name +
                 "', che non è stato specificato.");
    }
    Activation nothing(procedure, session_);
    nothing.text = procedure.text;
    return evaluate(*definition.defaultValue, &procedure.parameters[parameter].type, nothing);
}

void Executor::declare(const tsql::DeclareStatement& statement, Activation& activation) {
    for (const tsql::VariableDeclaration& declaration : statement.variables) {
        const std::string name = capitals(declaration.name);
        SqlType type = resolveType(declaration.type);
        VariableValue* known = activation.find(name);
        if (known != nullptr && known->declaration != &declaration) {
            fail(134, "42000", "Il nome di variabile \"" + declaration.name + "\" è già stato dichiarato.");
        }
        if (known == nullptr) {
            activation.declare(name, type, std::monostate{});
            known = activation.find(name);
            known->declaration = &declaration;
        }
        if (declaration.initial) {
            Stored value = evaluate(*declaration.initial, &type, activation);
            activation.find(name)->value = std::move(value);
        }
    }
}

void Executor::assign(const tsql::SetVariable& statement, Activation& activation) {
    const std::string name = capitals(statement.variable);
    VariableValue* variable = activation.find(name);
    if (variable == nullptr) {
        fail(137, "42000", "La variabile scalare \"" + statement.variable + "\" deve essere dichiarata.");
    }
    const SqlType type = variable->type;
    Stored value = evaluate(statement.value, &type, activation);
    activation.find(name)->value = std::move(value);
}

void Executor::set(const tsql::SetOption& statement) {
    for (const std::string& name : statement.names) {
        if (name == "NOCOUNT") {
            session_.noCount = statement.on;
        } else if (name == "XACT_ABORT") {
            session_.abortsTransaction = statement.on;
        } else if (name == "LOCK_TIMEOUT" && statement.value) {
            // -1 would wait for ever: the connection's own limit stays.
            const int milliseconds = std::atoi(statement.value->c_str());
            if (milliseconds >= 0) {
                session_.setLockTimeout(milliseconds);
            }
        } else if (name.starts_with("TRANSACTION ISOLATION LEVEL")) {
            // Readers see a settled state and writers follow one another: stricter than every level asked
            // for.
        } else if (!(std::find(settledOn.begin(), settledOn.end(), name) != settledOn.end() &&
                     statement.on == (name != "NUMERIC_ROUNDABORT"))) {
            fail(errorNotSupported, "42000",
                 "SET " + name +
                     (statement.value ? " " + *statement.value
                      : statement.on  ? " ON"
                                      : " OFF") +
                     " non è disponibile nel database incorporato.");
        }
    }
}

void Executor::transact(const tsql::TransactionStatement& statement) {
    switch (statement.action) {
    case tsql::TransactionAction::Begin:
        return session_.begin();
    case tsql::TransactionAction::Commit:
        return session_.commit();
    case tsql::TransactionAction::Save:
        return session_.savepoint(statement.name.value_or(""));
    case tsql::TransactionAction::Rollback:
        return statement.name ? session_.rollbackTo(*statement.name) : session_.rollback();
    }
}

std::string Executor::textOf(const tsql::Expression& expression, Activation& activation) {
    const SqlType type = textType(TypeKind::NVarChar, unlimitedLength);
    const Stored value = evaluate(expression, &type, activation);
    return isNull(value) ? std::string() : std::get<std::string>(value);
}

void Executor::raiseMessage(const tsql::RaiseErrorStatement& statement, Activation& activation) {
    std::string message = textOf(statement.arguments[0], activation);
    const SqlType integer = integerType(TypeKind::Int);
    const Stored severity = evaluate(statement.arguments[1], &integer, activation);
    // %s, %d, %i and %u stand for the arguments behind the state.
    std::size_t next = 3;
    for (std::size_t at = message.find('%'); at != std::string::npos && at + 1 < message.size();
         at = message.find('%', at)) {
        const char kind = message[at + 1];
        if (kind == '%') {
            message.erase(at++, 1);
        } else if ((kind == 's' || kind == 'd' || kind == 'i' || kind == 'u') &&
                   next < statement.arguments.size()) {
            const std::string value = textOf(statement.arguments[next++], activation);
            message.replace(at, 2, value);
            at += value.size();
        } else {
            ++at;
        }
    }
    // Up to 10 it is a message, not an error.
    if (!isNull(severity) && std::get<std::int64_t>(severity) > 10) {
        fail(50000, "42000", message);
    }
}

void Executor::raise(const tsql::ThrowStatement& statement, Activation& activation) {
    const SqlType integer = integerType(TypeKind::Int);
    const Stored number = evaluate(statement.number, &integer, activation);
    fail(isNull(number) ? 50000 : static_cast<int>(std::get<std::int64_t>(number)), "42000",
         textOf(statement.message, activation));
}

} // namespace veldran::embedded
