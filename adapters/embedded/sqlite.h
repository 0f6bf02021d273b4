#pragma once

#include "adapters/embedded/types.h"
#include "platform/ado/errors.h"

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Thin owners of SQLite's handles. Failures leave as AdoError.
namespace veldran::embedded {

class ObjectResolver;

/// What the functions registered with a database share with their caller.
struct FunctionState {
    /// The refusal behind SQLite's generic "a function failed", set just before it.
    std::optional<ado::Error> error;
    /// Rows that ts_changed was asked about, whatever it said.
    std::int64_t comparedRows = 0;
    /// Answers for the catalogue; set by the session that owns the database.
    ObjectResolver* objects = nullptr;
};

/// What stands behind a uniqueness that was violated.
struct UniqueRule {
    enum class Kind {
        PrimaryKey,
        UniqueKey,
        Index,
        RowNumber ///< an identity column without a key: SQLite's row number cannot be there twice
    };
    Kind kind = Kind::PrimaryKey;
    std::string name;
};

/// Knows the objects of the catalogue where SQLite knows only its own.
class ObjectResolver {
public:
    virtual ~ObjectResolver() = default;
    /// The number of an object by a name such as "TEMPDB.DBO.#T". `type` is OBJECT_ID's second argument ("U",
    /// "P", "FN", "IF"); empty for any.
    virtual std::optional<std::int64_t> objectId(std::string_view name, std::string_view type) = 0;
    /// The key or unique index of a table on just these columns.
    virtual std::optional<UniqueRule> uniqueRule(std::string_view table,
                                                 const std::vector<std::string>& columns) = 0;
};

class SqliteDatabase;

class SqliteStatement {
public:
    SqliteStatement() = default;
    SqliteStatement(SqliteDatabase& database, std::string_view sql);
    ~SqliteStatement() { sqlite3_finalize(handle_); }
    SqliteStatement(SqliteStatement&& other) noexcept;
    SqliteStatement& operator=(SqliteStatement&& other) noexcept;

    explicit operator bool() const { return handle_ != nullptr; }
    sqlite3_stmt* handle() const { return handle_; }

    /// Markers are numbered from 1.
    void bind(int index, const Stored& value);
    void bind(int index, std::string_view text);
    void bind(int index, std::int64_t value);
    /// True while there is a row. \throws AdoError; the statement is reset then.
    bool step();
    void reset() { sqlite3_reset(handle_); }
    /// Runs a statement that yields no rows, and resets it.
    void run();

    bool isNull(int column) const { return sqlite3_column_type(handle_, column) == SQLITE_NULL; }
    std::int64_t integer(int column) const { return sqlite3_column_int64(handle_, column); }
    std::string_view text(int column) const;
    Stored stored(int column) const;
    /// How often SQLite had to plan the statement again because the schema had changed.
    int replanned() const { return sqlite3_stmt_status(handle_, SQLITE_STMTSTATUS_REPREPARE, 0); }

private:
    SqliteDatabase* database_ = nullptr;
    sqlite3_stmt* handle_ = nullptr;
};

class SqliteDatabase {
public:
    /// \throws AdoError when SQLite cannot open the file; `flags` are those of sqlite3_open_v2.
    SqliteDatabase(const std::string& path, int flags);
    ~SqliteDatabase();
    SqliteDatabase(const SqliteDatabase&) = delete;
    SqliteDatabase& operator=(const SqliteDatabase&) = delete;

    sqlite3* handle() const { return handle_; }
    FunctionState& functions() { return *functions_; }
    const std::string& path() const { return path_; }

    void execute(const std::string& sql);
    /// One statement that yields no rows and comes again and again: it stays prepared.
    void repeat(std::string_view sql);
    /// The first column of the first row of a query without parameters; 0 when there is no row.
    std::int64_t integer(const std::string& sql);
    SqliteStatement prepare(std::string_view sql);

    bool inTransaction() const { return sqlite3_get_autocommit(handle_) == 0; }
    /// Throws what `code`, just returned by a call on this database, stands for.
    [[noreturn]] void failWith(int code);

private:
    std::string path_;
    sqlite3* handle_ = nullptr;
    std::unique_ptr<FunctionState> functions_;
    std::map<std::string, SqliteStatement, std::less<>> repeated_; ///< by their texts
};

/// Resets a statement on every way out, so that its locks do not outlive the reading.
class ResetGuard {
public:
    explicit ResetGuard(SqliteStatement& statement) : statement_(statement) {}
    ~ResetGuard() { statement_.reset(); }
    ResetGuard(const ResetGuard&) = delete;
    ResetGuard& operator=(const ResetGuard&) = delete;

private:
    SqliteStatement& statement_;
};

/// "name" with the quotes SQLite needs.
std::string quoteName(std::string_view name);
/// 'text' with the quotes SQLite needs.
std::string quoteText(std::string_view text);

} // namespace veldran::embedded
