#pragma once

#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/resolution/MountedVolumes.h"
#include "platform/services/Bookmarks.h"

#include <vector>

namespace tolvane::platform {

/// The mounted volumes that may be the bookmark's, likeliest first: the one at the old mount point, whole
/// ones, then those that show only a folder.
struct RecognisedVolumes {
    VolumeMatch match = VolumeMatch::notNamed;
    std::vector<const MountedVolume*> volumes; ///< Of the mounted ones.
};

/// Finds the volume with the bookmark's UUID, otherwise the one with its name and capacity, or with its name
/// and creation date where it stores no capacity.
///
/// Creation dates agree to the second. One in local time, whose zone is not known, agrees with every date
/// that is in a zone's distance from it: whole quarters of an hour, from 12 hours behind UTC to 14 ahead.
///
/// Volumes without a capacity, such as pseudo file systems, match by name if the bookmark has no capacity
/// either. If both UUIDs are known and differ, name and capacity do not count: two sticks of one make and
/// label are not the same stick. If volumes of several devices match, the one at the old mount point is used,
/// otherwise none. The match is `notNamed`, without volumes, for a bookmark with neither UUID nor name;
/// otherwise no volumes mean that the bookmark's is not mounted or is ambiguous.
RecognisedVolumes recognisedVolumes(const BookmarkVolume& volume, const MountedVolumes& mounted);

} // namespace tolvane::platform
