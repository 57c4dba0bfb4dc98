#include "platform/qt/application/QtWorkspace.h"

#include <QByteArray>
#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

namespace tolvane::platform {

bool QtWorkspace::openURL(const URL& url) {
    const QUrl address = QUrl::fromEncoded(QByteArray::fromStdString(url.absoluteString()), QUrl::StrictMode);
    return address.isValid() && QDesktopServices::openUrl(address);
}

void QtPasteboard::clearContents() {
    text_.clear();
    holdsText_ = false;
    QGuiApplication::clipboard()->clear(QClipboard::Clipboard);
}

bool QtPasteboard::writeObjects(std::span<const std::string> texts) {
    for (const std::string& text : texts) {
        if (holdsText_) {
            text_ += '\n';
        }
        text_ += text;
        holdsText_ = true;
    }
    if (!holdsText_) {
        return true;
    }
    const QString whole = QString::fromStdString(text_);
    auto data = std::make_unique<QMimeData>();
    data->setText(whole);
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->setMimeData(data.release(), QClipboard::Clipboard);
    // Qt does not say whether it worked, but it can be seen.
    const QMimeData* taken = clipboard->mimeData(QClipboard::Clipboard);
    return taken != nullptr && taken->text() == whole;
}

} // namespace tolvane::platform
