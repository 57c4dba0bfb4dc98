#include "platform/model/Menu.h"

#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using platform::Menu;
using platform::MenuItem;
using platform::MenuItemState;

TEST(Menu, findsItsItemsByTheirTitlesOfTheMoment) {
    Menu menu;
    EXPECT_EQ(menu.itemWithTitle("One"), nullptr);
    MenuItem& one = menu.addItem("One");
    MenuItem& two = menu.addItem("Two");
    menu.addItem("Two");
    EXPECT_EQ(menu.itemWithTitle("One"), &one);
    EXPECT_EQ(menu.itemWithTitle("Two"), &two);
    EXPECT_EQ(menu.itemWithTitle("two"), nullptr);
    EXPECT_EQ(menu.itemWithTitle(""), nullptr);
    one.setTitle("Three");
    EXPECT_EQ(menu.itemWithTitle("One"), nullptr);
    EXPECT_EQ(menu.itemWithTitle("Three"), &one);
}

TEST(MenuItem, isOffAtFirstAndNotifiesItsObserversOfChangesOnly) {
    MenuItem item("One");
    EXPECT_EQ(item.state(), MenuItemState::off);
    EXPECT_EQ(static_cast<int>(MenuItemState::on), 1);
    int calls = 0;
    auto subscription = item.observe([&calls] { ++calls; });
    item.setTitle("One");
    item.setState(MenuItemState::off);
    EXPECT_EQ(calls, 0);
    item.setState(MenuItemState::on);
    item.setTitle("Two");
    EXPECT_EQ(calls, 2);
    subscription.reset();
    item.setTitle("Three");
    EXPECT_EQ(calls, 2);
}

} // namespace
} // namespace tolvane::tests
