#pragma once

#include "platform/linux/files/ItemStatus.h"

#include <string>
#include <vector>

/// Where an item really is: its path from "/" downward without links and dots, and what each step on it is.
///
/// The last component is taken as it is: a symbolic link is an item too. A path that ends in a slash, "." or
/// ".." means a folder, and a link there is followed. Every item is looked at by its real path; none is
/// opened.
namespace tolvane::platform {

struct RealPath {
    std::vector<std::string> components; ///< None for "/".
    std::vector<ItemStatus> items;       ///< That of "/", then one for each component.

    /// The path down to so many components.
    std::string textDownTo(std::size_t count) const;
};

/// Fails with the system's error, as a system call on the path itself would; ELOOP after 40 links.
Result<RealPath> realPathOfItem(const std::string& path);

/// Whether another look at each step finds the same items, on the same mounts. If so, all that was found out
/// before held true at one moment between the two looks, however much was renamed or mounted around it.
bool isUnchanged(const RealPath& path);

/// Whether two looks found the same item. Another one that was given a number used before has another
/// creation date.
bool isSameItem(const ItemStatus& a, const ItemStatus& b);

} // namespace tolvane::platform
