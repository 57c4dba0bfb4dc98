#pragma once

#include "platform/Error.h"
#include "platform/URL.h"
#include "platform/Value.h"

#include <optional>
#include <span>

namespace tolvane::platform {

/// What resolving bookmark data gave.
struct ResolvedBookmark {
    std::optional<URL> url; ///< Absent when resolution succeeded without naming an item.
    bool isStale = false;   ///< The item was found, but the data should be made anew.
};

/// Makes, reads and resolves bookmarks, with no options set and no base URL.
class Bookmarks {
public:
    virtual ~Bookmarks() = default;

    /// Bookmark data for the item, without further resource values. Fails when none can be made.
    virtual Result<Data> bookmarkData(const URL& url) const = 0;

    /// The bookmark data that the file itself holds, as alias files do. Fails for a file that holds none.
    virtual Result<Data> bookmarkDataWithContentsOfURL(const URL& url) const = 0;

    /// The item that bookmark data leads to today. Fails when the bytes are no bookmark, or nothing is found.
    virtual Result<ResolvedBookmark> URLByResolvingBookmarkData(std::span<const std::byte> data) const = 0;
};

} // namespace tolvane::platform
