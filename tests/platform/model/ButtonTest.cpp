#include "platform/model/Button.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tolvane::platform {
namespace {

TEST(Button, isOffUntilItIsSet) {
    Button button;
    EXPECT_EQ(button.state(), ButtonState::off);
    button.setState(ButtonState::on);
    EXPECT_EQ(button.state(), ButtonState::on);
    button.setState(ButtonState::off);
    EXPECT_EQ(button.state(), ButtonState::off);
    EXPECT_EQ(static_cast<int>(ButtonState::off), 0) << "as the platform numbers its states";
    EXPECT_EQ(static_cast<int>(ButtonState::on), 1);
}

TEST(Button, notifiesObserversWhenItsStateChanges) {
    Button button;
    std::string seen;
    const Subscription subscription =
        button.observe([&] { seen += button.state() == ButtonState::on ? '+' : '-'; });
    button.setState(ButtonState::off);
    button.setState(ButtonState::on);
    button.setState(ButtonState::on);
    button.setState(ButtonState::off);
    EXPECT_EQ(seen, "+-");
}

TEST(Button, mayBeDestroyedByAnObserver) {
    auto button = std::make_unique<Button>();
    const Subscription subscription = button->observe([&] { button.reset(); });
    button->setState(ButtonState::on);
    EXPECT_EQ(button, nullptr);
}

} // namespace
} // namespace tolvane::platform
