#pragma once

#include "platform/bookmark/format/BookmarkStructure.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Alias records: what a Mac kept of a file before there were bookmarks, in the resource forks of old alias
/// files, in preferences and in the settings of folders. All numbers are big-endian.
namespace tolvane::platform {

/// Tags of the data after an alias record's fixed part.
namespace alias_tag {
inline constexpr std::uint16_t folderName = 0;
inline constexpr std::uint16_t parentNumbers = 1;
inline constexpr std::uint16_t carbonPath = 2;
inline constexpr std::uint16_t networkMount = 9;
inline constexpr std::uint16_t unicodeFileName = 14;
inline constexpr std::uint16_t unicodeVolumeName = 15;
inline constexpr std::uint16_t volumeCreationDate = 16;
inline constexpr std::uint16_t fileCreationDate = 17;
inline constexpr std::uint16_t posixPath = 18;
inline constexpr std::uint16_t mountPoint = 19;
inline constexpr std::uint16_t diskImageAlias = 20;
inline constexpr std::uint16_t homeLevels = 21;
inline constexpr std::uint16_t end = 0xFFFF;
} // namespace alias_tag

/// One tag with its data, as stored.
struct AliasItem {
    std::uint16_t tag = 0;
    std::size_t offset = 0; ///< Of the tag, from the record's first byte.
    Data bytes;

    friend bool operator==(const AliasItem&, const AliasItem&) = default;
};

/// A creation date as a record has it. Version 2 has it in the local time of the Mac that wrote the record,
/// whose zone is not stored; later systems add it in UTC.
struct AliasDate {
    std::optional<Date> utc;
    std::optional<Date> local; ///< The local time as if it were UTC.

    friend bool operator==(const AliasDate&, const AliasDate&) = default;
};

/// A parsed alias record. Unknown facts are absent. Texts from the fixed part are decoded from Mac Roman;
/// paths are the bytes that are stored, which need not be UTF-8.
struct AliasRecord {
    std::uint32_t applicationInfo = 0; ///< Of the program that made it; 0 as a rule.
    std::uint16_t version = 0;         ///< 2 or 3.
    std::uint16_t length = 0;          ///< As stated, which is no more than the bytes.
    bool isFolder = false;

    std::string volumeName; ///< The Unicode one if there is one.
    std::string fileName;   ///< Likewise.
    AliasDate volumeCreationDate;
    AliasDate creationDate;

    std::uint16_t fileSystem = 0; ///< Two letters, such as "H+".
    std::uint16_t diskType = 0;   ///< 0 fixed, 1 network, 2 to 4 floppy disks, 5 another that can be ejected.
    std::optional<std::uint32_t> parentNumber;
    std::optional<std::uint32_t> fileNumber;
    std::uint32_t volumeFlags = 0;

    std::vector<std::uint32_t> parentNumbers; ///< Of the folders above, the nearest first.
    std::optional<std::string> folderName;
    std::optional<std::string> carbonPath; ///< "Volume:folder:file", in UTF-8.
    std::optional<std::string> posixPath;  ///< Below the volume, with or without a slash in front.
    std::optional<std::string> mountPoint;
    std::optional<std::uint16_t> homeLevels; ///< How many components lie below the user's home folder.

    /// The alias of the disk image that the volume was mounted from: one, or none.
    std::vector<AliasRecord> diskImage;

    std::vector<AliasItem> items; ///< Every tag in the record's order.
    std::vector<BookmarkWarning> warnings;

    /// The path from "/": the one on the volume below its mount point. A volume's topmost folder ends with a
    /// slash. Absent unless both are stored.
    std::optional<std::string> path() const;
};

/// How many aliases of disk images may lie within each other.
inline constexpr unsigned deepestDiskImageAlias = 8;

/// Parses the record at the front of the bytes, of the length that it states. Fails for other versions and
/// kinds, and if its fixed part, a name or a tag does not lie within that length. Memory and time are linear
/// in the length, which is below 64 KiB.
std::expected<AliasRecord, BookmarkFault> readAliasRecord(std::span<const std::byte> bytes);

/// What a tag's data mean: a text, a date, a number or an array of numbers. Nothing if that is not known, or
/// the data are too short for it.
std::optional<Value> aliasItemValue(const AliasItem& item);

/// A short word for a tag, such as "posixPath"; empty for unknown ones.
std::string_view aliasTagName(std::uint16_t tag);

/// The length that the record at the front of the bytes states; nothing if its version or kind is unknown or
/// its length too small for it. Ten bytes are enough to say.
std::optional<std::size_t> statedAliasLength(std::span<const std::byte> front);

/// True if the bytes begin like an alias record that lies within them.
bool beginsLikeAliasRecord(std::span<const std::byte> bytes);

/// True if they begin like one of exactly their length, which is how one is recognised: records have no magic
/// number.
bool isLikeAliasRecord(std::span<const std::byte> bytes);

} // namespace tolvane::platform
