// The network that the tests break: it has to break as ordered, and only then.
#include "tests/support/tcp_proxy.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <string>
#include <thread>

namespace veldran::test {
namespace {

sockaddr_in loopback(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

/// Answers every message with the same message in brackets, one connection after the other.
class EchoServer {
public:
    EchoServer() {
        sockaddr_in address = loopback(0);
        socklen_t size = sizeof address;
        EXPECT_EQ(::bind(listener_, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(::listen(listener_, 5), 0);
        EXPECT_EQ(::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size), 0);
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([this] { serve(); });
    }
    ~EchoServer() {
        ::shutdown(listener_, SHUT_RDWR);
        thread_.join();
        ::close(listener_);
    }
    EchoServer(const EchoServer&) = delete;
    EchoServer& operator=(const EchoServer&) = delete;

    std::uint16_t port() const { return port_; }
    /// Everything that has reached it; to be read when the clients are gone.
    std::string heard;

private:
    void serve() {
        for (int peer = -1; (peer = ::accept(listener_, nullptr, nullptr)) >= 0;) {
            std::array<char, 1000> buffer;
            for (ssize_t got = 0; (got = ::recv(peer, buffer.data(), buffer.size(), 0)) > 0;) {
                const std::string text(buffer.data(), static_cast<std::size_t>(got));
                heard += text;
                const std::string answer = "[" + text + "]";
                ::send(peer, answer.data(), answer.size(), MSG_NOSIGNAL);
            }
            ::close(peer);
        }
    }

    int listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
    std::uint16_t port_ = 0;
    std::thread thread_;
};

class Client {
public:
    explicit Client(std::uint16_t port) {
        const sockaddr_in address = loopback(port);
        connected_ = ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    ~Client() { ::close(socket_); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    bool connected() const { return connected_; }
    void say(const std::string& text) const { ::send(socket_, text.data(), text.size(), MSG_NOSIGNAL); }
    /// What comes next; "(broken)" for an end of the connection, "(silence)" when nothing comes for a while.
    std::string hear(int milliseconds = 5000) const {
        pollfd watched{socket_, POLLIN, 0};
        if (::poll(&watched, 1, milliseconds) == 0) {
            return "(silence)";
        }
        std::array<char, 1000> buffer;
        const ssize_t got = ::recv(socket_, buffer.data(), buffer.size(), 0);
        return got > 0 ? std::string(buffer.data(), static_cast<std::size_t>(got)) : "(broken)";
    }
    std::string ask(const std::string& text) const {
        say(text);
        return hear();
    }

private:
    int socket_ = ::socket(AF_INET, SOCK_STREAM, 0);
    bool connected_ = false;
};

constexpr int aWhile = 150;

class Proxy : public testing::Test {
protected:
    EchoServer server;
    TcpProxy proxy{"127.0.0.1", server.port()};
};

TEST_F(Proxy, PassesWhatIsSaidInBothDirections) {
    const Client client(proxy.port());
    EXPECT_EQ(client.ask("uno"), "[uno]");
    EXPECT_EQ(client.ask("due"), "[due]");
    EXPECT_EQ(proxy.connections(), 1);
}

TEST_F(Proxy, CutsWhatStandsAndServesWhoComesLater) {
    {
        const Client client(proxy.port());
        EXPECT_EQ(client.ask("uno"), "[uno]");
        proxy.cut();
        EXPECT_EQ(client.hear(), "(broken)");
        EXPECT_EQ(proxy.connections(), 0);
    }
    EXPECT_EQ(Client(proxy.port()).ask("due"), "[due]");
}

TEST_F(Proxy, CutsAtAnAnswerWhenTheServerHasHeardTheRequest) {
    {
        const Client client(proxy.port());
        EXPECT_EQ(client.ask("uno"), "[uno]");
        proxy.cutAtNextAnswer();
        EXPECT_EQ(client.ask("due"), "(broken)");
    }
    EXPECT_EQ(Client(proxy.port()).ask("tre"), "[tre]") << "one cut for each order";
    EXPECT_EQ(server.heard, "unoduetre");
}

TEST_F(Proxy, HoldsBackWhatIsSaidWhileItStalls) {
    const Client client(proxy.port());
    EXPECT_EQ(client.ask("uno"), "[uno]");
    proxy.stall();
    client.say("due");
    EXPECT_EQ(client.hear(aWhile), "(silence)");
    proxy.resume();
    EXPECT_EQ(client.hear(), "[due]");
}

TEST_F(Proxy, HoldsBackARequestThatIsChosenByItsNumber) {
    const Client client(proxy.port());
    EXPECT_EQ(client.ask("uno"), "[uno]");
    EXPECT_EQ(proxy.requests(), 1);
    proxy.stallAtRequest(2);
    EXPECT_EQ(client.ask("due"), "[due]");
    client.say("tre");
    EXPECT_EQ(client.hear(aWhile), "(silence)");
    EXPECT_EQ(proxy.requests(), 3);
    proxy.resume();
    EXPECT_EQ(client.hear(), "[tre]");
    EXPECT_EQ(proxy.requests(), 3) << "the request that waited is one";
    EXPECT_EQ(client.ask("quattro"), "[quattro]");
    EXPECT_EQ(server.heard, "unoduetrequattro");
}

TEST_F(Proxy, RefusesLikeAServerThatIsDownAndServesAgainAtTheSamePort) {
    proxy.refuse(true);
    EXPECT_FALSE(Client(proxy.port()).connected());
    proxy.refuse(false);
    EXPECT_EQ(Client(proxy.port()).ask("uno"), "[uno]");
}

} // namespace
} // namespace veldran::test
