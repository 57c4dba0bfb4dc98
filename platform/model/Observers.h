#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// Keeps an observer attached; destroying or resetting it detaches the observer. It may outlive the observed
/// object.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<const void> handle) : handle_(std::move(handle)) {}
    void reset() { handle_.reset(); }

private:
    std::shared_ptr<const void> handle_;
};

/// The functions to call when a model changes. Widgets observe the models they mirror; without observers the
/// list costs a null pointer.
///
/// Observers are called in the order in which they were added. One added during a notification is called from
/// the next change on; one detached during it is not called any more. Main thread only.
class Observers {
public:
    using Function = std::function<void()>;

    [[nodiscard]] Subscription add(Function observer);
    void notify();

private:
    std::vector<std::weak_ptr<const Function>> observers_;
};

} // namespace tolvane::platform
