#pragma once

#include "platform/services/lookup.h"

namespace veldran::shell {

/// The host's lookup service on the desktop: decodes through the form's own connection, shows the list in a
/// dialog over the window the user works in.
class LookupListService final : public services::LookupService {
public:
    std::optional<std::string> Decode(const services::LookupRequest& request) override;
    std::optional<services::LookupChoice> Choose(const services::LookupRequest& request) override;
    void Maintain(const services::LookupRequest& request) override;
    services::CodeFormatter NewCodeFormatter(const std::shared_ptr<ado::Connection>& connection,
                                             std::int32_t pdc) override;
};

} // namespace veldran::shell
