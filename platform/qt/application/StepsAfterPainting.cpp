#include "platform/qt/application/StepsAfterPainting.h"

#include <QCoreApplication>
#include <QEvent>

#include <chrono>

namespace tolvane::platform {

namespace {

/// Far longer than painting takes. Windows that are covered or minimised may never be painted.
constexpr std::chrono::milliseconds longestWait{300};

} // namespace

StepsAfterPainting::StepsAfterPainting() {
    connect(&timer_, &QTimer::timeout, this, &StepsAfterPainting::takeStep);
}

void StepsAfterPainting::start(std::function<bool()> step) {
    step_ = std::move(step);
    QCoreApplication::instance()->installEventFilter(this);
    timer_.start(longestWait);
}

bool StepsAfterPainting::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Quit) {
        timer_.stop();
        QCoreApplication::instance()->removeEventFilter(this);
    } else if (
        watched->isWindowType() && (event->type() == QEvent::Expose || event->type() == QEvent::Paint)) {
        // The window is painted while it handles the event; the timer comes after that.
        timer_.start(std::chrono::milliseconds(0));
    }
    return QObject::eventFilter(watched, event);
}

void StepsAfterPainting::takeStep() {
    timer_.setInterval(std::chrono::milliseconds(0));
    if (!step_()) {
        timer_.stop();
        QCoreApplication::instance()->removeEventFilter(this);
    }
}

} // namespace tolvane::platform
