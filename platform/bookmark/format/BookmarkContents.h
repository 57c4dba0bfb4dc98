#pragma once

#include "platform/bookmark/format/BookmarkValues.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {

/// What a bookmark says about one volume. Facts that the volume does not have, or that the bookmark does not
/// tell, are absent.
struct BookmarkVolume {
    std::optional<std::string> path; ///< The mount point, without a final slash but for "/".
    std::optional<std::string> url;  ///< The mount point as the text of a file URL, with a final slash.
    std::optional<std::string> name;
    std::optional<std::string> uuid; ///< 36 characters, upper case as a rule.
    std::optional<std::int64_t> capacity;
    std::optional<Date> creationDate;
    std::optional<BookmarkFlags> flags;
    std::optional<std::string> mountURL; ///< The text of the URL that mounts a network volume again.
    bool wasBoot = false; ///< The volume was mounted at "/"; told of the target's volume alone.

    friend bool operator==(const BookmarkVolume&, const BookmarkVolume&) = default;
};

/// What a bookmark says in plain terms: what making one takes, and what finding its target again takes.
///
/// Making a bookmark from the contents of another keeps what is told here, no more: values that callers asked
/// for, sandbox extensions, icons and disk images stay behind.
struct BookmarkContents {
    /// The path from "/" downward; no components mean "/" itself. Absent in a bookmark that tells no path.
    std::optional<std::vector<std::string>> pathComponents;

    /// One number for each component: that of the item on the volume that it is on. Nothing in place of a
    /// number from the mount point of a volume without lasting numbers on. Absent when unknown.
    std::optional<std::vector<std::optional<std::int64_t>>> fileIDs;

    std::optional<std::string> fileName; ///< Told of the root of a volume.
    std::optional<Date> creationDate;
    std::optional<BookmarkFlags> fileFlags;

    /// Of a bookmark made relative to another item: the steps up from that, and those down again.
    std::optional<bool> createdWithRelativeURL;
    std::optional<std::int64_t> relativeDirsUp;
    std::optional<std::int64_t> relativeDirsDown;

    /// Of a target in the home folder of the user who made the bookmark: how many of the last components lie
    /// below that, and whose it is.
    std::optional<std::int64_t> componentsBelowHome;
    std::optional<std::string> userName;
    std::optional<std::int64_t> userID;

    BookmarkVolume volume; ///< The one that the target is on.

    /// Of a target on another volume than "/": that one's facts, and for "/" and each path below it down to
    /// the target the identifier of the table for the volume mounted there, or 0.
    std::optional<BookmarkVolume> rootVolume;
    std::vector<std::uint32_t> volumeDepths;

    /// The volumes that the path crosses between that and the target's, outermost first: the first has the
    /// identifier `table_identifier::firstVolumeBetween`, the next one the number after it.
    std::vector<BookmarkVolume> volumesBetween;

    bool wasFileIDFormat = false;
    std::uint32_t options = 0;
    std::optional<std::string> displayName;

    friend bool operator==(const BookmarkContents&, const BookmarkContents&) = default;
};

/// What a read bookmark says. Values of another kind than their key's count as absent.
BookmarkContents bookmarkContents(const BookmarkStructure& structure);

/// The same contents as an alias file tells them: options and marks of such a file, the name shown (the last
/// component of the path unless the contents have one), and every known flag counted as asked for.
BookmarkContents contentsForAliasFile(BookmarkContents contents);

} // namespace tolvane::platform
