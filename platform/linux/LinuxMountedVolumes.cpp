#include "platform/linux/LinuxMountedVolumes.h"

#include "platform/CocoaError.h"
#include "platform/Utf8.h"
#include "platform/linux/ItemStatus.h"
#include "platform/linux/VolumeCrossings.h"

#include <cerrno>
#include <memory>
#include <string_view>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

std::int64_t cocoaCode(std::int64_t errorNumber) {
    switch (errorNumber) {
    case EACCES:
    case EPERM:
        return NSFileReadNoPermissionError;
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
        return NSFileReadNoSuchFileError;
    default:
        return NSFileReadUnknownError;
    }
}

Error errorAt(const std::string& path, const Error& error) {
    return cocoaError(cocoaCode(error.code), shownText(path) + ": " + error.localizedDescription() + ".");
}

MountedItemKind kindOf(std::uint32_t mode) {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return MountedItemKind::regularFile;
    case S_IFDIR:
        return MountedItemKind::folder;
    case S_IFLNK:
        return MountedItemKind::symbolicLink;
    default:
        return MountedItemKind::other;
    }
}

// Reading a folder would move its access date; only its owner may ask for that not to happen.
int openFolder(const std::string& path) {
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const int number = open(path.c_str(), flags | O_NOATIME);
    return number < 0 && errno == EPERM ? open(path.c_str(), flags) : number;
}

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, FolderCloser>;

} // namespace

LinuxMountedVolumes::LinuxMountedVolumes(std::shared_ptr<const MountTable> table, VolumeFacts& facts)
    : table_(std::move(table))
    , facts_(facts) {
    for (const Mount* const mount : table_->reachable()) {
        add(*mount);
    }
    if (table_->topmostAt("/") == nullptr) {
        if (const auto root = statusOfItem("/")) {
            hiddenRoot_ = mountOfHiddenRoot(*root);
            add(*hiddenRoot_);
        }
    }
}

void LinuxMountedVolumes::add(const Mount& mount) {
    volumes_.push_back(
        {mount.id, mount.device, mount.mountPoint, mount.root == "/", facts_.fromAfar(table_, mount).name});
}

const Mount* LinuxMountedVolumes::mountOf(const MountedVolume& volume) const {
    return hiddenRoot_ && hiddenRoot_->id == volume.id ? &*hiddenRoot_ : table_->withID(volume.id);
}

std::optional<std::string> LinuxMountedVolumes::uuid(const MountedVolume& volume) const {
    const Mount* const mount = mountOf(volume);
    return mount == nullptr ? std::nullopt : facts_.uuid(table_, *mount);
}

std::optional<std::int64_t> LinuxMountedVolumes::capacity(const MountedVolume& volume) const {
    const Mount* const mount = mountOf(volume);
    return mount == nullptr ? std::nullopt : facts_.whole(table_, *mount).capacity;
}

Result<MountedItem> LinuxMountedVolumes::itemAt(const std::string& path) const {
    const Result<ItemStatus> status = statusOfItem(path);
    if (!status) {
        return std::unexpected(errorAt(path, status.error()));
    }
    return MountedItem{
        status->mountID.value_or(0), status->fileNumber, kindOf(status->mode), status->creationDate};
}

Result<std::vector<FolderEntry>> LinuxMountedVolumes::entriesOf(
    const std::string& folder, std::size_t most) const {
    const int number = openFolder(folder);
    if (number < 0) {
        return std::unexpected(errorAt(folder, posixError(errno)));
    }
    const OpenFolder opened(fdopendir(number));
    if (!opened) {
        const Error error = posixError(errno);
        close(number);
        return std::unexpected(errorAt(folder, error));
    }
    std::vector<FolderEntry> entries;
    while (entries.size() < most) {
        errno = 0;
        const dirent* const entry = readdir(opened.get());
        if (entry == nullptr && errno != 0) {
            return std::unexpected(errorAt(folder, posixError(errno)));
        }
        if (entry == nullptr) {
            break;
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            entries.push_back(
                {std::string(name), entry->d_ino, entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN});
        }
    }
    return entries;
}

} // namespace tolvane::platform
