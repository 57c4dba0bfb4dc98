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

/// Reads the header at the front of the bytes of a bookmark or an alias file. Fails when the magic letters
/// are missing, when the header is not whole, or when a length runs past the bytes.
std::expected<ReadHeader, BookmarkFault> readBookmarkHeader(std::span<const std::byte> bytes);

/// This many bytes are enough for `claimedBookmarkLength`.
inline constexpr std::size_t bookmarkFrontLength = 56;

/// How many bytes header and section take together by what the front of them says, whether they are there or
/// not. Nothing where the front does not begin a bookmark or is too short.
std::optional<std::uint64_t> claimedBookmarkLength(std::span<const std::byte> front);

/// Appends the bytes of a header for a section of the given length. Header and section together must stay
/// below 4 GiB, as those of a read bookmark do in either container.
void appendBookmarkHeader(Data& bytes, const BookmarkHeader& header, std::size_t sectionLength);

} // namespace tolvane::platform
