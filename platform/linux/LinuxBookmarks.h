// Bookmarks of this machine's files are made, and those that files hold are read. Resolving them is not done
// on Linux yet: it fails, always and with a sentence that says so.
//
// The object keeps what it learns of the mounted volumes. Use it from one thread.
#pragma once

#include "platform/Bookmarks.h"
#include "platform/linux/CurrentMounts.h"
#include "platform/linux/OwnAccount.h"
#include "platform/linux/VolumeFacts.h"

namespace tolvane::platform {

class LinuxBookmarks final : public Bookmarks {
public:
    /// See BookmarkMaker.h.
    Result<Data> bookmarkData(const URL& url) const override;

    /// See StoredBookmark.h.
    Result<Data> bookmarkDataWithContentsOfURL(const URL& url) const override;

    /// NSCocoaErrorDomain, code 259.
    Result<ResolvedBookmark> URLByResolvingBookmarkData(std::span<const std::byte> data) const override;

private:
    mutable CurrentMounts mounts_;
    mutable VolumeFacts volumes_;
    mutable OwnAccount account_;
};

} // namespace tolvane::platform
