#include "platform/qt/preview/BackgroundWork.h"

#include <QMetaObject>
#include <QObject>

#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace tolvane::platform {

/// Open until the work is cancelled, which takes the receiver away under the lock.
struct BackgroundWork::Mailbox {
    std::mutex mutex;
    std::unique_ptr<QObject> receiver = std::make_unique<QObject>();
};

bool BackgroundWork::Link::isCancelled() const {
    const std::lock_guard lock(mailbox_->mutex);
    return mailbox_->receiver == nullptr;
}

void BackgroundWork::Link::deliver(std::function<void()> handover) const {
    const std::lock_guard lock(mailbox_->mutex);
    if (mailbox_->receiver == nullptr) {
        return;
    }
    const auto unlessCancelled = [mailbox = mailbox_, handover = std::move(handover)] {
        // Only the main thread takes the receiver away, so this needs no lock.
        if (mailbox->receiver != nullptr) {
            handover();
        }
    };
    QMetaObject::invokeMethod(mailbox_->receiver.get(), unlessCancelled, Qt::QueuedConnection);
}

void BackgroundWork::start(std::function<void(const Link&)> work) {
    cancel();
    mailbox_ = std::make_shared<Mailbox>();
    const Link link(mailbox_);
    try {
        std::thread([work, link] { work(link); }).detach();
    } catch (const std::system_error&) {
        // No thread is to be had: better late than never.
        work(link);
    }
}

void BackgroundWork::cancel() {
    if (const auto mailbox = std::exchange(mailbox_, nullptr)) {
        std::unique_ptr<QObject> receiver;
        {
            const std::lock_guard lock(mailbox->mutex);
            receiver = std::move(mailbox->receiver);
        }
        // A handover that is running now may be the one that cancels, so its receiver goes a little later.
        if (receiver != nullptr) {
            receiver.release()->deleteLater();
        }
    }
}

} // namespace tolvane::platform
