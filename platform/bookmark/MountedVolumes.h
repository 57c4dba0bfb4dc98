#pragma once

#include "platform/Date.h"
#include "platform/Error.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What finding the target of a bookmark asks of the system: which volumes are mounted, and what is on them.
namespace tolvane::platform {

/// One volume, or one folder of it, mounted somewhere.
struct MountedVolume {
    std::uint64_t id = 0; ///< Tells it from every other mounted one.

    /// The same for all places that one volume is mounted at.
    std::uint64_t device = 0;

    std::string mountPoint;          ///< Bytes, without a final slash but for "/".
    bool isWhole = true;             ///< Mounted from its topmost folder on.
    std::optional<std::string> name; ///< As bookmarks made here tell it.

    friend bool operator==(const MountedVolume&, const MountedVolume&) = default;
};

enum class MountedItemKind { regularFile, folder, symbolicLink, other };

/// An item itself, a symbolic link not followed.
struct MountedItem {
    std::uint64_t volume = 0; ///< The `id` of the volume it is on.
    std::uint64_t fileNumber = 0;
    MountedItemKind kind = MountedItemKind::other;
    std::optional<Date> creationDate; ///< Absent where the volume keeps none.
};

struct FolderEntry {
    std::string name; ///< Bytes.
    std::uint64_t fileNumber = 0;
    bool mayBeFolder = false; ///< The entry says so, or does not say.
};

/// The volumes of this machine as they are now.
class MountedVolumes {
public:
    virtual ~MountedVolumes() = default;

    /// Those that can be reached: of several mounted at one place the last. No volume is touched for it. The
    /// list stays the same as long as the object lives.
    virtual const std::vector<MountedVolume>& volumes() const = 0;

    /// Absent where the volume has none, or one of zeros alone. Asks the volume itself if need be.
    virtual std::optional<std::string> uuid(const MountedVolume& volume) const = 0;

    /// In bytes. Asks the volume itself.
    virtual std::optional<std::int64_t> capacity(const MountedVolume& volume) const = 0;

    /// The item at an absolute path; symbolic links before its last component are followed.
    virtual Result<MountedItem> itemAt(const std::string& path) const = 0;

    /// What a folder holds, at most so many entries, without the folder itself and its parent. A path that
    /// leads to a symbolic link is no folder.
    virtual Result<std::vector<FolderEntry>> entriesOf(const std::string& folder, std::size_t most) const = 0;
};

} // namespace tolvane::platform
