#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace veldran::test {

/// Stands on the loopback between a client and a server, knows nothing of what they say, and fails as
/// networks do. Works on a thread of its own; its functions may be called from any other and return when
/// their effect has come.
class TcpProxy {
public:
    /// \throws std::system_error when no port can be listened on.
    TcpProxy(const std::string& host, std::uint16_t port);
    ~TcpProxy();
    TcpProxy(const TcpProxy&) = delete;
    TcpProxy& operator=(const TcpProxy&) = delete;

    /// Where it listens, on 127.0.0.1.
    std::uint16_t port() const;
    /// Connections that stand at this moment.
    int connections() const;
    /// How many requests have come since construction: how often a client began to speak, or spoke again when
    /// it had been answered.
    int requests() const;

    /// Breaks every connection off, towards both ends. Later ones are served.
    void cut();
    /// The server still gets the next request whole; when it begins to answer, all connections are broken
    /// off.
    void cutAtNextAnswer();
    /// Holds back what either side sends, until `resume` or `cut`.
    void stall();
    /// The same from the `n`-th request on that comes from now on (1 is the next); it is held back itself.
    void stallAtRequest(int n);
    void resume();
    /// Whether somebody listens at the port: a server that is down refuses.
    void refuse(bool refusing);

private:
    class Worker;
    std::unique_ptr<Worker> worker_;
};

} // namespace veldran::test
