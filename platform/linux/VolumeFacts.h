// The facts of mounted volumes, as bookmarks tell them.
//
// They come in two grades, because whoever looks for one volume asks about many, and a network volume that
// does not answer must not hold up the search for another: what can be told from afar, and what the volume
// itself has to be asked for.
//
// Facts that stay while a volume is mounted are kept for as long as the table of mounts stays the same: its
// names, UUID and flags. Its capacity, its root's creation date and whether it can be written are looked at
// anew each time. Use it from one thread.
#pragma once

#include "platform/bookmark/BookmarkContents.h"
#include "platform/linux/MountTable.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace tolvane::platform {

/// Where the system keeps what it knows of its disks.
struct DiskFolders {
    std::string links = "/dev/disk";        ///< Holds the folders by-uuid and by-label.
    std::string devices = "/sys/dev/block"; ///< Holds a folder for each block device, "8:1" and so on.
};

class VolumeFacts {
public:
    /// Other folders are for tests.
    explicit VolumeFacts(DiskFolders folders = {}) : folders_(std::move(folders)) {}

    /// Without touching the volume: mount point as path and URL, whether it is "/" (`wasBoot`), name, flags,
    /// and the UUID where the device manager knows it.
    ///
    /// The name is the volume's label, else the last component of what is mounted ("sda1", "export"), else of
    /// the mount point. Parts of a name or path that are no UTF-8 become U+FFFD.
    ///
    /// Flags are those of a plain bookmark. Not browsable are the kernel's views of itself and what only
    /// stands for other volumes, and everything mounted elsewhere than at "/" or below /media, /mnt,
    /// /run/media, /Volumes or /home, or in a folder whose name begins with a dot: parts of the system, which
    /// file managers do not show. Automounted is what stands on an automounter's mount.
    BookmarkVolume fromAfar(const std::shared_ptr<const MountTable>& table, const Mount& mount);

    /// All of them: also capacity, creation date and, where the device manager does not know it, the UUID
    /// that the volume itself answers. The mount's root is looked at, and opened at most once as long as the
    /// table stays the same. Of a mount that is covered, automounts others, or does not let itself be asked,
    /// what is told from afar.
    BookmarkVolume whole(const std::shared_ptr<const MountTable>& table, const Mount& mount);

    /// The UUID alone, which is the device manager's or, of a volume of this machine, the one that it answers
    /// itself; once known the volume is not looked at again as long as the table stays the same.
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
    std::shared_ptr<const MountTable> table_;
    std::map<std::uint64_t, std::string> uuids_;
    std::map<std::uint64_t, std::string> labels_;
    std::map<std::uint64_t, Kept> kept_; ///< By mount id.
};

} // namespace tolvane::platform
