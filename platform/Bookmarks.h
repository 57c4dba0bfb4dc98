#pragma once

#include "platform/Date.h"
#include "platform/Error.h"
#include "platform/URL.h"
#include "platform/Value.h"

#include <cstdint>
#include <optional>
#include <span>

namespace tolvane::platform {

/// By what a bookmark's volume was told from the others.
enum class VolumeMatch {
    uuid,
    nameAndCapacity,
    notNamed, ///< The bookmark tells nothing that its volume could be recognised by.
};

/// By what the item itself was found.
enum class ItemMatch {
    path,        ///< At the path that the bookmark tells.
    fileNumbers, ///< Renamed, or below a folder renamed: by the numbers along the path.
    search,      ///< Moved nearby: by its number, in the tree below a folder of its path.
};

/// How an item was found, and what it was compared by. What is not known is absent.
struct BookmarkMatch {
    VolumeMatch volume = VolumeMatch::notNamed;
    ItemMatch item = ItemMatch::path;
    std::optional<std::int64_t> storedNumber; ///< The item's file number as the bookmark tells it.
    std::optional<std::int64_t> actualNumber;
    std::optional<Date> storedCreationDate;
    std::optional<Date> actualCreationDate;

    friend bool operator==(const BookmarkMatch&, const BookmarkMatch&) = default;
};

/// What resolving bookmark data gave.
struct ResolvedBookmark {
    std::optional<URL> url; ///< Absent when resolution succeeded without naming an item.
    bool isStale = false;   ///< The item was found, but the data should be made anew.
    BookmarkMatch match = {};
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
