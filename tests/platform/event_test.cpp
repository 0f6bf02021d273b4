#include "platform/event.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldran {
namespace {

TEST(Event, CallsItsHandlersInTheOrderOfTheirSubscription) {
    Event<int> event;
    std::string calls;
    const auto first = event.subscribe([&](int value) { calls += "a" + std::to_string(value); });
    const auto second = event.subscribe([&](int value) { calls += "b" + std::to_string(value); });
    event.raise(1);
    event.raise(2);
    EXPECT_EQ(calls, "a1b1a2b2");
}

TEST(Event, ForgetsAHandlerWhoseSubscriptionEnds) {
    Event<> event;
    int calls = 0;
    {
        const auto subscription = event.subscribe([&] { ++calls; });
        event.raise();
    }
    event.raise();
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(event.hasHandlers());
}

TEST(Event, SkipsAHandlerThatAnotherHandlerDisconnects) {
    Event<> event;
    int calls = 0;
    std::optional<Subscription> second;
    const auto first = event.subscribe([&] { second.reset(); });
    second = event.subscribe([&] { ++calls; });
    event.raise();
    EXPECT_EQ(calls, 0);
}

TEST(Event, LetsAHandlerDisconnectItself) {
    Event<> event;
    int calls = 0;
    std::optional<Subscription> self;
    self = event.subscribe([&] {
        ++calls;
        self.reset();
    });
    event.raise();
    event.raise();
    EXPECT_EQ(calls, 1);
}

TEST(Event, CallsAHandlerSubscribedDuringTheEventFromTheNextOneOn) {
    Event<> event;
    int late = 0;
    std::vector<Subscription> subscriptions;
    subscriptions.push_back(
        event.subscribe([&] { subscriptions.push_back(event.subscribe([&] { ++late; })); }));
    event.raise();
    EXPECT_EQ(late, 0);
    event.raise();
    EXPECT_EQ(late, 1);
}

TEST(Event, SurvivesAHandlerThatDestroysIt) {
    auto event = std::make_unique<Event<>>();
    int calls = 0;
    const auto first = event->subscribe([&] { event.reset(); });
    const auto second = event->subscribe([&] { ++calls; });
    event->raise();
    EXPECT_EQ(calls, 1);
}

TEST(Event, TakesItsHandlersAlongWhenItGoes) {
    auto event = std::make_unique<Event<>>();
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> gone = held;
    auto subscription = event->subscribe([held = std::move(held)] { (void)held; });
    event.reset();
    EXPECT_TRUE(gone.expired());
    subscription.release();
}

TEST(Subscription, DisconnectsWhatItHeldWhenAnotherIsAssigned) {
    Event<> event;
    std::string calls;
    auto subscription = event.subscribe([&] { calls += "a"; });
    subscription = event.subscribe([&] { calls += "b"; });
    event.raise();
    EXPECT_EQ(calls, "b");
}

} // namespace
} // namespace veldran
