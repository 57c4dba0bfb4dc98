#include "platform/bookmark/resolution/VolumeRecognition.h"

#include "platform/bookmark/resolution/LocalTime.h"

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

using Volumes = std::vector<const MountedVolume*>;

int likelihood(const MountedVolume& volume, std::string_view storedMountPoint) {
    return volume.mountPoint == storedMountPoint ? 2 : volume.isWhole ? 1 : 0;
}

Volumes likeliestFirst(const Volumes& volumes, std::string_view storedMountPoint) {
    Volumes sorted;
    sorted.reserve(volumes.size());
    for (const int wanted : {2, 1, 0}) {
        for (const MountedVolume* const volume : volumes) {
            if (likelihood(*volume, storedMountPoint) == wanted) {
                sorted.push_back(volume);
            }
        }
    }
    return sorted;
}

/// The matching volumes, likeliest first. If the one at the old mount point matches, so do the others of its
/// device, and no more are asked. Otherwise all are asked; nothing if the matches are on several devices.
std::optional<Volumes> matching(
    const std::vector<MountedVolume>& volumes, std::string_view storedMountPoint, auto isWanted) {
    const auto there = std::ranges::find(volumes, storedMountPoint, &MountedVolume::mountPoint);
    const bool isThere = there != volumes.end() && isWanted(*there);
    Volumes matches;
    for (const MountedVolume& volume : volumes) {
        if (isThere ? volume.device == there->device : isWanted(volume)) {
            matches.push_back(&volume);
        }
    }
    const bool isOneDevice = std::ranges::all_of(
        matches, [&](const MountedVolume* volume) { return volume->device == matches.front()->device; });
    return isOneDevice ? std::optional(likeliestFirst(matches, storedMountPoint)) : std::nullopt;
}

bool isOfItsTime(const BookmarkVolume& stored, const std::optional<Date>& date) {
    if (!date) {
        return false;
    }
    if (stored.creationDate) {
        return stored.creationDate->unixSeconds() == date->unixSeconds();
    }
    return stored.localCreationDate && isLocalTimeOf(*stored.localCreationDate, *date);
}

} // namespace

RecognisedVolumes recognisedVolumes(const BookmarkVolume& volume, const MountedVolumes& mounted) {
    if (!volume.uuid && !volume.name) {
        return {};
    }
    const std::string_view storedMountPoint =
        volume.path ? std::string_view(*volume.path) : std::string_view();
    const std::vector<MountedVolume>& all = mounted.volumes();
    if (volume.uuid) {
        const auto matches = matching(all, storedMountPoint, [&](const MountedVolume& candidate) {
            const std::optional<std::string> uuid = mounted.uuid(candidate);
            return uuid && areSameUUIDs(*uuid, *volume.uuid);
        });
        // Copies with the same UUID are not distinguished by anything else.
        if (!matches || !matches->empty()) {
            return {VolumeMatch::uuid, matches.value_or(Volumes())};
        }
    }
    if (!volume.name) {
        return {VolumeMatch::uuid, {}};
    }
    const auto hasItsName = [&](const MountedVolume& candidate) {
        return candidate.name == volume.name && !areDifferentUUIDs(volume.uuid, mounted.uuid(candidate));
    };
    const auto matches = matching(all, storedMountPoint, [&](const MountedVolume& candidate) {
        return hasItsName(candidate) && mounted.capacity(candidate) == volume.capacity;
    });
    const bool storesDateAlone = !volume.capacity && (volume.creationDate || volume.localCreationDate);
    if (matches && matches->empty() && storesDateAlone) {
        const auto ofItsTime = matching(all, storedMountPoint, [&](const MountedVolume& candidate) {
            return hasItsName(candidate) && isOfItsTime(volume, mounted.creationDate(candidate));
        });
        return {VolumeMatch::nameAndCreationDate, ofItsTime.value_or(Volumes())};
    }
    return {VolumeMatch::nameAndCapacity, matches.value_or(Volumes())};
}

} // namespace tolvane::platform
