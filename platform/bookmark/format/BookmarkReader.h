#pragma once

#include "platform/bookmark/format/BookmarkStructure.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <span>

namespace tolvane::platform {

/// How deep values may lie in arrays and dictionaries; the value of an item is at depth 1.
inline constexpr unsigned deepestBookmarkValue = 16;

/// How many bytes the values of all items may take when each is written out wherever it is shared: a multiple
/// of the section's length, and an allowance for short bookmarks that share much.
inline constexpr std::uint64_t mostSharing = 8;
inline constexpr std::uint64_t sharingAllowance = 1U << 20U;

/// Parses bookmark data or the contents of an alias file. Returns the whole structure or the first fault, and
/// reads no byte outside of those given.
///
/// Reading takes time linear in the number of bytes and memory of at most 16 times that number. Chains of
/// tables that loop, values that contain themselves, lie deeper than `deepestBookmarkValue` or share bytes
/// with another, and values that would grow past the limit on sharing are faults; so walking the values of
/// all items afterwards is linear in the number of bytes too.
///
/// Strings, URLs and keys of dictionaries must be UTF-8. Records of unknown types stay bytes.
/// Oddities that leave no doubt about the content are warnings.
std::expected<BookmarkStructure, BookmarkFault> readBookmark(std::span<const std::byte> bytes);

} // namespace tolvane::platform
