#include "adapters/embedded/file.h"

#include "adapters/embedded/catalogue.h"
#include "adapters/embedded/errors.h"

#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>

namespace veldran::embedded {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view sqliteMagic{"SQLite format 3\0", 16};

[[noreturn]] void refuseForeign(const std::string& path) {
    fail(5171, "08001", "Il file '" + path + "' non è un database VELDRAN.");
}

// Looks at the first bytes before SQLite does: SQLite would take an empty file for a new database.
void checkBeginning(const std::string& path) {
    std::error_code problem;
    const fs::file_status status = fs::status(path, problem);
    if (!fs::exists(status)) {
        fail(5120, "08001", "Il file di database '" + path + "' non esiste.");
    }
    if (!fs::is_regular_file(status)) {
        refuseForeign(path);
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        fail(5120, "08001", "Impossibile leggere il file di database '" + path + "'.");
    }
    std::array<char, sqliteMagic.size()> beginning{};
    file.read(beginning.data(), beginning.size());
    if (!file || std::string_view(beginning.data(), beginning.size()) != sqliteMagic) {
        refuseForeign(path);
    }
}

void configure(SqliteDatabase& database, int lockTimeout) {
    sqlite3_busy_timeout(database.handle(), lockTimeout);
    // A misspelt name must be an error, never a text.
    sqlite3_db_config(database.handle(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(database.handle(), SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    database.execute("PRAGMA temp_store = MEMORY; PRAGMA cache_size = -65536; PRAGMA cell_size_check = ON;");
    // Working tables live in memory: nothing is gained by overwriting what they leave.
    database.execute("PRAGMA temp.secure_delete = OFF;");
    // A commit that was reported is on the disk, whatever happens next.
    database.execute("PRAGMA synchronous = FULL;");
}

void checkIdentity(SqliteDatabase& database) {
    if (database.integer("PRAGMA application_id") != fileApplicationId) {
        refuseForeign(database.path());
    }
    const std::int64_t version = database.integer("PRAGMA user_version");
    if (version != fileVersion) {
        fail(948, "08001",
             "Il file '" + database.path() + "' ha la versione " + std::to_string(version) +
                 ", mentre è richiesta la " + std::to_string(fileVersion) + ".");
    }
}

void fillNewFile(const std::string& path) {
    SqliteDatabase database(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    database.execute("PRAGMA page_size = 4096; PRAGMA synchronous = FULL;");
    database.execute("BEGIN; PRAGMA application_id = " + std::to_string(fileApplicationId) +
                     "; PRAGMA user_version = " + std::to_string(fileVersion) + ";");
    createCatalogueTables(database, "main");
    database.execute("COMMIT; PRAGMA journal_mode = WAL;");
}

} // namespace

void createDatabase(const std::string& path) {
    std::error_code problem;
    if (fs::exists(path, problem)) {
        fail(1801, "42000", "Il database '" + path + "' esiste già.");
    }
    // Made aside and then given its name, which fails if another program was faster.
    const std::string aside = path + ".nuovo-" + std::to_string(::getpid());
    fs::remove(aside, problem);
    try {
        fillNewFile(aside);
        fs::create_hard_link(aside, path);
    } catch (const fs::filesystem_error& error) {
        fs::remove(aside, problem);
        if (error.code() == std::errc::file_exists) {
            fail(1801, "42000", "Il database '" + path + "' esiste già.");
        }
        fail(5123, "42000", "Impossibile creare il database '" + path + "': " + error.code().message() + ".");
    } catch (const ado::AdoError&) {
        fs::remove(aside, problem);
        fail(5123, "42000", "Impossibile creare il database '" + path + "'.");
    }
    fs::remove(aside, problem);
}

std::unique_ptr<SqliteDatabase> openDatabase(const ConnectionSettings& settings) {
    std::error_code problem;
    if (settings.create && !fs::exists(settings.path, problem)) {
        try {
            createDatabase(settings.path);
        } catch (const ado::AdoError& error) {
            if (error.first().Number != 1801) {
                throw;
            }
        }
    }
    checkBeginning(settings.path);
    // A session is used by one thread at a time, as ADO's connections are: SQLite need not guard each call.
    auto database =
        std::make_unique<SqliteDatabase>(settings.path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX);
    configure(*database, settings.lockTimeout);
    checkIdentity(*database);
    return database;
}

} // namespace veldran::embedded
