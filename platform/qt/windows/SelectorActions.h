#pragma once

#include "platform/model/ActionTarget.h"

#include <QString>

#include <functional>
#include <string_view>

class QMainWindow;
class QObject;

namespace tolvane::platform {

/// Finds who carries out an action; null when nobody does.
using ResponderLookup = std::function<ActionTarget*(std::string_view selector)>;

/// Makes every menu item and button of the window that has a property "selector", such as "copyPath:", send
/// that action to whoever `lookup` finds at that moment. Items are disabled where nobody carries their action
/// out, and, while their menu is open, where it would do nothing. Buttons are disabled where theirs would do
/// nothing; that is asked at once, after each action that the window sent, and after its texts have changed.
void connectSelectors(QMainWindow& window, const ResponderLookup& lookup);

/// The selector of a menu item or button; empty for one without.
QString selectorOf(const QObject& control);

} // namespace tolvane::platform
