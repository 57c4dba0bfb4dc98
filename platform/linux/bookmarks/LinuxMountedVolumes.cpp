#include "platform/linux/bookmarks/LinuxMountedVolumes.h"

#include "platform/linux/files/ItemStatus.h"
#include "platform/linux/volumes/VolumeCrossings.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/values/Utf8.h"

#include <cerrno>

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

std::optional<Date> LinuxMountedVolumes::creationDate(const MountedVolume& volume) const {
    const Mount* const mount = mountOf(volume);
    return mount == nullptr ? std::nullopt : facts_.whole(table_, *mount).creationDate;
}

Result<MountedItem> LinuxMountedVolumes::itemAt(const std::string& path) const {
    const Result<ItemStatus> status = statusOfItem(path);
    if (!status) {
        return std::unexpected(errorAt(path, status.error()));
    }
    return MountedItem{
        status->mountID.value_or(0), status->fileNumber, kindOfMode(status->mode), status->creationDate};
}

Result<FolderEntries> LinuxMountedVolumes::entriesOf(
    const std::string& folder, std::uint64_t fileNumber, std::size_t most) const {
    FolderEntries found;
    const auto visited = visitFolderEntries(folder, [&](const dirent& entry, int /*folder*/) {
        if (found.count == most) {
            return false;
        }
        const bool mayBeFolder = entry.d_type == DT_DIR || entry.d_type == DT_UNKNOWN;
        if (mayBeFolder || entry.d_ino == fileNumber) {
            found.entries.push_back({entry.d_name, entry.d_ino, mayBeFolder, found.count});
        }
        ++found.count;
        return true;
    });
    if (!visited) {
        return std::unexpected(errorAt(folder, visited.error()));
    }
    return found;
}

} // namespace tolvane::platform
