#include "platform/linux/files/ItemStatus.h"

#include <bit>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace tolvane::platform {

namespace {

Date dateOf(const statx_timestamp& stamp) {
    return Date::fromUnixTime(stamp.tv_sec, stamp.tv_nsec);
}

} // namespace

Result<ItemStatus> statusOfItem(const std::string& path) {
    if (path.contains('\0')) {
        return std::unexpected(posixError(EINVAL));
    }
    struct statx answer{};
    constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_SYNC_AS_STAT;
    if (statx(AT_FDCWD, path.c_str(), flags, STATX_BASIC_STATS | STATX_BTIME | STATX_MNT_ID, &answer) != 0) {
        return std::unexpected(posixError(errno));
    }
    ItemStatus status;
    status.mode = answer.stx_mode;
    status.size = answer.stx_size;
    status.fileNumber = answer.stx_ino;
    status.device = deviceNumber(answer.stx_dev_major, answer.stx_dev_minor);
    status.ownerID = answer.stx_uid;
    status.groupID = answer.stx_gid;
    status.linkCount = answer.stx_nlink;
    status.modificationDate = dateOf(answer.stx_mtime);
    status.changeDate = dateOf(answer.stx_ctime);
    if ((answer.stx_mask & STATX_BTIME) != 0) {
        status.creationDate = dateOf(answer.stx_btime);
    }
    if ((answer.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0) {
        status.isMountRoot = (answer.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    }
    if ((answer.stx_mask & STATX_MNT_ID) != 0) {
        status.mountID = answer.stx_mnt_id;
    }
    return status;
}

bool isMountRoot(const std::string& folder, const ItemStatus& status) {
    if (const auto told = status.isMountRoot) {
        return *told;
    }
    const auto parent = statusOfItem(folder + "/..");
    // The root is its own parent.
    return parent && (parent->device != status.device || parent->fileNumber == status.fileNumber);
}

Data resourceIdentifier(const ItemStatus& status) {
    const auto bytes = std::bit_cast<std::array<std::byte, 16>>(std::array{status.fileNumber, status.device});
    return {bytes.begin(), bytes.end()};
}

std::uint64_t deviceNumber(std::uint32_t major, std::uint32_t minor) {
    return gnu_dev_makedev(major, minor);
}

} // namespace tolvane::platform
