#include "platform/model/Observers.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

TEST(Observers, areCalledInTheOrderOfAdding) {
    Observers observers;
    std::string calls;
    const Subscription first = observers.add([&] { calls += 'a'; });
    const Subscription second = observers.add([&] { calls += 'b'; });
    const Subscription third = observers.add([&] { calls += 'c'; });
    observers.notify();
    observers.notify();
    EXPECT_EQ(calls, "abcabc");
}

TEST(Observers, areDetachedWithTheirSubscription) {
    Observers observers;
    std::string calls;
    Subscription reset = observers.add([&] { calls += 'a'; });
    {
        const Subscription scoped = observers.add([&] { calls += 'b'; });
        observers.notify();
    }
    observers.notify();
    reset.reset();
    observers.notify();
    EXPECT_EQ(calls, "aba");
}

TEST(Observers, stayAttachedWhenTheSubscriptionMoves) {
    Observers observers;
    int calls = 0;
    Subscription first = observers.add([&] { ++calls; });
    Subscription second = std::move(first);
    observers.notify();
    EXPECT_EQ(calls, 1);
    second = Subscription();
    observers.notify();
    EXPECT_EQ(calls, 1);
}

TEST(Observers, detachedDuringANotificationAreNotCalled) {
    Observers observers;
    std::string calls;
    std::vector<Subscription> subscriptions(3);
    subscriptions[0] = observers.add([&] { calls += 'a'; });
    subscriptions[1] = observers.add([&] {
        calls += 'b';
        subscriptions[0].reset();
        subscriptions[2].reset();
    });
    subscriptions[2] = observers.add([&] { calls += 'c'; });
    observers.notify();
    observers.notify();
    EXPECT_EQ(calls, "abb");
}

TEST(Observers, mayDetachThemselves) {
    Observers observers;
    std::string calls;
    Subscription subscription;
    const std::string captured = "an observer's own state";
    subscription = observers.add([&calls, &subscription, captured] {
        subscription.reset();
        calls += captured;
    });
    observers.notify();
    observers.notify();
    EXPECT_EQ(calls, captured);
}

TEST(Observers, addedDuringANotificationAreCalledFromTheNextOneOn) {
    Observers observers;
    std::string calls;
    std::vector<Subscription> added;
    const Subscription first = observers.add([&] {
        calls += 'a';
        if (added.empty()) {
            added.push_back(observers.add([&] { calls += 'b'; }));
        }
    });
    observers.notify();
    EXPECT_EQ(calls, "a");
    observers.notify();
    EXPECT_EQ(calls, "aab");
}

TEST(Observers, mayCauseAnotherChange) {
    Observers observers;
    std::string calls;
    const Subscription first = observers.add([&] {
        calls += 'a';
        if (calls.size() == 1) {
            observers.notify();
        }
    });
    const Subscription second = observers.add([&] { calls += 'b'; });
    observers.notify();
    EXPECT_EQ(calls, "aabb");
}

TEST(Observers, mayBeOutlivedByASubscription) {
    const auto token = std::make_shared<int>();
    Subscription subscription;
    {
        Observers observers;
        subscription = observers.add([token] {});
    }
    EXPECT_EQ(token.use_count(), 2);
    subscription.reset();
    EXPECT_EQ(token.use_count(), 1);
}

TEST(Observers, mayEndTheLifeOfTheList) {
    std::optional<Observers> observers(std::in_place);
    std::string calls;
    const Subscription first = observers->add([&] {
        calls += 'a';
        observers.reset();
    });
    const Subscription second = observers->add([&] { calls += 'b'; });
    observers->notify();
    EXPECT_FALSE(observers.has_value());
    EXPECT_EQ(calls, "ab");
}

} // namespace
} // namespace tolvane::platform
