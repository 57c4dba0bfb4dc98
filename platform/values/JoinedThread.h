#pragma once

#include <thread>
#include <type_traits>
#include <utility>

namespace tolvane::platform {

/// A thread that is waited for when the object goes. Not every standard library has `std::jthread`.
class JoinedThread {
public:
    /// Throws std::system_error if the system has no thread left.
    template <typename Work>
        requires(!std::is_same_v<std::remove_cvref_t<Work>, JoinedThread>)
    explicit JoinedThread(Work&& work) : thread_(std::forward<Work>(work)) {}
    JoinedThread(JoinedThread&&) noexcept = default;
    JoinedThread(const JoinedThread&) = delete;
    JoinedThread& operator=(JoinedThread&&) = delete;
    JoinedThread& operator=(const JoinedThread&) = delete;
    ~JoinedThread() {
        if (thread_.joinable()) {
            thread_.join();
        }
    }

private:
    std::thread thread_;
};

} // namespace tolvane::platform
