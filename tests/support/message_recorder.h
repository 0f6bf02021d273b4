#pragma once

#include "platform/services/message_service.h"
#include "tests/support/journal.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace veldran::test {

/// An error report as the user saw it.
struct ShownError {
    services::ErrorObject error;
    ado::Errors connectionErrors;
    bool hadConnectionErrors = false; ///< the connection's list was handed over, even if it was empty
    std::string applicationTitle;
    std::string formCaption;
    std::string routine;
    int style = 0;
};

/// A message box as the user saw it.
struct ShownBox {
    std::string text;
    int style = 0;
    std::string title;
};

/// Everything the user was told through the message services of one host, and what he answers.
struct MessageLog {
    std::vector<ShownError> errors;
    std::vector<ShownBox> boxes;
    std::vector<std::int32_t> catalogue;
    /// Taken from the front by each question; `answerAbort` to reports and `answerOk` to boxes once they are
    /// used up.
    std::deque<services::MessageBoxAnswer> answers;
    std::vector<services::Object*> boundTo;
    std::string boxFailure; ///< what `ShowBox` fails with; "" for none
    int servicesCreated = 0;
    int servicesAlive = 0;

    /// The routines under which errors were reported, in order.
    std::vector<std::string> routines() const;
    /// What the boxes said, in order.
    std::vector<std::string> boxTexts() const;

    void clear() {
        errors.clear();
        boxes.clear();
        catalogue.clear();
    }
};

/// The host's message service without a screen.
class MessageRecorder final : public services::MessageService {
public:
    MessageRecorder(std::shared_ptr<MessageLog> log, SharedJournal journal);
    ~MessageRecorder() override;

    void Bind(services::Object& component) override;
    void SetError(const services::ErrorObject& error) override { error_ = &error; }
    void SetConnectionErrors(const ado::Errors& errors) override { connectionErrors_ = &errors; }
    services::MessageBoxAnswer ShowError(const std::string& applicationTitle, const std::string& formCaption,
                                         const std::string& routine, int style) override;
    services::MessageBoxAnswer ShowBox(const std::string& text, int style, const std::string& title) override;
    services::MessageBoxAnswer ShowCatalogueMessage(std::int32_t number) override;

private:
    services::MessageBoxAnswer nextAnswer(services::MessageBoxAnswer otherwise);

    std::shared_ptr<MessageLog> log_; // shared with the test, which reads it after the form has gone
    SharedJournal journal_;
    const services::ErrorObject* error_ = nullptr;
    const ado::Errors* connectionErrors_ = nullptr;
};

} // namespace veldran::test
