#include "platform/posix/PosixTextFiles.h"

#include "platform/posix/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace tolvane::platform {

namespace {

bool isFifo(const std::string& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

/// Without blocking, so that opening does not wait for a FIFO's reader.
Result<FileDescriptor> openForWriting(const std::string& path) {
    constexpr mode_t readableAndWritable = 0666; // less what the user's mask takes away
    auto opened = openFile(path, O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK, readableAndWritable);
    if (!opened && opened.error().code == ENXIO && isFifo(path)) {
        Error error = opened.error();
        error.userInfo = {
            {std::string(NSLocalizedDescriptionKey), std::string("No program is reading from this FIFO")}};
        return std::unexpected(std::move(error));
    }
    return opened;
}

} // namespace

Result<void> PosixTextFiles::writeInPlace(std::string_view text, const URL& url) const {
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
