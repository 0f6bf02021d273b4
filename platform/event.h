#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace veldran {

/// Keeps a handler connected to an event; disconnects it when destroyed. Empty after a move.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<bool> alive) : alive_(std::move(alive)) {}
    Subscription(Subscription&&) noexcept = default;
    Subscription& operator=(Subscription&& other) noexcept {
        release();
        alive_ = std::move(other.alive_);
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { release(); }

    void release() {
        if (alive_) {
            *alive_ = false;
        }
        alive_.reset();
    }

private:
    std::shared_ptr<bool> alive_; // shared with the event, which forgets the handler once this is false
};

/// One event of an object. Handlers run in the order of their subscription; a handler may subscribe,
/// unsubscribe (itself or others) or even destroy the event's owner while the event is being raised.
template<class... Args>
class Event {
public:
    using Handler = std::function<void(Args...)>;

    Subscription subscribe(Handler handler) {
        auto alive = std::make_shared<bool>(true);
        handlers_->push_back({alive, std::move(handler)});
        return Subscription(std::move(alive));
    }

    void raise(Args... args) const {
        const auto handlers = handlers_; // keeps the list alive should a handler destroy the owner
        bool dead = false;
        for (std::size_t i = 0, n = handlers->size(); i < n; ++i) {
            const Entry entry = (*handlers)[i];
            if (*entry.alive) {
                entry.handler(args...);
            } else {
                dead = true;
            }
        }
        if (dead && handlers.use_count() == 2) { // nobody else is walking the list
            std::erase_if(*handlers, [](const Entry& entry) { return !*entry.alive; });
        }
    }

    bool hasHandlers() const {
        for (const Entry& entry : *handlers_) {
            if (*entry.alive) {
                return true;
            }
        }
        return false;
    }

private:
    struct Entry {
        std::shared_ptr<bool> alive; // shared with the subscription
        Handler handler;
    };
    std::shared_ptr<std::vector<Entry>> handlers_ = std::make_shared<std::vector<Entry>>();
};

} // namespace veldran
