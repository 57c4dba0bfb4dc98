#include "decoder/InputFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::decoder {

namespace {

std::unexpected<QString> failure(int errorNumber) {
    return std::unexpected(
        QStringLiteral("The file cannot be opened: %1.").arg(QString::fromLocal8Bit(strerror(errorNumber))));
}

std::unexpected<QString> refusal() {
    return std::unexpected(QStringLiteral("Only a regular file can hold a picture."));
}

int openedWithoutWaiting(const char* path) {
    int number = -1;
    do {
        number = open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    } while (number < 0 && errno == EINTR);
    return number;
}

} // namespace

std::expected<std::unique_ptr<QFile>, QString> openedFile(const QByteArray& url) {
    const QByteArray scheme = QByteArrayLiteral("file://");
    const QByteArray path = QByteArray::fromPercentEncoding(url.mid(scheme.size()));
    if (!url.startsWith(scheme) || !path.startsWith('/') || path.contains('\0')) {
        return std::unexpected(QStringLiteral("The URL does not name a file."));
    }
    struct stat found{};
    if (stat(path.constData(), &found) != 0) {
        return failure(errno);
    }
    // Opening a device can have effects, so the type is checked before, and again after.
    if (!S_ISREG(found.st_mode)) {
        return refusal();
    }
    const int number = openedWithoutWaiting(path.constData());
    if (number < 0) {
        return failure(errno);
    }
    auto file = std::make_unique<QFile>();
    if (!file->open(number, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        close(number);
        return std::unexpected(QStringLiteral("The file cannot be read: %1.").arg(file->errorString()));
    }
    if (fstat(number, &found) != 0) {
        return failure(errno);
    }
    if (!S_ISREG(found.st_mode)) {
        return refusal();
    }
    return file;
}

} // namespace tolvane::decoder
