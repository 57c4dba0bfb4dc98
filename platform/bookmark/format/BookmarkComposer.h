#pragma once

#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkRefusal.h"

#include <expected>

namespace tolvane::platform {

/// Makes a bookmark from its contents: records in the platform's order, equal values once, zeros as padding.
/// Absent facts are left out.
///
/// Refuses contents that no reader could understand: texts that are not UTF-8, invalid components, numbers,
/// depths or volumes that do not match the components, and options that claim a security scope, which only
/// the target system can give.
std::expected<Data, BookmarkRefusal> composeBookmark(const BookmarkContents& contents);

/// The same in the container of an alias file written at that time. See also `contentsForAliasFile`.
std::expected<Data, BookmarkRefusal> composeAliasFile(const BookmarkContents& contents, const Date& written);

} // namespace tolvane::platform
