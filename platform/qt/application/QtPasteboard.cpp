#include "platform/qt/application/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <memory>

namespace tolvane::platform {

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
