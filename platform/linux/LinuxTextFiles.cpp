#include "platform/linux/LinuxTextFiles.h"

#include "platform/linux/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>

namespace tolvane::platform {

namespace {

Result<FileDescriptor> openForWriting(const std::string& path) {
    constexpr mode_t readableAndWritable = 0666; // less what the user's mask takes away
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    int number = -1;
    do {
        number = open(path.c_str(), flags, readableAndWritable);
    } while (number < 0 && errno == EINTR);
    if (number < 0) {
        return std::unexpected(posixError(errno));
    }
    auto descriptor = FileDescriptor::owned(number);
    // Only opening must not wait for a reader; writing may take its time.
    if (fcntl(number, F_SETFL, 0) != 0) {
        return std::unexpected(posixError(errno));
    }
    return descriptor;
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
    if (auto written = writeAll(*descriptor, text); !written) {
        return written;
    }
    return descriptor->close();
}

} // namespace tolvane::platform
