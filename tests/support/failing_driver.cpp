#include "tests/support/failing_driver.h"

namespace veldran::test {

ado::Error simulatedFailure(std::string description) {
    return {50000, "test", std::move(description), "HY000", 50000};
}

void FailurePlan::opening(const std::string& /*connectionString*/) {
    if (opening_) {
        const ado::Error error = *opening_;
        opening_.reset();
        ++raised_;
        throw ado::AdoError(error);
    }
}

void FailurePlan::sending(const Message& message) {
    if (message.how != Sent::Rollback) {
        ++count_;
        ++total_;
    }
    if (!order_ || !order_->chosen(message)) {
        return;
    }
    const ado::Error error = order_->error;
    if (order_->times == Times::Once) {
        order_.reset();
    }
    ++raised_;
    throw ado::AdoError(error);
}

void FailurePlan::failStatement(int n, Times times, ado::Error error) {
    const int first = total_ + n;
    failWhere(
        [this, first](const Message& message) { return message.how != Sent::Rollback && total_ >= first; },
        times, std::move(error));
}

void FailurePlan::failContaining(std::string fragment, Times times, ado::Error error) {
    failWhere([fragment = std::move(fragment)](
                  const Message& message) { return message.text.find(fragment) != std::string::npos; },
              times, std::move(error));
}

void FailurePlan::failWhere(std::function<bool(const Message&)> chosen, Times times, ado::Error error) {
    order_ = Order{std::move(chosen), times, std::move(error)};
}

void FailurePlan::failOpening(ado::Error error) {
    opening_ = std::move(error);
}

void FailurePlan::heal() {
    order_.reset();
    opening_.reset();
}

} // namespace veldran::test
