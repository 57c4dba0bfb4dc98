#pragma once

#include <functional>
#include <memory>

namespace tolvane::platform {

/// A task's connection to the main thread.
class BackgroundLink {
public:
    BackgroundLink() = default;
    BackgroundLink(const BackgroundLink&) = default;
    BackgroundLink& operator=(const BackgroundLink&) = default;
    virtual ~BackgroundLink() = default;

    virtual bool isCancelled() const = 0;

    /// Runs the function on the main thread, in the order of the calls, unless the task is cancelled before.
    virtual void deliver(std::function<void()> handover) const = 0;
};

/// Work that was started. Destroying this cancels the work, which goes on until it notices.
class BackgroundTask {
public:
    BackgroundTask() = default;
    BackgroundTask(const BackgroundTask&) = delete;
    BackgroundTask& operator=(const BackgroundTask&) = delete;
    virtual ~BackgroundTask() = default;
};

/// Does work that may take long without the main thread, on which it is started.
class BackgroundTasks {
public:
    BackgroundTasks() = default;
    BackgroundTasks(const BackgroundTasks&) = delete;
    BackgroundTasks& operator=(const BackgroundTasks&) = delete;
    virtual ~BackgroundTasks() = default;

    /// Starts the work on a thread of its own and returns. Nothing waits for the thread, not even the end of
    /// the program, so the work must own or share all that it uses.
    virtual std::unique_ptr<BackgroundTask> start(const std::function<void(const BackgroundLink&)>& work) = 0;
};

} // namespace tolvane::platform
