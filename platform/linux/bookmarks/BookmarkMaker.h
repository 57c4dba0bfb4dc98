#pragma once

#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/linux/files/Accounts.h"
#include "platform/linux/files/RealPath.h"
#include "platform/linux/volumes/CurrentMounts.h"
#include "platform/linux/volumes/VolumeFacts.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"

#include <functional>

/// Makes bookmarks of files, folders, links and whatever else has a path.
///
/// A bookmark stores where the item really is: the real path, but for a final symbolic link, which is an item
/// of its own; the number of each item on the way; and the facts of the volume that it is on, of the one at
/// "/", and of those crossed in between. Everything in it was true at one moment; when the path leads
/// elsewhere while the bookmark is made it is made anew, and not at all when that goes on.
///
/// The item is looked at and never opened, nor is anything on the way to it. The root of a volume may be, to
/// ask for the volume's UUID.
namespace tolvane::platform {

/// Use it from one thread. What it is made of must outlive it.
class BookmarkMaker {
public:
    BookmarkMaker(CurrentMounts& mounts, VolumeFacts& volumes, OwnAccount& account)
        : mounts_(mounts)
        , volumes_(volumes)
        , account_(account) {}

    /// Bookmark data with the options of a plain bookmark without security scope.
    ///
    /// A URL that keeps an item's identity has to lead to that item still. Fails in NSCocoaErrorDomain: 256
    /// when it does not, or the path changes all the time, or has too many links; 257 when the way to the
    /// item may not be searched; 258 when a name on it is no UTF-8, which a bookmark cannot hold, or too
    /// long; 260 when there is no such item; 262 when the URL is not a file URL.
    Result<Data> bookmarkData(const URL& url);

    /// What that bookmark stores.
    Result<BookmarkContents> contents(const URL& url);

private:
    std::optional<BookmarkContents> contentsOf(
        const RealPath& path, const std::shared_ptr<const MountTable>& table);
    void addHome(BookmarkContents& contents, const RealPath& path);

    CurrentMounts& mounts_;
    VolumeFacts& volumes_;
    OwnAccount& account_;
};

} // namespace tolvane::platform
