#include "tests/support/recording_driver.h"

#include <algorithm>
#include <iterator>
#include <ostream>

namespace veldran::test {

namespace {

bool isExecution(const Message& message) {
    return message.how == Sent::Direct || message.how == Sent::Prepared || message.how == Sent::Procedure;
}

bool contains(const Message& message, std::string_view fragment) {
    return message.text.find(fragment) != std::string::npos;
}

} // namespace

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
