#pragma once

#include "platform/Observers.h"

#include <list>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {

/// What a menu item of two states shows, with the platform's numbers.
enum class MenuItemState { off = 0, on = 1 };

/// One line of a menu. Its observers are told when its title or state changes.
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

    /// An item whose state is on bears a check mark.
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

/// A menu of the program. However many menu bars show it, there is one.
class Menu {
public:
    /// Adds an item at the end. It lives as long as the menu.
    MenuItem& addItem(std::string title) { return items_.emplace_back(std::move(title)); }

    /// The first item of just this title; null when there is none.
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
