#include "platform/posix/PosixFileContents.h"

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/FileMode.h"

#include <array>
#include <cerrno>
#include <climits>
#include <limits>
#include <utility>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

std::unexpected<std::error_code> failure(int errorNumber) {
    return std::unexpected(std::error_code(errorNumber, std::generic_category()));
}

#if defined(__APPLE__)
constexpr int withoutMounting = 0;
const timespec& modificationTime(const struct stat& status) {
    return status.st_mtimespec;
}
#else
constexpr int withoutMounting = AT_NO_AUTOMOUNT;
const timespec& modificationTime(const struct stat& status) {
    return status.st_mtim;
}
#endif

bool isNoPath(const std::string& path) {
    return path.contains('\0');
}

FileAnswer<ItemLook> look(int folder, const char* name, int flags) {
    struct stat answer{};
    if (fstatat(folder, name, &answer, flags | withoutMounting) != 0) {
        return failure(errno);
    }
    ItemLook item;
    item.kind = kindOfMode(answer.st_mode);
    item.size = static_cast<std::uint64_t>(answer.st_size);
    item.permissions = answer.st_mode & 07777U;
    const timespec modified = modificationTime(answer);
    item.modificationDate = Date::fromUnixTime(modified.tv_sec, static_cast<std::uint32_t>(modified.tv_nsec));
    item.volume = static_cast<std::uint64_t>(answer.st_dev);
    item.fileNumber = answer.st_ino;
    return item;
}

class PosixOpenedFile final : public OpenedFile {
public:
    explicit PosixOpenedFile(FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

    FileAnswer<std::uint64_t> size() const override {
        struct stat answer{};
        if (fstat(descriptor_.number(), &answer) != 0) {
            return failure(errno);
        }
        return static_cast<std::uint64_t>(answer.st_size);
    }

    FileAnswer<std::size_t> read(std::uint64_t offset, std::span<std::byte> room) const override {
        constexpr auto last = static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
        std::size_t filled = 0;
        while (filled < room.size() && offset <= last - filled) {
            const auto length = pread(
                descriptor_.number(), room.data() + filled, room.size() - filled,
                static_cast<off_t>(offset + filled));
            if (length == 0) {
                break;
            }
            if (length > 0) {
                filled += static_cast<std::size_t>(length);
            } else if (errno != EINTR) {
                return failure(errno);
            }
        }
        return filled;
    }

private:
    FileDescriptor descriptor_;
};

} // namespace

FileAnswer<ItemLook> PosixFileContents::lookAtItem(const std::string& path) const {
    return isNoPath(path) ? failure(EINVAL) : look(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW);
}

FileAnswer<ItemLook> PosixFileContents::lookAtTarget(const std::string& path) const {
    return isNoPath(path) ? failure(EINVAL) : look(AT_FDCWD, path.c_str(), 0);
}

FileAnswer<std::string> PosixFileContents::destinationOfSymbolicLink(const std::string& path) const {
    if (isNoPath(path)) {
        return failure(EINVAL);
    }
    std::array<char, PATH_MAX> room{};
    const auto length = readlink(path.c_str(), room.data(), room.size());
    if (length < 0) {
        return failure(errno);
    }
    return std::string(room.data(), static_cast<std::size_t>(length));
}

FileAnswer<std::shared_ptr<const OpenedFile>> PosixFileContents::openForReading(
    const std::string& path) const {
    // Opening a device can do something by itself, so what is known to be none is all that is opened.
    const auto seen = lookAtTarget(path);
    if (!seen) {
        return std::unexpected(seen.error());
    }
    if (seen->kind != ItemKind::regularFile) {
        return failure(seen->kind == ItemKind::folder ? EISDIR : EINVAL);
    }
    auto descriptor = openKeepingAccessDate(path, O_NONBLOCK);
    if (!descriptor) {
        return failure(static_cast<int>(descriptor.error().code));
    }
    struct stat found{};
    if (fstat(descriptor->number(), &found) != 0) {
        return failure(errno);
    }
    if (const ItemKind kind = kindOfMode(found.st_mode); kind != ItemKind::regularFile) {
        return failure(kind == ItemKind::folder ? EISDIR : EINVAL);
    }
    return std::make_shared<const PosixOpenedFile>(*std::move(descriptor));
}

FileAnswer<void> PosixFileContents::visitFolder(const std::string& path, const EntryVisitor& visitor) const {
    const auto visited = visitFolderEntries(path, [&](const dirent& entry, int folder) {
        const auto item = look(folder, entry.d_name, AT_SYMLINK_NOFOLLOW);
        return !item || visitor(entry.d_name, *item);
    });
    return visited ? FileAnswer<void>() : failure(static_cast<int>(visited.error().code));
}

} // namespace tolvane::platform
