#include "adapters/embedded/session.h"

#include "adapters/embedded/collation.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/parsing.h"
#include "platform/text.h"

#include <algorithm>

namespace veldran::embedded {

namespace {

class Clock {
public:
    Clock(SessionState& session, int seconds) : session_(session) { session_.startClock(seconds); }
    ~Clock() { session_.stopClock(); }
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;

private:
    SessionState& session_;
};

// A prepared or parameterised text is a scope of its own on the server: working tables made in it end with
// it.
class TextScope {
public:
    TextScope(SessionState& session, bool scoped) : session_(session), scoped_(scoped) {
        session_.nesting += scoped_ ? 1 : 0;
    }
    ~TextScope() {
        if (!scoped_) {
            return;
        }
        try {
            session_.endScopedTables();
        } catch (const ado::AdoError&) {
            // The tables end with the session at the latest.
            session_.scopedTables.clear();
        }
        --session_.nesting;
    }
    TextScope(const TextScope&) = delete;
    TextScope& operator=(const TextScope&) = delete;

private:
    SessionState& session_;
    bool scoped_;
};

std::vector<SqlType> typesOf(std::span<const ado::BoundParameter> parameters) {
    std::vector<SqlType> types;
    types.reserve(parameters.size());
    for (const ado::BoundParameter& parameter : parameters) {
        types.push_back(parameterType(parameter.info));
    }
    return types;
}

void checkCount(const Plan& plan) {
    if (plan.markers.size() > plan.batch.parameterCount) {
        fail(8144, "07002",
             "Sono stati forniti " + std::to_string(plan.markers.size()) + " parametri, ma il testo ha " +
                 std::to_string(plan.batch.parameterCount) + " marcatori.");
    }
    if (plan.markers.size() < plan.batch.parameterCount) {
        fail(8178, "07002",
             "Il testo ha " + std::to_string(plan.batch.parameterCount) +
                 " marcatori, ma sono stati forniti " + std::to_string(plan.markers.size()) + " parametri.");
    }
}

std::vector<Stored> storedValues(const Plan& plan, std::span<const ado::BoundParameter> parameters) {
    checkCount(plan);
    std::vector<Stored> values;
    values.reserve(parameters.size());
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const std::string& name = parameters[i].info.name;
        values.push_back(toStored(parameters[i].value, plan.markers[i], name.empty() ? "?" : name));
    }
    return values;
}

tsql::QualifiedName nameOf(std::string_view text) {
    const auto name = parseObjectName(text);
    if (!name) {
        fail(2812, "42000", "Impossibile trovare la stored procedure '" + std::string(text) + "'.");
    }
    return *name;
}

bool sameParameter(std::string_view declared, std::string_view given) {
    return equalsIgnoringAsciiCase(declared, given) || equalsIgnoringAsciiCase(declared.substr(1), given);
}

} // namespace

/// A text parsed and bound once; only values are bound when it runs.
class EmbeddedStatement : public ado::PreparedStatement {
public:
    EmbeddedStatement(EmbeddedSession& session, std::shared_ptr<Plan> plan)
        : session_(session), plan_(std::move(plan)) {}

    ado::StatementResult execute(std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& settings) override {
        const auto same = [](const ado::BoundParameter& parameter, const SqlType& type) {
            return parameterType(parameter.info) == type;
        };
        if (!std::equal(parameters.begin(), parameters.end(), plan_->markers.begin(), plan_->markers.end(),
                        same)) {
            plan_ = session_.state_.texts().plan(plan_->text, typesOf(parameters));
        }
        return session_.run(*plan_, plan_->text, storedValues(*plan_, parameters), settings, true);
    }

private:
    EmbeddedSession& session_;
    std::shared_ptr<Plan> plan_; // shared with the session's cache, which may drop it
};

EmbeddedSession::EmbeddedSession(std::unique_ptr<SqliteDatabase> database) : state_(std::move(database)) {}

EmbeddedSession::~EmbeddedSession() {
    if (state_.database().inTransaction()) {
        sqlite3_exec(state_.database().handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

ado::StatementResult EmbeddedSession::run(Plan& plan, std::string_view text,
                                          const std::vector<Stored>& values,
                                          const ado::ExecuteSettings& settings, bool scoped) {
    const Clock clock(state_, settings.commandTimeout);
    const TextScope scope(state_, scoped);
    Activation activation(plan, state_);
    activation.markers = values;
    activation.text = text;
    Executor executor(state_, settings.wantsRows);
    executor.run(plan.body(), activation);
    return executor.takeResult();
}

ado::StatementResult EmbeddedSession::execute(std::string_view text,
                                              std::span<const ado::BoundParameter> parameters,
                                              const ado::ExecuteSettings& settings) {
    if (parameters.empty()) {
        std::vector<Stored> values;
        const std::shared_ptr<Plan> plan = state_.texts().sharedPlan(text, values);
        checkCount(*plan);
        return run(*plan, text, values, settings, false);
    }
    const std::shared_ptr<Plan> plan = state_.texts().plan(text, typesOf(parameters));
    return run(*plan, text, storedValues(*plan, parameters), settings, true);
}

ado::StatementResult EmbeddedSession::executeBatch(const std::string& text, std::size_t line) {
    Plan plan;
    plan.text = text;
    plan.batch = parseText(text, line);
    checkCount(plan);
    return run(plan, text, {}, {0, false}, false);
}

std::unique_ptr<ado::PreparedStatement>
EmbeddedSession::prepare(std::string_view text, std::span<const ado::ParameterInfo> parameters) {
    std::vector<SqlType> types;
    for (const ado::ParameterInfo& parameter : parameters) {
        types.push_back(parameterType(parameter));
    }
    std::shared_ptr<Plan> plan = state_.texts().plan(text, std::move(types));
    checkCount(*plan);
    if (plan->batch.statements.size() == 1) {
        Activation activation(*plan, state_);
        activation.text = plan->text;
        Executor(state_, false).bind(plan->batch.statements.front(), activation);
    }
    return std::make_unique<EmbeddedStatement>(*this, std::move(plan));
}

std::string EmbeddedSession::explain(std::string_view text, std::span<const ado::ParameterInfo> parameters) {
    std::vector<SqlType> types;
    for (const ado::ParameterInfo& parameter : parameters) {
        types.push_back(parameterType(parameter));
    }
    Plan plan;
    plan.text = text;
    plan.batch = parseText(plan.text);
    plan.markers = std::move(types);
    std::string result;
    for (const tsql::Statement& statement : plan.batch.statements) {
        Activation activation(plan, state_);
        activation.text = plan.text;
        Executor(state_, false).bind(statement, activation);
        const auto found = plan.compiled.find(&statement);
        if (found != plan.compiled.end()) {
            result += (result.empty() ? "" : "\n") + found->second.program().sql;
        }
    }
    return result;
}

std::vector<ado::ParameterInfo> EmbeddedSession::describeProcedure(std::string_view name) {
    Executor executor(state_, false);
    const std::shared_ptr<Plan> plan = executor.procedure(nameOf(name));
    std::vector<ado::ParameterInfo> result;
    for (const tsql::RoutineParameter& parameter : plan->routine->procedure().parameters) {
        ado::ParameterInfo info = toParameter(parameter.name, resolveType(parameter.type));
        info.direction = parameter.output ? ado::adParamInputOutput : ado::adParamInput;
        result.push_back(std::move(info));
    }
    return result;
}

ado::StatementResult EmbeddedSession::callProcedure(std::string_view name,
                                                    std::span<const ado::BoundParameter> parameters,
                                                    const ado::ExecuteSettings& settings) {
    Executor executor(state_, settings.wantsRows);
    const std::shared_ptr<Plan> plan = executor.procedure(nameOf(name));
    const Routine& routine = *plan->routine;
    const auto& declared = plan->parameters;
    std::vector<const Value*> given(declared.size(), nullptr);
    for (const ado::BoundParameter& parameter : parameters) {
        if (parameter.info.direction == ado::adParamReturnValue) {
            continue;
        }
        const auto found = std::find_if(declared.begin(), declared.end(), [&](const auto& known) {
            return sameParameter(known.name, parameter.info.name);
        });
        if (found == declared.end()) {
            fail(8145, "42000",
                 parameter.info.name + " non è un parametro per la procedura '" + routine.name + "'.");
        }
        const Value*& value = given[static_cast<std::size_t>(found - declared.begin())];
        if (value == nullptr) { // given twice, the first one counts
            value = &parameter.value;
        }
    }
    std::vector<VariableValue> arguments;
    arguments.reserve(declared.size());
    for (std::size_t i = 0; i < declared.size(); ++i) {
        const auto& [variable, type] = declared[i];
        arguments.push_back({variable, type,
                             given[i] == nullptr
                                 ? executor.defaultOf(*plan, i)
                                 : toStored(*given[i], type, routine.procedure().parameters[i].name)});
    }
    const Clock clock(state_, settings.commandTimeout);
    executor.callProcedure(*plan, std::move(arguments), nullptr);
    return executor.takeResult();
}

} // namespace veldran::embedded
