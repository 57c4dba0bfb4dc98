#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <expected>
#include <memory>

namespace tolvane::decoder {

/// Opens what a file URL leads to, for reading. The URL is percent-encoded text, so that any bytes can stand
/// in it. Only a regular file is opened, without ever waiting; otherwise a sentence says why not.
std::expected<std::unique_ptr<QFile>, QString> openedFile(const QByteArray& url);

} // namespace tolvane::decoder
