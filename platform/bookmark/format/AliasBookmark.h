#pragma once

#include "platform/bookmark/format/AliasRecord.h"
#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkStructure.h"

#include <cstddef>
#include <expected>
#include <optional>
#include <span>

/// Alias records as bookmarks: bookmark data with the letters "alis" contains one record and nothing else, so
/// whatever takes a bookmark takes an alias record as well.
namespace tolvane::platform {

/// Bare bookmark data with the letters "alis" that contains only this record, of any bytes below 4 GiB.
Data bookmarkOfAliasRecord(std::span<const std::byte> record);

/// Parses bookmark data, an alias file or, as the bookmark above, an alias record of exactly these bytes.
std::expected<BookmarkStructure, BookmarkFault> readBookmarkOrAlias(std::span<const std::byte> bytes);

/// The alias record that a bookmark contains; nothing if it has none or one that cannot be read.
std::optional<AliasRecord> aliasRecordIn(const BookmarkStructure& structure);

/// A record's facts as those of a bookmark. The numbers are those along the path below the mount point. Of a
/// record without a POSIX path the Carbon path counts. Local times are
/// apart from dates.
BookmarkContents contentsOfAliasRecord(const AliasRecord& record);

/// The facts by which a bookmark's target is found: its own, or those of its alias record if it has neither a
/// path nor a URL.
BookmarkContents targetContents(const BookmarkStructure& structure);

} // namespace tolvane::platform
