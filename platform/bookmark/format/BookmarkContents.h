#pragma once

#include "platform/bookmark/format/BookmarkValues.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {

/// A bookmark's facts about one volume. Unknown ones are absent.
struct BookmarkVolume {
    std::optional<std::string> path; ///< The mount point, without a final slash but for "/".
    std::optional<std::string> url;  ///< The mount point as the text of a file URL, with a final slash.
    std::optional<std::string> name;
    std::optional<std::string> uuid; ///< 36 characters, upper case as a rule.
    std::optional<std::int64_t> capacity;
    std::optional<Date> creationDate;
    std::optional<Date> localCreationDate; ///< As if it were UTC: old alias records do not tell the zone.
    std::optional<BookmarkFlags> flags;
    std::optional<std::string> mountURL; ///< The text of the URL that mounts a network volume again.
    bool wasBoot = false; ///< The volume was mounted at "/"; told of the target's volume alone.

    friend bool operator==(const BookmarkVolume&, const BookmarkVolume&) = default;
};

/// A bookmark's facts as plain values: what is needed to make one and to find its target. Values that callers
/// requested, sandbox extensions, icons and disk images are not included.
struct BookmarkContents {
    /// The text of the target's URL. Some bookmarks have nothing else, such as those of servers and tags.
    std::optional<std::string> url;

    /// The path from "/"; no components mean "/" itself. Absent if the bookmark has no path.
    std::optional<std::vector<std::string>> pathComponents;

    /// The number of each component's item on its volume; nothing on volumes without lasting numbers. Absent
    /// if unknown.
    std::optional<std::vector<std::optional<std::int64_t>>> fileIDs;

    std::optional<std::string> fileName; ///< Told of the root of a volume.
    std::optional<Date> creationDate;
    std::optional<Date> localCreationDate; ///< As if it were UTC, like the volume's; without `creationDate`.
    std::optional<BookmarkFlags> fileFlags;

    /// Of a bookmark made relative to another item: the steps up from that, and those down again.
    std::optional<bool> createdWithRelativeURL;
    std::optional<std::int64_t> relativeDirsUp;
    std::optional<std::int64_t> relativeDirsDown;

    /// If the target is in its user's home folder: the number of components below that, and the user.
    std::optional<std::int64_t> componentsBelowHome;
    std::optional<std::string> userName;
    std::optional<std::int64_t> userID;

    BookmarkVolume volume; ///< The one that the target is on.

    /// If the target is not on the volume of "/": that volume's facts, and for "/" and each component the
    /// identifier of the table of the volume mounted there, or 0.
    std::optional<BookmarkVolume> rootVolume;
    std::vector<std::uint32_t> volumeDepths;

    /// The volumes that the path crosses between that and the target's, outermost first: the first has the
    /// identifier `table_identifier::firstVolumeBetween`, the next one the number after it.
    std::vector<BookmarkVolume> volumesBetween;

    /// Of the disk image that the volume was mounted from; alias records alone have it here.
    std::optional<std::string> diskImagePath;

    bool wasFileIDFormat = false;
    std::uint32_t options = 0;
    std::optional<std::string> displayName;

    friend bool operator==(const BookmarkContents&, const BookmarkContents&) = default;
};

/// The facts of a parsed bookmark. Values of the wrong type count as absent.
BookmarkContents bookmarkContents(const BookmarkStructure& structure);

/// The contents for an alias file: with its options and marks, the display name (the last component unless
/// there is one), and every known flag as requested.
BookmarkContents contentsForAliasFile(BookmarkContents contents);

} // namespace tolvane::platform
