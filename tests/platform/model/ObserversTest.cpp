#include "platform/model/Observers.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

class ObserversTest : public testing::Test {
protected:
    Subscription noting(char letter) {
        return observers.add([this, letter] { calls += letter; });
    }

    Observers observers;
    std::string calls;
};

TEST_F(ObserversTest, areCalledInTheOrderOfAdding) {
    const Subscription first = noting('a');
    const Subscription second = noting('b');
    const Subscription third = noting('c');
    observers.notify();
    observers.notify();
    EXPECT_EQ(calls, "abcabc");
}

TEST_F(ObserversTest, areDetachedWithTheirSubscriptionWhichMayMove) {
    Subscription moved = noting('a');
    Subscription reset = std::move(moved);
    {
        const Subscription scoped = noting('b');
        observers.notify();
    }
    observers.notify();
    reset = Subscription();
    observers.notify();
    EXPECT_EQ(calls, "aba");
}

TEST_F(ObserversTest, detachedDuringANotificationAreNotCalled) {
    std::vector<Subscription> subscriptions(3);
    subscriptions[0] = noting('a');
    subscriptions[1] = observers.add([&] {
        calls += 'b';
        subscriptions[0].reset();
        subscriptions[2].reset();
    });
    subscriptions[2] = noting('c');
    observers.notify();
    observers.notify();
    EXPECT_EQ(calls, "abb");
}

TEST_F(ObserversTest, mayDetachThemselves) {
    Subscription subscription;
    const std::string captured = "an observer's own state";
    subscription = observers.add([this, &subscription, captured] {
        subscription.reset();
        calls += captured;
    });
    observers.notify();
    observers.notify();
    EXPECT_EQ(calls, captured);
}

TEST_F(ObserversTest, addedDuringANotificationAreCalledFromTheNextOneOn) {
    std::vector<Subscription> added;
    const Subscription first = observers.add([&] {
        calls += 'a';
        if (added.empty()) {
            added.push_back(noting('b'));
        }
    });
    observers.notify();
    EXPECT_EQ(calls, "a");
    observers.notify();
    EXPECT_EQ(calls, "aab");
}

TEST_F(ObserversTest, mayCauseAnotherChange) {
    const Subscription first = observers.add([&] {
        calls += 'a';
        if (calls.size() == 1) {
            observers.notify();
        }
    });
    const Subscription second = noting('b');
    observers.notify();
    EXPECT_EQ(calls, "aabb");
}

TEST_F(ObserversTest, mayBeOutlivedByASubscription) {
    const auto token = std::make_shared<int>();
    Subscription subscription;
    {
        Observers shortLived;
        subscription = shortLived.add([token] {});
    }
    EXPECT_EQ(token.use_count(), 2);
    subscription.reset();
    EXPECT_EQ(token.use_count(), 1);
}

TEST_F(ObserversTest, mayEndTheLifeOfTheList) {
    std::optional<Observers> shortLived(std::in_place);
    const Subscription first = shortLived->add([&] {
        calls += 'a';
        shortLived.reset();
    });
    const Subscription second = shortLived->add([&] { calls += 'b'; });
    shortLived->notify();
    EXPECT_FALSE(shortLived.has_value());
    EXPECT_EQ(calls, "ab");
}

} // namespace
} // namespace tolvane::platform
