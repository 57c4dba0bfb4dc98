#include "platform/linux/volumes/CurrentMounts.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace tolvane::platform {

Result<std::shared_ptr<const MountTable>> CurrentMounts::table() {
    const std::lock_guard lock(mutex_);
    if (table_ && !hasChanged()) {
        return table_;
    }
    if (!descriptor_) {
        const int number = open(list_.c_str(), O_RDONLY | O_CLOEXEC);
        if (number < 0) {
            return std::unexpected(posixError(errno));
        }
        descriptor_ = FileDescriptor::owned(number);
    }
    // A list that changes while it is read can miss mounts. If it keeps changing, the last reading is used.
    constexpr int attempts = 8;
    Result<std::string> text = readAll();
    for (int attempt = 1; text && attempt < attempts && hasChanged(); ++attempt) {
        text = readAll();
    }
    if (!text) {
        table_ = nullptr;
        return std::unexpected(text.error());
    }
    table_ = std::make_shared<const MountTable>(MountTable::parse(*text));
    return table_;
}

bool CurrentMounts::hasChanged() const {
    pollfd question{descriptor_->number(), POLLPRI, 0};
    return poll(&question, 1, 0) > 0 && (question.revents & (POLLERR | POLLPRI)) != 0;
}

Result<std::string> CurrentMounts::readAll() const {
    std::string text;
    std::array<char, 16'384> buffer{};
    while (true) {
        const auto length =
            pread(descriptor_->number(), buffer.data(), buffer.size(), static_cast<off_t>(text.size()));
        if (length > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(length));
        } else if (length == 0) {
            return text;
        } else if (errno != EINTR) {
            return std::unexpected(posixError(errno));
        }
    }
}

} // namespace tolvane::platform
