#include "platform/qt/application/FileOpenEvents.h"

#include <QCoreApplication>
#include <QFileOpenEvent>
#include <QUrl>

#include <utility>

namespace tolvane::platform {

FileOpenEvents::FileOpenEvents(Opener opener) : opener_(std::move(opener)) {
    passingOn_.setSingleShot(true);
    connect(&passingOn_, &QTimer::timeout, this, [this] { opener_(std::exchange(waiting_, {})); });
    qApp->installEventFilter(this);
}

bool FileOpenEvents::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::FileOpen) {
        return QObject::eventFilter(watched, event);
    }
    const QUrl url = static_cast<const QFileOpenEvent*>(event)->url();
    const auto file = localFileURL(url.toEncoded().toStdString());
    if (!file) {
        return false;
    }
    waiting_.push_back(URL::fileURLWithPath(file->path()));
    passingOn_.start(0);
    return true;
}

} // namespace tolvane::platform
