#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// Keeps an observer attached for as long as it lives; destroying or resetting it detaches. It may outlive
/// what it observes.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<const void> handle) : handle_(std::move(handle)) {}
    void reset() { handle_.reset(); }

private:
    std::shared_ptr<const void> handle_;
};

/// The functions to be told when a model changes. A widget that mirrors a model observes it; without widgets
/// the list stays empty and costs a null pointer.
///
/// Observers are told in the order in which they were added. One that is added or detached while the others
/// are being told is heard from the next change on, respectively no longer. Main thread only.
class Observers {
public:
    using Function = std::function<void()>;

    [[nodiscard]] Subscription add(Function observer);
    void notify();

private:
    std::vector<std::weak_ptr<const Function>> observers_;
};

} // namespace tolvane::platform
