#include "platform/model/ActionTarget.h"

#include <gtest/gtest.h>

#include <array>

namespace tolvane::platform {
namespace {

class Counter final : public ActionTarget {
public:
    std::function<void(Sender)> actionForSelector(std::string_view selector) override {
        static constexpr std::array<NamedAction<Counter>, 2> actions{{
            {"up:", &Counter::up},
            {"down:", &Counter::down},
        }};
        return actionIn(actions, *this, selector);
    }

    void up(Sender from) {
        ++count;
        sender = from;
    }
    void down(Sender /*from*/) { --count; }

    int count = 0;
    Sender sender = nullptr;
};

TEST(ActionTarget, carriesOutTheActionThatIsNamed) {
    Counter counter;
    const int button = 0;
    counter.actionForSelector("up:")(&button);
    EXPECT_EQ(counter.count, 1);
    EXPECT_EQ(counter.sender, &button);
    counter.actionForSelector("down:")(nullptr);
    EXPECT_EQ(counter.count, 0);
}

TEST(ActionTarget, hasNothingForOtherNames) {
    Counter counter;
    for (const std::string_view selector : {"", "up", "up:down:", "UP:"}) {
        EXPECT_FALSE(counter.actionForSelector(selector)) << selector;
        EXPECT_FALSE(counter.isActionEnabled(selector)) << selector;
    }
    EXPECT_TRUE(counter.isActionEnabled("up:"));
}

} // namespace
} // namespace tolvane::platform
