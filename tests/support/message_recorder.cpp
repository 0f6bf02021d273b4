#include "tests/support/message_recorder.h"

#include <stdexcept>

namespace veldran::test {

namespace {

template<class Shown>
std::vector<std::string> each(const std::vector<Shown>& all, std::string Shown::*part) {
    std::vector<std::string> parts;
    for (const Shown& shown : all) {
        parts.push_back(shown.*part);
    }
    return parts;
}

} // namespace

std::vector<std::string> MessageLog::routines() const {
    return each(errors, &ShownError::routine);
}

std::vector<std::string> MessageLog::boxTexts() const {
    return each(boxes, &ShownBox::text);
}

MessageRecorder::MessageRecorder(std::shared_ptr<MessageLog> log, SharedJournal journal)
    : log_(std::move(log)), journal_(std::move(journal)) {
    ++log_->servicesCreated;
    ++log_->servicesAlive;
    journal_->push_back("message service");
}

MessageRecorder::~MessageRecorder() {
    --log_->servicesAlive;
}

void MessageRecorder::Bind(services::Object& component) {
    log_->boundTo.push_back(&component);
    journal_->push_back("bind message service");
}

services::MessageBoxAnswer MessageRecorder::ShowError(const std::string& applicationTitle,
                                                      const std::string& formCaption,
                                                      const std::string& routine, int style) {
    ShownError shown;
    if (error_ != nullptr) {
        shown.error = *error_;
    }
    if (connectionErrors_ != nullptr) {
        shown.connectionErrors = *connectionErrors_;
        shown.hadConnectionErrors = true;
    }
    shown.applicationTitle = applicationTitle;
    shown.formCaption = formCaption;
    shown.routine = routine;
    shown.style = style;
    error_ = nullptr;
    connectionErrors_ = nullptr;
    journal_->push_back("report " + routine);
    log_->errors.push_back(std::move(shown));
    return nextAnswer(services::answerAbort);
}

services::MessageBoxAnswer MessageRecorder::ShowBox(const std::string& text, int style,
                                                    const std::string& title) {
    if (!log_->boxFailure.empty()) {
        throw std::runtime_error(log_->boxFailure);
    }
    log_->boxes.push_back({text, style, title});
    journal_->push_back("box " + title);
    return nextAnswer(services::answerOk);
}

services::MessageBoxAnswer MessageRecorder::ShowCatalogueMessage(std::int32_t number) {
    log_->catalogue.push_back(number);
    journal_->push_back("catalogue " + std::to_string(number));
    return nextAnswer(services::answerOk);
}

services::MessageBoxAnswer MessageRecorder::nextAnswer(services::MessageBoxAnswer otherwise) {
    if (log_->answers.empty()) {
        return otherwise;
    }
    const services::MessageBoxAnswer answer = log_->answers.front();
    log_->answers.pop_front();
    return answer;
}

} // namespace veldran::test
