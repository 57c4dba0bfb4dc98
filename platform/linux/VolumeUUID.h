// The number that tells a file system from all others, asked of the file system itself.
#pragma once

#include "platform/linux/MountTable.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// The UUID that the mounted file system answers. Its root folder is opened for that, once, not read, and
/// nothing else is opened; where the mount point is no folder, or leads to another mount by now, there is no
/// answer. An answer of zeros alone is none.
std::optional<std::string> uuidOfMountedVolume(const Mount& mount);

/// 16 bytes as 36 characters, upper case with hyphens; nothing for zeros alone.
std::optional<std::string> uuidText(std::span<const std::byte, 16> bytes);

/// The same form of a text that holds a UUID in either case. Nothing for other texts, such as the short
/// serial numbers that FAT and NTFS have in place of one.
std::optional<std::string> uuidInText(std::string_view text);

} // namespace tolvane::platform
