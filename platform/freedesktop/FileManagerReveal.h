#pragma once

#include <QDBusConnection>
#include <QObject>

#include <chrono>
#include <functional>
#include <string>

namespace tolvane::platform {

/// Shows items selected in their folders, in the session's file manager.
///
/// If there is none, it fails or does not answer in time, the parent folder is opened once with the desktop's
/// opener. Later replies are ignored, and if the opener fails too nothing happens. Main thread only; needs
/// the event loop.
class FileManagerReveal {
public:
    /// The time a file manager has to start and answer.
    static constexpr std::chrono::milliseconds usualTimeLimit{5'000};

    /// Returns an id that lets another program come to the front, or an empty text.
    using StartupIds = std::function<std::string()>;

    explicit FileManagerReveal(
        QDBusConnection connection,
        std::chrono::milliseconds timeLimit = usualTimeLimit,
        StartupIds startupIds = {});

    /// Sends the request and returns. False, without a request, if the path (bytes) is not absolute or not
    /// found.
    bool reveal(const std::string& path);

private:
    QDBusConnection connection_;
    std::chrono::milliseconds timeLimit_;
    StartupIds startupIds_;
    /// Owns the pending calls, so that no reply reaches a destroyed object.
    QObject waiting_;
};

} // namespace tolvane::platform
