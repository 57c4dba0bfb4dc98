#pragma once

#include "platform/values/Date.h"
#include "platform/values/Error.h"
#include "platform/values/ItemKind.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The system's answers for resolving bookmarks: which volumes are mounted, and what is on them.
namespace tolvane::platform {

/// A mount of a volume or of one of its folders.
struct MountedVolume {
    std::uint64_t id = 0; ///< Unique among the mounted volumes.

    /// The same for all mounts of one volume.
    std::uint64_t device = 0;

    std::string mountPoint;          ///< Bytes, without a final slash but for "/".
    bool isWhole = true;             ///< Mounted from its topmost folder on.
    std::optional<std::string> name; ///< As bookmarks made here have it.

    friend bool operator==(const MountedVolume&, const MountedVolume&) = default;
};

/// An item itself; a symbolic link is not followed.
struct MountedItem {
    std::uint64_t volume = 0; ///< The `id` of the volume it is on.
    std::uint64_t fileNumber = 0;
    ItemKind kind = ItemKind::unknown;
    std::optional<Date> creationDate; ///< Absent where the volume keeps none.
};

struct FolderEntry {
    std::string name; ///< Bytes.
    std::uint64_t fileNumber = 0;
    bool mayBeFolder = false; ///< The entry says so, or does not say.
    std::size_t position = 0; ///< Among all entries of its folder, from 0.
};

/// Those of a folder's entries that were asked for, in the volume's order.
struct FolderEntries {
    std::vector<FolderEntry> entries;
    std::size_t count = 0; ///< Of all entries that were read.
};

/// The currently mounted volumes.
class MountedVolumes {
public:
    virtual ~MountedVolumes() = default;

    /// The reachable mounts: of several at one place the last. Does not access the volumes. The list stays
    /// the same for the object's life.
    virtual const std::vector<MountedVolume>& volumes() const = 0;

    /// Absent if the volume has none or an all-zero one. May access the volume.
    virtual std::optional<std::string> uuid(const MountedVolume& volume) const = 0;

    /// In bytes. Accesses the volume.
    virtual std::optional<std::int64_t> capacity(const MountedVolume& volume) const = 0;

    /// Of the volume's topmost folder; absent where the volume keeps none. Accesses the volume.
    virtual std::optional<Date> creationDate(const MountedVolume& volume) const = 0;

    /// The item at an absolute path; symbolic links before its last component are followed. This and
    /// `entriesOf` may be called from several threads at a time.
    virtual Result<MountedItem> itemAt(const std::string& path) const = 0;

    /// Reads at most so many entries of a folder, without "." and "..", and returns those that may be folders
    /// or have this number. A path to a symbolic link is not a folder.
    virtual Result<FolderEntries> entriesOf(
        const std::string& folder, std::uint64_t fileNumber, std::size_t most) const = 0;
};

} // namespace tolvane::platform
