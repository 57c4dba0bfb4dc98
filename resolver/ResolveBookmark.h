#pragma once

#include "platform/services/Bookmarks.h"
#include "platform/services/FileManager.h"
#include "platform/values/Error.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Resolving bookmark data to the item that it leads to today.
namespace tolvane::resolver {

/// The message when a bookmark cannot be resolved, or its text is not base-64.
inline constexpr std::string_view notResolved = "Couldn't resolve Bookmark.";

/// What resolving gave: the text for the path field beside the facts.
struct BookmarkResolution {
    /// The path and, below it, the volume path where there is one; or the message.
    std::string filePath{notResolved};

    /// The item, or why there is none. Present too where its attributes could not be read.
    platform::Result<platform::ResolvedBookmark> resolved;

    /// The platform's answer; what the caller passed where the bookmark was not resolved.
    bool bookmarkDataIsStale = false;

    std::optional<platform::Error> attributesFailure = {};

    /// "/.vol/5/123"; absent where the item lacks one of the two numbers, or one is zero.
    std::optional<std::string> volumePath = {};
};

/// Resolves without options and without a base, then reads the attributes of the item found. A volume or file
/// number of another kind than an unsigned integer is a fatal error.
BookmarkResolution resolveBookmark(
    std::span<const std::byte> bookmark,
    bool bookmarkDataIsStale,
    const platform::Bookmarks& bookmarks,
    const platform::FileManager& fileManager);

/// The text of the path field for a path as it is shown and, where there is one, a volume path.
std::string filePathText(std::string shownPath, const std::optional<std::string>& volumePath);

/// The script that selects the item of this path in the file manager. The path is inserted byte for byte;
/// quotes and backslashes in it have their meaning in script texts, so such a script fails or names another
/// item.
std::string revealScript(std::string_view path);

} // namespace tolvane::resolver
