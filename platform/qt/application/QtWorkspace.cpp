#include "platform/qt/application/QtWorkspace.h"

#include <QByteArray>
#include <QDesktopServices>
#include <QUrl>

namespace tolvane::platform {

bool QtWorkspace::openURL(const URL& url) {
    const QUrl address = QUrl::fromEncoded(QByteArray::fromStdString(url.absoluteString()), QUrl::StrictMode);
    return address.isValid() && QDesktopServices::openUrl(address);
}

} // namespace tolvane::platform
