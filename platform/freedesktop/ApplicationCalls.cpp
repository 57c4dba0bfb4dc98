#include "platform/freedesktop/ApplicationCalls.h"

#include "platform/freedesktop/ApplicationNames.h"
#include "platform/values/HexDigits.h"

#include <QByteArray>
#include <QDBusError>
#include <QDBusMessage>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <iterator>

namespace tolvane::platform {

namespace {

using End = CallOutcome::End;

// The flag of RequestName, and its reply.
constexpr uint doNotQueue = 4;
constexpr uint primaryOwner = 1;

QDBusMessage callOfBus(const char* member) {
    return QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QString::fromLatin1(member));
}

/// The bus carries text only, and a URL that was not made from a path may contain any bytes.
QString textOf(const URL& url) {
    std::string text;
    for (const char c : url.absoluteString()) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > 0x20 && byte < 0x7F) {
            text += c;
        } else {
            appendHex(text += '%', byte, 2, HexCase::upper);
        }
    }
    return QString::fromStdString(text);
}

QVariantMap platformDataOf(const StartupNotification& notification) {
    QVariantMap data;
    const auto add = [&data](QLatin1String key, const std::string& value) {
        if (!value.empty()) {
            data.insert(key, QString::fromStdString(value));
        }
    };
    add(application_names::startupId, notification.startupId);
    add(application_names::activationToken, notification.activationToken);
    return data;
}

QDBusMessage callOfApplication(const char* member) {
    return QDBusMessage::createMethodCall(
        application_names::identifier, application_names::objectPath, application_names::interface,
        QString::fromLatin1(member));
}

QVariantList parametersOf(const RequestedAction& action) {
    if (!action.texts) {
        return {};
    }
    QStringList texts;
    std::ranges::transform(*action.texts, std::back_inserter(texts), &QString::fromStdString);
    return {texts};
}

QDBusMessage callFor(
    const std::vector<URL>& urls, const StartupNotification& notification, const RequestedAction& action) {
    QDBusMessage call;
    if (!urls.empty()) {
        call = callOfApplication("Open");
        QStringList uris;
        std::ranges::transform(urls, std::back_inserter(uris), textOf);
        call << uris;
    } else if (!action.name.empty()) {
        call = callOfApplication("ActivateAction");
        call << QString::fromStdString(action.name) << parametersOf(action);
    } else {
        call = callOfApplication("Activate");
    }
    call << platformDataOf(notification);
    // If the owner is gone by now, the caller takes its place; the bus must not start a third.
    call.setAutoStartService(false);
    return call;
}

/// Whether the call timed out, or the connection that it went to closed before it replied.
bool lacksReply(const QDBusMessage& message) {
    return QDBusError(message).type() == QDBusError::NoReply;
}

/// Whether the bus, or an owner that is exiting, reports that the name has no owner.
bool saysNotThere(const QDBusMessage& message) {
    switch (QDBusError(message).type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::UnknownObject:
        return true;
    default:
        return message.errorName() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
    }
}

CallOutcome failure(
    const std::string& who, const QDBusMessage& message, std::chrono::milliseconds timeLimit) {
    if (lacksReply(message)) {
        return {End::failed, who + " does not answer within " + std::to_string(timeLimit.count()) + " ms"};
    }
    std::string text = message.errorMessage().toStdString();
    while (text.ends_with('.')) {
        text.pop_back();
    }
    return {
        End::failed,
        who + " answers " + message.errorName().toStdString() + (text.empty() ? "" : ": " + text)};
}

/// The connection that owns the application's name; empty if there is none.
QString applicationOwner(const QDBusConnection& connection, std::chrono::milliseconds timeLimit) {
    QDBusMessage call = callOfBus("GetNameOwner");
    call << QString(application_names::identifier);
    const QDBusMessage answer = connection.call(call, QDBus::Block, static_cast<int>(timeLimit.count()));
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toString() : QString();
}

} // namespace

StartupNotification StartupNotification::ofEnvironment() {
    return {qgetenv("DESKTOP_STARTUP_ID").toStdString(), qgetenv("XDG_ACTIVATION_TOKEN").toStdString()};
}

CallOutcome takeApplicationName(const QDBusConnection& connection, std::chrono::milliseconds timeLimit) {
    QDBusMessage call = callOfBus("RequestName");
    call << QString(application_names::identifier) << doNotQueue;
    const QDBusMessage answer = connection.call(call, QDBus::Block, static_cast<int>(timeLimit.count()));
    if (answer.type() != QDBusMessage::ReplyMessage) {
        return failure("the session bus", answer, timeLimit);
    }
    return {answer.arguments().value(0).toUInt() == primaryOwner ? End::done : End::notThere};
}

void giveApplicationNameBack(const QDBusConnection& connection) {
    QDBusMessage call = callOfBus("ReleaseName");
    call << QString(application_names::identifier);
    connection.send(call);
}

CallOutcome handOver(
    const QDBusConnection& connection,
    std::chrono::milliseconds timeLimit,
    const std::vector<URL>& urls,
    const StartupNotification& notification,
    const RequestedAction& action) {
    const QString owner = applicationOwner(connection, timeLimit);
    const QDBusMessage answer = connection.call(
        callFor(urls, notification, action), QDBus::Block, static_cast<int>(timeLimit.count()));
    if (answer.type() == QDBusMessage::ReplyMessage) {
        return {End::done};
    }
    // An owner that exits during the call does not reply, either; the next may have the name by now.
    const bool isGone = lacksReply(answer) && applicationOwner(connection, timeLimit) != owner;
    if (isGone || saysNotThere(answer)) {
        return {End::notThere};
    }
    return failure("the running instance", answer, timeLimit);
}

} // namespace tolvane::platform
