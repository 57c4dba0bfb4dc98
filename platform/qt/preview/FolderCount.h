#pragma once

#include "platform/services/FileContents.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tolvane::platform {

/// What is in a folder, as far as it was counted.
struct FolderCount {
    std::uint64_t entries = 0; ///< Directly in it.
    std::uint64_t items = 0;   ///< In it and in all folders beneath.
    std::uint64_t folders = 0; ///< Of those items.
    std::uint64_t size = 0;    ///< Of the regular files among them, once for each of their names.
    std::uint64_t unreadableFolders = 0;
    std::uint64_t otherVolumes = 0; ///< Folders beneath on which another volume begins; not gone into.

    /// False if there were more items than the limit.
    bool isComplete = false;
    friend bool operator==(const FolderCount&, const FolderCount&) = default;
};

/// How many items are counted at most.
inline constexpr std::uint64_t mostItemsCounted = 1'000'000;

/// Counts a folder and what is below it, without following links or leaving its volume. Reports the count now
/// and then, and at the end; false stops the counting. Fails if the folder cannot be read.
FileAnswer<void> countFolder(
    const FileContents& files,
    const std::string& path,
    std::uint64_t volume,
    const std::function<bool(const FolderCount&)>& report,
    std::uint64_t limit = mostItemsCounted);

} // namespace tolvane::platform
