#pragma once

#include "platform/model/Observers.h"

#include <vector>

class QMainWindow;

namespace tolvane::platform {

class QtApplication;

/// Fills the menu "recentMenu", if any, with the recent documents whenever it is opened. Long paths are
/// shortened to different texts; their tool tips are complete.
void fillRecentMenu(QMainWindow& window, QtApplication& application);

/// Keeps the items of the menu "helpMenu", if any, as in the application's model while the subscriptions
/// live. Items that are not in the model yet are added to it.
[[nodiscard]] std::vector<Subscription> mirrorHelpMenu(QMainWindow& window, QtApplication& application);

/// Adds the program's windows to the menu "windowMenu", if any, whenever it is opened.
void fillWindowMenu(QMainWindow& window);

} // namespace tolvane::platform
