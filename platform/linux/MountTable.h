// Which file systems are mounted where, as the kernel lists them for the process.
//
// A table is a picture of one moment and never changes; `CurrentMounts` takes a new one when the mounts have
// changed. Paths are bytes and start at the process's root, with the kernel's escapes undone. Mounts cover
// each other: of several at the same folder only the one on top can be reached, and so can what lies below
// it, which is told by which mount stands on which and not by their order in the list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

struct Mount {
    std::uint64_t id = 0;     ///< As statx tells it of each item; given anew once the mount is gone.
    std::uint64_t parent = 0; ///< The id of the mount that this one stands on.
    std::uint64_t device = 0; ///< As st_dev counts it, but for file systems that give subvolumes their own.
    std::string root;         ///< What of the file system is seen here: "/" for all, or a path inside it.
    std::string mountPoint;   ///< Absolute; a folder as a rule, but single files can be mounted too.
    std::string type;         ///< "ext4", "nfs4", "fuse.sshfs" …
    std::string source;       ///< "/dev/sda1", "server:/export", or a word that means nothing.
    std::string superOptions; ///< The file system's own options, divided by commas.
    bool isReadOnly = false;  ///< By the mount's options or by the file system's own.

    friend bool operator==(const Mount&, const Mount&) = default;
};

/// A mount, and how many components the path has that it is mounted on.
struct MountOnTheWay {
    std::size_t depth = 0;
    const Mount* mount = nullptr;
};

class MountTable {
public:
    MountTable() = default;
    explicit MountTable(std::vector<Mount> mounts);

    /// From the text of a mountinfo file. Lines that are not of its form are left out.
    static MountTable parse(std::string_view mountinfo);

    /// All mounts, in the kernel's order.
    const std::vector<Mount>& mounts() const { return mounts_; }

    /// Null when there is none.
    const Mount* withID(std::uint64_t id) const;

    /// The mount that an item at this mount point is on: the topmost of those that were made there. Null when
    /// nothing is mounted there, or what is mounted cannot be reached.
    const Mount* topmostAt(std::string_view mountPoint) const;

    /// The mounts that a walk from "/" down to the path comes through, and at which depth each begins. The
    /// path is absolute and real: no links, no dots. The list is empty for a process whose root is no mount
    /// point as long as none is met below.
    std::vector<MountOnTheWay> onTheWayTo(std::string_view path) const;

    /// The mounts that can be reached, in the kernel's order: those not covered by another.
    std::vector<const Mount*> reachable() const;

private:
    auto mountPointOf() const {
        return [this](std::size_t index) -> std::string_view { return mounts_[index].mountPoint; };
    }
    const Mount* topmostOn(const Mount* ground, std::string_view mountPoint) const;

    std::vector<Mount> mounts_;
    std::vector<std::size_t> byMountPoint_; ///< Indices of all mounts, sorted.
};

} // namespace tolvane::platform
