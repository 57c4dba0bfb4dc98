#pragma once

#include "platform/bookmark/BookmarkStructure.h"

#include <string>

namespace tolvane::platform {

/// A bookmark as a programmer sees it: a line for the container, one for each table of contents in the chain,
/// one for each of its items, and one for each oddity that the reader met.
///
///     Bookmark data: 648 bytes, version 0x10040000, data at 0x30
///     TOC at 0x184: level=1 nextTOC=0x0 items=16
///     0) itemType=0x1004 flags=0x0 dataOffset=0x3c pathComponents:"( Users, demo, note.txt )"
///
/// Offsets of tables and values count from the start of the data section, those of oddities from the first
/// byte. Keys without a name have none before the colon. Lines end with a line feed, the last one does not.
/// The text is valid UTF-8, and no value can begin a line. It is shorter than 64 times the bookmark and 8 MiB
/// more, because the reader limits what sharing adds.
std::string bookmarkDetailedDescription(const BookmarkStructure& structure);

} // namespace tolvane::platform
