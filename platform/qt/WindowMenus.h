#pragma once

class QMainWindow;

namespace tolvane::platform {

class QtApplication;

/// Fills the menu named "recentMenu", if the window has one, with the recent documents whenever it is opened.
void fillRecentMenu(QMainWindow& window, QtApplication& application);

/// Adds the program's windows to the menu named "windowMenu", if the window has one, whenever it is opened.
void fillWindowMenu(QMainWindow& window);

} // namespace tolvane::platform
