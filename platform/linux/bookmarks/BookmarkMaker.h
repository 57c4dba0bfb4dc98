#pragma once

#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/linux/bookmarks/KnownFolders.h"
#include "platform/linux/files/RealPath.h"
#include "platform/linux/volumes/CurrentMounts.h"
#include "platform/linux/volumes/VolumeFacts.h"
#include "platform/posix/Accounts.h"
#include "platform/values/Error.h"
#include "platform/values/URL.h"

/// Makes bookmarks of files, folders, links and other items with a path.
///
/// A bookmark stores the real path, except that a final symbolic link is the item itself; the number of each
/// item on the way; and the facts of the volumes of "/", of the item, and of those between. Everything in it
/// was true at one moment: if the path changes meanwhile, making starts over a few times, then fails. Of
/// items in one folder, made one after the other, only the first has the volumes and the home folder looked
/// at (KnownFolders.h); the way to each is checked again.
///
/// No item is opened, except perhaps the root of a volume, to ask for its UUID.
namespace tolvane::platform {

/// Several threads may use one maker. What it is made of must outlive it.
class BookmarkMaker {
public:
    BookmarkMaker(
        CurrentMounts& mounts, VolumeFacts& volumes, OwnAccount& account, KnownFolders& knownFolders)
        : mounts_(mounts)
        , volumes_(volumes)
        , account_(account)
        , knownFolders_(knownFolders) {}

    /// Bookmark data with the options of a plain bookmark without security scope.
    ///
    /// A URL with a stored identity must still lead to that item. Fails in NSCocoaErrorDomain: 256 if it does
    /// not, or the path keeps changing or has too many links; 257 if a folder may not be searched; 258 if a
    /// name is too long or not UTF-8, which a bookmark cannot hold; 260 if there is no item; 262 if the URL
    /// is not a file URL.
    Result<Data> bookmarkData(const URL& url);

    /// What that bookmark stores.
    Result<BookmarkContents> contents(const URL& url);

private:
    std::optional<BookmarkContents> contentsInKnownFolder(const URL& url, const std::string& path);
    void keepFolder(
        const std::string& path,
        RealPath real,
        std::shared_ptr<const MountTable> table,
        const BookmarkContents& contents);
    std::optional<BookmarkContents> contentsOf(
        const RealPath& path, const std::shared_ptr<const MountTable>& table);
    void addHome(BookmarkContents& contents, const RealPath& path);

    CurrentMounts& mounts_;
    VolumeFacts& volumes_;
    OwnAccount& account_;
    KnownFolders& knownFolders_;
};

/// The data of a bookmark with what a maker found. Fails in NSCocoaErrorDomain (256) if no bookmark can hold
/// it.
Result<Data> bookmarkDataOf(const BookmarkContents& made);

} // namespace tolvane::platform
