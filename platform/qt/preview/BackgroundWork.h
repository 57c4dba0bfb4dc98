#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace tolvane::platform {

/// Work that runs on a thread of its own and hands its results over to the main thread. A slow volume can
/// block it forever, so nothing waits for it, not even the end of the program, as it would for the threads of
/// a pool: cancelled work goes on unheard until it notices, and must own or share whatever it needs.
///
/// Belongs to the main thread. Cancels its work when it is destroyed.
class BackgroundWork {
    struct State;

public:
    /// The work's connection to the main thread.
    class Link {
    public:
        explicit Link(std::shared_ptr<State> state) : state_(std::move(state)) {}

        bool isCancelled() const;

        /// Runs this on the main thread, unless the work is cancelled before.
        void deliver(std::function<void()> handover) const;

    private:
        std::shared_ptr<State> state_;
    };

    BackgroundWork() = default;
    BackgroundWork(const BackgroundWork&) = delete;
    BackgroundWork& operator=(const BackgroundWork&) = delete;
    ~BackgroundWork() { cancel(); }

    /// Cancels the work that runs, and runs this.
    void start(const std::function<void(const Link&)>& work);
    void cancel();

private:
    std::shared_ptr<State> state_;
};

} // namespace tolvane::platform
