#include "platform/linux/LinuxStreams.h"

#include <cerrno>
#include <csignal>
#include <string>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

int openUninterrupted(const std::string& path, int moreFlags) {
    int number = -1;
    do {
        number = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | moreFlags);
    } while (number < 0 && errno == EINTR);
    return number;
}

} // namespace

Result<std::size_t> FileDescriptorInput::read(std::span<char> buffer) {
    while (true) {
        const auto length = ::read(descriptor_.number(), buffer.data(), buffer.size());
        if (length >= 0) {
            return static_cast<std::size_t>(length);
        }
        if (errno == EAGAIN) {
            if (const auto ready = waitUntilReady(descriptor_, POLLIN); !ready) {
                return std::unexpected(ready.error());
            }
        } else if (errno != EINTR) {
            return std::unexpected(posixError(errno));
        }
    }
}

Result<void> FileDescriptorOutput::write(std::string_view bytes) {
    return writeAll(descriptor_, bytes);
}

bool FileDescriptorOutput::isTerminal() const {
    return isatty(descriptor_.number()) == 1;
}

Result<std::unique_ptr<InputStream>> openForReading(std::string_view path) {
    if (path.contains('\0')) {
        return std::unexpected(posixError(EINVAL));
    }
    const std::string terminatedPath(path);
    // Only the owner and the superuser may leave the access date as it is.
    int number = openUninterrupted(terminatedPath, O_NOATIME);
    if (number < 0 && errno == EPERM) {
        number = openUninterrupted(terminatedPath, 0);
    }
    if (number < 0) {
        return std::unexpected(posixError(errno));
    }
    return std::make_unique<FileDescriptorInput>(FileDescriptor::owned(number));
}

void makeWriteFailuresErrors() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace tolvane::platform
