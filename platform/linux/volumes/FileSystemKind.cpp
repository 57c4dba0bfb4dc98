#include "platform/linux/volumes/FileSystemKind.h"

#include <algorithm>
#include <array>

namespace tolvane::platform {

namespace {

using namespace std::string_view_literals;

// Both lists are sorted.
constexpr std::array remoteTypes{
    "9p"sv,
    "afs"sv,
    "ceph"sv,
    "cifs"sv,
    "coda"sv,
    "davfs"sv,
    "fuse.ceph"sv,
    "fuse.ceph-fuse"sv,
    "fuse.curlftpfs"sv,
    "fuse.davfs"sv,
    "fuse.davfs2"sv,
    "fuse.glusterfs"sv,
    "fuse.google-drive-ocamlfuse"sv,
    "fuse.gvfsd-fuse"sv,
    "fuse.juicefs"sv,
    "fuse.kio-fuse"sv,
    "fuse.onedriver"sv,
    "fuse.rclone"sv,
    "fuse.s3fs"sv,
    "fuse.smbnetfs"sv,
    "fuse.sshfs"sv,
    "fuse.vmhgfs-fuse"sv,
    "lustre"sv,
    "ncpfs"sv,
    "nfs"sv,
    "nfs4"sv,
    "orangefs"sv,
    "prl_fs"sv,
    "smb3"sv,
    "smbfs"sv,
    "vboxsf"sv,
    "virtiofs"sv,
    "vmhgfs"sv,
};

constexpr std::array typesWithLastingNumbers{
    "apfs"sv,    "aufs"sv,    "bcachefs"sv, "btrfs"sv,    "cramfs"sv, "devtmpfs"sv, "erofs"sv,
    "ext2"sv,    "ext3"sv,    "ext4"sv,     "f2fs"sv,     "gfs2"sv,   "hfs"sv,      "hfsplus"sv,
    "iso9660"sv, "jffs2"sv,   "jfs"sv,      "minix"sv,    "nilfs2"sv, "ntfs"sv,     "ntfs3"sv,
    "ocfs2"sv,   "overlay"sv, "ramfs"sv,    "reiserfs"sv, "romfs"sv,  "squashfs"sv, "sysv"sv,
    "tmpfs"sv,   "ubifs"sv,   "udf"sv,      "ufs"sv,      "xfs"sv,    "zfs"sv,
};

constexpr std::array pseudoTypes{
    "autofs"sv,    "binder"sv,    "binfmt_misc"sv,     "bpf"sv,        "cgroup"sv,
    "cgroup2"sv,   "configfs"sv,  "cpuset"sv,          "debugfs"sv,    "devpts"sv,
    "devtmpfs"sv,  "efivarfs"sv,  "fuse.gvfsd-fuse"sv, "fuse.lxcfs"sv, "fuse.portal"sv,
    "fusectl"sv,   "hugetlbfs"sv, "mqueue"sv,          "nfsd"sv,       "nsfs"sv,
    "proc"sv,      "pstore"sv,    "resctrl"sv,         "rpc_pipefs"sv, "securityfs"sv,
    "selinuxfs"sv, "smackfs"sv,   "sysfs"sv,           "tracefs"sv,
};

struct Magic {
    std::uint64_t number;
    std::string_view type;
};
constexpr std::array magics{
    Magic{0x0102'1994, "tmpfs"},    Magic{0x2011'BAB0, "exfat"},    Magic{0x4D44, "vfat"},
    Magic{0x6969, "nfs4"},          Magic{0x5846'5342, "xfs"},      Magic{0x6573'5546, "fuse"},
    Magic{0x7371'7368, "squashfs"}, Magic{0x794C'7630, "overlay"},  Magic{0x8584'58F6, "ramfs"},
    Magic{0x9123'683E, "btrfs"},    Magic{0xCA45'1A4E, "bcachefs"}, Magic{0xEF53, "ext4"},
    Magic{0xE0F5'E1E2, "erofs"},    Magic{0xF2F5'2010, "f2fs"},     Magic{0xFE53'4D42, "smb3"},
    Magic{0xFF53'4D42, "cifs"},     Magic{0x0102'1997, "9p"},       Magic{0x2FC1'2FC1, "zfs"},
};

static_assert(std::ranges::is_sorted(remoteTypes));
static_assert(std::ranges::is_sorted(typesWithLastingNumbers));
static_assert(std::ranges::is_sorted(pseudoTypes));

} // namespace

bool isLocalFileSystem(std::string_view type) {
    return !std::ranges::binary_search(remoteTypes, type);
}

bool hasLastingFileNumbers(std::string_view type) {
    return std::ranges::binary_search(typesWithLastingNumbers, type);
}

bool isPseudoFileSystem(std::string_view type) {
    return std::ranges::binary_search(pseudoTypes, type);
}

std::string_view fileSystemTypeOfMagic(std::uint64_t magic) {
    const auto entry = std::ranges::find(magics, magic, &Magic::number);
    return entry != magics.end() ? entry->type : std::string_view();
}

bool isAutomounter(std::string_view type) {
    return type == "autofs";
}

} // namespace tolvane::platform
