#pragma once

#include "tests/screen/screen_fixture.h"

#include <chrono>
#include <functional>
#include <future>
#include <string>
#include <vector>

namespace veldran::test {

/// A way in which the network fails: `&TcpProxy::cut` before a message arrives, `&TcpProxy::cutAtNextAnswer`
/// when the server has it.
using Fault = std::function<void(TcpProxy&)>;
/// The network between the screen and its server fails at the message of that number, counted from 0 from now
/// on.
void failNetworkAt(Screen& screen, std::size_t message, Fault fault);

/// Seconds that the host lets its connections wait for an answer, where they are to wait in vain.
inline constexpr int shortLimit = 1;
/// Longer than the limit, and shorter than it takes to give the connection up as well.
inline constexpr std::chrono::milliseconds beyondTheLimit{1400};

/// Whether the limit of its connection ends the message. It ends neither commands that are built to wait
/// without limit nor the transactions, whose end has to be known.
bool isLimited(const Message& message);

/// Counts, message by message, what a screen sends through its network: those of a message's requests that
/// come before its last one are questions of the driver's own. Counts nothing on an embedded database.
class RequestCount {
public:
    explicit RequestCount(Screen& screen);
    RequestCount(const RequestCount&) = delete;
    RequestCount& operator=(const RequestCount&) = delete;

    /// Of the messages until now, after which it counts no more.
    std::vector<int> ofEachMessage();

private:
    Screen& screen_;
    std::vector<int> starts_;
};

/// Holds the network at chosen messages, and lets it go after a while.
class Stalls {
public:
    explicit Stalls(Screen& screen) : screen_(screen) {}
    /// Returns when the network goes again.
    ~Stalls() { await(); }
    Stalls(const Stalls&) = delete;
    Stalls& operator=(const Stalls&) = delete;

    /// The network stands at that request from now on (1 is the next) for that while.
    void hold(int request, std::chrono::milliseconds length);
    /// \return when the network goes again.
    void await() { resumed_.clear(); }

private:
    Screen& screen_;
    std::vector<std::future<void>> resumed_;
};

/// The report of a lost connection.
void expectReportOfLoss(const ShownError& shown, const std::string& label);
/// The report of a limit that ran out on a connection that stands.
void expectReportOfTimeLimit(const ShownError& shown, const std::string& label);

} // namespace veldran::test
