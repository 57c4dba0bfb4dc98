#pragma once

#include "platform/values/Error.h"

#include <functional>
#include <string>
#include <dirent.h>

namespace tolvane::platform {

/// Receives an entry and the open folder, for calls relative to it; false ends the visit.
using FolderEntryVisitor = std::function<bool(const dirent& entry, int folder)>;

/// Visits the entries in the order in which the volume lists them, without "." and "..". A path that leads to
/// a symbolic link is no folder, unless a slash comes after it. The folder's access date stays as it is where
/// the system permits that.
Result<void> visitFolderEntries(const std::string& folder, const FolderEntryVisitor& visitor);

} // namespace tolvane::platform
