#include "platform/linux/LinuxTextFiles.h"

#include "platform/linux/FileDescriptor.h"

#include <cerrno>
#include <string>
#include <utility>
#include <fcntl.h>
#include <sys/stat.h>

namespace tolvane::platform {

namespace {

/// An error number with words of ours, where the system's own would not tell the user what is wrong.
Error explained(int errorNumber, std::string sentence) {
    Error error = posixError(errorNumber);
    error.userInfo = {{std::string(NSLocalizedDescriptionKey), std::move(sentence)}};
    return error;
}

bool isFifo(const std::string& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

/// Neither opening nor writing waits for whoever is at the other end.
Result<FileDescriptor> openForWriting(const std::string& path) {
    constexpr mode_t readableAndWritable = 0666; // less what the user's mask takes away
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    int number = -1;
    do {
        number = open(path.c_str(), flags, readableAndWritable);
    } while (number < 0 && errno == EINTR);
    if (number >= 0) {
        return FileDescriptor::owned(number);
    }
    const int failure = errno;
    if (failure == ENXIO && isFifo(path)) {
        return std::unexpected(explained(failure, "No program reads from this FIFO"));
    }
    return std::unexpected(posixError(failure));
}

} // namespace

Result<void> LinuxTextFiles::writeInPlace(std::string_view text, const URL& url) const {
    const auto path = url.fileSystemRepresentation();
    if (!path) {
        return std::unexpected(posixError(EINVAL));
    }
    auto descriptor = openForWriting(*path);
    if (!descriptor) {
        return std::unexpected(descriptor.error());
    }
    if (auto written = writeAll(*descriptor, text, std::chrono::steady_clock::now() + timeLimit_); !written) {
        if (written.error().code == ETIMEDOUT) {
            return std::unexpected(
                explained(ETIMEDOUT, "The program at the other end has not taken the whole text in time"));
        }
        return written;
    }
    return descriptor->close();
}

} // namespace tolvane::platform
