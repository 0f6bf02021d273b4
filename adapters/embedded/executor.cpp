#include "adapters/embedded/executor.h"

#include "adapters/embedded/collation.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/overloaded.h"
#include "adapters/embedded/translator.h"

#include <algorithm>

namespace veldran::embedded {

namespace {

// Variables that the session keeps.
const std::array<std::pair<std::string_view, SqlType>, 5> sessionVariables{{
    {"@@ROWCOUNT", integerType(TypeKind::Int)},
    {"@@TRANCOUNT", integerType(TypeKind::Int)},
    {"@@ERROR", integerType(TypeKind::Int)},
    {"@@NESTLEVEL", integerType(TypeKind::Int)},
    {"@@IDENTITY", decimalType(18, 0)},
}};

} // namespace

const SqlType* Activation::typeOf(const std::string& name) const {
    for (const auto& [known, type] : sessionVariables) {
        if (known == name) {
            return &type;
        }
    }
    const auto found = std::find_if(variables_.begin(), variables_.end(),
                                    [&](const VariableValue& variable) { return variable.name == name; });
    return found == variables_.end() ? nullptr : &found->type;
}

VariableValue* Activation::find(const std::string& name) {
    const auto found = std::find_if(variables_.begin(), variables_.end(),
                                    [&](const VariableValue& variable) { return variable.name == name; });
    return found == variables_.end() ? nullptr : &*found;
}

void Activation::declare(const std::string& name, const SqlType& type, Stored value) {
    variables_.push_back({name, type, std::move(value)});
}

Stored Activation::valueOf(const Slot& slot) const {
    if (slot.kind == Slot::Kind::Marker) {
        return markers[slot.marker];
    }
    for (const VariableValue& variable : variables_) {
        if (variable.name == slot.variable) {
            return variable.value;
        }
    }
    if (slot.variable == "@@ROWCOUNT") {
        return session_.rowCount;
    }
    if (slot.variable == "@@TRANCOUNT") {
        return std::int64_t{session_.transactionCount()};
    }
    if (slot.variable == "@@NESTLEVEL") {
        return std::int64_t{session_.nesting};
    }
    if (slot.variable == "@@IDENTITY") {
        return session_.lastIdentity ? Stored(*session_.lastIdentity) : Stored();
    }
    return std::int64_t{session_.lastError};
}

void Executor::run(const std::vector<tsql::Statement>& statements, Activation& activation) {
    runAll(statements, activation);
}

Executor::Flow Executor::runAll(const std::vector<tsql::Statement>& statements, Activation& activation) {
    for (const tsql::Statement& statement : statements) {
        const Flow flow = runOne(statement, activation);
        if (flow != Flow::Next) {
            return flow;
        }
    }
    return Flow::Next;
}

Executor::Flow Executor::runOne(const tsql::Statement& statement, Activation& activation) {
    try {
        const Flow flow = dispatch(statement, activation);
        session_.lastError = 0;
        return flow;
    } catch (const ado::AdoError& error) {
        session_.lastError = error.first().Number;
        if (session_.abortsTransaction && session_.transactionCount() > 0) {
            session_.rollback();
        }
        throw;
    }
}

Executor::Flow Executor::dispatch(const tsql::Statement& statement, Activation& activation) {
    const auto next = [](auto action) {
        action();
        return Flow::Next;
    };
    return std::visit(
        Overloaded{
            [&](const tsql::Block& n) { return runAll(n.statements, activation); },
            [&](const tsql::IfStatement& n) {
                if (holds(n.condition, activation)) {
                    return runOne(*n.then, activation);
                }
                return n.otherwise ? runOne(**n.otherwise, activation) : Flow::Next;
            },
            [&](const tsql::WhileStatement& n) { return loop(n, activation); },
            [](const tsql::BreakStatement&) { return Flow::Break; },
            [](const tsql::ContinueStatement&) { return Flow::Continue; },
            [&](const tsql::ReturnStatement& n) {
                if (n.value) {
                    const SqlType type = integerType(TypeKind::Int);
                    const Stored value = evaluate(*n.value, &type, activation);
                    activation.returned =
                        std::holds_alternative<std::int64_t>(value) ? std::get<std::int64_t>(value) : 0;
                }
                return Flow::Return;
            },
            [&](const tsql::CreateTable& n) { return next([&] { define(n, activation); }); },
            [&](const tsql::AlterTableAdd& n) { return next([&] { define(n, activation); }); },
            [&](const tsql::CreateIndex& n) { return next([&] { define(n); }); },
            [&](const tsql::DropStatement& n) { return next([&] { define(n); }); },
            [&](const tsql::TruncateTable& n) { return next([&] { define(n); }); },
            [&](const tsql::SetIdentityInsert& n) { return next([&] { define(n); }); },
            [&](const tsql::CreateProcedure&) { return next([&] { defineRoutine(statement, activation); }); },
            [&](const tsql::CreateFunction&) { return next([&] { defineRoutine(statement, activation); }); },
            [&](const tsql::SetOption& n) { return next([&] { set(n); }); },
            [&](const tsql::TransactionStatement& n) { return next([&] { transact(n); }); },
            [&](const tsql::DeclareStatement& n) { return next([&] { declare(n, activation); }); },
            [&](const tsql::SetVariable& n) { return next([&] { assign(n, activation); }); },
            [&](const tsql::ExecuteStatement& n) { return next([&] { execute(n, activation); }); },
            [&](const tsql::PrintStatement& n) { return next([&] { textOf(n.message, activation); }); },
            [&](const tsql::RaiseErrorStatement& n) { return next([&] { raiseMessage(n, activation); }); },
            [&](const tsql::ThrowStatement& n) -> Flow { raise(n, activation); },
            [&](const auto&) { return next([&] { runStatement(statement, activation); }); },
        },
        statement.node);
}

Executor::Flow Executor::loop(const tsql::WhileStatement& statement, Activation& activation) {
    while (holds(statement.condition, activation)) {
        session_.checkClock();
        const Flow flow = runOne(*statement.body, activation);
        if (flow == Flow::Return) {
            return flow;
        }
        if (flow == Flow::Break) {
            break;
        }
    }
    return Flow::Next;
}

bool Executor::isCurrent(Compiled& entry) {
    const RowCopies& copies = session_.rowCopies();
    if (entry.copiesState != copies.state()) {
        const Program& program = entry.program();
        if (!std::all_of(program.relies.begin(), program.relies.end(),
                         [&](const CopiedColumn& column) { return copies.isAlike(column); }) ||
            !std::all_of(program.uniform.begin(), program.uniform.end(),
                         [&](const UniformColumn& known) {
                             return copies.uniform().valueOf(known.table, known.column) == known.value;
                         }) ||
            !std::all_of(program.shares.begin(), program.shares.end(), [&](const CopyShare& share) {
                return copies.isSparse(share.copy) == share.sparse;
            })) {
            return false;
        }
        entry.copiesState = copies.state();
    }
    Catalogue& catalogue = session_.catalogue();
    if (entry.generation == catalogue.generation()) {
        return true;
    }
    for (const Dependency& dependency : entry.program().dependencies) {
        if (dependency.table) {
            const auto now = catalogue.findTable(dependency.name);
            if (!now || (now != dependency.table && !(*now == *dependency.table))) {
                return false;
            }
        } else {
            const auto now = catalogue.findRoutine(dependency.name);
            if (!now || (now != dependency.routine && now->text != dependency.routine->text)) {
                return false;
            }
        }
    }
    entry.generation = catalogue.generation();
    return true;
}

Compiled& Executor::compiled(const void* node, Activation& activation,
                             const std::function<TranslatedStatement()>& translate) {
    auto& entries = activation.plan().compiled;
    const auto found = entries.find(node);
    if (found != entries.end()) {
        if (found->second.identityInsert == session_.identityInsert && isCurrent(found->second)) {
            return found->second;
        }
        entries.erase(found);
    }
    Compiled entry{translate(), {}, session_.catalogue().generation(), session_.identityInsert};
    return entries.emplace(node, std::move(entry)).first->second;
}

Compiled& Executor::compiledStatement(const tsql::Statement& statement, Activation& activation) {
    const Plan& plan = activation.plan();
    const BindingContext context{session_.catalogue(), session_.rowCopies(), activation,
                                 plan.markers,         activation.text,      session_.identityInsert,
                                 !plan.shape.empty()};
    return compiled(&statement, activation, [&]() -> TranslatedStatement {
        Translator translator(context);
        if (const auto* select = std::get_if<tsql::SelectStatement>(&statement.node)) {
            return translator.select(*select);
        }
        if (const auto* insert = std::get_if<tsql::InsertStatement>(&statement.node)) {
            return translator.insert(*insert);
        }
        if (const auto* update = std::get_if<tsql::UpdateStatement>(&statement.node)) {
            return translator.update(*update);
        }
        return translator.erase(std::get<tsql::DeleteStatement>(statement.node));
    });
}

void Executor::bind(const tsql::Statement& statement, Activation& activation) {
    const bool whole = std::holds_alternative<tsql::SelectStatement>(statement.node) ||
                       std::holds_alternative<tsql::InsertStatement>(statement.node) ||
                       std::holds_alternative<tsql::UpdateStatement>(statement.node) ||
                       std::holds_alternative<tsql::DeleteStatement>(statement.node);
    if (whole) {
        Compiled& entry = compiledStatement(statement, activation);
        if (!entry.statement && !std::holds_alternative<IntoProgram>(entry.translated)) {
            entry.statement = session_.database().prepare(entry.program().sql);
        }
    }
}

bool Executor::buildIndexes(const Program& program) {
    bool complete = true;
    for (const Sought& sought : program.sought) {
        complete = session_.catalogue().buildIndexes(sought.table, sought.columns) && complete;
    }
    return complete;
}

void Executor::prepare(Compiled& entry) {
    const Catalogue& catalogue = session_.catalogue();
    if (entry.indexState != catalogue.indexState() && buildIndexes(entry.program())) {
        entry.indexState = catalogue.indexState();
    }
    if (!entry.statement) {
        entry.statement = session_.database().prepare(entry.program().sql);
        entry.replans = 0;
    }
}

void Executor::bindSlots(SqliteStatement& statement, const std::vector<Slot>& slots, Activation& activation) {
    // Folding may have dropped the last slots from the text.
    const auto count = static_cast<std::size_t>(sqlite3_bind_parameter_count(statement.handle()));
    for (std::size_t i = 0; i < std::min(slots.size(), count); ++i) {
        statement.bind(static_cast<int>(i) + 1, activation.valueOf(slots[i]));
    }
}

Stored Executor::evaluate(const tsql::Expression& expression, const SqlType* type, Activation& activation) {
    const BindingContext context{session_.catalogue(),      session_.rowCopies(), activation,
                                 activation.plan().markers, activation.text,      {}};
    Compiled& entry =
        compiled(&expression, activation, [&] { return Translator(context).value(expression, type, {}); });
    prepare(entry);
    bindSlots(entry.statement, entry.program().slots, activation);
    const ResetGuard guard(entry.statement);
    return entry.statement.step() ? entry.statement.stored(0) : Stored();
}

bool Executor::holds(const tsql::Expression& condition, Activation& activation) {
    const BindingContext context{session_.catalogue(),      session_.rowCopies(), activation,
                                 activation.plan().markers, activation.text,      {}};
    Compiled& entry =
        compiled(&condition, activation, [&] { return Translator(context).condition(condition); });
    prepare(entry);
    bindSlots(entry.statement, entry.program().slots, activation);
    const ResetGuard guard(entry.statement);
    return entry.statement.step() && entry.statement.integer(0) != 0;
}

} // namespace veldran::embedded
