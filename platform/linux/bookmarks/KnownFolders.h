#pragma once

#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/linux/files/RealPath.h"
#include "platform/linux/volumes/MountTable.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

/// What was found for the bookmark of one item, as far as others in its folder have it in common.
struct KnownFolder {
    std::string folder; ///< The bytes of its real path, without a final slash: empty for "/".
    RealPath way;       ///< Down to the folder.
    std::shared_ptr<const MountTable> table;
    BookmarkContents contents; ///< Of that item.
};

/// The last looks at folders, so that for items of one folder, one after the other, the volumes and the home
/// folder are looked at once. Before a look is used, its way and its table must be found still the same.
///
/// They are kept for a second at most, since they also depend on the volume and the home folder, and in
/// bounded number. Several threads may use one object.
class KnownFolders {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// Another clock is for tests.
    explicit KnownFolders(Clock clock = std::chrono::steady_clock::now) : clock_(std::move(clock)) {}

    /// The look at this folder, or null.
    std::shared_ptr<const KnownFolder> at(std::string_view folder);

    /// Replaces an earlier look at the folder.
    void keep(KnownFolder look);

private:
    struct Kept {
        std::shared_ptr<const KnownFolder> look;
        std::chrono::steady_clock::time_point since;
    };

    Clock clock_;
    std::mutex mutex_;
    std::vector<Kept> kept_; // the latest last
};

} // namespace tolvane::platform
