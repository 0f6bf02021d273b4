#pragma once

#include "adapters/markers/marker_text.h"
#include "platform/ado/driver.h"

#include <map>
#include <memory>

namespace veldran {

/// A driver whose sessions resolve the host's markers in every text before another driver sees it. Procedure
/// names and parameter values pass unchanged.
class MarkerResolvingDriver : public ado::Driver {
public:
    // The inner driver is shared: whoever opens a session may let the driver go and keep the session.
    MarkerResolvingDriver(std::shared_ptr<ado::Driver> inner, std::vector<Marker> markers);
    /// Markers whose values stay as they are, by the markers' texts.
    MarkerResolvingDriver(std::shared_ptr<ado::Driver> inner,
                          const std::map<std::string, std::string>& markers);

    std::unique_ptr<ado::Session> open(const std::string& connectionString, const std::string& user,
                                       const std::string& password) override;

private:
    std::shared_ptr<ado::Driver> inner_;
    std::vector<Marker> markers_;
};

} // namespace veldran
