#include "platform/posix/FileDescriptorStreams.h"

#include <cerrno>
#include <csignal>
#include <poll.h>
#include <unistd.h>

namespace tolvane::platform {

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

bool FileDescriptorOutput::isTerminal() const {
    return isatty(descriptor_.number()) == 1;
}

Result<std::unique_ptr<InputStream>> openForReading(std::string_view path) {
    auto descriptor = openKeepingAccessDate(std::string(path), 0);
    if (!descriptor) {
        return std::unexpected(descriptor.error());
    }
    return std::make_unique<FileDescriptorInput>(*std::move(descriptor));
}

void makeWriteFailuresErrors() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace tolvane::platform
