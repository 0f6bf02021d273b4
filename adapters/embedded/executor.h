#pragma once

#include "adapters/embedded/plan.h"
#include "adapters/embedded/scope.h"
#include "adapters/embedded/session_state.h"
#include "platform/ado/driver.h"

#include <functional>
#include <span>

namespace veldran::embedded {

struct VariableValue {
    std::string name; ///< in capitals, with its "@"
    SqlType type;
    Stored value;
    const void* declaration = nullptr; ///< the DECLARE that made it; a loop may come by it again
};

/// One running text or procedure body: its variables, its markers' values.
class Activation : public Variables {
public:
    Activation(Plan& plan, SessionState& session) : plan_(plan), session_(session) {}

    const SqlType* typeOf(const std::string& name) const override;
    VariableValue* find(const std::string& name);
    void declare(const std::string& name, const SqlType& type, Stored value);
    Stored valueOf(const Slot& slot) const;

    Plan& plan() { return plan_; }
    std::span<const Stored> markers;
    std::string_view text;                ///< of the statements that run, for quoting
    std::optional<std::int64_t> returned; ///< by RETURN with a value

private:
    Plan& plan_;
    SessionState& session_;
    std::vector<VariableValue> variables_;
};

/// Runs the statements of a text against a session. Every member throws AdoError.
class Executor {
public:
    Executor(SessionState& session, bool wantsRows) : session_(session), wantsRows_(wantsRows) {}

    void run(const std::vector<tsql::Statement>& statements, Activation& activation);
    /// Binds the statement now, if it is one that is bound whole.
    void bind(const tsql::Statement& statement, Activation& activation);
    /// \throws AdoError 2812 when there is no such procedure
    std::shared_ptr<Plan> procedure(const tsql::QualifiedName& name);
    /// \param procedure its plan, which the caller keeps: the procedure may be altered while it runs
    /// \param arguments one a parameter, in their order
    /// \param results what the parameters are in the end, unless null
    std::optional<std::int64_t> callProcedure(Plan& procedure, std::vector<VariableValue> arguments,
                                              std::vector<VariableValue>* results);

    /// The default value of a procedure's parameter. \throws AdoError 201 when it has none
    Stored defaultOf(Plan& procedure, std::size_t parameter);

    ado::StatementResult takeResult() { return std::move(result_); }

private:
    enum class Flow { Next, Break, Continue, Return };

    Flow runAll(const std::vector<tsql::Statement>& statements, Activation& activation);
    Flow runOne(const tsql::Statement& statement, Activation& activation);
    Flow dispatch(const tsql::Statement& statement, Activation& activation);
    Flow loop(const tsql::WhileStatement& statement, Activation& activation);

    // Bound statements
    Compiled& compiled(const void* node, Activation& activation,
                       const std::function<TranslatedStatement()>& translate);
    Compiled& compiledStatement(const tsql::Statement& statement, Activation& activation);
    bool isCurrent(Compiled& entry);
    /// False when running the program again may build more.
    bool buildIndexes(const Program& program);
    void prepare(Compiled& entry);
    void bindSlots(SqliteStatement& statement, const std::vector<Slot>& slots, Activation& activation);
    void runStatement(const tsql::Statement& statement, Activation& activation);
    /// False when another program has changed the schema under the binding: nothing was done then.
    bool runProgram(Compiled& entry, Activation& activation);
    bool isOutdated(Compiled& entry);
    void readRows(Compiled& entry, bool hasRow);
    void assignVariables(Compiled& entry, bool hasRow, Activation& activation);
    void runChange(Compiled& entry);
    /// False when the rows that differ are not known, or too scattered: nothing was done then.
    bool writeBackDiffering(Compiled& entry, const WriteBack& writeBack);
    void runKeyUpdate(Compiled& entry, Activation& activation);
    void runInto(Compiled& entry, Activation& activation);
    void counted(std::int64_t rows);
    Stored evaluate(const tsql::Expression& expression, const SqlType* type, Activation& activation);
    bool holds(const tsql::Expression& condition, Activation& activation);

    // Definitions
    void define(const tsql::CreateTable& statement, Activation& activation);
    void define(const tsql::AlterTableAdd& statement, Activation& activation);
    void define(const tsql::CreateIndex& statement);
    void define(const tsql::DropStatement& statement);
    void define(const tsql::TruncateTable& statement);
    void define(const tsql::SetIdentityInsert& statement);
    void defineRoutine(const tsql::Statement& statement, Activation& activation);
    void dropOne(const tsql::DropStatement& statement, const tsql::DropTarget& target);
    void noteWorkingTable(const Table& table);

    // Session statements
    void set(const tsql::SetOption& statement);
    void transact(const tsql::TransactionStatement& statement);
    void declare(const tsql::DeclareStatement& statement, Activation& activation);
    void assign(const tsql::SetVariable& statement, Activation& activation);
    void execute(const tsql::ExecuteStatement& statement, Activation& activation);
    void raiseMessage(const tsql::RaiseErrorStatement& statement, Activation& activation);
    [[noreturn]] void raise(const tsql::ThrowStatement& statement, Activation& activation);
    std::string textOf(const tsql::Expression& expression, Activation& activation);

    SessionState& session_;
    bool wantsRows_;
    ado::StatementResult result_;
};

} // namespace veldran::embedded
