#pragma once

#include "platform/bookmark/format/BookmarkSalvage.h"
#include "platform/values/Error.h"

#include <cstddef>
#include <span>
#include <string>

namespace tolvane::platform {

/// A description of what is left of a bookmark: a line for why it cannot be read, one for how much is there,
/// one for each record, table and item, and one for everything that is missing.
///
///     Not a readable bookmark: expected a total size within the bytes that are there at byte 4.
///     Salvaged: 552 of 600 bytes, version 0x10040000, data at 0x30
///     0x10) string:"Users"
///     0x3c) array:"( 0x10, 0x20, 0x2c )"
///     TOC at 0x184: level=1 nextTOC=0x0 items=12
///     0) itemType=0x1004 flags=0x0 dataOffset=0x3c pathComponents
///     Missing: 48 bytes at 0x228, which are not there
///
/// Arrays, dictionaries and relative URLs have the offsets of what they refer to. Values cannot end a line.
std::string salvageDescription(const SalvagedBookmark& salvaged);

/// The same for the bytes of a bookmark that cannot be read. Fails if nothing of it can, or if all of it can.
Result<std::string> describeSalvaged(std::span<const std::byte> bookmarkData);

} // namespace tolvane::platform
