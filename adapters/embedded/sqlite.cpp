#include "adapters/embedded/sqlite.h"

#include "adapters/embedded/constraint_errors.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/functions.h"

#include <utility>

namespace veldran::embedded {

namespace {

ado::Error errorOf(int code, const std::string& message, const std::string& path, ObjectResolver* objects) {
    const auto technical = [&](int number, const std::string& sentence) {
        return makeError(number, "HY000", sentence + " (" + path + "): " + message);
    };
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return makeError(errorLockTimeout, "HYT00",
                         "È stato superato il tempo di attesa per la richiesta di blocco: il database " +
                             path + " è in uso da un altro programma.");
    case SQLITE_CONSTRAINT:
        return constraintError(code, message, objects);
    case SQLITE_FULL:
        return technical(1105, "Spazio insufficiente per il database");
    case SQLITE_IOERR:
        return technical(823, "Errore di lettura o scrittura del database");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return technical(824, "Il database è danneggiato");
    case SQLITE_READONLY:
        return technical(3906, "Il database è di sola lettura");
    case SQLITE_CANTOPEN:
        return technical(5120, "Impossibile aprire il database");
    case SQLITE_NOMEM:
        return technical(701, "Memoria insufficiente per il database");
    case SQLITE_INTERRUPT:
        return makeError(-2, "HYT00", "Timeout scaduto prima del completamento dell'operazione.");
    default:
        break;
    }
    if (message == "integer overflow") {
        return makeError(errorOverflow, "22003", overflowText("bigint"));
    }
    return technical(errorInternal, "Errore interno del database incorporato");
}

// Between quotes, which are doubled where the text has them.
std::string enclosed(std::string_view text, char quote) {
    std::string result;
    result.reserve(text.size() + 2);
    result += quote;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t next = text.find(quote, at);
        const std::size_t end = next == std::string_view::npos ? text.size() : next + 1;
        result.append(text, at, end - at);
        if (next != std::string_view::npos) {
            result += quote;
        }
        at = end;
    }
    result += quote;
    return result;
}

// What SQLite is told to leave undone, because 3.40 gives wrong answers with it; the numbers are in none of
// its public headers. A Bloom filter takes texts of other lengths for other texts, but for the collation they
// may differ in the blanks at their end. A weighed index of which a few entries are passed over, instead of
// sought one by one, leads MAX to the least of the values in a list.
constexpr int bloomFilters = 0x00080000;
constexpr int seekScans = 0x00020000;

} // namespace

SqliteDatabase::SqliteDatabase(const std::string& path, int flags)
    : path_(path), functions_(std::make_unique<FunctionState>()) {
    const int code = sqlite3_open_v2(path.c_str(), &handle_, flags | SQLITE_OPEN_EXRESCODE, nullptr);
    if (code != SQLITE_OK) {
        const ado::Error error = errorOf(code, sqlite3_errmsg(handle_), path_, nullptr);
        sqlite3_close_v2(handle_);
        throw ado::AdoError(error);
    }
    registerFunctions(handle_, *functions_);
    sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, handle_, bloomFilters | seekScans);
}

SqliteDatabase::~SqliteDatabase() {
    repeated_.clear();
    sqlite3_close_v2(handle_);
}

void SqliteDatabase::execute(const std::string& sql) {
    const int code = sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        failWith(code);
    }
}

void SqliteDatabase::repeat(std::string_view sql) {
    auto kept = repeated_.find(sql);
    if (kept == repeated_.end()) {
        kept = repeated_.emplace(sql, prepare(sql)).first;
    }
    kept->second.run();
}

std::int64_t SqliteDatabase::integer(const std::string& sql) {
    SqliteStatement statement(*this, sql);
    return statement.step() ? statement.integer(0) : 0;
}

SqliteStatement SqliteDatabase::prepare(std::string_view sql) {
    return {*this, sql};
}

void SqliteDatabase::failWith(int code) {
    if (functions_->error) {
        ado::Error error = std::move(*functions_->error);
        functions_->error.reset();
        throw ado::AdoError(std::move(error));
    }
    throw ado::AdoError(errorOf(code, sqlite3_errmsg(handle_), path_, functions_->objects));
}

SqliteStatement::SqliteStatement(SqliteDatabase& database, std::string_view sql) : database_(&database) {
    const int code = sqlite3_prepare_v3(database.handle(), sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &handle_, nullptr);
    if (code != SQLITE_OK) {
        database.failWith(code);
    }
}

SqliteStatement::SqliteStatement(SqliteStatement&& other) noexcept
    : database_(other.database_), handle_(std::exchange(other.handle_, nullptr)) {}

SqliteStatement& SqliteStatement::operator=(SqliteStatement&& other) noexcept {
    if (this != &other) {
        sqlite3_finalize(handle_);
        database_ = other.database_;
        handle_ = std::exchange(other.handle_, nullptr);
    }
    return *this;
}

void SqliteStatement::bind(int index, const Stored& value) {
    int code = SQLITE_OK;
    if (const auto* text = std::get_if<std::string>(&value)) {
        return bind(index, std::string_view(*text));
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        code = sqlite3_bind_int64(handle_, index, *integer);
    } else if (const auto* number = std::get_if<double>(&value)) {
        code = sqlite3_bind_double(handle_, index, *number);
    } else {
        code = sqlite3_bind_null(handle_, index);
    }
    if (code != SQLITE_OK) {
        database_->failWith(code);
    }
}

void SqliteStatement::bind(int index, std::string_view text) {
    const int code = sqlite3_bind_text64(handle_, index, text.data() == nullptr ? "" : text.data(),
                                         text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    if (code != SQLITE_OK) {
        database_->failWith(code);
    }
}

void SqliteStatement::bind(int index, std::int64_t value) {
    const int code = sqlite3_bind_int64(handle_, index, value);
    if (code != SQLITE_OK) {
        database_->failWith(code);
    }
}

bool SqliteStatement::step() {
    const int code = sqlite3_step(handle_);
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code == SQLITE_DONE) {
        return false;
    }
    // The message is read before the reset, which would overwrite nothing but the code.
    try {
        database_->failWith(code);
    } catch (...) {
        reset();
        throw;
    }
}

void SqliteStatement::run() {
    while (step()) {
    }
    reset();
}

std::string_view SqliteStatement::text(int column) const {
    const auto* bytes = sqlite3_column_text(handle_, column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(handle_, column));
    return bytes == nullptr ? std::string_view()
                            : std::string_view(reinterpret_cast<const char*>(bytes), size);
}

Stored SqliteStatement::stored(int column) const {
    switch (sqlite3_column_type(handle_, column)) {
    case SQLITE_NULL:
        return std::monostate{};
    case SQLITE_INTEGER:
        return integer(column);
    case SQLITE_FLOAT:
        return sqlite3_column_double(handle_, column);
    default:
        return std::string(text(column));
    }
}

std::string quoteName(std::string_view name) {
    return enclosed(name, '"');
}

std::string quoteText(std::string_view text) {
    return enclosed(text, '\'');
}

} // namespace veldran::embedded
