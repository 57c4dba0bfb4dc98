#include "platform/qt/panels/PathField.h"

#include "platform/URL.h"

#include <QDir>

namespace tolvane::platform {

QString pathOfFieldText(const QString& text, const QString& folder) {
    const QString name = text.startsWith(QStringLiteral("~/")) ? QDir::homePath() + text.mid(1) : text;
    return QString::fromStdString(absolutePath(name.toStdString(), folder.toStdString()));
}

} // namespace tolvane::platform
