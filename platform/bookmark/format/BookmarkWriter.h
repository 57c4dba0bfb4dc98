#pragma once

#include "platform/bookmark/format/BookmarkStructure.h"

namespace tolvane::platform {

/// The bytes of a bookmark, piece by piece: those it was read from.
Data bookmarkBytes(const BookmarkStructure& structure);

/// The bookmark as bare data or an alias file. In its own container it keeps its header, otherwise it gets a
/// new one of the usual size and without a team identifier, an alias file with this time. The data section is
/// the same, trailing bytes are dropped.
Data bareBookmarkBytes(const BookmarkStructure& structure);
Data aliasFileBytes(const BookmarkStructure& structure, const Date& written);

} // namespace tolvane::platform
