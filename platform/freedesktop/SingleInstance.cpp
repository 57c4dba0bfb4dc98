#include "platform/freedesktop/SingleInstance.h"

#include "platform/freedesktop/ApplicationNames.h"

#include <QByteArray>
#include <QTimer>
#include <QtGlobal>

#include <cstddef>

namespace tolvane::platform {

namespace {

/// Puts the activation token, if any, into the environment for the object's life.
class OfferedToken {
public:
    explicit OfferedToken(const std::string& token) : offered_(!token.empty()) {
        if (offered_) {
            qputenv(variable, QByteArray::fromStdString(token));
        }
    }
    OfferedToken(const OfferedToken&) = delete;
    OfferedToken& operator=(const OfferedToken&) = delete;
    ~OfferedToken() {
        if (offered_) {
            qunsetenv(variable);
        }
    }

private:
    static constexpr const char* variable = "XDG_ACTIVATION_TOKEN";

    bool offered_;
};

} // namespace

SingleInstance::SingleInstance(QDBusConnection connection, std::chrono::milliseconds timeLimit)
    : connection_(std::move(connection))
    , timeLimit_(timeLimit)
    , object_([this](ApplicationRequest request) { receive(std::move(request)); }) {}

SingleInstance::~SingleInstance() {
    if (ownsName_) {
        giveApplicationNameBack(connection_);
        connection_.unregisterObject(application_names::objectPath);
    }
}

SingleInstance::Start SingleInstance::start(
    const std::vector<URL>& urls, const StartupNotification& notification, const RequestedAction& action) {
    if (!connection_.isConnected()) {
        return Start::alone;
    }
    // Before the name is requested, so that no call finds the name without the object.
    if (!connection_.registerVirtualObject(application_names::objectPath, &object_)) {
        return becomeAlone("the application is on this connection to the session bus already");
    }
    const Start result = settle(urls, notification, action);
    ownsName_ = result == Start::first;
    if (!ownsName_) {
        connection_.unregisterObject(application_names::objectPath);
    }
    return result;
}

SingleInstance::Start SingleInstance::settle(
    const std::vector<URL>& urls, const StartupNotification& notification, const RequestedAction& action) {
    using End = CallOutcome::End;
    // If the owner exits during the call, its name is free for this instance or another new one.
    constexpr int mostTries = 5;
    for (int tries = 0; tries < mostTries; ++tries) {
        const CallOutcome taking = takeApplicationName(connection_, timeLimit_);
        if (taking.end == End::done) {
            return Start::first;
        }
        if (taking.end == End::failed) {
            return becomeAlone(taking.reason);
        }
        const CallOutcome handing = handOver(connection_, timeLimit_, urls, notification, action);
        if (handing.end == End::done) {
            return Start::handedOver;
        }
        if (handing.end == End::failed) {
            return becomeAlone(handing.reason);
        }
    }
    return becomeAlone("another program owns the application's name on the session bus");
}

SingleInstance::Start SingleInstance::becomeAlone(const std::string& reason) {
    message_ = "This instance runs by itself: " + reason + ".";
    return Start::alone;
}

void SingleInstance::setHandlers(ApplicationHandlers handlers) {
    handlers_ = std::move(handlers);
    hasHandlers_ = true;
    for (std::size_t i = 0; i < requests_.size(); ++i) {
        scheduleDelivery();
    }
}

void SingleInstance::receive(ApplicationRequest request) {
    requests_.push_back(std::move(request));
    scheduleDelivery();
}

void SingleInstance::scheduleDelivery() {
    QTimer::singleShot(0, &context_, [this] { deliverNext(); });
}

// Scheduled at least once per request; extra calls find nothing to do.
void SingleInstance::deliverNext() {
    if (!hasHandlers_ || requests_.empty()) {
        return;
    }
    ApplicationRequest request = std::move(requests_.front());
    requests_.pop_front();
    const OfferedToken token(request.activationToken);
    // A handler may set other handlers while it runs.
    const ApplicationHandlers handlers = handlers_;
    switch (request.kind) {
    case ApplicationRequest::Kind::activate:
        handlers.activate();
        break;
    case ApplicationRequest::Kind::open:
        handlers.open(std::move(request.urls));
        break;
    case ApplicationRequest::Kind::action:
        handlers.action(std::move(request.action));
        break;
    }
}

} // namespace tolvane::platform
