#pragma once

#include "platform/services/Bookmarks.h"

#include <span>

namespace tolvane::platform {

/// Has the system make, read and resolve bookmarks, with options 0: resolving may show a dialog and mount
/// volumes. It does not say how it found an item, so `ResolvedBookmark::match` stays unknown. Several threads
/// may use one object.
class MacBookmarks final : public Bookmarks {
public:
    /// A URL without a usable path fails with EINVAL, as it does for the next one.
    Result<Data> bookmarkData(const URL& url) const override;
    Result<Data> bookmarkDataWithContentsOfURL(const URL& url) const override;
    Result<ResolvedBookmark> URLByResolvingBookmarkData(std::span<const std::byte> data) const override;
};

/// What the system reads in a bookmark. Values of kinds that `Value` does not know are left out. The system
/// does not say why it reads nothing.
ReadProperties readSystemProperties(std::span<const std::byte> bookmarkData);

} // namespace tolvane::platform
