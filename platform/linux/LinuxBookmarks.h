// Bookmarks are not made or resolved on Linux yet: these operations fail, always and with a sentence that says
// so. The bookmarks that files hold are read.
//
// The object is there so that the program around it behaves as it does for an item that no bookmark can be
// made of.
#pragma once

#include "platform/Bookmarks.h"

namespace tolvane::platform {

class LinuxBookmarks final : public Bookmarks {
public:
    /// NSCocoaErrorDomain, code 256.
    Result<Data> bookmarkData(const URL& url) const override;

    /// See StoredBookmark.h.
    Result<Data> bookmarkDataWithContentsOfURL(const URL& url) const override;

    /// NSCocoaErrorDomain, code 259.
    Result<ResolvedBookmark> URLByResolvingBookmarkData(std::span<const std::byte> data) const override;
};

} // namespace tolvane::platform
