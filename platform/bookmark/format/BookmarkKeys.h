#pragma once

#include <cstdint>
#include <string_view>

/// The numbers of the bookmark format: record types, table identifiers, item keys, and option and flag bits.
namespace tolvane::platform {

inline constexpr std::uint32_t bookmarkVersion = 0x1004'0000;
inline constexpr std::uint32_t bareHeaderSize = 0x30;
/// Written since late 2025, in bare containers only: a longer header, otherwise the same.
inline constexpr std::uint32_t bookmarkVersionWithTeam = 0x1005'0000;
inline constexpr std::uint32_t bareHeaderSizeWithTeam = 0x40;
inline constexpr std::uint32_t aliasFileHeaderSize = 0x38;

/// Types of records. Numbers have the class 0x0300 and their width.
namespace record_type {
inline constexpr std::uint32_t string = 0x0101;
inline constexpr std::uint32_t data = 0x0201;
inline constexpr std::uint32_t numberClass = 0x0300;
inline constexpr std::uint32_t int8 = 0x0301;
inline constexpr std::uint32_t int16 = 0x0302;
inline constexpr std::uint32_t int32 = 0x0303;
inline constexpr std::uint32_t int64 = 0x0304;
inline constexpr std::uint32_t float32 = 0x0305;
inline constexpr std::uint32_t float64 = 0x0306;
inline constexpr std::uint32_t date = 0x0400;
inline constexpr std::uint32_t booleanFalse = 0x0500;
inline constexpr std::uint32_t booleanTrue = 0x0501;
inline constexpr std::uint32_t array = 0x0601;
inline constexpr std::uint32_t dictionary = 0x0701;
inline constexpr std::uint32_t uuid = 0x0801;
inline constexpr std::uint32_t absoluteURL = 0x0901;
inline constexpr std::uint32_t relativeURL = 0x0902;
inline constexpr std::uint32_t null = 0x0A01;
inline constexpr std::uint32_t table = 0xFFFF'FFFE;
} // namespace record_type

/// Identifiers of tables.
namespace table_identifier {
inline constexpr std::uint32_t target = 1;
inline constexpr std::uint32_t rootVolume = 0xF000;
/// Of the outermost volume between "/" and the target's; those of more count up from here.
inline constexpr std::uint32_t firstVolumeBetween = 0xF001;
} // namespace table_identifier

/// Keys of items. A key with the named bit is the offset of the string record that names the property.
namespace bookmark_key {
inline constexpr std::uint32_t namedBit = 0x8000'0000;

inline constexpr std::uint32_t targetURL = 0x1003;
inline constexpr std::uint32_t pathComponents = 0x1004;
inline constexpr std::uint32_t fileIDs = 0x1005;
inline constexpr std::uint32_t fileFlags = 0x1010;
inline constexpr std::uint32_t fileName = 0x1020;
inline constexpr std::uint32_t creationDate = 0x1040;
inline constexpr std::uint32_t relativeDirsUp = 0x1054;
inline constexpr std::uint32_t relativeDirsDown = 0x1055;
inline constexpr std::uint32_t createdWithRelativeURL = 0x1056;
inline constexpr std::uint32_t volumeDepths = 0x2000;
inline constexpr std::uint32_t volumePath = 0x2002;
inline constexpr std::uint32_t volumeURL = 0x2005;
inline constexpr std::uint32_t volumeName = 0x2010;
inline constexpr std::uint32_t volumeUUID = 0x2011;
inline constexpr std::uint32_t volumeCapacity = 0x2012;
inline constexpr std::uint32_t volumeCreationDate = 0x2013;
inline constexpr std::uint32_t volumeFlags = 0x2020;
inline constexpr std::uint32_t volumeWasBoot = 0x2030;
inline constexpr std::uint32_t volumeMountURL = 0x2050;
inline constexpr std::uint32_t componentsBelowHome = 0xC001;
inline constexpr std::uint32_t userName = 0xC011;
inline constexpr std::uint32_t userID = 0xC012;
inline constexpr std::uint32_t wasFileIDFormat = 0xD001;
inline constexpr std::uint32_t creationOptions = 0xD010;
inline constexpr std::uint32_t displayName = 0xF017;
inline constexpr std::uint32_t aliasRecord = 0xFE00;
inline constexpr std::uint32_t fullPath = 0xFF00;
inline constexpr std::uint32_t typeIdentifier = 0xF'0004;
inline constexpr std::uint32_t isExecutable = 0xF'000F;
} // namespace bookmark_key

/// Bits of the creation options.
namespace bookmark_option {
inline constexpr std::uint32_t suitableForBookmarkFile = 0x400;
inline constexpr std::uint32_t withSecurityScope = 0x800;
inline constexpr std::uint32_t readOnlySecurityScope = 0x1000;
inline constexpr std::uint32_t revocableSecurityScope = 0x200'0000;
inline constexpr std::uint32_t madeByScopeAgent = 0x800'0000;
inline constexpr std::uint32_t withoutImplicitSecurityScope = 0x2000'0000;
} // namespace bookmark_option

/// Which flags a plain bookmark knows about its file and about its volume.
inline constexpr std::uint64_t plainFileFlagMask = 0x0F;
inline constexpr std::uint64_t plainVolumeFlagMask = 0x1'0000'13EF;

/// Bits of the file flags for the kind of item, and of the volume flags that volumes here can have.
namespace file_flag {
inline constexpr std::uint64_t regularFile = 0x1;
inline constexpr std::uint64_t directory = 0x2;
inline constexpr std::uint64_t symbolicLink = 0x4;
inline constexpr std::uint64_t volume = 0x8;
} // namespace file_flag
namespace volume_flag {
inline constexpr std::uint64_t local = 0x1;
inline constexpr std::uint64_t automounted = 0x2;
inline constexpr std::uint64_t notBrowsable = 0x4;
inline constexpr std::uint64_t readOnly = 0x8;
inline constexpr std::uint64_t ejectable = 0x20;
inline constexpr std::uint64_t removable = 0x40;
inline constexpr std::uint64_t internal = 0x80;
inline constexpr std::uint64_t external = 0x100;
inline constexpr std::uint64_t diskImage = 0x200;
inline constexpr std::uint64_t persistentIDs = 0x1'0000'0000;
} // namespace volume_flag

/// The name that the platform's own dump gives a key; empty for keys that it does not name.
std::string_view bookmarkKeyLabel(std::uint32_t key);

/// A word for a type of record: "string", "int32" and so on; "number" for numbers of unusual widths and
/// "unknown" for other types.
std::string_view recordTypeName(std::uint32_t type);

} // namespace tolvane::platform
