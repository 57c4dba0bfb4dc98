#include "platform/linux/volumes/VolumeFacts.h"

#include "platform/linux/files/ItemStatus.h"
#include "platform/linux/volumes/BlockDevice.h"
#include "platform/linux/volumes/FileSystemKind.h"
#include "platform/linux/volumes/VolumeUUID.h"
#include "platform/values/Pieces.h"
#include "platform/values/Utf8.h"

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

namespace tolvane::platform {

namespace {

// The disk of a file system, or 0. Some file systems have numbers of their own and identify their disk only
// by name.
std::uint64_t diskOf(const Mount& mount) {
    if (major(mount.device) != 0) {
        return mount.device;
    }
    struct stat disk{};
    const bool isDisk =
        mount.source.starts_with("/dev/") && stat(mount.source.c_str(), &disk) == 0 && S_ISBLK(disk.st_mode);
    return isDisk ? disk.st_rdev : 0;
}

const std::string* linkTo(const std::map<std::uint64_t, std::string>& links, std::uint64_t disk) {
    const auto link = links.find(disk);
    return disk != 0 && link != links.end() ? &link->second : nullptr;
}

std::string_view lastComponent(std::string_view path) {
    const auto components = nonEmptyPieces(path, '/');
    return components.empty() ? std::string_view() : components.back();
}

std::string_view nameWithoutLabel(const Mount& mount) {
    const std::string_view source = lastComponent(mount.source);
    if (!source.empty() && source != "none") {
        return source;
    }
    const std::string_view folder = lastComponent(mount.mountPoint);
    return folder.empty() ? std::string_view(mount.type) : folder;
}

bool isShownPlace(std::string_view mountPoint) {
    static constexpr std::array<std::string_view, 5> places{
        "/media/", "/mnt/", "/run/media/", "/Volumes/", "/home/"};
    if (mountPoint == "/") {
        return true;
    }
    // A mount on one of these folders itself belongs to the system, except a disk at /mnt.
    const bool lies = mountPoint == "/mnt" || std::ranges::any_of(places, [&](std::string_view place) {
                          return mountPoint.starts_with(place);
                      });
    return lies && !mountPoint.contains("/.");
}

bool isAutomounted(const MountTable& table, const Mount& mount) {
    const Mount* const below = table.withID(mount.parent);
    return isAutomounter(mount.type) || (below != nullptr && isAutomounter(below->type));
}

// A network or a user-space program must not block this, and neither can answer it.
bool canAnswerUUID(std::string_view type) {
    return isLocalFileSystem(type) && !isAutomounter(type) && !isPseudoFileSystem(type)
           && !type.starts_with("fuse");
}

std::optional<std::int64_t> capacityOf(const struct statfs& facts) {
    const auto unit = static_cast<std::uint64_t>(facts.f_frsize != 0 ? facts.f_frsize : facts.f_bsize);
    std::int64_t bytes = 0;
    if (facts.f_blocks == 0 || __builtin_mul_overflow(facts.f_blocks, unit, &bytes)) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace

BookmarkVolume VolumeFacts::fromAfar(const std::shared_ptr<const MountTable>& table, const Mount& mount) {
    const std::lock_guard lock(mutex_);
    return kept(table, mount).afar;
}

BookmarkVolume VolumeFacts::whole(const std::shared_ptr<const MountTable>& table, const Mount& mount) {
    BookmarkVolume volume = fromAfar(table, mount);
    if (isAutomounter(mount.type)) {
        return volume;
    }
    const auto root = statusOfItem(mount.mountPoint);
    if (!root || (root->mountID && *root->mountID != mount.id)) {
        return volume;
    }
    volume.creationDate = root->creationDate;
    struct statfs facts{};
    if (statfs(mount.mountPoint.c_str(), &facts) == 0) {
        volume.capacity = capacityOf(facts);
        if ((static_cast<unsigned long>(facts.f_flags) & ST_RDONLY) != 0) {
            volume.flags->values |= volume_flag::readOnly;
        }
    }
    volume.uuid = uuid(table, mount);
    return volume;
}

std::optional<std::string> VolumeFacts::uuid(
    const std::shared_ptr<const MountTable>& table, const Mount& mount) {
    const std::lock_guard lock(mutex_);
    Kept& known = kept(table, mount);
    if (known.afar.uuid || !canAnswerUUID(mount.type)) {
        return known.afar.uuid;
    }
    if (!known.isAsked) {
        known.answeredUUID = uuidOfMountedVolume(mount);
        known.isAsked = true;
    }
    return known.answeredUUID;
}

VolumeFacts::Kept& VolumeFacts::kept(const std::shared_ptr<const MountTable>& table, const Mount& mount) {
    if (table_ != table) {
        table_ = table;
        kept_.clear();
        uuids_ = diskLinksIn(folders_.links + "/by-uuid");
        labels_ = diskLinksIn(folders_.links + "/by-label");
    }
    const auto place = kept_.find(mount.id);
    if (place != kept_.end()) {
        return place->second;
    }
    return kept_.emplace(mount.id, Kept{lookFromAfar(*table, mount), false, {}}).first->second;
}

BookmarkVolume VolumeFacts::lookFromAfar(const MountTable& table, const Mount& mount) const {
    const std::uint64_t disk = diskOf(mount);
    BookmarkVolume volume;
    volume.path = shownText(mount.mountPoint);
    volume.url =
        URL::fileURLWithPath(mount.mountPoint == "/" ? "/" : mount.mountPoint + "/").absoluteString();
    const std::string* const label = linkTo(labels_, disk);
    if (const auto name = label != nullptr ? std::string_view(*label) : nameWithoutLabel(mount);
        !name.empty()) {
        volume.name = shownText(name);
    }
    if (const std::string* const uuid = linkTo(uuids_, disk)) {
        volume.uuid = uuidInText(*uuid);
    }
    volume.flags = BookmarkFlags{flagsOf(table, mount, disk), plainVolumeFlagMask, 0};
    volume.wasBoot = mount.mountPoint == "/";
    return volume;
}

std::uint64_t VolumeFacts::flagsOf(const MountTable& table, const Mount& mount, std::uint64_t disk) const {
    std::uint64_t flags = 0;
    const auto set = [&flags](bool isSet, std::uint64_t flag) { flags |= isSet ? flag : 0; };
    set(isLocalFileSystem(mount.type), volume_flag::local);
    set(isAutomounted(table, mount), volume_flag::automounted);
    set(isPseudoFileSystem(mount.type) || !isShownPlace(mount.mountPoint), volume_flag::notBrowsable);
    set(mount.isReadOnly, volume_flag::readOnly);
    set(hasLastingFileNumbers(mount.type), volume_flag::persistentIDs);
    if (disk != 0) {
        const BlockDevice device = blockDeviceInFolder(folders_.devices, disk);
        set(device.isRemovable || device.isDiskImage, volume_flag::ejectable | volume_flag::removable);
        set(device.isInternal, volume_flag::internal);
        set(device.isExternal, volume_flag::external);
        set(device.isDiskImage, volume_flag::diskImage);
    }
    return flags;
}

} // namespace tolvane::platform
