#include "platform/bookmark/StoredProperties.h"

#include "platform/bookmark/BookmarkDescription.h"
#include "platform/bookmark/BookmarkProperties.h"
#include "platform/bookmark/BookmarkReader.h"

#include <algorithm>
#include <utility>

namespace tolvane::platform {

std::optional<Dictionary> StoredProperties::resourceValuesForKeys(
    std::span<const std::string_view> keys, std::span<const std::byte> bookmarkData) const {
    const auto structure = readBookmark(bookmarkData);
    if (!structure) {
        return std::nullopt;
    }
    const auto isAskedFor = [keys](std::string_view key) {
        return std::ranges::find(keys, key) != keys.end();
    };
    const bool onlyTheDescription = std::ranges::all_of(
        keys, [](std::string_view key) { return key == NSURLBookmarkDetailedDescription; });
    Dictionary properties = onlyTheDescription ? Dictionary() : bookmarkProperties(*structure);
    Dictionary answer;
    for (const std::string_view key : keys) {
        if (const Value* const value = properties.find(key)) {
            answer.set(key, *value);
        }
    }
    if (isAskedFor(NSURLBookmarkDetailedDescription)) {
        answer.set(NSURLBookmarkDetailedDescription, bookmarkDetailedDescription(*structure));
    }
    if (isAskedFor(NSURLBookmarkAllPropertiesKey)) {
        answer.set(NSURLBookmarkAllPropertiesKey, std::move(properties));
    }
    return answer;
}

} // namespace tolvane::platform
