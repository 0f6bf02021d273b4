#include "tests/support/tcp_proxy.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <functional>
#include <future>
#include <list>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace veldran::test {

namespace {

[[noreturn]] void failWith(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/// A file descriptor that is closed with its object.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int value) : value_(value) {}
    ~Descriptor() { reset(); }
    Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    void reset() {
        if (value_ >= 0) {
            ::close(std::exchange(value_, -1));
        }
    }
    int get() const { return value_; }
    explicit operator bool() const { return value_ >= 0; }

private:
    int value_ = -1;
};

Descriptor listenAt(std::uint16_t port) {
    Descriptor listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const int on = 1;
    ::setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    if (!listener || ::bind(listener.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener.get(), SOMAXCONN) != 0) {
        failWith("listen");
    }
    return listener;
}

std::uint16_t portOf(const Descriptor& listener) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (::getsockname(listener.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        failWith("getsockname");
    }
    return ntohs(address.sin_port);
}

/// \return nothing when nobody answers there.
Descriptor connectTo(const std::string& host, std::uint16_t port) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found) != 0) {
        return {};
    }
    Descriptor connected;
    for (const addrinfo* address = found; address != nullptr && !connected; address = address->ai_next) {
        Descriptor tried(::socket(address->ai_family, address->ai_socktype | SOCK_CLOEXEC, 0));
        if (tried && ::connect(tried.get(), address->ai_addr, address->ai_addrlen) == 0) {
            connected = std::move(tried);
        }
    }
    ::freeaddrinfo(found);
    return connected;
}

void sendAtOnce(const Descriptor& socket) {
    const int on = 1;
    ::setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

/// Passes on what has come. \return false when either side is gone.
bool pass(const Descriptor& from, const Descriptor& to) {
    std::array<char, 65536> buffer;
    const ssize_t got = ::recv(from.get(), buffer.data(), buffer.size(), 0);
    for (ssize_t sent = 0; sent < got;) {
        const ssize_t more =
            ::send(to.get(), buffer.data() + sent, static_cast<std::size_t>(got - sent), MSG_NOSIGNAL);
        if (more <= 0) {
            return false;
        }
        sent += more;
    }
    return got > 0;
}

/// Whether something has come, and not only the end of the connection.
bool hasSpoken(const Descriptor& socket) {
    char first = 0;
    return ::recv(socket.get(), &first, 1, MSG_PEEK | MSG_DONTWAIT) > 0;
}

/// Closes without a farewell: the other end sees a reset, as when a cable is pulled and the peer restarted.
void breakOff(Descriptor& socket) {
    const linger hard{1, 0};
    ::setsockopt(socket.get(), SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
    socket.reset();
}

} // namespace

class TcpProxy::Worker {
public:
    Worker(std::string host, std::uint16_t port)
        : host_(std::move(host)), target_(port), listener_(listenAt(0)), port_(portOf(listener_)) {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            failWith("pipe");
        }
        wakeUp_ = Descriptor(ends[0]);
        caller_ = Descriptor(ends[1]);
        thread_ = std::thread([this] { run(); });
    }
    ~Worker() {
        order([this] { stopped_ = true; });
        thread_.join();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    std::uint16_t port() const { return port_; }

    int connections() {
        int count = 0;
        order([&] { count = static_cast<int>(links_.size()); });
        return count;
    }
    int requests() {
        int count = 0;
        order([&] { count = requests_; });
        return count;
    }
    void cut() {
        order([this] {
            breakAll();
            cutsAtAnswer_ = false;
            stall(false);
        });
    }
    void cutAtNextAnswer() {
        order([this] { cutsAtAnswer_ = true; });
    }
    void stallNow() {
        order([this] { stall(true); });
    }
    void stallAtRequest(int n) {
        order([this, n] { stallsAt_ = requests_ + n; });
    }
    void resume() {
        order([this] { stall(false); });
    }
    void refuse(bool refusing) {
        order([this, refusing] {
            if (refusing) {
                listener_.reset();
            } else if (!listener_) {
                listener_ = listenAt(port_);
            }
        });
    }

private:
    struct Link {
        Descriptor client;
        Descriptor server;
        bool answered = true; ///< what the client says next is a request
    };

    /// Has the thread do something between two of its rounds, and waits for it.
    void order(std::function<void()> what) {
        std::packaged_task<void()> task(std::move(what));
        auto done = task.get_future();
        {
            const std::lock_guard lock(mutex_);
            orders_.push_back(std::move(task));
        }
        if (::write(caller_.get(), "!", 1) != 1) {
            failWith("write");
        }
        done.get();
    }

    void run() {
        while (!stopped_) {
            std::vector<pollfd> watched = {{wakeUp_.get(), POLLIN, 0}, {listener_.get(), POLLIN, 0}};
            if (!stalled_) {
                for (const Link& link : links_) {
                    watched.push_back({link.client.get(), POLLIN, 0});
                    watched.push_back({link.server.get(), POLLIN, 0});
                }
            }
            if (::poll(watched.data(), watched.size(), -1) < 0) {
                continue; // a signal
            }
            if (watched[0].revents != 0) {
                obey(); // the descriptors may be others now
                continue;
            }
            if (watched[1].revents != 0) {
                accept();
                continue;
            }
            auto link = links_.begin();
            for (std::size_t i = 2; i + 1 < watched.size(); i += 2) {
                const auto current = link++;
                if (watched[i].revents != 0 && current->answered && hasSpoken(current->client)) {
                    current->answered = false;
                    if (++requests_ == stallsAt_) {
                        stall(true);
                        break;
                    }
                }
                if (watched[i + 1].revents != 0) {
                    current->answered = true;
                }
                if (watched[i + 1].revents != 0 && cutsAtAnswer_) {
                    cutsAtAnswer_ = false;
                    breakAll();
                    break;
                }
                if ((watched[i].revents != 0 && !pass(current->client, current->server)) ||
                    (watched[i + 1].revents != 0 && !pass(current->server, current->client))) {
                    links_.erase(current);
                }
            }
        }
    }

    void obey() {
        std::array<char, 64> ignored;
        (void)!::read(wakeUp_.get(), ignored.data(), ignored.size());
        std::vector<std::packaged_task<void()>> orders;
        {
            const std::lock_guard lock(mutex_);
            orders.swap(orders_);
        }
        for (auto& order : orders) {
            order();
        }
    }

    void accept() {
        Descriptor client(::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
        Descriptor server = connectTo(host_, target_);
        if (client && server) {
            sendAtOnce(client);
            sendAtOnce(server);
            links_.push_back({std::move(client), std::move(server)});
        }
    }

    void stall(bool stalled) {
        stalled_ = stalled;
        stallsAt_ = 0;
    }

    void breakAll() {
        for (Link& link : links_) {
            breakOff(link.client);
            breakOff(link.server);
        }
        links_.clear();
    }

    const std::string host_;
    const std::uint16_t target_;
    Descriptor listener_;
    const std::uint16_t port_;
    Descriptor wakeUp_;
    Descriptor caller_;
    std::mutex mutex_; // of the orders; all else belongs to the thread
    std::vector<std::packaged_task<void()>> orders_;
    std::list<Link> links_;
    int requests_ = 0;
    int stallsAt_ = 0; // 0 for at none
    bool cutsAtAnswer_ = false;
    bool stalled_ = false;
    bool stopped_ = false;
    std::thread thread_;
};

TcpProxy::TcpProxy(const std::string& host, std::uint16_t port)
    : worker_(std::make_unique<Worker>(host, port)) {}

TcpProxy::~TcpProxy() = default;

std::uint16_t TcpProxy::port() const {
    return worker_->port();
}

int TcpProxy::connections() const {
    return worker_->connections();
}

int TcpProxy::requests() const {
    return worker_->requests();
}

void TcpProxy::cut() {
    worker_->cut();
}

void TcpProxy::cutAtNextAnswer() {
    worker_->cutAtNextAnswer();
}

void TcpProxy::stall() {
    worker_->stallNow();
}

void TcpProxy::stallAtRequest(int n) {
    worker_->stallAtRequest(n);
}

void TcpProxy::resume() {
    worker_->resume();
}

void TcpProxy::refuse(bool refusing) {
    worker_->refuse(refusing);
}

} // namespace veldran::test
