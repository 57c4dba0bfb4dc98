#pragma once

#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/resolution/MountedVolumes.h"
#include "platform/services/Bookmarks.h"

#include <cstddef>
#include <span>

namespace tolvane::platform {

/// Finds the target of a bookmark: on its volume only, by path first, then by file numbers.
///
/// The components below the stored mount point are applied to the current one. An item at the path but on
/// another volume, through a symbolic link or a new mount, is not the target. A bookmark that names no volume
/// is resolved against the file system as it is. The result is stale unless it was found at the path with the
/// stored number, or none was stored.
///
/// Fails in NSCocoaErrorDomain: 4 if the item is not found or its volume is not mounted, 257 if access is
/// denied on the way, 258 if the path is too long, 259 if the bookmark has no usable path, 262 if it has only
/// a URL that is not a file's. A file URL counts as a path.
Result<ResolvedBookmark> resolveBookmark(const BookmarkContents& contents, const MountedVolumes& mounted);

/// The same for bookmark data or an alias record (AliasBookmark.h). Fails with 259 and the place of the fault
/// if the bytes are not a bookmark, also for an alias file, which contains one in another form.
Result<ResolvedBookmark> resolveBookmarkData(std::span<const std::byte> data, const MountedVolumes& mounted);

} // namespace tolvane::platform
