#pragma once

#include "platform/ado/errors.h"
#include "platform/services/object.h"

#include <cstdint>
#include <string>

namespace veldran::services {

/// Style bits of a message box and the answers it gives.
enum MessageBoxStyle {
    styleOkOnly = 0,
    styleAbortRetryIgnore = 2,
    styleYesNoCancel = 3,
    styleYesNo = 4,
    styleCritical = 16,
    styleExclamation = 48,
    styleInformation = 64,
    styleSecondButton = 256,
    styleSystemModal = 4096
};
enum MessageBoxAnswer : std::int16_t {
    answerOk = 1,
    answerCancel = 2,
    answerAbort = 3,
    answerRetry = 4,
    answerIgnore = 5,
    answerYes = 6,
    answerNo = 7
};

/// The error that a handler reports.
struct ErrorObject {
    std::int32_t Number = 0;
    std::string Source;
    std::string Description;
};

/// The host's messages to the user. One per form, created at its start-up and bound to its component.
class MessageService {
public:
    virtual ~MessageService() = default;

    virtual void Bind(Object& component) = 0;
    /// The error to be shown next; borrowed until `ShowError` returns, so later changes to it are seen.
    virtual void SetError(const ErrorObject& error) = 0;
    /// The database's own list for the same error; borrowed likewise.
    virtual void SetConnectionErrors(const ado::Errors& errors) = 0;
    /// Shows the error that was set, and forgets it.
    virtual MessageBoxAnswer ShowError(const std::string& applicationTitle, const std::string& formCaption,
                                       const std::string& routine, int style) = 0;

    virtual MessageBoxAnswer ShowBox(const std::string& text, int style, const std::string& title) = 0;
    /// A numbered message of the host's catalogue.
    virtual MessageBoxAnswer ShowCatalogueMessage(std::int32_t number) = 0;
};

} // namespace veldran::services
