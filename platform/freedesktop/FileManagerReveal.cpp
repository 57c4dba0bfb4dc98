#include "platform/freedesktop/FileManagerReveal.h"

#include "platform/values/URL.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <filesystem>
#include <limits>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

namespace tolvane::platform {

namespace {

/// A URL made from a path is ASCII, whatever bytes the path contains.
QString uriOf(const std::string& path) {
    return QString::fromStdString(URL::fileURLWithPath(path).absoluteString());
}

/// Checks the item itself; neither it nor a link's target is opened.
bool exists(const std::string& path) {
    std::error_code failure;
    return !path.contains('\0') && std::filesystem::exists(std::filesystem::symlink_status(path, failure));
}

std::string parentOf(std::string_view path) {
    const auto cutBefore = [&path](std::size_t last) {
        path = path.substr(0, last == std::string_view::npos ? 1 : last + 1);
    };
    cutBefore(path.find_last_not_of('/'));
    cutBefore(path.rfind('/'));
    cutBefore(path.find_last_not_of('/'));
    return std::string(path);
}

/// Opens the folder with the desktop's opener, by URI since names on disk need not be text.
void open(const std::string& folder, const QString& startupId) {
    QProcess opener;
    if (!startupId.isEmpty()) {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DESKTOP_STARTUP_ID"), startupId);
        opener.setProcessEnvironment(environment);
    }
    opener.setProgram(QStringLiteral("xdg-open"));
    opener.setArguments({uriOf(folder)});
    opener.setStandardInputFile(QProcess::nullDevice());
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    opener.startDetached();
}

QDBusMessage showItems(const std::string& path, const QString& startupId) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call.setArguments({QStringList(uriOf(path)), startupId});
    return call;
}

} // namespace

FileManagerReveal::FileManagerReveal(
    QDBusConnection connection, std::chrono::milliseconds timeLimit, StartupIds startupIds)
    : connection_(std::move(connection))
    , timeLimit_(timeLimit)
    , startupIds_(std::move(startupIds)) {}

// The portal is not used, because it requires an open file, and inspected items are never opened.
bool FileManagerReveal::reveal(const std::string& path) {
    if (!path.starts_with('/') || !exists(path)) {
        return false;
    }
    const std::string folder = parentOf(path);
    const QString startupId = startupIds_ ? QString::fromStdString(startupIds_()) : QString();
    if (!connection_.isConnected()) {
        open(folder, startupId);
        return true;
    }
    // The call has no time limit of its own; the timer ends it, so whichever comes first decides.
    const QDBusPendingCall call =
        connection_.asyncCall(showItems(path, startupId), std::numeric_limits<int>::max());
    auto* const watcher = std::make_unique<QDBusPendingCallWatcher>(call, &waiting_).release();
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &waiting_, [watcher, folder, startupId] {
        watcher->deleteLater();
        if (watcher->isError()) {
            open(folder, startupId);
        }
    });
    QTimer::singleShot(timeLimit_, watcher, [watcher, folder, startupId] {
        // A reply that has arrived is about to be delivered.
        if (!watcher->isFinished()) {
            watcher->disconnect();
            watcher->deleteLater();
            open(folder, startupId);
        }
    });
    return true;
}

} // namespace tolvane::platform
