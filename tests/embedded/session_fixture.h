#pragma once

#include "adapters/embedded/session.h"
#include "platform/ado/driver.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace veldran::embedded::test {

using Rows = std::vector<std::vector<std::string>>;

/// The value as tests write it: NULL is "NULL", a bit "1" or "0", decimals with their places, text as it
/// comes.
std::string asText(const Value& value);
Rows asText(const ado::RowSet& rows);

ado::BoundParameter wide(const std::string& name, const std::string& value, int size);
ado::BoundParameter numeric(const std::string& name, const Value& value, int precision, int scale = 0);
ado::BoundParameter integer(const std::string& name, std::int32_t value);
ado::BoundParameter flag(const std::string& name, bool value);

/// A directory that goes with the object.
class Directory {
public:
    Directory();
    ~Directory();
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;
    std::string file(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

std::string connectionString(const std::string& path, const std::string& more = {});
/// What the action throws. A failure of the test when it throws nothing.
template<typename Action>
ado::Error errorOf(Action action) {
    try {
        action();
    } catch (const ado::AdoError& error) {
        return error.first();
    }
    ADD_FAILURE() << "nothing was refused";
    return {};
}

/// A session with an empty database of its own.
class SessionTest : public ::testing::Test {
protected:
    SessionTest();

    ado::StatementResult execute(const std::string& text,
                                 const std::vector<ado::BoundParameter>& parameters = {});
    void run(const std::vector<std::string>& texts);
    Rows rows(const std::string& text, const std::vector<ado::BoundParameter>& parameters = {});
    /// The only cell of the only row.
    std::string cell(const std::string& text, const std::vector<ado::BoundParameter>& parameters = {});
    std::int64_t affected(const std::string& text, const std::vector<ado::BoundParameter>& parameters = {});
    ado::Error error(const std::string& text, const std::vector<ado::BoundParameter>& parameters = {});
    /// The indexes of a working table that SQLite has, by name.
    std::vector<std::string> builtIndexes(const std::string& table);
    std::unique_ptr<EmbeddedSession> anotherSession(const std::string& more = {});
    std::string path() const { return directory_.file("prova.vdb"); }

    Directory directory_;
    std::unique_ptr<EmbeddedSession> session_;
};

/// The text of a file of the source tree.
std::string sourceFile(const std::string& path);

} // namespace veldran::embedded::test
