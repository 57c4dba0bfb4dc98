#include "platform/linux/volumes/VolumeCrossings.h"

#include "platform/linux/volumes/FileSystemKind.h"

#include <algorithm>
#include <sys/vfs.h>

namespace tolvane::platform {

namespace {

std::vector<VolumeCrossing> crossingsByMountPoint(const RealPath& path, const MountTable& table) {
    std::vector<VolumeCrossing> crossings;
    for (const MountOnTheWay& step : table.onTheWayTo(path.textDownTo(path.components.size()))) {
        crossings.push_back({step.depth, *step.mount});
    }
    if (crossings.empty() || crossings.front().depth != 0) {
        crossings.insert(crossings.begin(), {0, mountOfHiddenRoot(path.items.front())});
    }
    return crossings;
}

} // namespace

Mount mountOfHiddenRoot(const ItemStatus& root) {
    Mount mount;
    mount.id = root.mountID.value_or(0);
    mount.device = root.device;
    mount.mountPoint = "/";
    struct statfs facts{};
    if (statfs("/", &facts) == 0) {
        mount.type = fileSystemTypeOfMagic(static_cast<std::uint64_t>(facts.f_type));
    }
    return mount;
}

std::optional<std::vector<VolumeCrossing>> volumeCrossings(const RealPath& path, const MountTable& table) {
    if (!std::ranges::all_of(path.items, [](const ItemStatus& item) { return item.mountID.has_value(); })) {
        return crossingsByMountPoint(path, table);
    }
    std::vector<VolumeCrossing> crossings;
    for (std::size_t depth = 0; depth < path.items.size(); ++depth) {
        const std::uint64_t id = *path.items[depth].mountID;
        if (!crossings.empty() && crossings.back().mount.id == id) {
            continue;
        }
        const Mount* const mount = table.withID(id);
        if (mount != nullptr && mount->mountPoint == path.textDownTo(depth)) {
            crossings.push_back({depth, *mount});
        } else if (mount == nullptr && depth == 0) {
            crossings.push_back({0, mountOfHiddenRoot(path.items.front())});
        } else {
            return std::nullopt;
        }
    }
    return crossings;
}

} // namespace tolvane::platform
