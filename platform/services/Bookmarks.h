#pragma once

#include "platform/values/Date.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"
#include "platform/values/Value.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

/// Every property that a bookmark stores, in a dictionary.
inline constexpr std::string_view NSURLBookmarkAllPropertiesKey = "NSURLBookmarkAllPropertiesKey";
/// What a bookmark consists of, item by item, in a text of many lines.
inline constexpr std::string_view NSURLBookmarkDetailedDescription = "NSURLBookmarkDetailedDescription";

/// What one bookmark stores under a key, in a dictionary with that key; an empty one where it stores nothing.
/// Nothing when the bytes are not a readable bookmark.
using StoredProperties = std::function<std::optional<Dictionary>(std::string_view key)>;

/// Parsed bookmark data, to be asked for its properties.
struct ReadProperties {
    StoredProperties properties;
    /// Why the bytes are not a readable bookmark, if they are not.
    std::optional<Error> failure = {};
};

/// Parses bookmark data once. Nothing is resolved or accessed.
using StoredPropertiesReader = std::function<ReadProperties(std::span<const std::byte> bookmarkData)>;

/// How a bookmark's volume was recognised.
enum class VolumeMatch {
    uuid,
    nameAndCapacity,
    nameAndCreationDate, ///< Of bookmarks that store no capacity, such as those of alias records.
    notNamed,            ///< The bookmark stores nothing that its volume could be recognised by.
    unknown,             ///< The system does not say.
};

/// How the item was found.
enum class ItemMatch {
    path,        ///< At the path that the bookmark stores.
    fileNumbers, ///< Renamed, or below a folder renamed: by the numbers along the path.
    search,      ///< Moved nearby: by its number, in the tree below a folder of its path.
    unknown,     ///< The system does not say.
};

/// How an item was found, and the stored and actual facts that were compared. Unknown ones are absent.
struct BookmarkMatch {
    VolumeMatch volume = VolumeMatch::notNamed;
    ItemMatch item = ItemMatch::path;
    std::optional<std::int64_t> storedNumber; ///< The item's file number in the bookmark.
    std::optional<std::int64_t> actualNumber;
    std::optional<Date> storedCreationDate;
    std::optional<Date> actualCreationDate;

    friend bool operator==(const BookmarkMatch&, const BookmarkMatch&) = default;
};

/// One fact as a bookmark stores it and as it is of the item that was found.
struct ComparedFact {
    std::string_view name; ///< Such as "volumeName"; ComparedFacts.h lists them.
    std::optional<Value> stored;
    std::optional<Value> found;
    /// Absent where one of the two is not known.
    std::optional<bool> differs = {};

    friend bool operator==(const ComparedFact&, const ComparedFact&) = default;
};

/// Compares what bookmark data stores with what a new bookmark of the item does that it led to.
using BookmarkComparer = std::function<std::vector<ComparedFact>(
    std::span<const std::byte> stored, std::span<const std::byte> found)>;

/// Describes what is whole of bytes that are not a readable bookmark, and what is missing, in lines. Fails if
/// that is nothing, or if the bookmark can be read.
using BookmarkSalvager = std::function<Result<std::string>(std::span<const std::byte> bookmarkData)>;

/// The result of resolving bookmark data.
struct ResolvedBookmark {
    std::optional<URL> url; ///< Absent when resolution succeeded without naming an item.
    bool isStale = false;   ///< The item was found, but the data should be made anew.
    BookmarkMatch match = {};
};

/// A bookmark just made, and where it leads.
struct MadeBookmark {
    Data data;
    Result<ResolvedBookmark> resolved;
};

/// Makes, reads and resolves bookmarks, without options or base URL. The terminal program asks from
/// several threads at a time.
class Bookmarks {
public:
    virtual ~Bookmarks() = default;

    /// Makes bookmark data for the item, without additional resource values.
    virtual Result<Data> bookmarkData(const URL& url) const = 0;

    /// The bookmark data in a file, for example an alias file. Fails if it has none.
    virtual Result<Data> bookmarkDataWithContentsOfURL(const URL& url) const = 0;

    /// The item that bookmark data refers to now. Fails if the data is invalid or the item not found.
    virtual Result<ResolvedBookmark> URLByResolvingBookmarkData(std::span<const std::byte> data) const = 0;

    /// Bookmark data of the item as `bookmarkData` makes it, and what resolving the data finds then. Systems
    /// that know what they wrote need not read it again.
    virtual Result<MadeBookmark> resolvedBookmarkData(const URL& url) const {
        Result<Data> data = bookmarkData(url);
        if (!data) {
            return std::unexpected(data.error());
        }
        Result<ResolvedBookmark> resolved = URLByResolvingBookmarkData(*data);
        return MadeBookmark{*std::move(data), std::move(resolved)};
    }
};

} // namespace tolvane::platform
