#pragma once

#include "platform/freedesktop/RequestedAction.h"
#include "platform/values/URL.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// A request from another process on the bus.
struct ApplicationRequest {
    enum class Kind { activate, open, action };

    Kind kind = Kind::activate;
    /// The URLs to open; never empty for `open`.
    std::vector<URL> urls = {};
    /// The action to run; without a name for other requests.
    RequestedAction action = {};
    /// Allows a window to come to the front; may be empty.
    std::string activationToken = {};
};

/// The application on the bus: org.freedesktop.Application, whose calls are answered at once and passed on as
/// requests.
///
/// Any process of the session can call, so nothing is trusted. URIs that are invalid or name no local file
/// are left out; the others become URLs made from their paths, so that one file has one URL however its URI
/// was written. If none is left, the request becomes an activation. Actions are passed on whatever their
/// name, but a known action with an invalid parameter is refused.
class ApplicationObject final : public QDBusVirtualObject {
public:
    using Receiver = std::function<void(ApplicationRequest)>;

    /// The receiver is called after the caller was answered.
    explicit ApplicationObject(Receiver receiver) : receiver_(std::move(receiver)) {}

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    Receiver receiver_;
};

} // namespace tolvane::platform
