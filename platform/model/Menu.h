#pragma once

#include "platform/model/Observers.h"

#include <list>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {

/// The state of a menu item, with the platform's numbers.
enum class MenuItemState { off = 0, on = 1 };

/// A menu item. Observers are notified if its title or state changes.
class MenuItem {
public:
    explicit MenuItem(std::string title) : title_(std::move(title)) {}

    const std::string& title() const { return title_; }
    void setTitle(std::string title) {
        if (title != title_) {
            title_ = std::move(title);
            observers_.notify();
        }
    }

    /// An item that is on has a check mark.
    MenuItemState state() const { return state_; }
    void setState(MenuItemState state) {
        if (std::exchange(state_, state) != state) {
            observers_.notify();
        }
    }

    [[nodiscard]] Subscription observe(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

private:
    std::string title_;
    MenuItemState state_ = MenuItemState::off;
    Observers observers_;
};

/// A menu of the program, shown by any number of menu bars.
class Menu {
public:
    /// Appends an item, which lives as long as the menu.
    MenuItem& addItem(std::string title) { return items_.emplace_back(std::move(title)); }

    /// The first item with exactly this title, or null.
    MenuItem* itemWithTitle(std::string_view title) {
        for (MenuItem& item : items_) {
            if (item.title() == title) {
                return &item;
            }
        }
        return nullptr;
    }

private:
    std::list<MenuItem> items_;
};

} // namespace tolvane::platform
