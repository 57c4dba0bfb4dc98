#include "platform/qt/application/BackgroundWork.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QObject>

#include <atomic>
#include <system_error>
#include <thread>

namespace tolvane::platform {

/// Shared with the work and its queued results, so that the receiver outlives both.
struct BackgroundWork::State {
    std::atomic<bool> isCancelled = false;
    QObject receiver;
};

bool BackgroundWork::Link::isCancelled() const {
    return state_->isCancelled;
}

void BackgroundWork::Link::deliver(std::function<void()> handover) const {
    if (state_->isCancelled) {
        return;
    }
    QMetaObject::invokeMethod(
        &state_->receiver,
        [state = state_, handover = std::move(handover)] {
            if (!state->isCancelled) {
                handover();
            }
        },
        Qt::QueuedConnection);
}

void BackgroundWork::start(const std::function<void(const Link&)>& work) {
    cancel();
    state_ = std::make_shared<State>();
    const Link link(state_);
    try {
        std::thread([work, link] { work(link); }).detach();
    } catch (const std::system_error&) {
        // No thread can be started: work in this one.
        work(link);
    }
}

void BackgroundWork::cancel() {
    if (const auto state = std::exchange(state_, nullptr)) {
        state->isCancelled = true;
        QCoreApplication::removePostedEvents(&state->receiver);
    }
}

namespace {

class StartedWork final : public BackgroundTask {
public:
    explicit StartedWork(const std::function<void(const BackgroundLink&)>& work) { work_.start(work); }

private:
    BackgroundWork work_;
};

} // namespace

std::unique_ptr<BackgroundTask> QtBackgroundTasks::start(
    const std::function<void(const BackgroundLink&)>& work) {
    return std::make_unique<StartedWork>(work);
}

} // namespace tolvane::platform
