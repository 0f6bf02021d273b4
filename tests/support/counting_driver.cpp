#include "tests/support/counting_driver.h"

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

class CountedSession final : public ado::Session {
public:
    CountedSession(std::unique_ptr<ado::Session> inner, std::shared_ptr<CountingDriver::Counts> counts)
        : inner_(std::move(inner)), counts_(std::move(counts)) {
        ++counts_->openSessions;
        ++counts_->sessionsOpened;
    }
    ~CountedSession() override { --counts_->openSessions; }

    ado::StatementResult execute(std::string_view text, std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& settings) override {
        return inner_->execute(text, parameters, settings);
    }
    std::unique_ptr<ado::PreparedStatement> prepare(std::string_view text,
                                                    std::span<const ado::ParameterInfo> parameters) override {
        return std::make_unique<CountedStatement>(inner_->prepare(text, parameters), counts_);
    }
    std::vector<ado::ParameterInfo> describeProcedure(std::string_view name) override {
        return inner_->describeProcedure(name);
    }
    ado::StatementResult callProcedure(std::string_view name, std::span<const ado::BoundParameter> parameters,
                                       const ado::ExecuteSettings& settings) override {
        return inner_->callProcedure(name, parameters, settings);
    }
    void begin() override { inner_->begin(); }
    void commit() override { inner_->commit(); }
    void rollback() override { inner_->rollback(); }

private:
    std::unique_ptr<ado::Session> inner_;
    std::shared_ptr<CountingDriver::Counts> counts_; // shared with the driver
};

} // namespace

std::unique_ptr<ado::Session> CountingDriver::open(const std::string& connectionString,
                                                   const std::string& user, const std::string& password) {
    return std::make_unique<CountedSession>(inner_->open(connectionString, user, password), counts_);
}

} // namespace veldran::test
