/// The volumes along a real path.
#pragma once

#include "platform/linux/files/RealPath.h"
#include "platform/linux/volumes/MountTable.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tolvane::platform {

/// A volume, and the number of components of its mount point.
struct VolumeCrossing {
    std::size_t depth = 0;
    Mount mount;
};

/// Stands for the root's mount in a process whose root is not a mount point, since the table lacks it. It has
/// no source.
Mount mountOfHiddenRoot(const ItemStatus& root);

/// All volumes on the way, outermost first: always one at "/", and last the item's. Derived from the mount of
/// each step, or from the mount points alone if the kernel does not report it.
///
/// If the process's root is not a mount point, the list begins with `mountOfHiddenRoot`. Nothing if another
/// mount is missing in the table or elsewhere in it: then the table and the path are from different moments.
std::optional<std::vector<VolumeCrossing>> volumeCrossings(const RealPath& path, const MountTable& table);

} // namespace tolvane::platform
