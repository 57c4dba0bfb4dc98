#include "platform/linux/bookmarks/LinuxBookmarks.h"

#include "platform/bookmark/resolution/BookmarkResolution.h"
#include "platform/linux/bookmarks/BookmarkMaker.h"
#include "platform/linux/bookmarks/StoredBookmark.h"

#include <utility>

namespace tolvane::platform {

Result<Data> LinuxBookmarks::bookmarkData(const URL& url) const {
    return BookmarkMaker(mounts_, volumes_, account_, knownFolders_).bookmarkData(url);
}

Result<Data> LinuxBookmarks::bookmarkDataWithContentsOfURL(const URL& url) const {
    return storedBookmark(url);
}

Result<ResolvedBookmark> LinuxBookmarks::URLByResolvingBookmarkData(std::span<const std::byte> data) const {
    const auto mounted = mountedVolumes();
    return mounted ? resolveBookmarkData(data, **mounted) : std::unexpected(mounted.error());
}

Result<MadeBookmark> LinuxBookmarks::resolvedBookmarkData(const URL& url) const {
    const auto contents = BookmarkMaker(mounts_, volumes_, account_, knownFolders_).contents(url);
    if (!contents) {
        return std::unexpected(contents.error());
    }
    auto data = bookmarkDataOf(*contents);
    if (!data) {
        return std::unexpected(data.error());
    }
    const auto mounted = mountedVolumes();
    return MadeBookmark{
        *std::move(data), mounted ? resolveBookmark(*contents, **mounted) : std::unexpected(mounted.error())};
}

Result<std::shared_ptr<const LinuxMountedVolumes>> LinuxBookmarks::mountedVolumes() const {
    auto table = mounts_.table();
    if (!table) {
        return std::unexpected(cocoaError(
            NSFileReadUnknownError,
            "The mounted volumes cannot be read: " + table.error().localizedDescription() + "."));
    }
    const std::lock_guard lock(mutex_);
    if (!mounted_ || mounted_->table() != *table) {
        mounted_ = std::make_shared<const LinuxMountedVolumes>(*std::move(table), volumes_);
    }
    return mounted_;
}

} // namespace tolvane::platform
