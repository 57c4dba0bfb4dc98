#pragma once

#include "platform/model/ActionTarget.h"

#include <QString>

#include <functional>
#include <string_view>

class QMainWindow;
class QObject;

namespace tolvane::platform {

/// Returns the target of an action; null if there is none.
using ResponderLookup = std::function<ActionTarget*(std::string_view selector)>;

/// Makes each menu item and button with a property "selector", such as "copyPath:", send that action to the
/// target that `lookup` returns at that moment. Items without a target are disabled, and while their menu is
/// open also those without effect. Buttons without effect are disabled: now, after each action of the window,
/// and after changes of its texts.
void connectSelectors(QMainWindow& window, const ResponderLookup& lookup);

/// The selector of a menu item or button; empty for one without.
QString selectorOf(const QObject& control);

} // namespace tolvane::platform
