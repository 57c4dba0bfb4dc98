#include "platform/bookmark/resolution/VolumeRecognition.h"

namespace tolvane::platform {

namespace {

char upperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool areSameUUIDs(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, upperCase, upperCase);
}

bool areDifferentUUIDs(const std::optional<std::string>& a, const std::optional<std::string>& b) {
    return a && b && !areSameUUIDs(*a, *b);
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

/// The matching volumes, likeliest first. If the one at the old mount point matches, so do the others of its
/// device, and no more are asked. Otherwise all are asked; nothing if the matches are on several devices.
std::optional<std::vector<MountedVolume>> matching(
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
    return isOneDevice ? std::optional(likeliestFirst(matches, storedMountPoint)) : std::nullopt;
}

} // namespace

RecognisedVolumes recognisedVolumes(const BookmarkVolume& volume, const MountedVolumes& mounted) {
    if (!volume.uuid && !volume.name) {
        return {};
    }
    const std::string storedMountPoint = volume.path.value_or("");
    const std::vector<MountedVolume>& all = mounted.volumes();
    if (volume.uuid) {
        const auto matches = matching(all, storedMountPoint, [&](const MountedVolume& candidate) {
            const std::optional<std::string> uuid = mounted.uuid(candidate);
            return uuid && areSameUUIDs(*uuid, *volume.uuid);
        });
        // Copies with the same UUID are not distinguished by anything else.
        if (!matches || !matches->empty()) {
            return {VolumeMatch::uuid, matches.value_or(std::vector<MountedVolume>())};
        }
    }
    if (!volume.name) {
        return {VolumeMatch::uuid, {}};
    }
    const auto matches = matching(all, storedMountPoint, [&](const MountedVolume& candidate) {
        return candidate.name == volume.name && mounted.capacity(candidate) == volume.capacity
               && !areDifferentUUIDs(volume.uuid, mounted.uuid(candidate));
    });
    return {VolumeMatch::nameAndCapacity, matches.value_or(std::vector<MountedVolume>())};
}

} // namespace tolvane::platform
