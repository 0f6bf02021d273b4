#include "tests/support/counting_driver.h"

#include "platform/ado/forwarding_session.h"

namespace veldran::test {

namespace {

class CountedStatement final : public ado::PreparedStatement {
public:
    CountedStatement(std::unique_ptr<ado::PreparedStatement> inner,
                     std::shared_ptr<CountingDriver::Counts> counts)
        : inner_(std::move(inner)), counts_(std::move(counts)) {
        ++counts_->livePreparedStatements;
    }
    ~CountedStatement() override { --counts_->livePreparedStatements; }

    ado::StatementResult execute(std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& settings) override {
        return inner_->execute(parameters, settings);
    }

private:
    std::unique_ptr<ado::PreparedStatement> inner_;
    std::shared_ptr<CountingDriver::Counts> counts_; // shared with the driver
};

class CountedSession final : public ado::ForwardingSession {
public:
    CountedSession(std::shared_ptr<ado::Driver> driver, std::unique_ptr<ado::Session> inner,
                   std::shared_ptr<CountingDriver::Counts> counts)
        : ForwardingSession(std::move(driver), std::move(inner)), counts_(std::move(counts)) {
        ++counts_->openSessions;
    }
    ~CountedSession() override { --counts_->openSessions; }

    std::unique_ptr<ado::PreparedStatement> prepare(std::string_view text,
                                                    std::span<const ado::ParameterInfo> parameters) override {
        return std::make_unique<CountedStatement>(ForwardingSession::prepare(text, parameters), counts_);
    }

private:
    std::shared_ptr<CountingDriver::Counts> counts_; // shared with the driver
};

} // namespace

std::unique_ptr<ado::Session> CountingDriver::open(const std::string& connectionString,
                                                   const std::string& user, const std::string& password) {
    return std::make_unique<CountedSession>(inner_, inner_->open(connectionString, user, password), counts_);
}

} // namespace veldran::test
