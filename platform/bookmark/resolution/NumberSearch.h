#pragma once

#include "platform/bookmark/resolution/MountedVolumes.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <thread>
#include <vector>

/// Finds an item by file numbers when nothing is at its path.
///
/// File systems reuse numbers, so the creation date must match too; without both dates nothing is found.
namespace tolvane::platform {

/// How many folder entries are searched for one bookmark.
inline constexpr std::size_t mostEntriesSearched = 200'000;

/// As many threads as there are processors, but no more than storage can make use of.
inline unsigned threadsOfSearch() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
}

/// The item to find.
struct NumberedItem {
    std::uint64_t fileNumber = 0;
    Date creationDate;
    std::optional<ItemKind> kind; ///< Absent when not known.
    bool isDateLocal = false;     ///< As if it were UTC; its zone is not known.
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

/// Searches for the item of the last component, on one volume only.
///
/// First downward from the deepest folder of the path that still has its number, level by level by the
/// numbers of folder entries. Then by the item's own number in the tree below the deepest folder so reached,
/// nearest levels first, and in the trees below its parents, up to the mount point. Symbolic links and
/// volumes mounted below are skipped. Components must not be empty. Subtracts the searched entries from
/// `remaining` and ends at zero. A long search uses more threads; the result is the same for any number of
/// them.
NumberSearchResult findByNumbers(
    const MountedVolume& volume,
    const std::vector<NumberedComponent>& components,
    const NumberedItem& wanted,
    const MountedVolumes& mounted,
    std::size_t& remaining,
    unsigned mostThreads = threadsOfSearch());

} // namespace tolvane::platform
