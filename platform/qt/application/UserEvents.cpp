#include "platform/qt/application/UserEvents.h"

#include <QCoreApplication>
#include <QEvent>
#include <QInputEvent>
#include <QSysInfo>

namespace tolvane::platform {

UserEvents::UserEvents(bool isOnX11) : isOnX11_(isOnX11) {
    if (isOnX11_) {
        qApp->installEventFilter(this);
    }
}

std::string UserEvents::startupId() {
    if (latest_ == 0) {
        return {};
    }
    ++idsMade_;
    return "tolvane-" + std::to_string(QCoreApplication::applicationPid()) + "-" + std::to_string(idsMade_)
           + "-" + QSysInfo::machineHostName().toStdString() + "_TIME" + std::to_string(latest_);
}

bool UserEvents::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        // Events that the program made itself have no time.
        if (const quint64 time = static_cast<const QInputEvent*>(event)->timestamp(); time != 0) {
            latest_ = time;
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tolvane::platform
