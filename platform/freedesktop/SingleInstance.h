#pragma once

#include "platform/freedesktop/ApplicationCalls.h"
#include "platform/freedesktop/ApplicationObject.h"
#include "platform/freedesktop/RequestedAction.h"
#include "platform/values/URL.h"

#include <QDBusConnection>
#include <QObject>

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace tolvane::platform {

/// The handlers of requests. None may be empty.
struct ApplicationHandlers {
    std::function<void(std::vector<URL> urls)> open;
    std::function<void()> activate;
    std::function<void(RequestedAction action)> action;
};

/// Keeps the application at one instance per login. The first one owns the application's name on the session
/// bus; later ones pass their request to it.
///
/// The event loop answers callers, so the first instance should reach it soon. Main thread only.
class SingleInstance {
public:
    enum class Start : std::uint8_t {
        /// This instance owns the name; requests go to the handlers.
        first,
        /// Another instance has accepted the request; nothing is left to do.
        handedOver,
        /// There is no bus, or it or the other instance did not answer properly: this instance runs alone.
        alone
    };

    static constexpr std::chrono::milliseconds usualTimeLimit{5'000};

    /// The time limit applies to each reply of the bus and of another instance.
    explicit SingleInstance(QDBusConnection connection, std::chrono::milliseconds timeLimit = usualTimeLimit);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    /// Releases the name.
    ~SingleInstance();

    /// Decides which instance this is, passing on URLs, otherwise the action. Call it once; it waits for
    /// replies.
    Start start(
        const std::vector<URL>& urls,
        const StartupNotification& notification,
        const RequestedAction& action = {});

    /// Why the instance is alone, as a sentence; empty if it is not, or there is no bus.
    const std::string& message() const { return message_; }

    /// Sets the handlers. The event loop calls them after the caller was answered: first for waiting requests
    /// in their order, then for new ones. While a handler runs, the request's activation token is in the
    /// environment, where Qt looks for it.
    void setHandlers(ApplicationHandlers handlers);

    /// Whether answered requests still wait for a handler. Requests that arrive later are refused when this
    /// object goes, and their callers start on their own; so an instance that exits only without waiting
    /// requests loses none.
    bool hasRequestsWaiting() const { return !requests_.empty(); }

private:
    Start settle(
        const std::vector<URL>& urls, const StartupNotification& notification, const RequestedAction& action);
    Start becomeAlone(const std::string& reason);
    void receive(ApplicationRequest request);
    void scheduleDelivery();
    void deliverNext();

    QDBusConnection connection_;
    std::chrono::milliseconds timeLimit_;
    std::string message_;
    bool ownsName_ = false;
    std::deque<ApplicationRequest> requests_;
    ApplicationHandlers handlers_;
    bool hasHandlers_ = false;
    ApplicationObject object_;
    /// Destroying it drops the event loop's pending calls.
    QObject context_;
};

} // namespace tolvane::platform
