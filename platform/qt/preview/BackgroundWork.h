#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace tolvane::platform {

/// Work that runs beside the main thread and hands over what it found. A slow volume can keep it waiting for
/// ever, so nobody waits for it: work that is cancelled goes on unheard until it notices, and what it needs
/// it must own or share.
///
/// Belongs to the main thread. Cancels its work when it goes.
class BackgroundWork {
    class Receiver;
    class Delivery;
    struct Mailbox;

public:
    /// What the work has to do with the main thread.
    class Link {
    public:
        explicit Link(std::shared_ptr<Mailbox> mailbox) : mailbox_(std::move(mailbox)) {}

        bool isCancelled() const;

        /// Runs this on the main thread, unless the work is cancelled before.
        void deliver(std::function<void()> handover) const;

    private:
        std::shared_ptr<Mailbox> mailbox_;
    };

    BackgroundWork() = default;
    BackgroundWork(const BackgroundWork&) = delete;
    BackgroundWork& operator=(const BackgroundWork&) = delete;
    ~BackgroundWork() { cancel(); }

    /// Cancels what runs, and runs this.
    void start(const std::function<void(const Link&)>& work);
    void cancel();

private:
    std::shared_ptr<Mailbox> mailbox_;
};

} // namespace tolvane::platform
