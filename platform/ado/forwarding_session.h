#pragma once

#include "platform/ado/driver.h"

namespace veldran::ado {

/// Hands everything on to another driver's session; who decorates a driver overrides what it changes.
class ForwardingSession : public Session {
public:
    /// \param driver that opened `inner`. Shared, because a driver outlives its sessions and whoever holds
    /// this one may let the driver go.
    ForwardingSession(std::shared_ptr<Driver> driver, std::unique_ptr<Session> inner)
        : driver_(std::move(driver)), inner_(std::move(inner)) {}

    StatementResult execute(std::string_view text, std::span<const BoundParameter> parameters,
                            const ExecuteSettings& settings) override {
        return inner_->execute(text, parameters, settings);
    }
    std::unique_ptr<PreparedStatement> prepare(std::string_view text,
                                               std::span<const ParameterInfo> parameters) override {
        return inner_->prepare(text, parameters);
    }
    std::vector<ParameterInfo> describeProcedure(std::string_view name) override {
        return inner_->describeProcedure(name);
    }
    StatementResult callProcedure(std::string_view name, std::span<const BoundParameter> parameters,
                                  const ExecuteSettings& settings) override {
        return inner_->callProcedure(name, parameters, settings);
    }
    void begin() override { inner_->begin(); }
    void commit() override { inner_->commit(); }
    void rollback() override { inner_->rollback(); }

private:
    std::shared_ptr<Driver> driver_;
    std::unique_ptr<Session> inner_;
};

} // namespace veldran::ado
