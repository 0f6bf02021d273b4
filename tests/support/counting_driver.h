#pragma once

#include "platform/ado/driver.h"

#include <memory>

namespace veldran::test {

/// Decorates a driver and counts what is still held of it.
class CountingDriver final : public ado::Driver {
public:
    struct Counts {
        int openSessions = 0;
        int livePreparedStatements = 0;
    };

    explicit CountingDriver(std::shared_ptr<ado::Driver> inner) : inner_(std::move(inner)) {}

    std::unique_ptr<ado::Session> open(const std::string& connectionString, const std::string& user,
                                       const std::string& password) override;
    const Counts& counts() const { return *counts_; }

private:
    std::shared_ptr<ado::Driver> inner_;
    std::shared_ptr<Counts> counts_ =
        std::make_shared<Counts>(); // shared with sessions, which may outlive this
};

} // namespace veldran::test
