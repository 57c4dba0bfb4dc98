#pragma once

#include "platform/bookmark/format/BookmarkStructure.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <span>
#include <vector>

/// What is left of a bookmark that was cut short or damaged.
namespace tolvane::platform {

/// Bytes of the data section, counted from its start, that belong to nothing that is whole.
struct MissingBytes {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
    bool isBeyondEnd = false; ///< The header states them, but they are not there.

    friend bool operator==(const MissingBytes&, const MissingBytes&) = default;
};

/// The whole records and tables of a bookmark.
struct SalvagedBookmark {
    BookmarkFault fault; ///< Why the bookmark cannot be read.

    /// The header, and those records and tables that are whole, in the order of their offsets; of a table
    /// that is cut those items that are. Values and records that they refer to need not be there, and records
    /// may contain themselves: only single records are to be read, not what they refer to. There may be no
    /// table.
    BookmarkStructure structure;

    std::uint32_t firstTableOffset = 0; ///< As stated at the start of the section.
    std::uint64_t statedSectionLength = 0;
    std::vector<MissingBytes> missing; ///< In the order of their offsets.
};

/// Finds what is whole in the bytes of a bookmark or alias file that `readBookmark` refuses: pieces that have
/// a known type, the length that belongs to it, valid text, and lie within the bytes. A piece begins at a
/// multiple of four. Fails if the bookmark can be read, with a fault that expects a broken one, and if the
/// header is not there or has no valid length. Time and memory are linear in the number of bytes.
std::expected<SalvagedBookmark, BookmarkFault> salvageBookmark(std::span<const std::byte> bytes);

} // namespace tolvane::platform
