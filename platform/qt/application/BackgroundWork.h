#pragma once

#include "platform/services/BackgroundTasks.h"

#include <functional>
#include <memory>
#include <utility>

namespace tolvane::platform {

/// Work on a thread of its own that passes its results to the main thread. A slow volume can block it
/// forever, so nothing waits for it, not even the end of the program, as it would for the threads of a pool.
/// Cancelled work goes on until it notices, and must own or share what it uses. Main thread only; destroying
/// it cancels the work.
class BackgroundWork {
    struct State;

public:
    class Link final : public BackgroundLink {
    public:
        explicit Link(std::shared_ptr<State> state) : state_(std::move(state)) {}

        bool isCancelled() const override;
        void deliver(std::function<void()> handover) const override;

    private:
        std::shared_ptr<State> state_;
    };

    BackgroundWork() = default;
    BackgroundWork(const BackgroundWork&) = delete;
    BackgroundWork& operator=(const BackgroundWork&) = delete;
    ~BackgroundWork() { cancel(); }

    /// Cancels the current work and starts this.
    void start(const std::function<void(const Link&)>& work);
    void cancel();

private:
    std::shared_ptr<State> state_;
};

/// Has each task done by a `BackgroundWork`.
class QtBackgroundTasks final : public BackgroundTasks {
public:
    std::unique_ptr<BackgroundTask> start(const std::function<void(const BackgroundLink&)>& work) override;
};

} // namespace tolvane::platform
