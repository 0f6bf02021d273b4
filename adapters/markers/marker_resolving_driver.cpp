#include "adapters/markers/marker_resolving_driver.h"

#include "platform/ado/forwarding_session.h"

namespace veldran {

namespace {

class MarkerSession final : public ado::ForwardingSession {
public:
    MarkerSession(std::shared_ptr<ado::Driver> driver, std::unique_ptr<ado::Session> inner,
                  const std::vector<Marker>& markers)
        : ForwardingSession(std::move(driver), std::move(inner)), markers_(markers) {}

    ado::StatementResult execute(std::string_view text, std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& settings) override {
        return ForwardingSession::execute(resolveMarkers(text, markers_), parameters, settings);
    }
    // Prepared once, the text keeps the values that the markers had then.
    std::unique_ptr<ado::PreparedStatement> prepare(std::string_view text,
                                                    std::span<const ado::ParameterInfo> parameters) override {
        return ForwardingSession::prepare(resolveMarkers(text, markers_), parameters);
    }

private:
    std::vector<Marker> markers_;
};

} // namespace

MarkerResolvingDriver::MarkerResolvingDriver(std::shared_ptr<ado::Driver> inner, std::vector<Marker> markers)
    : inner_(std::move(inner)), markers_(std::move(markers)) {}

MarkerResolvingDriver::MarkerResolvingDriver(std::shared_ptr<ado::Driver> inner,
                                             const std::map<std::string, std::string>& markers)
    : inner_(std::move(inner)) {
    for (const auto& [text, value] : markers) {
        markers_.push_back({text, [fixed = value] { return fixed; }});
    }
}

std::unique_ptr<ado::Session> MarkerResolvingDriver::open(const std::string& connectionString,
                                                          const std::string& user,
                                                          const std::string& password) {
    return std::make_unique<MarkerSession>(inner_, inner_->open(connectionString, user, password), markers_);
}

} // namespace veldran
