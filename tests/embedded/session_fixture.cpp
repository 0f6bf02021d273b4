#include "tests/embedded/session_fixture.h"

#include "adapters/embedded/driver.h"
#include "adapters/embedded/file.h"

#include <unistd.h>

#include <atomic>
#include <fstream>
#include <sstream>

namespace veldran::embedded::test {

std::string asText(const Value& value) {
    if (value.isNull()) {
        return "NULL";
    }
    if (const bool* flag = value.asBool()) {
        return *flag ? "1" : "0";
    }
    return value.toText();
}

Rows asText(const ado::RowSet& rows) {
    Rows result;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        result.emplace_back();
        for (std::size_t column = 0; column < rows.columns().size(); ++column) {
            result.back().push_back(asText(rows.cell(row, column)));
        }
    }
    return result;
}

ado::BoundParameter wide(const std::string& name, const std::string& value, int size) {
    return {{name, ado::adWChar, ado::adParamInput, size, 0, 0}, value};
}

ado::BoundParameter numeric(const std::string& name, const Value& value, int precision, int scale) {
    return {{name, ado::adNumeric, ado::adParamInput, 0, static_cast<std::uint8_t>(precision),
             static_cast<std::uint8_t>(scale)},
            value};
}

ado::BoundParameter integer(const std::string& name, std::int32_t value) {
    return {{name, ado::adInteger, ado::adParamInput, 0, 0, 0}, value};
}

ado::BoundParameter flag(const std::string& name, bool value) {
    return {{name, ado::adBoolean, ado::adParamInput, 0, 0, 0}, value};
}

Directory::Directory() {
    static std::atomic<int> number{0};
    path_ = std::filesystem::temp_directory_path() /
            ("veldran-embedded-" + std::to_string(::getpid()) + "-" + std::to_string(number++));
    std::filesystem::create_directories(path_);
}

Directory::~Directory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string connectionString(const std::string& path, const std::string& more) {
    return "Provider=VeldranEmbedded;Data Source=" + path + more;
}

SessionTest::SessionTest() {
    createDatabase(path());
    session_ = anotherSession();
}

std::vector<std::string> SessionTest::builtIndexes(const std::string& table) {
    const std::string prefix = table + ".";
    SqliteStatement names =
        session_->state().database().prepare("SELECT substr(name, ?1) FROM temp.sqlite_master WHERE type = "
                                             "'index' AND substr(name, 1, ?1 - 1) = ?2 ORDER BY 1");
    names.bind(1, static_cast<std::int64_t>(prefix.size()) + 1);
    names.bind(2, std::string_view(prefix));
    std::vector<std::string> result;
    while (names.step()) {
        result.emplace_back(names.text(0));
    }
    return result;
}

std::unique_ptr<EmbeddedSession> SessionTest::anotherSession(const std::string& more) {
    return std::make_unique<EmbeddedSession>(
        openDatabase(parseConnectionString(connectionString(path(), more))));
}

ado::StatementResult SessionTest::execute(const std::string& text,
                                          const std::vector<ado::BoundParameter>& parameters) {
    return session_->execute(text, parameters, {});
}

void SessionTest::run(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        execute(text);
    }
}

Rows SessionTest::rows(const std::string& text, const std::vector<ado::BoundParameter>& parameters) {
    const ado::StatementResult result = execute(text, parameters);
    if (!result.rows) {
        ADD_FAILURE() << "no rows from: " << text;
        return {};
    }
    return asText(*result.rows);
}

std::string SessionTest::cell(const std::string& text, const std::vector<ado::BoundParameter>& parameters) {
    const Rows result = rows(text, parameters);
    if (result.size() != 1 || result[0].size() != 1) {
        ADD_FAILURE() << result.size() << " rows from: " << text;
        return "?";
    }
    return result[0][0];
}

std::int64_t SessionTest::affected(const std::string& text,
                                   const std::vector<ado::BoundParameter>& parameters) {
    return execute(text, parameters).rowsAffected;
}

ado::Error SessionTest::error(const std::string& text, const std::vector<ado::BoundParameter>& parameters) {
    return errorOf([&] { execute(text, parameters); });
}

std::string sourceFile(const std::string& path) {
    std::ifstream file(std::filesystem::path(VELDRAN_SOURCE_DIR) / path, std::ios::binary);
    if (!file) {
        ADD_FAILURE() << "cannot read " << path;
    }
    std::stringstream content;
    content << file.rdbuf();
    return content.str();
}

} // namespace veldran::embedded::test
