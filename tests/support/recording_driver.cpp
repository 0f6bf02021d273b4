#include "tests/support/recording_driver.h"

#include "platform/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <utility>

namespace veldran::test {

namespace {

bool isExecution(const Message& message) {
    return message.how == Sent::Direct || message.how == Sent::Prepared || message.how == Sent::Procedure;
}

bool contains(const Message& message, std::string_view fragment) {
    return message.text.find(fragment) != std::string::npos;
}

} // namespace

bool makesTemporaryTable(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    std::string_view before;
    std::string_view last;
    for (std::size_t at = text.find_first_not_of(blanks); at != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(blanks, at), text.size());
        const std::string_view word = text.substr(at, end - at);
        if (word.starts_with('#') &&
            ((equalsIgnoringAsciiCase(before, "CREATE") && equalsIgnoringAsciiCase(last, "TABLE")) ||
             (equalsIgnoringAsciiCase(last, "INTO") && !equalsIgnoringAsciiCase(before, "INSERT")))) {
            return true;
        }
        before = std::exchange(last, word);
        at = text.find_first_not_of(blanks, end);
    }
    return false;
}

void StatementLog::sending(const Message& message) {
    messages_.push_back(message);
    if (message.how != Sent::Direct || !message.parameters.empty()) {
        EXPECT_FALSE(makesTemporaryTable(message.text))
            << nameOf(message.how) << " with " << message.parameters.size()
            << " parameters: " << message.text;
    }
}

std::vector<Message> StatementLog::executed() const {
    std::vector<Message> found;
    std::copy_if(messages_.begin(), messages_.end(), std::back_inserter(found), isExecution);
    return found;
}

std::vector<std::string> StatementLog::texts() const {
    std::vector<std::string> found;
    for (const Message& message : messages_) {
        if (isExecution(message)) {
            found.push_back(message.text);
        }
    }
    return found;
}

std::vector<Message> StatementLog::containing(std::string_view fragment) const {
    std::vector<Message> found;
    std::copy_if(messages_.begin(), messages_.end(), std::back_inserter(found),
                 [&](const Message& message) { return contains(message, fragment); });
    return found;
}

std::size_t StatementLog::prepareCount(std::string_view fragment) const {
    return static_cast<std::size_t>(
        std::count_if(messages_.begin(), messages_.end(), [&](const Message& message) {
            return message.how == Sent::Prepare && contains(message, fragment);
        }));
}

ExpectedMessage& ExpectedMessage::with(std::string name, ado::DataTypeEnum type, int size, Value value,
                                       std::uint8_t precision, std::uint8_t scale) {
    message_.parameters.push_back(
        {{std::move(name), type, ado::adParamInput, size, precision, scale}, std::move(value)});
    return *this;
}

void PrintTo(const ExpectedMessage& expected, std::ostream* out) {
    PrintTo(expected.message_, out);
}

} // namespace veldran::test
