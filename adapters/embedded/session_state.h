#pragma once

#include "adapters/embedded/catalogue.h"
#include "adapters/embedded/plan.h"
#include "adapters/embedded/row_copies.h"
#include "adapters/embedded/sqlite.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace veldran::embedded {

/// What lives as long as a session: the database, the catalogue, the transaction and the settings.
class SessionState {
public:
    explicit SessionState(std::unique_ptr<SqliteDatabase> database);
    ~SessionState();
    SessionState(const SessionState&) = delete;
    SessionState& operator=(const SessionState&) = delete;

    SqliteDatabase& database() { return *database_; }
    Catalogue& catalogue() { return catalogue_; }
    RowCopies& rowCopies() { return rowCopies_; }
    /// Forgets what is remembered of the tables: after something was taken back.
    void forgetTables();

    void begin();
    void commit();
    void rollback();
    void savepoint(const std::string& name);
    void rollbackTo(const std::string& name);
    int transactionCount();

    /// Ends a running statement with an error after so many seconds; 0 lets it run.
    void startClock(int seconds);
    void stopClock();
    bool isLate() const { return deadline_ && std::chrono::steady_clock::now() > *deadline_; }
    /// \throws AdoError when the time is over
    void checkClock();

    void setLockTimeout(int milliseconds);

    /// What has been bound of a procedure so far.
    std::shared_ptr<Plan> planOf(const std::shared_ptr<const Routine>& routine);
    PlanCache& texts() { return texts_; }
    /// Drops the working tables of procedures that have ended.
    void endScopedTables();

    std::string identityInsert; ///< the table with IDENTITY_INSERT ON
    std::int64_t rowCount = 0;  ///< @@ROWCOUNT
    std::optional<std::int64_t> lastIdentity;
    int lastError = 0; ///< @@ERROR
    bool noCount = false;
    bool abortsTransaction = false; ///< SET XACT_ABORT ON
    int nesting = 0;                ///< procedures running inside each other

    struct ScopedTable {
        std::string name;
        int nesting;
    };
    std::vector<ScopedTable> scopedTables; ///< working tables that end with the procedure that made them

private:
    std::unique_ptr<SqliteDatabase> database_;
    Catalogue catalogue_;
    RowCopies rowCopies_;
    PlanCache texts_;
    std::map<std::string, std::shared_ptr<Plan>> procedures_; // shared with the calls that are running
    int transactions_ = 0;
    std::vector<std::string> savepoints_;
    std::optional<std::chrono::steady_clock::time_point> deadline_;
};

/// Makes several SQLite statements one: all of them count, or none after its destruction without `complete`.
class AtomicScope {
public:
    /// `writesFile` takes the write lock at once, so that what is read under it stays true.
    AtomicScope(SessionState& session, bool writesFile);
    ~AtomicScope();
    AtomicScope(const AtomicScope&) = delete;
    AtomicScope& operator=(const AtomicScope&) = delete;
    void complete();

private:
    SessionState& session_;
    bool nested_;
    bool done_ = false;
};

} // namespace veldran::embedded
