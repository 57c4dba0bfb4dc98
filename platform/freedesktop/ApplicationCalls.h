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

/// Lets windows come to the front: an id on X11, otherwise a token, from the starting program. May be empty.
struct StartupNotification {
    std::string startupId = {};
    std::string activationToken = {};

    /// From the environment, from which QGuiApplication removes them: call it before.
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

/// Asks the owner of the name to open the URLs, otherwise to run the action, otherwise to come to the front.
CallOutcome handOver(
    const QDBusConnection& connection,
    std::chrono::milliseconds timeLimit,
    const std::vector<URL>& urls,
    const StartupNotification& notification,
    const RequestedAction& action = {});

} // namespace tolvane::platform
