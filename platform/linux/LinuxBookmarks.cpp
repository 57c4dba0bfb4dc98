#include "platform/linux/LinuxBookmarks.h"

#include "platform/CocoaError.h"
#include "platform/bookmark/BookmarkResolution.h"
#include "platform/linux/BookmarkMaker.h"
#include "platform/linux/StoredBookmark.h"

namespace tolvane::platform {

Result<Data> LinuxBookmarks::bookmarkData(const URL& url) const {
    return BookmarkMaker(mounts_, volumes_, account_).bookmarkData(url);
}

Result<Data> LinuxBookmarks::bookmarkDataWithContentsOfURL(const URL& url) const {
    return storedBookmark(url);
}

Result<ResolvedBookmark> LinuxBookmarks::URLByResolvingBookmarkData(std::span<const std::byte> data) const {
    auto table = mounts_.table();
    if (!table) {
        return std::unexpected(cocoaError(
            NSFileReadUnknownError,
            "The mounted volumes are not known: " + table.error().localizedDescription() + "."));
    }
    if (!mounted_ || mounted_->table() != *table) {
        mounted_.emplace(*std::move(table), volumes_);
    }
    return resolveBookmarkData(data, *mounted_);
}

} // namespace tolvane::platform
