#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <expected>
#include <memory>

namespace tolvane::decoder {

/// Opens the file of a file URL for reading. The URL is percent-encoded, so it can contain any bytes. Only a
/// regular file is opened, without blocking; otherwise the error is a sentence.
std::expected<std::unique_ptr<QFile>, QString> openedFile(const QByteArray& url);

} // namespace tolvane::decoder
