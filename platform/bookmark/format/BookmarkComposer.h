#pragma once

#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkRefusal.h"

#include <expected>

namespace tolvane::platform {

/// Makes a bookmark from its contents: the records in the order in which the platform writes them, equal
/// values once, no padding but zeros. What the contents do not have is left out, and nothing is invented.
///
/// Refuses contents that no reader could make sense of: texts that are not UTF-8, components that are none,
/// numbers, depths or volumes that do not match the components, and options that claim a security scope,
/// which only the system that the bookmark is meant for can give.
std::expected<Data, BookmarkRefusal> composeBookmark(const BookmarkContents& contents);

/// The same in the container of an alias file written at that time. See also `contentsForAliasFile`.
std::expected<Data, BookmarkRefusal> composeAliasFile(const BookmarkContents& contents, const Date& written);

} // namespace tolvane::platform
