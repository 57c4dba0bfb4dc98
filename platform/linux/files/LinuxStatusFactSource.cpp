#include "platform/linux/files/LinuxStatusFactSource.h"

#include "platform/posix/FileMode.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

struct FlagPair {
    std::uint64_t told; ///< As statx has it.
    std::uint32_t flag; ///< As inodes have it.
};

constexpr std::array flagPairs{
    FlagPair{STATX_ATTR_COMPRESSED, FS_COMPR_FL},
    FlagPair{STATX_ATTR_IMMUTABLE, FS_IMMUTABLE_FL},
    FlagPair{STATX_ATTR_APPEND, FS_APPEND_FL},
    FlagPair{STATX_ATTR_NODUMP, FS_NODUMP_FL},
    FlagPair{STATX_ATTR_ENCRYPTED, FS_ENCRYPT_FL},
    FlagPair{STATX_ATTR_VERITY, FS_VERITY_FL},
    FlagPair{STATX_ATTR_DAX, FS_DAX_FL}};

std::uint32_t inodeFlags(std::uint64_t told) {
    std::uint32_t flags = 0;
    for (const FlagPair& pair : flagPairs) {
        flags |= (told & pair.told) != 0 ? pair.flag : 0;
    }
    return flags;
}

/// 0 or why the access is refused; nothing if that could not be asked.
std::optional<int> refusalOf(const std::string& path, int access) {
    if (faccessat(AT_FDCWD, path.c_str(), access, AT_EACCESS | AT_SYMLINK_NOFOLLOW) == 0) {
        return 0;
    }
    const bool isAnswer = errno == EACCES || errno == EPERM || errno == EROFS;
    return isAnswer ? std::optional(errno) : std::nullopt;
}

std::optional<ItemAccess> currentAccess(const std::string& path) {
    const auto read = refusalOf(path, R_OK);
    const auto write = refusalOf(path, W_OK);
    const auto execute = refusalOf(path, X_OK);
    return read && write && execute ? std::optional(ItemAccess{*read, *write, *execute}) : std::nullopt;
}

std::optional<Date> dateOf(const statx_timestamp& stamp, bool isTold) {
    return isTold ? std::optional(Date::fromUnixTime(stamp.tv_sec, stamp.tv_nsec)) : std::nullopt;
}

} // namespace

Result<StatusFacts> LinuxStatusFactSource::factsOfItemAtPath(const std::string& path) const {
    if (path.contains('\0')) {
        return std::unexpected(posixError(EINVAL));
    }
    struct statx answer{};
    constexpr int lookFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_SYNC_AS_STAT;
    if (statx(AT_FDCWD, path.c_str(), lookFlags, STATX_BASIC_STATS, &answer) != 0) {
        return std::unexpected(posixError(errno));
    }
    constexpr std::uint64_t blockSize = 512; // whatever the volume's own blocks
    StatusFacts facts;
    facts.mode = answer.stx_mode;
    facts.ownerID = answer.stx_uid;
    facts.groupID = answer.stx_gid;
    facts.allocatedSize = answer.stx_blocks * blockSize;
    facts.accessDate = dateOf(answer.stx_atime, (answer.stx_mask & STATX_ATIME) != 0);
    facts.statusChangeDate = dateOf(answer.stx_ctime, (answer.stx_mask & STATX_CTIME) != 0);
    facts.flags = inodeFlags(answer.stx_attributes);
    facts.knownFlags = inodeFlags(answer.stx_attributes_mask);
    if (kindOfMode(facts.mode) != ItemKind::symbolicLink) {
        facts.currentAccess = currentAccess(path);
    }
    return facts;
}

} // namespace tolvane::platform
