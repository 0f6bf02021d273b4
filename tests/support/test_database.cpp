#include "tests/support/test_database.h"

#include "adapters/embedded/driver.h"
#include "adapters/embedded/file.h"
#include "adapters/embedded/script.h"
#include "tests/support/source_file.h"

#include <unistd.h>

#include <atomic>
#include <stdexcept>

namespace veldran::test {

namespace {

/// A test that meets a locked database does so on purpose, and should not wait long.
std::string connectionStringOf(const std::filesystem::path& file) {
    return "Provider=VeldranEmbedded;Data Source=" + file.string() + ";Lock Timeout=300";
}

/// Fewer and longer batches, for a server that is asked over a network.
std::vector<std::string> joined(const std::vector<std::string>& statements) {
    constexpr std::size_t together = 100;
    std::vector<std::string> batches;
    for (std::size_t i = 0; i < statements.size(); ++i) {
        if (i % together == 0) {
            batches.emplace_back();
        }
        batches.back() += statements[i] + "\r\n";
    }
    return batches;
}

/// A database with tables and routines and no rows, made once for the test program and copied for each test.
class Template {
public:
    static const std::filesystem::path& file() {
        static const Template made;
        return made.file_;
    }

private:
    Template() : file_(directory_.path() / "template.vdb") {
        embedded::createDatabase(file_.string());
        const auto session =
            std::make_shared<embedded::EmbeddedDriver>()->open(connectionStringOf(file_), {}, {});
        for (const char* script : {"database/schema.sql", "database/routines.sql"}) {
            embedded::runScript(*session, sourceFile(script));
        }
    }

    TemporaryDirectory directory_;
    std::filesystem::path file_;
};

} // namespace

TemporaryDirectory::TemporaryDirectory() {
    static std::atomic<int> number{0};
    // A program that was killed has left its directories behind, and its number may come again.
    do {
        path_ = std::filesystem::temp_directory_path() /
                ("veldran-test-" + std::to_string(getpid()) + "-" + std::to_string(++number));
    } while (!std::filesystem::create_directory(path_));
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored; // a directory that cannot be removed is no failure of the test
    std::filesystem::remove_all(path_, ignored);
}

TestDatabase::TestDatabase(TestServer::Objects objects)
    : server_(TestServer::chosen()),
      occupation_(server_ != nullptr ? std::make_unique<TestServer::Occupation>(*server_, objects) : nullptr),
      connectionString_(server_ != nullptr ? server_->connectionString()
                                           : connectionStringOf(directory_.path() / "company.vdb")),
      real_(server_ != nullptr ? server_->driver() : std::make_shared<embedded::EmbeddedDriver>()),
      driver_(std::make_shared<CountingDriver>(real_)) {
    if (server_ != nullptr) {
        return;
    }
    const std::filesystem::path file = directory_.path() / "company.vdb";
    if (objects == TestServer::Objects::Made) {
        std::filesystem::copy_file(Template::file(), file);
    } else {
        embedded::createDatabase(file.string());
    }
}

TestDatabase::TestDatabase(const Chart& chart) : TestDatabase(TestServer::Objects::Made) {
    run(chart.statements());
}

TestDatabase::TestDatabase(WithoutObjects /*tag*/) : TestDatabase(TestServer::Objects::Missing) {}

template<class Work>
void TestDatabase::inSession(Work work) const {
    if (server_ != nullptr) {
        work(server_->session());
    } else {
        work(*real_->open(connectionString_, {}, {}));
    }
}

std::vector<std::vector<std::string>> TestDatabase::rows(const std::string& select) const {
    std::vector<std::vector<std::string>> all;
    inSession([&](ado::Session& session) {
        const auto result = session.execute(select, {}, {});
        if (!result.rows) {
            throw std::invalid_argument("not a query: " + select);
        }
        all = asText(*result.rows);
    });
    return all;
}

void TestDatabase::run(const std::vector<std::string>& statements) const {
    inSession([&](ado::Session& session) {
        session.begin();
        try {
            for (const std::string& batch : server_ != nullptr ? joined(statements) : statements) {
                session.execute(batch, {}, {});
            }
            session.commit();
        } catch (...) {
            session.rollback();
            throw;
        }
    });
}

std::string asText(const Value& value) {
    if (value.isNull()) {
        return "NULL";
    }
    if (const bool* flag = value.asBool()) {
        return *flag ? "1" : "0";
    }
    return nullSafeText(value);
}

std::vector<std::vector<std::string>> asText(const ado::RowSet& rows) {
    std::vector<std::vector<std::string>> all;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        std::vector<std::string>& texts = all.emplace_back();
        for (std::size_t column = 0; column < rows.columns().size(); ++column) {
            texts.push_back(asText(rows.cell(row, column)));
        }
    }
    return all;
}

} // namespace veldran::test
