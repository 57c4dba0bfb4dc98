#pragma once

#include "platform/bookmark/format/BookmarkStructure.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <span>

namespace tolvane::platform {

/// How deep values may lie in arrays and dictionaries; the value of an item is at depth 1.
inline constexpr unsigned deepestBookmarkValue = 16;

/// The limit on the size of all values when each is written out wherever it is shared: a multiple of the
/// section's length, plus an allowance for short bookmarks.
inline constexpr std::uint64_t mostSharing = 8;
inline constexpr std::uint64_t sharingAllowance = 1U << 20U;

/// Parses bookmark data or an alias file. Returns the whole structure or the first fault. Reads no other
/// bytes.
///
/// Time is linear in the number of bytes, memory at most 16 times that. Looping tables, values that contain
/// themselves, overlap, or exceed the limits on depth and sharing are faults, so visiting the values of all
/// items is linear too.
///
/// Strings, URLs and keys of dictionaries must be UTF-8. Records of unknown types stay bytes. Harmless
/// oddities are warnings.
std::expected<BookmarkStructure, BookmarkFault> readBookmark(std::span<const std::byte> bytes);

} // namespace tolvane::platform
