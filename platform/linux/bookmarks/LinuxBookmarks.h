#pragma once

#include "platform/linux/bookmarks/KnownFolders.h"
#include "platform/linux/bookmarks/LinuxMountedVolumes.h"
#include "platform/linux/volumes/CurrentMounts.h"
#include "platform/linux/volumes/VolumeFacts.h"
#include "platform/posix/Accounts.h"
#include "platform/services/Bookmarks.h"

#include <memory>
#include <mutex>

namespace tolvane::platform {

/// Makes bookmarks of this machine's files and folders, reads those in alias files, and resolves them.
///
/// Facts about the mounted volumes are kept between calls. Several threads may use one object.
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

    /// Resolves what the bookmark was made of, which is what it stores.
    Result<MadeBookmark> resolvedBookmarkData(const URL& url) const override;

private:
    /// As of now.
    Result<std::shared_ptr<const LinuxMountedVolumes>> mountedVolumes() const;

    mutable CurrentMounts mounts_;
    mutable VolumeFacts volumes_;
    mutable OwnAccount account_;
    mutable KnownFolders knownFolders_;
    mutable std::mutex mutex_;                                   // of what follows
    mutable std::shared_ptr<const LinuxMountedVolumes> mounted_; ///< As of the last resolution.
};

} // namespace tolvane::platform
