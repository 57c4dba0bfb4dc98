#pragma once

#include "platform/URL.h"
#include "platform/freedesktop/ApplicationCalls.h"
#include "platform/freedesktop/ApplicationObject.h"
#include "platform/freedesktop/RequestedAction.h"

#include <QDBusConnection>
#include <QObject>

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace tolvane::platform {

/// What an application does when it is asked to. None may be empty.
struct ApplicationHandlers {
    std::function<void(std::vector<URL> urls)> open;
    std::function<void()> activate;
    std::function<void(RequestedAction action)> action;
};

/// Keeps the application at one instance per login. The first one owns the application's name on the
/// session's bus; each later one hands over to it what it was started for.
///
/// Callers are answered by the event loop, so the first instance is to get there soon. Main thread only.
class SingleInstance {
public:
    enum class Start : std::uint8_t {
        /// The name is ours; requests come to the handlers.
        first,
        /// Another instance has taken it on. There is nothing left to do.
        handedOver,
        /// There is no bus, or it or the other instance did not answer as it should: an instance by itself.
        alone
    };

    static constexpr std::chrono::milliseconds usualTimeLimit{5'000};

    /// The time limit is for each answer of the bus and of another instance.
    explicit SingleInstance(QDBusConnection connection, std::chrono::milliseconds timeLimit = usualTimeLimit);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    /// Gives the name back.
    ~SingleInstance();

    /// Settles which instance this is, with the URLs that the user named, if any, or else with the action
    /// that was asked for, if any. To be called once; waits for the answers.
    Start start(
        const std::vector<URL>& urls,
        const StartupNotification& notification,
        const RequestedAction& action = {});

    /// One sentence for standard error about why the instance is alone. Empty when it is not, or when there
    /// just is no bus.
    const std::string& message() const { return message_; }

    /// Who gets the requests, from the event loop and each after its caller was answered: those that came
    /// before in their order, then each as it comes. While a handler runs, the request's activation token is
    /// in the environment, where toolkits look for it.
    void setHandlers(ApplicationHandlers handlers);

    /// Whether there are requests whose callers were answered and that no handler has got. What then is still
    /// on its way is refused once this object goes, and its caller starts by itself: so an instance that ends
    /// only without such requests loses none.
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
    /// What the event loop is still to do is dropped with it.
    QObject context_;
};

} // namespace tolvane::platform
