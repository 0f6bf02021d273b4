#pragma once

#include "tests/support/intercepting_driver.h"

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::test {

/// Whether a text makes a temporary table: CREATE TABLE #..., or SELECT ... INTO #...
bool makesTemporaryTable(std::string_view text);

/// Everything that was sent to the database, in order. A text that makes a temporary table fails the test
/// when it is prepared or has parameters: on SQL Server such a table is gone when that execution ends.
class StatementLog : public Interceptor {
public:
    void opening(const std::string& connectionString) override { opened_.push_back(connectionString); }
    void sending(const Message& message) override;

    const std::vector<Message>& messages() const { return messages_; }
    /// Connection strings of the sessions that were opened.
    const std::vector<std::string>& opened() const { return opened_; }
    /// What was executed: direct texts, prepared texts and procedures, without preparing, describing and
    /// transactions.
    std::vector<Message> executed() const;
    /// Texts of `executed`.
    std::vector<std::string> texts() const;
    /// Messages, of any kind, whose text contains `fragment`.
    std::vector<Message> containing(std::string_view fragment) const;
    /// How often a text that contains `fragment` was prepared; any text when empty.
    std::size_t prepareCount(std::string_view fragment = {}) const;
    void clear() { messages_.clear(); }

private:
    std::vector<Message> messages_;
    std::vector<std::string> opened_;
};

/// Decorates any driver and keeps a log:
///     auto driver = std::make_shared<RecordingDriver>(realDriver);
///     ...
///     EXPECT_EQ(driver->log().executed().back(), sent("DELETE FROM #DETTAGLIO").withoutRows());
class RecordingDriver final : public InterceptingDriver {
public:
    explicit RecordingDriver(std::shared_ptr<ado::Driver> inner)
        : RecordingDriver(std::move(inner), std::make_shared<StatementLog>()) {}

    StatementLog& log() { return *log_; }

private:
    RecordingDriver(std::shared_ptr<ado::Driver> inner, const std::shared_ptr<StatementLog>& log)
        : InterceptingDriver(std::move(inner), log), log_(log) {}

    std::shared_ptr<StatementLog> log_; // shared with the sessions, which may outlive this object
};

/// Builds the message that a test expects, whole.
class ExpectedMessage {
public:
    explicit ExpectedMessage(Sent how, std::string text) {
        message_.how = how;
        message_.text = std::move(text);
    }

    /// The next "?" marker's parameter, or the procedure's.
    ExpectedMessage& with(std::string name, ado::DataTypeEnum type, int size, Value value,
                          std::uint8_t precision = 0, std::uint8_t scale = 0);
    ExpectedMessage& timeout(int seconds) {
        message_.settings.commandTimeout = seconds;
        return *this;
    }
    ExpectedMessage& withoutRows() {
        message_.settings.wantsRows = false;
        return *this;
    }
    operator Message() const { return message_; }
    const std::string& text() const { return message_.text; }

    friend bool operator==(const Message& actual, const ExpectedMessage& expected) {
        return actual == expected.message_;
    }
    friend void PrintTo(const ExpectedMessage& expected, std::ostream* out);

private:
    Message message_;
};

/// A text sent directly, rows wanted, with the standard time-out of 30 seconds.
inline ExpectedMessage sent(std::string text) {
    return ExpectedMessage(Sent::Direct, std::move(text));
}
inline ExpectedMessage sentPrepared(std::string text) {
    return ExpectedMessage(Sent::Prepared, std::move(text));
}
inline ExpectedMessage calledProcedure(std::string name) {
    return ExpectedMessage(Sent::Procedure, std::move(name));
}

} // namespace veldran::test
