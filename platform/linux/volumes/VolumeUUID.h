/// The UUID of a file system, from the file system itself.
#pragma once

#include "platform/linux/volumes/MountTable.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// The UUID of the mounted file system. Its root folder is opened once for that and not read. Nothing if the
/// mount point is not a folder or belongs to another mount by now, or if the UUID is all zeros.
std::optional<std::string> uuidOfMountedVolume(const Mount& mount);

/// 16 bytes as 36 characters, upper case with hyphens; nothing for all zeros.
std::optional<std::string> uuidText(std::span<const std::byte, 16> bytes);

/// The same form of a text that contains a UUID in either case. Nothing for other texts, such as the short
/// serial numbers of FAT and NTFS.
std::optional<std::string> uuidInText(std::string_view text);

} // namespace tolvane::platform
