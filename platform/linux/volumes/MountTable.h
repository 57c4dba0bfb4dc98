/// Which file systems are mounted where, from the kernel's list for this process.
///
/// A table is an immutable snapshot; `CurrentMounts` returns a new one after a change. Paths are bytes from
/// the process's root, unescaped. Of several mounts at one folder only the top one is reachable, and only
/// what is on it; this follows from which mount is on which, not from the order of the list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

struct Mount {
    std::uint64_t id = 0;     ///< As statx returns it for each item; given anew once the mount is gone.
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

/// A mount, and the number of components of its mount point.
struct MountOnTheWay {
    std::size_t depth = 0;
    const Mount* mount = nullptr;
};

class MountTable {
public:
    MountTable() = default;
    explicit MountTable(std::vector<Mount> mounts);

    /// From the text of a mountinfo file. Malformed lines are left out.
    static MountTable parse(std::string_view mountinfo);

    /// All mounts, in the kernel's order.
    const std::vector<Mount>& mounts() const { return mounts_; }

    /// The mount with this number, or null.
    const Mount* withID(std::uint64_t id) const;

    /// The topmost mount at this mount point. Null if nothing is mounted there or it cannot be reached.
    const Mount* topmostAt(std::string_view mountPoint) const;

    /// The mounts on the way from "/" down to the path, with the depth at which each begins. The path is
    /// absolute and real: no links, no dots. Empty if the process's root is not a mount point and no mount is
    /// on the way.
    std::vector<MountOnTheWay> onTheWayTo(std::string_view path) const;

    /// The reachable mounts in the kernel's order: those not covered by another.
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
