#pragma once

#include "platform/model/Observers.h"

#include <vector>

class QMainWindow;

namespace tolvane::platform {

class QtApplication;

/// Fills the menu named "recentMenu", if the window has one, with the recent documents whenever it is opened.
/// Paths that are too wide for a menu are shortened, no two to the same text; their tool tips have them
/// whole.
void fillRecentMenu(QMainWindow& window, QtApplication& application);

/// Keeps the items of the menu named "helpMenu", if the window has one, as the application's model has them,
/// for as long as the subscriptions live. Items that the model does not have yet are added to it.
[[nodiscard]] std::vector<Subscription> mirrorHelpMenu(QMainWindow& window, QtApplication& application);

/// Adds the program's windows to the menu named "windowMenu", if the window has one, whenever it is opened,
/// long titles shortened likewise.
void fillWindowMenu(QMainWindow& window);

} // namespace tolvane::platform
