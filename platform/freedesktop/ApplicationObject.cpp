#include "platform/freedesktop/ApplicationObject.h"

#include "platform/freedesktop/ApplicationNames.h"
#include "platform/freedesktop/FileNamesAction.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusVariant>
#include <QMetaType>
#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <array>

namespace tolvane::platform {

namespace {

struct Method {
    const char* name;
    const char* signature;
    ApplicationRequest::Kind kind;
};

constexpr std::array methods{
    Method{"Activate", "a{sv}", ApplicationRequest::Kind::activate},
    Method{"Open", "asa{sv}", ApplicationRequest::Kind::open},
    Method{"ActivateAction", "sava{sv}", ApplicationRequest::Kind::action},
};

constexpr const char* description = R"(  <interface name="org.freedesktop.Application">
    <method name="Activate">
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
    <method name="Open">
      <arg type="as" name="uris" direction="in"/>
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
    <method name="ActivateAction">
      <arg type="s" name="action_name" direction="in"/>
      <arg type="av" name="parameter" direction="in"/>
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
  </interface>
)";

const Method* methodOf(const QDBusMessage& message) {
    const auto* const method = std::ranges::find_if(methods, [&message](const Method& candidate) {
        return message.member() == QLatin1String(candidate.name);
    });
    return method == methods.end() ? nullptr : &*method;
}

/// The parameters of an action are an array of variants, of which an action has one or none.
std::optional<std::vector<std::string>> textsIn(const QVariant& parameters) {
    const QVariantList values = qdbus_cast<QVariantList>(parameters);
    if (values.size() != 1) {
        return std::nullopt;
    }
    QVariant value = values.front();
    if (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    if (value.typeId() != QMetaType::QStringList) {
        return std::nullopt;
    }
    std::vector<std::string> texts;
    for (const QString& text : value.toStringList()) {
        texts.push_back(text.toStdString());
    }
    return texts;
}

/// Why the parameter is invalid for the action; empty if it is valid.
QString faultOf(const RequestedAction& action) {
    return action.name == fileNamesActionName && !action.texts
               ? QStringLiteral("%1 requires one array of strings.").arg(QString::fromStdString(action.name))
               : QString();
}

ApplicationRequest requestOf(const Method& method, const QVariantList& arguments) {
    ApplicationRequest request{method.kind};
    if (method.kind == ApplicationRequest::Kind::action) {
        request.action = {arguments.front().toString().toStdString(), textsIn(arguments.at(1))};
    } else if (method.kind == ApplicationRequest::Kind::open) {
        for (const QString& uri : arguments.front().toStringList()) {
            if (auto url = localFileURL(uri.toStdString())) {
                request.urls.push_back(*std::move(url));
            }
        }
        if (request.urls.empty()) {
            request.kind = ApplicationRequest::Kind::activate;
        }
    }
    const auto platformData = qdbus_cast<QVariantMap>(arguments.back());
    // Older callers have the startup id alone, which holds the token on Wayland.
    for (const auto& key : {application_names::activationToken, application_names::startupId}) {
        if (request.activationToken.empty()) {
            request.activationToken = platformData.value(key).toString().toStdString();
        }
    }
    return request;
}

} // namespace

QString ApplicationObject::introspect(const QString& /*path*/) const {
    return QString::fromLatin1(description);
}

bool ApplicationObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    const bool namesInterface = message.interface() == application_names::interface;
    const Method* const method = methodOf(message);
    // The standard interfaces of every object are handled elsewhere.
    if (!namesInterface && (method == nullptr || !message.interface().isEmpty())) {
        return false;
    }
    const auto answer = [&](const QDBusMessage& reply) {
        if (message.isReplyRequired()) {
            connection.send(reply);
        }
    };
    if (method == nullptr) {
        answer(message.createErrorReply(
            QDBusError::UnknownMethod,
            QStringLiteral("The method %1 does not exist.").arg(message.member())));
    } else if (message.signature() != QLatin1String(method->signature)) {
        answer(message.createErrorReply(
            QDBusError::InvalidArgs,
            QStringLiteral("%1 takes (%2), not (%3).")
                .arg(message.member(), QLatin1String(method->signature), message.signature())));
    } else {
        ApplicationRequest request = requestOf(*method, message.arguments());
        if (const QString fault = faultOf(request.action); !fault.isEmpty()) {
            answer(message.createErrorReply(QDBusError::InvalidArgs, fault));
            return true;
        }
        answer(message.createReply());
        receiver_(std::move(request));
    }
    return true;
}

} // namespace tolvane::platform
