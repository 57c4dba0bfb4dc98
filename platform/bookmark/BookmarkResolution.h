#pragma once

#include "platform/Bookmarks.h"
#include "platform/bookmark/BookmarkContents.h"
#include "platform/bookmark/MountedVolumes.h"

#include <cstddef>
#include <span>

namespace tolvane::platform {

/// Finds the target of a bookmark: on its volume and no other, by path first and by file numbers when nothing
/// is at that path.
///
/// The components below the stored mount point are taken below the one of today. An item that is at the path
/// but on another volume, by a symbolic link or because something is mounted there now, is not the target. A
/// bookmark that tells nothing of its volume is resolved against the file system as it stands. The answer is
/// stale unless it was found at the path, with the stored number or without one stored.
///
/// Fails in NSCocoaErrorDomain: 4 when the item is not found or its volume is not mounted, 257 when something
/// on the way may not be looked at, 258 when the path is longer than a path can be, 259 when the bookmark
/// tells no path that could be followed.
Result<ResolvedBookmark> resolveBookmark(const BookmarkContents& contents, const MountedVolumes& mounted);

/// The same for bookmark data. Fails with 259, and the place of the fault, when the bytes are no bookmark,
/// and so for the contents of an alias file, which hold one in another form.
Result<ResolvedBookmark> resolveBookmarkData(std::span<const std::byte> data, const MountedVolumes& mounted);

} // namespace tolvane::platform
