#pragma once

#include "platform/values/URL.h"

#include <QString>

#include <optional>

/// Conversion between Qt's paths, which are text, and those on disk, which are bytes. Qt shows a name that is
/// not UTF-8 with U+FFFD in place of what cannot be decoded, and cannot find the item by that name.
namespace tolvane::platform {

/// The item at an absolute path as Qt or this program shows it. A component that is not there by its
/// UTF-8 form stands for the one entry of its folder that is shown so. Nothing when no item is there, when
/// several are shown so, or when a folder on the way cannot be looked into. A final symbolic link is itself
/// the item and may lead nowhere.
std::optional<URL> URLOfItemAtPath(const QString& path);

/// Where an item that need not exist yet would be: its folder is found as above, the last component is taken
/// as UTF-8. Nothing when there is no such folder.
std::optional<URL> URLForNewItemAtPath(const QString& path);

/// True when an item is there: a symbolic link is one, wherever it leads.
bool isThere(const URL& item);

/// True when both are the same item today, or lead to the same.
bool isSameItem(const URL& a, const URL& b);

/// True for a folder and for a link that leads to one.
bool isFolder(const URL& item);

/// The path of a file URL as Qt takes it; empty for other URLs.
QString qtPath(const URL& url);

/// The absolute path that the text of a panel's name field means in a folder. A text without a slash is a
/// name; one that begins with "~/" starts at the user's home. Otherwise as `absolutePath` has it.
QString pathOfFieldText(const QString& text, const QString& folder);

} // namespace tolvane::platform
