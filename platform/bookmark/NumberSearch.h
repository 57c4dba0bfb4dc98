#pragma once

#include "platform/bookmark/MountedVolumes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Finding an item again by file numbers, when nothing is at its path any more.
///
/// File systems use numbers again. An item found by its number is the one that was meant only if it was also
/// created when that one was; where either date is not known, nothing is found.
namespace tolvane::platform {

/// How many entries of folders are looked at for one bookmark.
inline constexpr std::size_t mostEntriesSearched = 200'000;

/// The item that is looked for.
struct NumberedItem {
    std::uint64_t fileNumber = 0;
    Date creationDate;
    std::optional<MountedItemKind> kind; ///< Absent when not known.
};

/// One component of a path below a mount point.
struct NumberedComponent {
    std::string name;
    std::optional<std::uint64_t> fileNumber;
};

struct NumberSearchResult {
    std::optional<std::string> path; ///< Of the item, when it was found.
    bool wasSearched = false;        ///< Not by the numbers along the path alone.
    bool wasCutShort = false;        ///< Too many entries, or a folder that could not be read.
};

/// Looks for the item that the last component stands for, on one volume alone.
///
/// First from the deepest folder of the path that still has its number downward, level by level by the
/// numbers of folder entries; then by the item's own number in the tree below the deepest folder so reached,
/// the nearest levels first, and in the trees below that folder's parents, up to the mount point. Symbolic
/// links are not followed, and volumes mounted below are left out. Components must not be empty. Takes the
/// entries that it looked at from `remaining`, and ends when none remain.
NumberSearchResult findByNumbers(
    const MountedVolume& volume,
    const std::vector<NumberedComponent>& components,
    const NumberedItem& wanted,
    const MountedVolumes& mounted,
    std::size_t& remaining);

} // namespace tolvane::platform
