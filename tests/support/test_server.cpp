#include "tests/support/test_server.h"

#include "adapters/embedded/script.h"
#include "tests/support/server_address.h"
#include "tests/support/source_file.h"

#include <unistd.h>

#include <optional>
#include <stdexcept>
#include <utility>

namespace veldran::test {

namespace {

constexpr const char* tables[] = {"CI15_CORRCONTICOGE", "CI35_CONTIATTIVI", "CI11_CONTROLLOCONTI",
                                  "CI03_CAUSALI",       "CG18_DITTE",       "PC03_ANAGPDC",
                                  "PC01_PDC",           "CG24_TABPDC",      "CG10_DESPDC"};

constexpr const char* procedures[] = {"SPCI_INTERMEDIFIGLI", "SPCI_VELDRANACT"};
constexpr const char* functions[] = {"FNCI_COGE_GETCODEHEADER", "FNCI03_CAUSALI", "FNPC03_ANAGPDC_COAN"};

struct Choice {
    std::string connectionString;
    std::shared_ptr<ado::Driver> driver;
};

/// Of this process.
std::optional<Choice>& choice() {
    static std::optional<Choice> made;
    return made;
}

void run(ado::Session& session, const std::string& batch) {
    session.execute(batch, {}, {.commandTimeout = 60, .wantsRows = false});
}

} // namespace

void TestServer::choose(std::string connectionString, std::shared_ptr<ado::Driver> driver) {
    choice() = {std::move(connectionString), std::move(driver)};
}

TestServer* TestServer::chosen() {
    if (!choice()) {
        return nullptr;
    }
    static TestServer server(choice()->connectionString, choice()->driver);
    return &server;
}

TestServer::TestServer(const std::string& connectionString, std::shared_ptr<ado::Driver> driver)
    : direct_(connectionString), network_(ServerAddress(direct_).host(), ServerAddress(direct_).port()),
      throughNetwork_(ServerAddress(direct_).at("127.0.0.1", network_.port())), driver_(std::move(driver)) {
    makeObjects();
}

std::unique_ptr<ado::Session> TestServer::newSession() const {
    auto session = driver_->open(direct_, {}, {});
    run(*session, "SET LOCK_TIMEOUT 5000"); // a lock that a test forgot is an error, not a halt
    return session;
}

ado::Session& TestServer::session() {
    if (sessionOwner_ != ::getpid()) {
        (void)session_.release(); // the parent's, which it goes on using
        session_ = newSession();
        sessionOwner_ = ::getpid();
    }
    return *session_;
}

void TestServer::removeObjects() {
    const auto remove = [this](const char* kind, const char* name) {
        run(session(), std::string("IF OBJECT_ID('") + name + "') IS NOT NULL DROP " + kind + " " + name);
    };
    for (const char* procedure : procedures) {
        remove("PROCEDURE", procedure);
    }
    for (const char* function : functions) {
        remove("FUNCTION", function);
    }
    for (const char* table : tables) {
        remove("TABLE", table);
    }
}

/// The objects are those of the scripts as they stand now: what another version of them left is replaced.
void TestServer::makeObjects() {
    ado::Session& session = this->session();
    removeObjects();
    for (const char* script : {"database/schema.sql", "database/routines.sql"}) {
        embedded::runScript(session, sourceFile(script));
    }
}

TestServer::Occupation::Occupation(TestServer& server, Objects objects) : server_(server) {
    if (server_.occupied_) {
        throw std::logic_error("two test databases at once on one server");
    }
    server_.network_.refuse(false);
    server_.network_.cut();
    if (objects == Objects::Missing) {
        server_.removeObjects();
    } else if (server_.sparse_) {
        server_.makeObjects();
    } else {
        std::string batch;
        for (const char* table : tables) {
            batch += std::string("DELETE FROM ") + table + "\r\n";
        }
        run(server_.session(), batch);
    }
    server_.sparse_ = objects == Objects::Missing;
    server_.occupied_ = true;
}

bool isNumbered(const ado::Error& error, int number) {
    constexpr int unmapped = 33557097;
    return error.Number == number || (TestServer::chosen() != nullptr && error.Number == unmapped);
}

} // namespace veldran::test
