#include "platform/linux/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <limits>
#include <utility>
#include <poll.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

constexpr int noDescriptor = -1;

/// Milliseconds as poll takes them: rounded up, so that time is over when poll says so.
int timeLeft(const Deadline& deadline) {
    if (!deadline) {
        return -1;
    }
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(*deadline - std::chrono::steady_clock::now());
    return static_cast<int>(
        std::clamp<std::chrono::milliseconds::rep>(left.count(), 0, std::numeric_limits<int>::max()));
}

} // namespace

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
    // An interrupted close has closed the descriptor all the same; trying again could hit somebody else's.
    if (std::exchange(owned_, false) && ::close(number) != 0 && errno != EINTR) {
        return std::unexpected(posixError(errno));
    }
    return {};
}

Result<void> waitUntilReady(const FileDescriptor& descriptor, short events, Deadline deadline) {
    pollfd question{descriptor.number(), events, 0};
    while (true) {
        const int limit = timeLeft(deadline);
        // Asking without waiting would let a descriptor that claims to be ready go on for ever.
        const int ready = limit == 0 ? 0 : poll(&question, 1, limit);
        if (ready > 0) {
            return {};
        }
        if (limit == 0) {
            return std::unexpected(posixError(ETIMEDOUT));
        }
        if (ready < 0 && errno != EINTR) {
            return std::unexpected(posixError(errno));
        }
    }
}

Result<void> writeAll(const FileDescriptor& descriptor, std::string_view bytes, Deadline deadline) {
    while (!bytes.empty()) {
        const auto written = ::write(descriptor.number(), bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
            continue;
        }
        // No progress and no reason given: going on could last forever.
        const int failure = written == 0 ? EIO : errno;
        if (failure == EAGAIN) {
            if (auto ready = waitUntilReady(descriptor, POLLOUT, deadline); !ready) {
                return ready;
            }
        } else if (failure != EINTR) {
            return std::unexpected(posixError(failure));
        }
    }
    return {};
}

} // namespace tolvane::platform
