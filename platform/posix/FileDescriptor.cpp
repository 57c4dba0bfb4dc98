#include "platform/posix/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

} // namespace

constexpr int noDescriptor = -1;
#if defined(O_NOATIME)
constexpr int keepingAccessDate = O_NOATIME;
#else
constexpr int keepingAccessDate = 0;
#endif

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : number_(std::exchange(other.number_, noDescriptor))
    , owned_(std::exchange(other.owned_, false)) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    std::swap(owned_, other.owned_);
    return *this;
}

FileDescriptor::~FileDescriptor() {
    if (owned_) {
        ::close(number_);
    }
}

Result<void> FileDescriptor::close() {
    const int number = std::exchange(number_, noDescriptor);
    // An interrupted close has closed the descriptor all the same; trying again could close another file.
    if (std::exchange(owned_, false) && ::close(number) != 0 && errno != EINTR) {
        return std::unexpected(posixError(errno));
    }
    return {};
}

int FileDescriptor::release() {
    owned_ = false;
    return std::exchange(number_, noDescriptor);
}

Result<FileDescriptor> openFile(const std::string& path, int flags, mode_t mode) {
    if (path.contains('\0')) {
        return std::unexpected(posixError(EINVAL));
    }
    int number = noDescriptor;
    do {
        number = open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode);
    } while (number < 0 && errno == EINTR);
    if (number < 0) {
        return std::unexpected(posixError(errno));
    }
    return FileDescriptor::owned(number);
}

Result<FileDescriptor> openKeepingAccessDate(const std::string& path, int moreFlags) {
    auto opened = openFile(path, O_RDONLY | keepingAccessDate | moreFlags);
    const bool isForbidden = !opened && opened.error().code == EPERM;
    return isForbidden ? openFile(path, O_RDONLY | moreFlags) : std::move(opened);
}

Result<void> waitUntilReady(const FileDescriptor& descriptor, short events) {
    constexpr int forEver = -1;
    pollfd question{descriptor.number(), events, 0};
    while (poll(&question, 1, forEver) < 0) {
        if (errno != EINTR) {
            return std::unexpected(posixError(errno));
        }
    }
    return {};
}

Result<void> writeAll(const FileDescriptor& descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(descriptor.number(), bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
            continue;
        }
        // No progress and no reason given: going on could last forever.
        const int failure = written == 0 ? EIO : errno;
        if (failure == EAGAIN) {
            if (auto ready = waitUntilReady(descriptor, POLLOUT); !ready) {
                return ready;
            }
        } else if (failure != EINTR) {
            return std::unexpected(posixError(failure));
        }
    }
    return {};
}

Result<void> visitFolderEntries(const std::string& folder, const FolderEntryVisitor& visitor) {
    auto descriptor = openKeepingAccessDate(folder, O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK);
    if (!descriptor) {
        return std::unexpected(descriptor.error());
    }
    const std::unique_ptr<DIR, FolderCloser> stream(fdopendir(descriptor->number()));
    if (stream == nullptr) {
        return std::unexpected(posixError(errno));
    }
    const int number = descriptor->release(); // the stream closes it
    while (true) {
        errno = 0;
        const dirent* const entry = readdir(stream.get());
        if (entry == nullptr) {
            return errno == 0 ? Result<void>() : std::unexpected(posixError(errno));
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != ".." && !visitor(*entry, number)) {
            return {};
        }
    }
}

} // namespace tolvane::platform
