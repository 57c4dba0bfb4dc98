#include "platform/linux/LinuxBookmarks.h"

#include "platform/CocoaError.h"
#include "platform/linux/BookmarkMaker.h"
#include "platform/linux/StoredBookmark.h"

namespace tolvane::platform {

Result<Data> LinuxBookmarks::bookmarkData(const URL& url) const {
    return BookmarkMaker(mounts_, volumes_, account_).bookmarkData(url);
}

Result<Data> LinuxBookmarks::bookmarkDataWithContentsOfURL(const URL& url) const {
    return storedBookmark(url);
}

Result<ResolvedBookmark> LinuxBookmarks::URLByResolvingBookmarkData(
    std::span<const std::byte> /*data*/) const {
    return std::unexpected(
        cocoaError(NSFileReadCorruptFileError, "Bookmarks cannot be resolved on this system yet."));
}

} // namespace tolvane::platform
