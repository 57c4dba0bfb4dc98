#pragma once

#include "platform/linux/files/ItemStatus.h"

#include <string>
#include <vector>

/// The real path of an item from "/", without links and dots, and the status of each step.
///
/// A final symbolic link is itself the item, but a path that ends in a slash, "." or ".." means a folder, and
/// a link there is followed. No item is opened.
namespace tolvane::platform {

struct RealPath {
    std::vector<std::string> components; ///< None for "/".
    std::vector<ItemStatus> items;       ///< That of "/", then one for each component.

    /// The path down to so many components.
    std::string textDownTo(std::size_t count) const;
};

/// Fails with the system's error, as a system call on the path itself would; ELOOP after 40 links.
Result<RealPath> realPathOfItem(const std::string& path);

/// Whether each step is still the same item on the same mount. If so, everything found before was true at one
/// moment, whatever was renamed or mounted meanwhile.
bool isUnchanged(const RealPath& path);

/// The same without a look at "/", which is another one only after the mounts have changed.
bool isUnchangedBelowRoot(const RealPath& path);

/// Whether both are the same item. A new item with a reused number has another creation date.
bool isSameItem(const ItemStatus& a, const ItemStatus& b);

} // namespace tolvane::platform
