#include "adapters/embedded/session_state.h"

#include "adapters/embedded/collation.h"
#include "adapters/embedded/errors.h"
#include "platform/text.h"

#include <algorithm>

namespace veldran::embedded {

namespace {

constexpr int instructionsBetweenLooks = 20000;

int lookAtClock(void* session) {
    return static_cast<SessionState*>(session)->isLate() ? 1 : 0;
}

} // namespace

SessionState::SessionState(std::unique_ptr<SqliteDatabase> database)
    : database_(std::move(database)), catalogue_(*database_) {
    database_->functions().objects = &catalogue_;
}

SessionState::~SessionState() {
    database_->functions().objects = nullptr;
}

void SessionState::forgetTables() {
    catalogue_.forget();
    rowCopies_.forgetAll();
}

// SQLite rolls the whole transaction back by itself when the disk is full or a write was interrupted.
int SessionState::transactionCount() {
    if (transactions_ > 0 && !database_->inTransaction()) {
        transactions_ = 0;
        savepoints_.clear();
        forgetTables();
    }
    return transactions_;
}

void SessionState::begin() {
    if (transactionCount() == 0) {
        // The write lock is taken here, where waiting for it is safe: a reader that turns writer could never
        // wait.
        database_->repeat("BEGIN IMMEDIATE");
    }
    ++transactions_;
}

void SessionState::commit() {
    if (transactionCount() == 0) {
        fail(3902, "25000", "La richiesta COMMIT TRANSACTION non ha una BEGIN TRANSACTION corrispondente.");
    }
    if (transactions_ == 1) {
        database_->repeat("COMMIT");
        savepoints_.clear();
    }
    --transactions_;
}

void SessionState::rollback() {
    if (transactionCount() == 0) {
        fail(3903, "25000", "La richiesta ROLLBACK TRANSACTION non ha una BEGIN TRANSACTION corrispondente.");
    }
    transactions_ = 0;
    savepoints_.clear();
    forgetTables();
    database_->repeat("ROLLBACK");
}

void SessionState::savepoint(const std::string& name) {
    if (transactionCount() == 0) {
        fail(628, "25000", "SAVE TRANSACTION è ammesso solo in una transazione attiva.");
    }
    database_->execute("SAVEPOINT " + quoteName("save " + name));
    savepoints_.push_back(name);
}

void SessionState::rollbackTo(const std::string& name) {
    const auto found = std::find_if(savepoints_.rbegin(), savepoints_.rend(), [&](const std::string& other) {
        return equalsIgnoringAsciiCase(other, name);
    });
    if (found == savepoints_.rend()) {
        return rollback();
    }
    forgetTables();
    database_->execute("ROLLBACK TO " + quoteName("save " + name));
}

void SessionState::startClock(int seconds) {
    if (seconds > 0) {
        deadline_ = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
        sqlite3_progress_handler(database_->handle(), instructionsBetweenLooks, &lookAtClock, this);
    }
}

void SessionState::stopClock() {
    if (deadline_) {
        deadline_.reset();
        sqlite3_progress_handler(database_->handle(), 0, nullptr, nullptr);
    }
}

void SessionState::checkClock() {
    if (isLate()) {
        fail(-2, "HYT00", "Timeout scaduto prima del completamento dell'operazione.");
    }
}

void SessionState::setLockTimeout(int milliseconds) {
    sqlite3_busy_timeout(database_->handle(), milliseconds);
}

std::shared_ptr<Plan> SessionState::planOf(const std::shared_ptr<const Routine>& routine) {
    std::shared_ptr<Plan>& plan = procedures_[routine->name];
    if (!plan || plan->routine != routine) {
        auto fresh = std::make_shared<Plan>();
        fresh->text = routine->text;
        fresh->routine = routine;
        for (const tsql::RoutineParameter& parameter : routine->procedure().parameters) {
            fresh->parameters.push_back({toUpper(parameter.name), resolveType(parameter.type)});
        }
        plan = std::move(fresh);
    }
    return plan;
}

void SessionState::endScopedTables() {
    for (std::size_t i = scopedTables.size(); i-- > 0;) {
        if (scopedTables[i].nesting < nesting) {
            continue;
        }
        const tsql::QualifiedName name{{}, {scopedTables[i].name}};
        scopedTables.erase(scopedTables.begin() + static_cast<std::ptrdiff_t>(i));
        if (const auto table = catalogue_.findTable(name)) {
            rowCopies_.forget(table->name);
            catalogue_.dropTable(*table);
        }
    }
}

AtomicScope::AtomicScope(SessionState& session, bool writesFile)
    : session_(session), nested_(session.database().inTransaction()) {
    session_.database().repeat(nested_      ? "SAVEPOINT \"veldran statement\""
                               : writesFile ? "BEGIN IMMEDIATE"
                                            : "BEGIN");
}

AtomicScope::~AtomicScope() {
    if (done_) {
        return;
    }
    session_.forgetTables();
    try {
        if (!nested_) {
            if (session_.database().inTransaction()) {
                session_.database().repeat("ROLLBACK");
            }
        } else if (session_.database().inTransaction()) {
            session_.database().repeat("ROLLBACK TO \"veldran statement\"");
            session_.database().repeat("RELEASE \"veldran statement\"");
        }
    } catch (const ado::AdoError&) {
        // The error that led here is on its way; SQLite has undone the work or will when the session ends.
        return;
    }
}

void AtomicScope::complete() {
    session_.database().repeat(nested_ ? "RELEASE \"veldran statement\"" : "COMMIT");
    done_ = true;
}

} // namespace veldran::embedded
