#pragma once

#include "platform/values/URL.h"

#include <QString>

#include <optional>

/// Conversion between Qt's paths (text) and those on disk (bytes). Qt shows names that are not UTF-8 with
/// U+FFFD, and cannot find such items.
namespace tolvane::platform {

/// The item at an absolute path as Qt or this program shows it. A component that does not exist in UTF-8 is
/// the one entry of its folder that is shown so. Nothing if there is no or more than one such item, or a
/// folder cannot be read. A final symbolic link is itself the item.
std::optional<URL> URLOfItemAtPath(const QString& path);

/// The URL of an item that need not exist: its folder is found as above, the last component is UTF-8. Nothing
/// without that folder.
std::optional<URL> URLForNewItemAtPath(const QString& path);

/// True when an item is there: a symbolic link is one, wherever it leads.
bool isThere(const URL& item);

/// True when both are the same item today, or lead to the same.
bool isSameItem(const URL& a, const URL& b);

/// True for a folder and for a link that leads to one.
bool isFolder(const URL& item);

/// The path of a file URL as Qt takes it; empty for other URLs.
QString qtPath(const URL& url);

/// The absolute path that a name field's text means in a folder; "~/" is the user's home. See `absolutePath`.
QString pathOfFieldText(const QString& text, const QString& folder);

} // namespace tolvane::platform
