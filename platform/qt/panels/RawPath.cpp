#include "platform/qt/panels/RawPath.h"

#include "platform/values/Utf8.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace tolvane::platform {

namespace {

/// The path's UTF-8 form, when it is absolute and has one that a system call would take whole.
std::optional<std::string> bytesOfPath(const QString& path) {
    if (!path.startsWith(u'/') || path.contains(QChar(u'\0')) || !path.isValidUtf16()) {
        return std::nullopt;
    }
    return path.toStdString();
}

bool isThere(const std::string& path) {
    std::error_code failure;
    return std::filesystem::exists(std::filesystem::symlink_status(path, failure));
}

bool isFolder(const std::string& path) {
    std::error_code failure;
    return std::filesystem::is_directory(std::filesystem::status(path, failure));
}

/// True for a name that is not UTF-8 and is shown like this by Qt or by us, whose decoders may differ.
bool isShownAs(const std::string& name, std::string_view text) {
    return !isValidUtf8(name)
           && (shownText(name) == text
               || QFile::decodeName(QByteArray::fromStdString(name)).toStdString() == text);
}

/// The one entry of the folder that is shown as this text.
std::optional<std::string> entryShownAs(const std::string& folder, std::string_view text) {
    std::optional<std::string> found;
    std::error_code failure;
    std::filesystem::directory_iterator entry(folder, failure);
    for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
        std::string name = entry->path().filename().native();
        if (!isShownAs(name, text)) {
            continue;
        }
        if (found) {
            return std::nullopt;
        }
        found = std::move(name);
    }
    return failure ? std::nullopt : found;
}

/// The bytes of the path to the item that a path as text means.
std::optional<std::string> rawPath(const std::string& path) {
    if (isThere(path)) {
        return path;
    }
    std::string raw = "/";
    std::string_view rest = path;
    while (!rest.empty()) {
        const std::string_view component = rest.substr(0, rest.find('/'));
        rest.remove_prefix(std::min(component.size() + 1, rest.size()));
        if (component.empty()) {
            continue;
        }
        const std::string folder = raw.ends_with('/') ? raw : raw + '/';
        raw = folder + std::string(component);
        if (isThere(raw)) {
            continue;
        }
        const auto entry = entryShownAs(folder, component);
        if (!entry) {
            return std::nullopt;
        }
        raw = folder + *entry;
    }
    return raw;
}

} // namespace

std::optional<URL> URLOfItemAtPath(const QString& path) {
    const auto bytes = bytesOfPath(path);
    const auto raw = bytes ? rawPath(*bytes) : std::nullopt;
    return raw ? std::optional(URL::fileURLWithPath(*raw)) : std::nullopt;
}

std::optional<URL> URLForNewItemAtPath(const QString& path) {
    const auto bytes = bytesOfPath(path);
    if (!bytes || bytes->ends_with('/')) {
        return std::nullopt;
    }
    const std::size_t nameStart = bytes->rfind('/') + 1;
    const auto folder = rawPath(bytes->substr(0, nameStart));
    if (!folder || !isFolder(*folder)) {
        return std::nullopt;
    }
    const std::string separator = folder->ends_with('/') ? "" : "/";
    return URL::fileURLWithPath(*folder + separator + bytes->substr(nameStart));
}

bool isThere(const URL& item) {
    return isThere(item.path());
}

bool isSameItem(const URL& a, const URL& b) {
    std::error_code failure;
    return std::filesystem::equivalent(a.path(), b.path(), failure);
}

bool isFolder(const URL& item) {
    return isFolder(item.path());
}

QString qtPath(const URL& url) {
    const auto bytes = url.fileSystemRepresentation();
    return bytes ? QFile::decodeName(QByteArray::fromStdString(*bytes)) : QString();
}

QString pathOfFieldText(const QString& text, const QString& folder) {
    const QString name = text.startsWith(QStringLiteral("~/")) ? QDir::homePath() + text.mid(1) : text;
    return QString::fromStdString(absolutePath(name.toStdString(), folder.toStdString()));
}

} // namespace tolvane::platform
