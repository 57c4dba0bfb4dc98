#pragma once

#include "platform/appledouble/ForkFault.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <span>
#include <string_view>
#include <vector>

/// AppleDouble files: what a Mac stores beside a file, as "._name", on volumes that only keep its data.
/// AppleSingle files have the same layout and contain the data as well. All numbers are big-endian.
namespace tolvane::platform {

enum class AppleDoubleForm {
    companion, ///< AppleDouble: everything but the data.
    single     ///< AppleSingle: the data too.
};

/// What the parts of such a file are; others are reserved or private.
namespace apple_double_entry {
inline constexpr std::uint32_t dataFork = 1;
inline constexpr std::uint32_t resourceFork = 2;
inline constexpr std::uint32_t realName = 3;
inline constexpr std::uint32_t comment = 4;
inline constexpr std::uint32_t fileInfo = 7;
inline constexpr std::uint32_t dates = 8;
inline constexpr std::uint32_t finderInfo = 9;
inline constexpr std::uint32_t macInfo = 10;
} // namespace apple_double_entry

/// One part, which lies within the file's bytes. Parts may overlap.
struct AppleDoubleEntry {
    std::uint32_t identifier = 0;
    std::uint32_t offset = 0;         ///< From the file's first byte; anything where the part is empty.
    std::span<const std::byte> bytes; ///< In the bytes that were read.
};

/// A parsed file. It refers to the bytes that were read, which must outlive it.
struct AppleDouble {
    AppleDoubleForm form = AppleDoubleForm::companion;
    std::uint32_t version = 0; ///< 0x00010000 or 0x00020000.

    /// Version 1 names the home file system here, padded with blanks; version 2 has zeros as a rule.
    std::array<std::byte, 16> filler{};

    std::vector<AppleDoubleEntry> entries; ///< In the file's order.
    std::size_t length = 0;                ///< Of the whole file.

    /// The first part with this identifier, or null.
    const AppleDoubleEntry* entry(std::uint32_t identifier) const;
};

/// Parses a file of either form and version. Fails without the magic number, for other versions, or if the
/// list of parts or a part that is not empty does not lie within the bytes. Time and memory are linear in the
/// number of parts.
std::expected<AppleDouble, ForkFault> readAppleDouble(std::span<const std::byte> bytes);

/// An extended attribute in a block of them.
struct AppleDoubleAttribute {
    std::string_view name; ///< Bytes without NUL, UTF-8 as a rule. Never empty.
    std::uint16_t flags = 0;
    std::uint32_t offset = 0; ///< Of the value, from the file's first byte; often 0 where the value is empty.
    std::span<const std::byte> value;
};

/// The extended attributes that follow the 32 bytes of Finder information.
struct AppleDoubleAttributes {
    std::uint32_t debugTag = 0;
    std::uint32_t totalSize = 0; ///< Offset of the block's end from the file's first byte, as stated.
    std::uint32_t dataStart = 0;
    std::uint32_t dataLength = 0;
    std::uint16_t flags = 0;
    std::vector<AppleDoubleAttribute> attributes; ///< In the file's order; names may be repeated.
};

/// Parses the attributes of a parsed file from its bytes. A file whose Finder information has 32 bytes or no
/// block has no attributes. Fails if an attribute's name or value does not lie within the bytes. Values may
/// be shared, so their sizes can add up to more than the file's.
std::expected<AppleDoubleAttributes, ForkFault> readAppleDoubleAttributes(
    const AppleDouble& file, std::span<const std::byte> bytes);

} // namespace tolvane::platform
