#pragma once

#include "platform/Action.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <string_view>

namespace tolvane::platform {

/// Whoever carries out actions that menu items and buttons name by their selector, such as "copyPath:".
class ActionTarget {
public:
    ActionTarget() = default;
    ActionTarget(const ActionTarget&) = delete;
    ActionTarget& operator=(const ActionTarget&) = delete;
    virtual ~ActionTarget() = default;

    /// What carries the action out; empty when this target has no such action. Valid as long as the target.
    virtual std::function<void(Sender)> actionForSelector(std::string_view selector) = 0;

    /// False when carrying the action out would change or show nothing now, so that a menu need not offer it.
    virtual bool isActionEnabled(std::string_view selector) {
        return static_cast<bool>(actionForSelector(selector));
    }
};

/// One action of a class by its selector.
template <typename Target>
struct NamedAction {
    std::string_view selector;
    void (Target::*operation)(Sender);
};

/// The answer to `actionForSelector` of a class that keeps its actions in a table.
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
