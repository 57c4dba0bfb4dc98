#pragma once

#include <functional>

namespace tolvane::platform {

/// Runs work on the main thread.
class MainQueue {
public:
    MainQueue() = default;
    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;
    virtual ~MainQueue() = default;

    /// Queues the work and returns at once, on any thread; the work never runs within the call. Work runs in
    /// the order of queuing. What is still queued when the program ends is dropped.
    virtual void async(std::function<void()> work) = 0;
};

} // namespace tolvane::platform
