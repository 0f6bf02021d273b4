#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

/// SQLite's own interface with no more around it than errors and ends of life need.
namespace veldran::bench {

class Statement {
public:
    Statement(sqlite3* database, const std::string& sql) : database_(database) {
        check(sqlite3_prepare_v2(database, sql.c_str(), -1, &handle_, nullptr));
    }
    ~Statement() { sqlite3_finalize(handle_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// The text must live until the statement has run.
    void bind(int place, std::string_view text) {
        check(sqlite3_bind_text(handle_, place, text.data(), static_cast<int>(text.size()), SQLITE_STATIC));
    }
    void bind(int place, std::int64_t value) { check(sqlite3_bind_int64(handle_, place, value)); }
    void bindNull(int place) { check(sqlite3_bind_null(handle_, place)); }
    bool step() {
        const int code = sqlite3_step(handle_);
        if (code != SQLITE_ROW && code != SQLITE_DONE) {
            check(code);
        }
        return code == SQLITE_ROW;
    }
    void run() {
        while (step()) {
        }
        sqlite3_reset(handle_);
    }
    void reset() { sqlite3_reset(handle_); }
    int parameters() const { return sqlite3_bind_parameter_count(handle_); }
    std::int64_t number(int column) const { return sqlite3_column_int64(handle_, column); }
    std::string_view text(int column) const {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(handle_, column));
        return bytes == nullptr
                   ? std::string_view()
                   : std::string_view(bytes, static_cast<std::size_t>(sqlite3_column_bytes(handle_, column)));
    }

private:
    void check(int code) const {
        if (code != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(database_));
        }
    }
    sqlite3* database_;
    sqlite3_stmt* handle_ = nullptr;
};

/// Resets a statement when its use ends, so that no lock outlives it.
class StatementUse {
public:
    explicit StatementUse(Statement& statement) : statement_(statement) {}
    ~StatementUse() { statement_.reset(); }
    StatementUse(const StatementUse&) = delete;
    StatementUse& operator=(const StatementUse&) = delete;

private:
    Statement& statement_;
};

class Database {
public:
    explicit Database(const std::string& path) {
        if (sqlite3_open_v2(path.c_str(), &handle_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) !=
            SQLITE_OK) {
            throw std::runtime_error("cannot open " + path);
        }
        // Account codes are digits, whose bytes already have the order of the file's collation.
        sqlite3_create_collation(handle_, "TSQL", SQLITE_UTF8, nullptr, &byBytes);
    }
    ~Database() { sqlite3_close_v2(handle_); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    sqlite3* handle() const { return handle_; }
    void execute(const std::string& sql) {
        if (sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(handle_) + (" in: " + sql));
        }
    }
    std::int64_t number(const std::string& sql) {
        Statement statement(handle_, sql);
        return statement.step() ? statement.number(0) : 0;
    }
    std::string text(const std::string& sql) {
        Statement statement(handle_, sql);
        return statement.step() ? std::string(statement.text(0)) : std::string();
    }

private:
    static int byBytes(void*, int sizeA, const void* a, int sizeB, const void* b) {
        const int order = std::memcmp(a, b, static_cast<std::size_t>(sizeA < sizeB ? sizeA : sizeB));
        return order != 0 ? order : sizeA - sizeB;
    }
    sqlite3* handle_ = nullptr;
};

} // namespace veldran::bench
