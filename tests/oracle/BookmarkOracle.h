// What stat(1) and getent(1) report about where items are, to compare bookmarks with.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::tests {

/// What stat reports about the mount point of a volume.
struct VolumeFacts {
    std::string mountPoint;
    std::int64_t capacity = 0;
    std::optional<double> created; ///< Seconds since 1970.
    /// Whether its files keep their numbers; nothing for file systems that the tests do not judge.
    std::optional<bool> hasLastingNumbers;

    bool operator==(const VolumeFacts&) const = default;
};

/// Where an item is. The path is the real one, but for a final symbolic link.
struct PlaceFacts {
    std::vector<std::string> components;
    std::vector<std::uint64_t> numbers; ///< One for each component.
    std::optional<double> created;
    VolumeFacts volume;
    std::optional<std::int64_t> componentsBelowHome; ///< Of the user who asks.
    std::string userName;                            ///< That user's, where the item is in the home folder.
    std::int64_t userID = 0;

    /// Whether all names are UTF-8, so that a bookmark can hold them.
    bool isText = true;

    bool operator==(const PlaceFacts&) const = default;
};

/// Looks at items by their absolute paths, as the given user. What cannot be looked at is left out.
std::map<std::string, PlaceFacts> placesOf(
    const std::vector<std::string>& paths, std::optional<std::uint32_t> user = {});

/// The real path of the user's home folder; empty if there is none.
std::string homeFolder();

/// What "bookmark resolve" prints for the item at `path`, if it has the number of the one at `numbered`.
std::string linesOfItem(const std::string& path, const std::string& numbered);

/// Whether the file system keeps the item's creation date, without which no item is found by its number.
bool keepsCreationDate(const std::string& path);

/// What a report shows of the path that the bookmark of the item leads to.
std::string expectedBookmarkPath(const PlaceFacts& place);

/// Compares the bookmark, in base-64, with where the item is; "" stands for none. What differs fails the
/// test.
void expectBookmark(const std::string& base64, const PlaceFacts& place, std::uint64_t mode);

} // namespace tolvane::tests
