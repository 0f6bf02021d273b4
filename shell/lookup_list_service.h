#pragma once

#include "platform/services/lookup.h"
#include "shell/company_file.h"

namespace veldran::shell {

/// The host's lookup service on the desktop: decodes through the form's own connection, shows the list and
/// the maintenance of codes in dialogs over the window the user works in.
class LookupListService final : public services::LookupService {
public:
    /// \param rights what the user may do in maintenance; they outlive the service
    explicit LookupListService(const UserRights& rights) : rights_(rights) {}

    std::optional<std::string> Decode(const services::LookupRequest& request) override;
    std::optional<services::LookupChoice> Choose(const services::LookupRequest& request) override;
    /// Cost accounts and cost items; of the other lists the user is told that they are not maintained here.
    void Maintain(const services::LookupRequest& request) override;
    services::CodeFormatter NewCodeFormatter(const std::shared_ptr<ado::Connection>& connection,
                                             std::int32_t pdc) override;

private:
    const UserRights& rights_;
};

} // namespace veldran::shell
