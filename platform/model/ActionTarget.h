#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <string_view>

namespace tolvane::platform {

/// What sent an action: a menu item, a button, another controller. Actions of this program ignore it.
using Sender = const void*;

/// Carries out actions that menu items and buttons name by their selector, such as "copyPath:".
class ActionTarget {
public:
    ActionTarget() = default;
    ActionTarget(const ActionTarget&) = delete;
    ActionTarget& operator=(const ActionTarget&) = delete;
    virtual ~ActionTarget() = default;

    /// The function that carries the action out; empty when this target has no such action. Valid as long as
    /// the target.
    virtual std::function<void(Sender)> actionForSelector(std::string_view selector) = 0;

    /// False if the action would have no effect now, so that menus can disable it.
    virtual bool isActionEnabled(std::string_view selector) {
        return static_cast<bool>(actionForSelector(selector));
    }
};

/// An action of a class and its selector.
template <typename Target>
struct NamedAction {
    std::string_view selector;
    void (Target::*operation)(Sender);
};

/// Implements `actionForSelector` for a class that keeps its actions in a table.
template <typename Target, std::size_t Count>
std::function<void(Sender)> actionIn(
    const std::array<NamedAction<Target>, Count>& actions, Target& target, std::string_view selector) {
    const auto action = std::ranges::find(actions, selector, &NamedAction<Target>::selector);
    if (action == actions.end()) {
        return {};
    }
    return [&target, operation = action->operation](Sender sender) { (target.*operation)(sender); };
}

} // namespace tolvane::platform
