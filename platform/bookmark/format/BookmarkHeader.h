#pragma once

#include "platform/bookmark/format/BookmarkStructure.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <vector>

/// The fixed part in front of a data section, in its two layouts.
namespace tolvane::platform {

/// A header, and how many bytes of data section follow it. They are there.
struct ReadHeader {
    BookmarkHeader header;
    std::size_t sectionLength = 0;
    std::vector<BookmarkWarning> warnings;
};

/// Parses the header of a bookmark or an alias file. Fails without the magic letters, if it is incomplete, or
/// if a length exceeds the bytes.
std::expected<ReadHeader, BookmarkFault> readBookmarkHeader(std::span<const std::byte> bytes);

/// This many bytes are enough for `claimedBookmarkLength`.
inline constexpr std::size_t bookmarkFrontLength = 56;

/// The length of header and section as the first bytes state it. Nothing if they are not a bookmark's or too
/// few.
std::optional<std::uint64_t> claimedBookmarkLength(std::span<const std::byte> front);

/// A new header of an alias file written at that time.
BookmarkHeader aliasFileHeader(const Date& written);

/// Appends a header for a section of this length. Both together must stay below 4 GiB.
void appendBookmarkHeader(Data& bytes, const BookmarkHeader& header, std::size_t sectionLength);

} // namespace tolvane::platform
