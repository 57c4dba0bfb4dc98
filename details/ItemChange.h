#pragma once

#include "platform/services/URLResources.h"
#include "platform/values/URL.h"

#include <string_view>

/// Whether an item is still as it was when it was opened.
namespace tolvane::details {

enum class ItemChange {
    none,
    changed,      ///< Its contents, its attributes or what the file system keeps about it.
    replaced,     ///< Another item has its path.
    gone,         ///< Nothing has its path.
    inaccessible, ///< What has its path cannot be looked at.
};

/// Compares the item at the URL's path with what the URL remembers of the item it was opened with, by one
/// look at the item. What the URL does not remember counts as unchanged.
ItemChange changeOf(const platform::URL& item, const platform::URLResources& resources);

/// What is said of a change; empty for none.
std::string_view noteOf(ItemChange change);

} // namespace tolvane::details
