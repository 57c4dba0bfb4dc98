#pragma once

#include "platform/linux/bookmarks/LinuxMountedVolumes.h"
#include "platform/linux/files/Accounts.h"
#include "platform/linux/volumes/CurrentMounts.h"
#include "platform/linux/volumes/VolumeFacts.h"
#include "platform/services/Bookmarks.h"

#include <optional>

namespace tolvane::platform {

/// Makes bookmarks of this machine's files and folders, reads those in alias files, and resolves them.
///
/// Facts about the mounted volumes are kept between calls. Use an object from one thread.
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
