#pragma once

#include "platform/bookmark/format/BookmarkStructure.h"

namespace tolvane::platform {

/// The bytes of a bookmark, piece by piece: those it was read from.
Data bookmarkBytes(const BookmarkStructure& structure);

/// The bookmark as bare data or as the contents of an alias file. A bookmark that is in that container keeps
/// its header; otherwise it gets a new one, with this time in an alias file. The data section is the same in
/// both, trailing bytes stay behind.
Data bareBookmarkBytes(const BookmarkStructure& structure);
Data aliasFileBytes(const BookmarkStructure& structure, const Date& written);

} // namespace tolvane::platform
