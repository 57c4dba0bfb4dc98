/// One instance's calls to the bus and to another instance. Each waits for the reply until its time limit.
#pragma once

#include "platform/freedesktop/RequestedAction.h"
#include "platform/values/URL.h"

#include <QDBusConnection>

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace tolvane::platform {

/// Allows the windows to come to the front, from the program that started this one: an id on X11, otherwise a
/// token. Both may be empty.
struct StartupNotification {
    std::string startupId = {};
    std::string activationToken = {};

    /// From the environment. Call it before the QGuiApplication is made, which removes both from the
    /// environment.
    static StartupNotification ofEnvironment();
};

/// The outcome of a call.
struct CallOutcome {
    enum class End : std::uint8_t {
        done,
        /// Another owner has the name, or the called owner is gone.
        notThere,
        failed
    };

    End end = End::done;
    /// Why it failed, as a sentence without the full stop.
    std::string reason = {};
};

/// Requests the application's name, without queuing for it.
CallOutcome takeApplicationName(const QDBusConnection& connection, std::chrono::milliseconds timeLimit);

/// Releases the name without waiting.
void giveApplicationNameBack(const QDBusConnection& connection);

/// Asks the owner of the name to open the URLs; without URLs to run the action; without an action's name to
/// come to the front.
CallOutcome handOver(
    const QDBusConnection& connection,
    std::chrono::milliseconds timeLimit,
    const std::vector<URL>& urls,
    const StartupNotification& notification,
    const RequestedAction& action = {});

} // namespace tolvane::platform
