#include "tests/screen/network_faults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <thread>
#include <utility>

namespace veldran::test {

void failNetworkAt(Screen& screen, std::size_t message, Fault fault) {
    TcpProxy& network = screen.database.server()->network();
    screen.failures().failWhere(
        [&network, fault = std::move(fault), message](const Message&) mutable {
            if (message-- == 0) {
                fault(network);
            }
            return false;
        },
        Times::Always);
}

bool isLimited(const Message& message) {
    return message.settings.commandTimeout > 0 &&
           (message.how == Sent::Direct || message.how == Sent::Prepared || message.how == Sent::Procedure);
}

RequestCount::RequestCount(Screen& screen) : screen_(screen) {
    if (TestServer* server = screen.database.server()) {
        screen.failures().failWhere(
            [this, server](const Message&) {
                starts_.push_back(server->network().requests());
                return false;
            },
            Times::Always);
    }
}

std::vector<int> RequestCount::ofEachMessage() {
    if (starts_.empty()) {
        return {};
    }
    screen_.failures().heal();
    std::vector<int> counts = std::exchange(starts_, {});
    counts.push_back(screen_.database.server()->network().requests());
    std::adjacent_difference(counts.begin(), counts.end(), counts.begin());
    counts.erase(counts.begin());
    return counts;
}

void Stalls::hold(int request, std::chrono::milliseconds length) {
    TcpProxy& network = screen_.database.server()->network();
    network.stallAtRequest(request);
    resumed_.push_back(std::async(std::launch::async, [&network, length] {
        std::this_thread::sleep_for(length);
        network.resume();
    }));
}

void expectReportOfLoss(const ShownError& shown, const std::string& label) {
    EXPECT_EQ(shown.routine, label);
    EXPECT_TRUE(std::any_of(shown.connectionErrors.begin(), shown.connectionErrors.end(),
                            [](const ado::Error& error) { return error.SQLState.starts_with("08"); }))
        << shown.error.Description; // behind the time-out that may have led to it
}

void expectReportOfTimeLimit(const ShownError& shown, const std::string& label) {
    constexpr int timeLimitReached = -2147217871;
    EXPECT_EQ(shown.routine, label);
    EXPECT_EQ(shown.error.Number, timeLimitReached);
    ASSERT_FALSE(shown.connectionErrors.empty());
    EXPECT_EQ(shown.connectionErrors[0].SQLState, "HYT00") << shown.error.Description;
}

} // namespace veldran::test
