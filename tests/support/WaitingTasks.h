#pragma once

#include "platform/services/BackgroundTasks.h"

#include <deque>
#include <functional>
#include <memory>
#include <utility>

namespace tolvane::tests {

/// Tasks that are done when the test says so, and whose deliveries wait as well. Cancelled ones deliver
/// nothing.
class WaitingTasks final : public platform::BackgroundTasks {
public:
    std::unique_ptr<platform::BackgroundTask> start(
        const std::function<void(const platform::BackgroundLink&)>& work) override {
        auto isCancelled = std::make_shared<bool>(false);
        waiting_.push_back([this, work, isCancelled] { work(Link(deliveries_, isCancelled)); });
        return std::make_unique<Task>(isCancelled);
    }

    /// Does the waiting work without delivering anything.
    void work() {
        while (!waiting_.empty()) {
            const auto next = std::exchange(waiting_.front(), nullptr);
            waiting_.pop_front();
            next();
        }
    }

    void workAndDeliver() {
        work();
        while (!deliveries_.empty()) {
            const auto next = std::exchange(deliveries_.front(), nullptr);
            deliveries_.pop_front();
            next();
        }
    }

private:
    using Queue = std::deque<std::function<void()>>;

    class Link final : public platform::BackgroundLink {
    public:
        Link(Queue& deliveries, std::shared_ptr<bool> isCancelled)
            : deliveries_(deliveries)
            , isCancelled_(std::move(isCancelled)) {}

        bool isCancelled() const override { return *isCancelled_; }
        void deliver(std::function<void()> handover) const override {
            deliveries_.push_back([isCancelled = isCancelled_, handover = std::move(handover)] {
                if (!*isCancelled) {
                    handover();
                }
            });
        }

    private:
        Queue& deliveries_;
        std::shared_ptr<bool> isCancelled_;
    };

    class Task final : public platform::BackgroundTask {
    public:
        explicit Task(std::shared_ptr<bool> isCancelled) : isCancelled_(std::move(isCancelled)) {}
        Task(const Task&) = delete;
        Task& operator=(const Task&) = delete;
        ~Task() override { *isCancelled_ = true; }

    private:
        std::shared_ptr<bool> isCancelled_;
    };

    Queue waiting_;
    Queue deliveries_;
};

} // namespace tolvane::tests
