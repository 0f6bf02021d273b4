#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace veldran {

/// Keeps a handler connected to an event; disconnects it when destroyed. Empty after a move.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::weak_ptr<bool> alive) : alive_(std::move(alive)) {}
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
        if (const auto alive = alive_.lock()) {
            *alive = false;
        }
        alive_.reset();
    }

private:
    // Of the event, which forgets the handler once this is false. The handler goes with its event at the
    // latest.
    std::weak_ptr<bool> alive_;
};

/// One event of an object. Handlers run in the order of their subscription; a handler may subscribe,
/// unsubscribe (itself or others) or even destroy the event's owner while the event is being raised.
template<class... Args>
class Event {
public:
    using Handler = std::function<void(Args...)>;

    Subscription subscribe(Handler handler) {
        if (!entries_) {
            entries_ = std::make_shared<Entries>();
        }
        auto entry = std::make_shared<Entry>(Entry{std::move(handler)});
        entries_->push_back(entry);
        return Subscription(std::shared_ptr<bool>(entry, &entry->alive));
    }

    void raise(Args... args) const {
        if (!entries_) {
            return;
        }
        const auto entries = entries_; // keeps the list alive should a handler destroy the owner
        bool dead = false;
        for (std::size_t i = 0, n = entries->size(); i < n; ++i) {
            const std::shared_ptr<Entry> entry = (*entries)[i];
            if (entry->alive) {
                entry->handler(args...);
            } else {
                dead = true;
            }
        }
        if (dead && entries.use_count() == 2) { // nobody else is walking the list
            std::erase_if(*entries, [](const auto& entry) { return !entry->alive; });
        }
    }

    bool hasHandlers() const {
        return entries_ && std::any_of(entries_->begin(), entries_->end(),
                                       [](const auto& entry) { return entry->alive; });
    }

private:
    struct Entry {
        Handler handler;
        bool alive = true; ///< until the subscription ends
    };
    // Each entry is shared with the raise that is calling it: a handler may end its own subscription.
    using Entries = std::vector<std::shared_ptr<Entry>>;
    std::shared_ptr<Entries> entries_; // empty until somebody subscribes, as to most events nobody does
};

} // namespace veldran
