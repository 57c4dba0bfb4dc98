// Bookmarks of this machine's files and folders: made, read out of alias files, and resolved.
//
// The object keeps what it learns of the mounted volumes. Use it from one thread.
#pragma once

#include "platform/Bookmarks.h"
#include "platform/linux/CurrentMounts.h"
#include "platform/linux/LinuxMountedVolumes.h"
#include "platform/linux/OwnAccount.h"
#include "platform/linux/VolumeFacts.h"

#include <optional>

namespace tolvane::platform {

class LinuxBookmarks final : public Bookmarks {
public:
    LinuxBookmarks() = default;
    LinuxBookmarks(const LinuxBookmarks&) = delete;
    LinuxBookmarks& operator=(const LinuxBookmarks&) = delete;
    ~LinuxBookmarks() override = default;

    /// See BookmarkMaker.h.
    Result<Data> bookmarkData(const URL& url) const override;

    /// See StoredBookmark.h.
    Result<Data> bookmarkDataWithContentsOfURL(const URL& url) const override;

    /// See BookmarkResolution.h.
    Result<ResolvedBookmark> URLByResolvingBookmarkData(std::span<const std::byte> data) const override;

private:
    mutable CurrentMounts mounts_;
    mutable VolumeFacts volumes_;
    mutable std::optional<LinuxMountedVolumes> mounted_; ///< As of the last resolution.
    mutable OwnAccount account_;
};

} // namespace tolvane::platform
