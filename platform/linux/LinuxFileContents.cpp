#include "platform/linux/LinuxFileContents.h"

#include "platform/linux/FileDescriptor.h"

#include <array>
#include <cerrno>
#include <limits>
#include <utility>
#include <dirent.h>
#include <fcntl.h>
#include <linux/limits.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

std::unexpected<std::error_code> failure(int errorNumber) {
    return std::unexpected(std::error_code(errorNumber, std::generic_category()));
}

bool isNoPath(const std::string& path) {
    return path.contains('\0');
}

ItemKind kindOf(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return ItemKind::regularFile;
    case S_IFDIR:
        return ItemKind::folder;
    case S_IFLNK:
        return ItemKind::symbolicLink;
    case S_IFIFO:
        return ItemKind::fifo;
    case S_IFSOCK:
        return ItemKind::socket;
    case S_IFCHR:
        return ItemKind::characterDevice;
    case S_IFBLK:
        return ItemKind::blockDevice;
    default:
        return ItemKind::unknown;
    }
}

FileAnswer<ItemLook> look(int folder, const char* name, int flags) {
    struct stat answer{};
    if (fstatat(folder, name, &answer, flags | AT_NO_AUTOMOUNT) != 0) {
        return failure(errno);
    }
    ItemLook item;
    item.kind = kindOf(answer.st_mode);
    item.size = static_cast<std::uint64_t>(answer.st_size);
    item.permissions = answer.st_mode & 07777U;
    item.modificationDate =
        Date::fromUnixTime(answer.st_mtim.tv_sec, static_cast<std::uint32_t>(answer.st_mtim.tv_nsec));
    item.volume = answer.st_dev;
    item.fileNumber = answer.st_ino;
    return item;
}

FileAnswer<FileDescriptor> opened(const std::string& path, int flags) {
    // Only the owner and the superuser may leave the access date as it is.
    for (int extra = O_NOATIME;;) {
        const int number = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | flags | extra);
        if (number >= 0) {
            return FileDescriptor::owned(number);
        }
        if (errno == EPERM && extra != 0) {
            extra = 0;
        } else if (errno != EINTR) {
            return failure(errno);
        }
    }
}

class LinuxOpenedFile final : public OpenedFile {
public:
    explicit LinuxOpenedFile(FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

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

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

using FolderStream = std::unique_ptr<DIR, CloseFolder>;

FileAnswer<FolderStream> openedFolder(const std::string& path) {
    auto descriptor = opened(path, O_DIRECTORY | O_NOFOLLOW);
    if (!descriptor) {
        return std::unexpected(descriptor.error());
    }
    // The stream closes the number it is given, so it gets one of its own.
    const int number = fcntl(descriptor->number(), F_DUPFD_CLOEXEC, 0);
    if (number < 0) {
        return failure(errno);
    }
    FolderStream stream(fdopendir(number));
    if (stream == nullptr) {
        const int reason = errno;
        ::close(number);
        return failure(reason);
    }
    return stream;
}

} // namespace

FileAnswer<ItemLook> LinuxFileContents::lookAtItem(const std::string& path) const {
    return isNoPath(path) ? failure(EINVAL) : look(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW);
}

FileAnswer<ItemLook> LinuxFileContents::lookAtTarget(const std::string& path) const {
    return isNoPath(path) ? failure(EINVAL) : look(AT_FDCWD, path.c_str(), 0);
}

FileAnswer<std::string> LinuxFileContents::destinationOfSymbolicLink(const std::string& path) const {
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

FileAnswer<std::shared_ptr<const OpenedFile>> LinuxFileContents::openForReading(
    const std::string& path) const {
    // Opening a device can do something by itself, so what is known to be none is all that is opened.
    const auto seen = lookAtTarget(path);
    if (!seen) {
        return std::unexpected(seen.error());
    }
    if (seen->kind != ItemKind::regularFile) {
        return failure(seen->kind == ItemKind::folder ? EISDIR : EINVAL);
    }
    auto descriptor = opened(path, 0);
    if (!descriptor) {
        return std::unexpected(descriptor.error());
    }
    struct stat found{};
    if (fstat(descriptor->number(), &found) != 0) {
        return failure(errno);
    }
    if (!S_ISREG(found.st_mode)) {
        return failure(S_ISDIR(found.st_mode) ? EISDIR : EINVAL);
    }
    return std::make_shared<const LinuxOpenedFile>(*std::move(descriptor));
}

FileAnswer<void> LinuxFileContents::visitFolder(const std::string& path, const EntryVisitor& visitor) const {
    if (isNoPath(path)) {
        return failure(EINVAL);
    }
    const auto stream = openedFolder(path);
    if (!stream) {
        return std::unexpected(stream.error());
    }
    while (true) {
        errno = 0;
        const dirent* const entry = readdir(stream->get());
        if (entry == nullptr) {
            return errno == 0 ? FileAnswer<void>() : failure(errno);
        }
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") {
            continue;
        }
        const auto item = look(dirfd(stream->get()), entry->d_name, AT_SYMLINK_NOFOLLOW);
        if (item && !visitor(name, *item)) {
            return {};
        }
    }
}

} // namespace tolvane::platform
