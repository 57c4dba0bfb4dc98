#include "platform/qt/network/WorkReceiver.h"

#include <QCoreApplication>
#include <QEvent>

#include <memory>
#include <utility>

namespace tolvane::platform {

namespace {

class Work final : public QEvent {
public:
    explicit Work(std::function<void()> work) : QEvent(QEvent::User), work_(std::move(work)) {}

    void carryOut() const { work_(); }

private:
    std::function<void()> work_;
};

} // namespace

void WorkReceiver::post(std::function<void()> work) {
    QCoreApplication::postEvent(this, std::make_unique<Work>(std::move(work)).release());
}

void WorkReceiver::customEvent(QEvent* event) {
    if (const auto* const work = dynamic_cast<const Work*>(event)) {
        work->carryOut();
    }
}

} // namespace tolvane::platform
