#pragma once

#include "tests/support/intercepting_driver.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace veldran::test {

enum class Times { Once, Always };

/// The failure that a test orders unless it names its own.
ado::Error simulatedFailure(std::string description = "Guasto simulato");

/// Decides which message to the database fails; the database never sees a message that fails.
class FailurePlan : public Interceptor {
public:
    void opening(const std::string& connectionString) override;
    void sending(const Message& message) override;

    /// The `n`-th message from now on fails (1 is the next one); with Times::Always all that follow it, too.
    /// Rollbacks are neither counted nor failed by this: they are how a caller recovers.
    void failStatement(int n, Times times = Times::Once, ado::Error error = simulatedFailure());
    /// The next message whose text contains `fragment` fails ("COMMIT TRANSACTION" and its like included).
    void failContaining(std::string fragment, Times times = Times::Once,
                        ado::Error error = simulatedFailure());
    /// The next message for which `chosen` answers true fails.
    void failWhere(std::function<bool(const Message&)> chosen, Times times = Times::Once,
                   ado::Error error = simulatedFailure());
    /// The next attempt to open a session fails.
    void failOpening(ado::Error error = simulatedFailure());
    /// Forgets every order; from now on everything works.
    void heal();

    /// Messages since the last `restartCount`, those that failed included, rollbacks excluded. A test runs a
    /// routine once to learn the count, then once for each n with `failStatement(n)`.
    int statementCount() const { return count_; }
    void restartCount() { count_ = 0; }
    /// How many failures were raised since construction.
    int failuresRaised() const { return raised_; }

private:
    struct Order {
        std::function<bool(const Message&)> chosen;
        Times times = Times::Once;
        ado::Error error;
    };

    std::optional<Order> order_;
    std::optional<ado::Error> opening_;
    int count_ = 0;
    int total_ = 0; // as count_, but never restarted: orders count from it
    int raised_ = 0;
};

/// Decorates any driver so that a chosen message fails:
///     auto driver = std::make_shared<FailingDriver>(realDriver);
///     driver->plan().failContaining("INSERT INTO CI15_CORRCONTICOGE");
class FailingDriver final : public InterceptingDriver {
public:
    explicit FailingDriver(std::shared_ptr<ado::Driver> inner)
        : FailingDriver(std::move(inner), std::make_shared<FailurePlan>()) {}

    FailurePlan& plan() { return *plan_; }

private:
    FailingDriver(std::shared_ptr<ado::Driver> inner, const std::shared_ptr<FailurePlan>& plan)
        : InterceptingDriver(std::move(inner), plan), plan_(plan) {}

    std::shared_ptr<FailurePlan> plan_; // shared with the sessions, which may outlive this object
};

} // namespace veldran::test
