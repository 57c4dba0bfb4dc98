#pragma once

#include "platform/URL.h"
#include "platform/freedesktop/RequestedAction.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>

#include <functional>
#include <string>
#include <vector>

namespace tolvane::platform {

/// What another process on the bus asks the application for.
struct ApplicationRequest {
    enum class Kind { activate, open, action };

    Kind kind = Kind::activate;
    /// What to open; never empty when that is asked.
    std::vector<URL> urls = {};
    /// What to do; without a name unless that is asked.
    RequestedAction action = {};
    /// With it the desktop lets a window come to the front; may be empty.
    std::string activationToken = {};
};

/// The application as the bus sees it: org.freedesktop.Application, whose methods are answered at once and
/// told as requests.
///
/// Anybody in the session can call, so nothing that comes is trusted. Of the URIs to open those are left out
/// that are no URLs or name no file on this computer; the others come as URLs made of their paths, so that
/// the same file has the same URL however its URI was written. When none is left, that asks to activate.
/// Actions are passed on whatever their name, but an action whose name is known here is refused when its
/// parameter is not the right one.
class ApplicationObject final : public QDBusVirtualObject {
public:
    using Receiver = std::function<void(ApplicationRequest)>;

    /// The receiver is called after the caller got its answer.
    explicit ApplicationObject(Receiver receiver);

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    Receiver receiver_;
};

} // namespace tolvane::platform
