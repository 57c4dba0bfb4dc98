#include "platform/bookmark/VolumeRecognition.h"

#include <algorithm>
#include <string_view>

namespace tolvane::platform {

namespace {

constexpr std::size_t fullUUIDLength = 36;

char upperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool areSameUUIDs(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, upperCase, upperCase);
}

/// Short serial numbers are what this system shows of volumes that other systems give a full UUID.
bool areDifferentUUIDs(const std::optional<std::string>& a, const std::optional<std::string>& b) {
    return a && b && a->size() == fullUUIDLength && b->size() == fullUUIDLength && !areSameUUIDs(*a, *b);
}

int likelihood(const MountedVolume& volume, const std::string& storedMountPoint) {
    return volume.mountPoint == storedMountPoint ? 2 : volume.isWhole ? 1 : 0;
}

std::vector<MountedVolume> likeliestFirst(
    const std::vector<const MountedVolume*>& volumes, const std::string& storedMountPoint) {
    std::vector<MountedVolume> sorted;
    for (const int wanted : {2, 1, 0}) {
        for (const MountedVolume* const volume : volumes) {
            if (likelihood(*volume, storedMountPoint) == wanted) {
                sorted.push_back(*volume);
            }
        }
    }
    return sorted;
}

/// Those volumes that are the wanted one, likeliest first. When the one mounted where the wanted one was is
/// it, the others of its device are too, and no more are asked. Otherwise all are asked, and matches on
/// several devices are none.
std::vector<MountedVolume> matching(
    const std::vector<MountedVolume>& volumes, const std::string& storedMountPoint, auto isWanted) {
    const auto there = std::ranges::find(volumes, storedMountPoint, &MountedVolume::mountPoint);
    const bool isThere = there != volumes.end() && isWanted(*there);
    std::vector<const MountedVolume*> matches;
    for (const MountedVolume& volume : volumes) {
        if (isThere ? volume.device == there->device : isWanted(volume)) {
            matches.push_back(&volume);
        }
    }
    const bool isOneDevice = std::ranges::all_of(
        matches, [&](const MountedVolume* volume) { return volume->device == matches.front()->device; });
    return isOneDevice ? likeliestFirst(matches, storedMountPoint) : std::vector<MountedVolume>();
}

} // namespace

RecognisedVolumes recognisedVolumes(const BookmarkVolume& volume, const MountedVolumes& mounted) {
    if (!volume.uuid && !volume.name) {
        return {};
    }
    const std::string storedMountPoint = volume.path.value_or("");
    const std::vector<MountedVolume>& all = mounted.volumes();
    RecognisedVolumes recognised{VolumeMatch::uuid, {}};
    if (volume.uuid) {
        recognised.volumes = matching(all, storedMountPoint, [&](const MountedVolume& candidate) {
            const std::optional<std::string> uuid = mounted.uuid(candidate);
            return uuid && areSameUUIDs(*uuid, *volume.uuid);
        });
    }
    if (recognised.volumes.empty() && volume.name) {
        recognised.match = VolumeMatch::nameAndCapacity;
        recognised.volumes = matching(all, storedMountPoint, [&](const MountedVolume& candidate) {
            return candidate.name == volume.name && mounted.capacity(candidate) == volume.capacity
                   && !areDifferentUUIDs(volume.uuid, mounted.uuid(candidate));
        });
    }
    return recognised;
}

} // namespace tolvane::platform
