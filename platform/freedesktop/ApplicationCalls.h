// What one instance asks of the bus and of another instance. Every call waits for its answer, for no longer
// than its time limit.
#pragma once

#include "platform/URL.h"
#include "platform/freedesktop/RequestedAction.h"

#include <QDBusConnection>

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace tolvane::platform {

/// What whoever started the program tells it, for its windows to come to the front: an id on X11, a token
/// elsewhere. Both may be empty.
struct StartupNotification {
    std::string startupId = {};
    std::string activationToken = {};

    /// As the environment holds it. To be asked before there is a QGuiApplication, which takes both out of
    /// the environment.
    static StartupNotification ofEnvironment();
};

/// How asking for something ended.
struct CallOutcome {
    enum class End : std::uint8_t {
        done,
        /// Somebody else has what was asked for, or whoever was asked is no longer there.
        notThere,
        failed
    };

    End end = End::done;
    /// Why it failed, as a sentence without its full stop.
    std::string reason = {};
};

/// Asks to be the owner of the application's name, now or not at all.
CallOutcome takeApplicationName(const QDBusConnection& connection, std::chrono::milliseconds timeLimit);

/// Gives the name back, without waiting.
void giveApplicationNameBack(const QDBusConnection& connection);

/// Has the owner of the name open the URLs or, without any, carry the action out or, when that has no name
/// either, come to the front.
CallOutcome handOver(
    const QDBusConnection& connection,
    std::chrono::milliseconds timeLimit,
    const std::vector<URL>& urls,
    const StartupNotification& notification,
    const RequestedAction& action = {});

} // namespace tolvane::platform
