/// The facts of mounted volumes for bookmarks, in two grades: those known without accessing the volume, and
/// those that it must be asked for. So a network volume that does not answer cannot block the search for
/// another.
///
/// Names, UUID and flags are cached for as long as the table of mounts stays the same. Capacity, the root's
/// creation date and whether the volume is writable are read each time. Several threads may use one object.
#pragma once

#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/linux/volumes/MountTable.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace tolvane::platform {

/// The folders with the system's facts about disks.
struct DiskFolders {
    std::string links = "/dev/disk";        ///< Holds the folders by-uuid and by-label.
    std::string devices = "/sys/dev/block"; ///< Holds a folder for each block device, "8:1" and so on.
};

class VolumeFacts {
public:
    /// Other folders are for tests.
    explicit VolumeFacts(DiskFolders folders = {}) : folders_(std::move(folders)) {}

    /// Without accessing the volume: mount point as path and URL, whether it is "/" (`wasBoot`), name, flags,
    /// and the UUID if the device manager knows it.
    ///
    /// The name is the volume's label, otherwise the last component of the source ("sda1", "export"),
    /// otherwise of the mount point. Parts that are not UTF-8 become U+FFFD.
    ///
    /// The flags are those of a plain bookmark. Not browsable, as in file managers, are the kernel's pseudo
    /// file systems, placeholders, everything mounted elsewhere than at "/" or below /media, /mnt,
    /// /run/media, /Volumes or /home, and mounts in folders whose name begins with a dot. Automounted is what
    /// is mounted on an automounter's mount.
    BookmarkVolume fromAfar(const std::shared_ptr<const MountTable>& table, const Mount& mount);

    /// All facts: also capacity, creation date and, if the device manager does not know the UUID, that of the
    /// volume itself. The root is accessed, and opened at most once per table. For a mount that is covered,
    /// automounts others, or must not be asked, only the facts above.
    BookmarkVolume whole(const std::shared_ptr<const MountTable>& table, const Mount& mount);

    /// The UUID only, from the device manager or from a local volume itself; once known it is not asked for
    /// again while the table stays the same.
    std::optional<std::string> uuid(const std::shared_ptr<const MountTable>& table, const Mount& mount);

private:
    struct Kept {
        BookmarkVolume afar;
        bool isAsked = false;
        std::optional<std::string> answeredUUID;
    };

    Kept& kept(const std::shared_ptr<const MountTable>& table, const Mount& mount);
    BookmarkVolume lookFromAfar(const MountTable& table, const Mount& mount) const;
    std::uint64_t flagsOf(const MountTable& table, const Mount& mount, std::uint64_t device) const;

    DiskFolders folders_;
    std::mutex mutex_; ///< Guards what follows, and a volume while it is asked for its UUID.
    std::shared_ptr<const MountTable> table_;
    std::map<std::uint64_t, std::string> uuids_;
    std::map<std::uint64_t, std::string> labels_;
    std::map<std::uint64_t, Kept> kept_; ///< By mount id.
};

} // namespace tolvane::platform
