// Which volumes a real path leads through.
#pragma once

#include "platform/linux/MountTable.h"
#include "platform/linux/RealPath.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tolvane::platform {

/// A volume, and how many components the path has down to its mount point.
struct VolumeCrossing {
    std::size_t depth = 0;
    Mount mount;
};

/// The mount that a process stands on whose root is no mount point; its table does not have it. Told as far
/// as it can be, without its source.
Mount mountOfHiddenRoot(const ItemStatus& root);

/// All that are met on the way, outermost first: always one at "/", and last the one that the item is on. By
/// what each step was found on; where the kernel does not tell that, by the mount points alone.
///
/// A process whose root is no mount point begins with `mountOfHiddenRoot`. Nothing when another mount is
/// unknown to the table, or known at another place: then the table is of another moment than the path.
std::optional<std::vector<VolumeCrossing>> volumeCrossings(const RealPath& path, const MountTable& table);

} // namespace tolvane::platform
