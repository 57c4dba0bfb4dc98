#pragma once

#include <functional>

namespace tolvane::platform {

/// The way from any other thread to the main thread.
class MainQueue {
public:
    MainQueue() = default;
    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;
    virtual ~MainQueue() = default;

    /// Has the work done on the main thread and returns at once, from whichever thread it is called: the work
    /// is never done within the call. Work is done in the order in which it was handed over. What the program
    /// does not come to before it ends is dropped.
    virtual void async(std::function<void()> work) = 0;
};

} // namespace tolvane::platform
