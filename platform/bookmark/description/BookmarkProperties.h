#pragma once

#include "platform/bookmark/format/BookmarkStructure.h"
#include "platform/services/Bookmarks.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace tolvane::platform {

/// Everything that a bookmark stores about its target and the target's volume, under the platform's names.
/// Nothing is looked up anywhere, and nothing is made up: what the bookmark does not store has no entry, and
/// of a set of flags only those are here that the set declares known.
///
/// Properties that were stored under a name of their own have that name.
Dictionary bookmarkProperties(const BookmarkStructure& structure);

/// The value for a key of Bookmarks.h in a dictionary with that key; empty for other keys.
Dictionary storedProperties(const BookmarkStructure& structure, std::string_view key);

/// Reads bookmark data in any container, once, and answers with the values above. Takes time linear in the
/// number of bytes, but for sorting the properties by their names.
ReadProperties readStoredProperties(std::span<const std::byte> bookmarkData);

} // namespace tolvane::platform
