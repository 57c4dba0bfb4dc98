#pragma once

#include "platform/posix/FileMode.h"
#include "platform/values/Date.h"
#include "platform/values/Error.h"

#include <cstdint>
#include <optional>
#include <string>

/// One look at an item: everything that a single statx of the item itself returns.
///
/// A final symbolic link is not followed, nothing is mounted on the way, and the item is not opened. On a
/// network file system the answer is as fresh as that of stat.
namespace tolvane::platform {

struct ItemStatus {
    std::uint32_t mode = 0; ///< Kind and permissions, as in st_mode.
    std::uint64_t size = 0;
    std::uint64_t fileNumber = 0;
    std::uint64_t device = 0; ///< As st_dev counts it.
    std::uint32_t ownerID = 0;
    std::uint32_t groupID = 0;
    std::uint32_t linkCount = 0;
    Date modificationDate{0};
    Date changeDate{0};                   ///< Of contents, status or attributes.
    std::optional<Date> creationDate;     ///< Absent where the file system keeps no birth time.
    std::optional<bool> isMountRoot;      ///< Absent where the kernel does not say.
    std::optional<std::uint64_t> mountID; ///< Of the mount that the item was met on; absent likewise.
};

/// Fails with the system's error; an empty path names nothing (ENOENT), and one with a NUL in it is refused
/// (EINVAL) rather than cut there.
Result<ItemStatus> statusOfItem(const std::string& path);

/// Whether the folder with this status is a mount point; asks its parent if the kernel did not say.
bool isMountRoot(const std::string& folder, const ItemStatus& status);

/// The 16 bytes that identify an item in URLs: file number, then device, in the machine's byte order.
Data resourceIdentifier(const ItemStatus& status);

/// The single number that st_dev makes of a major and a minor device number.
std::uint64_t deviceNumber(std::uint32_t major, std::uint32_t minor);

} // namespace tolvane::platform
