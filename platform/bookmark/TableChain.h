#pragma once

#include "platform/bookmark/BookmarkStructure.h"
#include "platform/bookmark/SectionMap.h"

#include <optional>

namespace tolvane::platform {

/// Reads the tables of contents of a section, from the first along the chain, into the structure, and gives
/// their bytes to them in the map. Where the items lead is not looked at. Answers the first fault, counted
/// from the start of the header, or nothing.
std::optional<BookmarkFault> readTableChain(BookmarkStructure& structure, SectionMap& map);

} // namespace tolvane::platform
