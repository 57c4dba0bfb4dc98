#pragma once

#include "platform/Bookmarks.h"
#include "platform/bookmark/BookmarkContents.h"
#include "platform/bookmark/MountedVolumes.h"

#include <vector>

namespace tolvane::platform {

/// The mounted volumes that may be the one a bookmark tells of, likeliest first: the one mounted where it was
/// then, whole ones, and those that show only a folder.
struct RecognisedVolumes {
    VolumeMatch match = VolumeMatch::notNamed;
    std::vector<MountedVolume> volumes;
};

/// Looks for the volume with the bookmark's UUID, and without success for the one with its name and capacity.
///
/// Volumes without a capacity, such as the kernel's views of itself, match by their names when the bookmark
/// tells none either. Name and capacity are no match where both UUIDs are known and differ: two sticks of one
/// make and label are not the same stick. Where volumes of several devices match, the one mounted where the
/// bookmark's was is meant, and none if there is none. The match is `notNamed`, without volumes, for a
/// bookmark that tells neither UUID nor name; otherwise no volumes mean that the bookmark's is not mounted,
/// or cannot be told from another.
RecognisedVolumes recognisedVolumes(const BookmarkVolume& volume, const MountedVolumes& mounted);

} // namespace tolvane::platform
