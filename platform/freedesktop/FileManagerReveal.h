#pragma once

#include <QDBusConnection>
#include <QObject>

#include <chrono>
#include <string>

namespace tolvane::platform {

/// Shows items selected in their folders, in whatever file manager the session's bus knows.
///
/// Where there is none, where it fails, and where it has not answered within the time limit, the parent
/// folder is opened with the desktop's own opener, once. Whatever comes later changes nothing, and where the
/// opener is missing too, nothing happens: a reveal that fails says nothing. Main thread only, and it takes
/// the event loop.
class FileManagerReveal {
public:
    /// How long a file manager may take to answer, its start included, before the folder is opened instead.
    static constexpr std::chrono::milliseconds usualTimeLimit{5'000};

    explicit FileManagerReveal(
        QDBusConnection connection, std::chrono::milliseconds timeLimit = usualTimeLimit);

    /// Asks for the item, and does not wait for the answer. The path is bytes. False, and nothing is asked,
    /// when it is not absolute or there is no such item.
    bool reveal(const std::string& path);

private:
    QDBusConnection connection_;
    std::chrono::milliseconds timeLimit_;
    /// Owns what waits for answers, so that none comes to a reveal that is gone.
    QObject waiting_;
};

} // namespace tolvane::platform
