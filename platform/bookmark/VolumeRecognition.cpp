#include "platform/bookmark/VolumeRecognition.h"

#include <algorithm>
#include <iterator>
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

/// Of volumes of several devices only those of the one that is mounted where the bookmark's was; none if that
/// is none of them. Expects the likeliest first.
void keepOneDevice(std::vector<MountedVolume>& volumes, const std::string& storedMountPoint) {
    if (volumes.empty()) {
        return;
    }
    const auto isOfOtherDevice = [device = volumes.front().device](const MountedVolume& volume) {
        return volume.device != device;
    };
    if (std::ranges::none_of(volumes, isOfOtherDevice)) {
        return;
    }
    if (volumes.front().mountPoint != storedMountPoint) {
        volumes.clear();
        return;
    }
    std::erase_if(volumes, isOfOtherDevice);
}

} // namespace

RecognisedVolumes recognisedVolumes(const BookmarkVolume& volume, const MountedVolumes& mounted) {
    if (!volume.uuid && !volume.name) {
        return {};
    }
    const std::string storedMountPoint = volume.path.value_or("");
    std::vector<MountedVolume> all = mounted.volumes();
    std::ranges::stable_sort(all, std::ranges::greater{}, [&](const MountedVolume& candidate) {
        return likelihood(candidate, storedMountPoint);
    });

    RecognisedVolumes recognised{VolumeMatch::uuid, {}};
    if (volume.uuid) {
        std::ranges::copy_if(
            all, std::back_inserter(recognised.volumes), [&](const MountedVolume& candidate) {
                const std::optional<std::string> uuid = mounted.uuid(candidate);
                return uuid && areSameUUIDs(*uuid, *volume.uuid);
            });
    }
    if (recognised.volumes.empty() && volume.name) {
        recognised.match = VolumeMatch::nameAndCapacity;
        std::ranges::copy_if(
            all, std::back_inserter(recognised.volumes), [&](const MountedVolume& candidate) {
                return candidate.name == volume.name && mounted.capacity(candidate) == volume.capacity
                       && !areDifferentUUIDs(volume.uuid, mounted.uuid(candidate));
            });
    }
    keepOneDevice(recognised.volumes, storedMountPoint);
    return recognised;
}

} // namespace tolvane::platform
