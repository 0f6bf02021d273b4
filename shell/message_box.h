#pragma once

#include "platform/services/message_service.h"
#include "shell/message_catalogue.h"

#include <QString>

class QMessageBox;
class QWidget;

namespace veldran::shell {

/// What a message box shows.
struct BoxContent {
    QString title;
    QString text;
    QString informative; ///< below the text, in smaller letters
    QString details;     ///< shown when asked for
};

/// Shows a box over the window the user works in and waits for the answer.
/// \param style bits of services::MessageBoxStyle: buttons, icon, default button, system-modal
services::MessageBoxAnswer showBox(const BoxContent& content, int style);

/// The host's messages on the desktop.
class MessageBoxService final : public services::MessageService {
public:
    explicit MessageBoxService(const MessageCatalogue& catalogue) : catalogue_(catalogue) {}

    /// Boxes stand over the window the user works in, whichever component asks.
    void Bind(services::Object&) override {}
    void SetError(const services::ErrorObject& error) override { error_ = &error; }
    void SetConnectionErrors(const ado::Errors& errors) override { connectionErrors_ = &errors; }
    services::MessageBoxAnswer ShowError(const std::string& applicationTitle, const std::string& formCaption,
                                         const std::string& routine, int style) override;
    services::MessageBoxAnswer ShowBox(const std::string& text, int style, const std::string& title) override;
    services::MessageBoxAnswer ShowCatalogueMessage(std::int32_t number) override;

private:
    const MessageCatalogue& catalogue_;
    const services::ErrorObject* error_ = nullptr;
    const ado::Errors* connectionErrors_ = nullptr;
};

/// The texts of an error report: the error, where it arose, and the database's own list.
BoxContent errorContent(const services::ErrorObject& error, const ado::Errors& databaseErrors,
                        const std::string& applicationTitle, const std::string& formCaption,
                        const std::string& routine);

} // namespace veldran::shell
