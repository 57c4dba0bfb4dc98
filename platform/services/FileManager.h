#pragma once

#include "platform/values/Error.h"
#include "platform/values/Value.h"

#include <string_view>

/// Keys of the file manager's attribute dictionary, with the types of their values.
namespace tolvane::platform {

inline constexpr std::string_view NSFileSize = "NSFileSize"; ///< Integer, bytes.
inline constexpr std::string_view NSFilePosixPermissions =
    "NSFilePosixPermissions";                                                ///< Integer, mode & 07777.
inline constexpr std::string_view NSFileSystemNumber = "NSFileSystemNumber"; ///< u64, device number.
inline constexpr std::string_view NSFileSystemFileNumber = "NSFileSystemFileNumber"; ///< u64, inode number.
inline constexpr std::string_view NSFileOwnerAccountName = "NSFileOwnerAccountName"; ///< Text.
inline constexpr std::string_view NSFileOwnerAccountID = "NSFileOwnerAccountID";     ///< u32.
inline constexpr std::string_view NSFileGroupOwnerAccountName = "NSFileGroupOwnerAccountName"; ///< Text.
inline constexpr std::string_view NSFileGroupOwnerAccountID = "NSFileGroupOwnerAccountID";     ///< u32.
inline constexpr std::string_view NSFileCreationDate = "NSFileCreationDate";         ///< Date of birth.
inline constexpr std::string_view NSFileModificationDate = "NSFileModificationDate"; ///< Date.
inline constexpr std::string_view NSFileType = "NSFileType"; ///< Text, one of those below.
inline constexpr std::string_view NSFileReferenceCount = "NSFileReferenceCount"; ///< u32, hard links.
inline constexpr std::string_view NSFileExtendedAttributes =
    "NSFileExtendedAttributes"; ///< Dictionary, name to data.

inline constexpr std::string_view NSFileTypeRegular = "NSFileTypeRegular";
inline constexpr std::string_view NSFileTypeDirectory = "NSFileTypeDirectory";
inline constexpr std::string_view NSFileTypeSymbolicLink = "NSFileTypeSymbolicLink";
inline constexpr std::string_view NSFileTypeSocket = "NSFileTypeSocket";
inline constexpr std::string_view NSFileTypeCharacterSpecial = "NSFileTypeCharacterSpecial";
inline constexpr std::string_view NSFileTypeBlockSpecial = "NSFileTypeBlockSpecial";
inline constexpr std::string_view NSFileTypeUnknown = "NSFileTypeUnknown";

/// Returns attributes of items by path. Nothing is opened, changed or cached. The terminal program asks from
/// several threads at a time.
class FileManager {
public:
    virtual ~FileManager() = default;

    /// The attributes of the item itself: a final symbolic link is not followed, but its extended attributes
    /// are those of its target. Facts that the system does not supply have no entry; NSFileSize always has
    /// one. Fails with the system's error if the item cannot be accessed. Paths are bytes.
    virtual Result<Dictionary> attributesOfItemAtPath(std::string_view path) const = 0;
};

} // namespace tolvane::platform
