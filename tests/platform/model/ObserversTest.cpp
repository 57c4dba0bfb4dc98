#include "platform/model/Observers.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

TEST(Observers, areToldInTheOrderOfAdding) {
    Observers observers;
    std::string told;
    const Subscription first = observers.add([&] { told += 'a'; });
    const Subscription second = observers.add([&] { told += 'b'; });
    const Subscription third = observers.add([&] { told += 'c'; });
    observers.notify();
    observers.notify();
    EXPECT_EQ(told, "abcabc");
}

TEST(Observers, areDetachedWithTheirSubscription) {
    Observers observers;
    std::string told;
    Subscription reset = observers.add([&] { told += 'a'; });
    {
        const Subscription scoped = observers.add([&] { told += 'b'; });
        observers.notify();
    }
    observers.notify();
    reset.reset();
    observers.notify();
    EXPECT_EQ(told, "aba");
}

TEST(Observers, stayAttachedWhenTheSubscriptionMoves) {
    Observers observers;
    int told = 0;
    Subscription first = observers.add([&] { ++told; });
    Subscription second = std::move(first);
    observers.notify();
    EXPECT_EQ(told, 1);
    second = Subscription();
    observers.notify();
    EXPECT_EQ(told, 1);
}

TEST(Observers, detachedWhileTheOthersAreToldAreNotHeard) {
    Observers observers;
    std::string told;
    std::vector<Subscription> subscriptions(3);
    subscriptions[0] = observers.add([&] { told += 'a'; });
    subscriptions[1] = observers.add([&] {
        told += 'b';
        subscriptions[0].reset();
        subscriptions[2].reset();
    });
    subscriptions[2] = observers.add([&] { told += 'c'; });
    observers.notify();
    observers.notify();
    EXPECT_EQ(told, "abb");
}

TEST(Observers, mayDetachThemselves) {
    Observers observers;
    std::string told;
    Subscription subscription;
    const std::string captured = "an observer's own state";
    subscription = observers.add([&told, &subscription, captured] {
        subscription.reset();
        told += captured;
    });
    observers.notify();
    observers.notify();
    EXPECT_EQ(told, captured);
}

TEST(Observers, addedWhileTheOthersAreToldAreHeardFromTheNextChangeOn) {
    Observers observers;
    std::string told;
    std::vector<Subscription> added;
    const Subscription first = observers.add([&] {
        told += 'a';
        if (added.empty()) {
            added.push_back(observers.add([&] { told += 'b'; }));
        }
    });
    observers.notify();
    EXPECT_EQ(told, "a");
    observers.notify();
    EXPECT_EQ(told, "aab");
}

TEST(Observers, mayCauseAnotherChange) {
    Observers observers;
    std::string told;
    const Subscription first = observers.add([&] {
        told += 'a';
        if (told.size() == 1) {
            observers.notify();
        }
    });
    const Subscription second = observers.add([&] { told += 'b'; });
    observers.notify();
    EXPECT_EQ(told, "aabb");
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
    std::string told;
    const Subscription first = observers->add([&] {
        told += 'a';
        observers.reset();
    });
    const Subscription second = observers->add([&] { told += 'b'; });
    observers->notify();
    EXPECT_FALSE(observers.has_value());
    EXPECT_EQ(told, "ab");
}

} // namespace
} // namespace tolvane::platform
