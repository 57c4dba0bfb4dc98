#pragma once

#include "platform/Value.h"

#include <optional>
#include <span>
#include <string_view>

namespace tolvane::platform {

/// Every property that a bookmark stores, in a dictionary.
inline constexpr std::string_view NSURLBookmarkAllPropertiesKey = "NSURLBookmarkAllPropertiesKey";
/// What a bookmark is made of, item by item, in a text of many lines.
inline constexpr std::string_view NSURLBookmarkDetailedDescription = "NSURLBookmarkDetailedDescription";

/// Answers what bookmark data tells by itself. Nothing is resolved and no file is looked at.
class BookmarkProperties {
public:
    virtual ~BookmarkProperties() = default;

    /// The values of the keys that the bookmark has one for. Nothing when the bytes are no bookmark that can
    /// be read.
    virtual std::optional<Dictionary> resourceValuesForKeys(
        std::span<const std::string_view> keys, std::span<const std::byte> bookmarkData) const = 0;
};

} // namespace tolvane::platform
