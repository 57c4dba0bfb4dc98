#include "platform/qt/preview/BackgroundWork.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace tolvane::platform {

class BackgroundWork::Receiver final : public QObject {
public:
    bool event(QEvent* event) override;
};

/// Open until the work is cancelled, which takes the receiver away under the lock.
struct BackgroundWork::Mailbox {
    std::mutex mutex;
    std::unique_ptr<Receiver> receiver = std::make_unique<Receiver>();
};

/// Brings a function to the main thread.
class BackgroundWork::Delivery final : public QEvent {
public:
    Delivery(std::shared_ptr<Mailbox> mailbox, std::function<void()> handover)
        : QEvent(User)
        , mailbox_(std::move(mailbox))
        , handover_(std::move(handover)) {}

    void handOver() const {
        // Only the main thread takes the receiver away, so this needs no lock.
        if (mailbox_->receiver != nullptr) {
            handover_();
        }
    }

private:
    std::shared_ptr<Mailbox> mailbox_;
    std::function<void()> handover_;
};

bool BackgroundWork::Receiver::event(QEvent* event) {
    if (const auto* const delivery = dynamic_cast<const Delivery*>(event)) {
        delivery->handOver();
        return true;
    }
    return QObject::event(event);
}

bool BackgroundWork::Link::isCancelled() const {
    const std::lock_guard lock(mailbox_->mutex);
    return mailbox_->receiver == nullptr;
}

void BackgroundWork::Link::deliver(std::function<void()> handover) const {
    const std::lock_guard lock(mailbox_->mutex);
    if (mailbox_->receiver == nullptr) {
        return;
    }
    QCoreApplication::postEvent(
        mailbox_->receiver.get(), std::make_unique<Delivery>(mailbox_, std::move(handover)).release());
}

void BackgroundWork::start(const std::function<void(const Link&)>& work) {
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
        std::unique_ptr<Receiver> receiver;
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
