#pragma once

#include "platform/bookmark/format/BookmarkStructure.h"

#include <string>

namespace tolvane::platform {

/// A description of a bookmark for programmers: a line for the container, for each table of contents, for
/// each of its items, and for each warning of the reader; then the lines of an alias record in it
/// (AliasDescription.h).
///
///     Bookmark data: 648 bytes, version 0x10040000, data at 0x30
///     TOC at 0x184: level=1 nextTOC=0x0 items=16
///     0) itemType=0x1004 flags=0x0 dataOffset=0x3c pathComponents:"( Users, demo, note.txt )"
///
/// Offsets of tables and values count from the start of the data section, those of warnings from the first
/// byte. Unnamed keys have no name before the colon. Lines are separated by line feeds. The text is valid
/// UTF-8, and no value can begin a line. It is shorter than 64 times the bookmark plus 8 MiB, because the
/// reader limits shared values.
std::string bookmarkDetailedDescription(const BookmarkStructure& structure);

} // namespace tolvane::platform
