#pragma once

#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/services/Bookmarks.h"

#include <cstddef>
#include <span>
#include <vector>

namespace tolvane::platform {

/// What a bookmark stores beside what is so today, in this order: "path", "name", "fileNumbers",
/// "creationDate", "volumeName", "volumeUUID", "volumeCapacity", "volumeCreationDate" and "mountPoint".
///
/// File numbers are those of the components below the mount point, as an array with nulls for unknown ones.
/// These differ in no comparison; neither do the cases of letters in UUIDs, nor dates within a microsecond.
/// `found` has the facts of a new bookmark of the item that the stored one led to.
std::vector<ComparedFact> comparedFacts(const BookmarkContents& stored, const BookmarkContents& found);

/// The same for bookmark data and alias records. Bytes that are none have no facts.
std::vector<ComparedFact> comparedFacts(std::span<const std::byte> stored, std::span<const std::byte> found);

} // namespace tolvane::platform
