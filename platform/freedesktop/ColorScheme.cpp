#include "platform/freedesktop/ColorScheme.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <utility>

namespace tolvane::platform {

namespace {

const QString& portalPath() {
    static const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
    return path;
}

const QString& portalInterface() {
    static const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
    return interface;
}

const QStringList& colorSchemeKey() {
    static const QStringList key{
        QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme")};
    return key;
}

/// The number in the variants around it; nothing for any other value.
std::optional<uint> numberIn(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value.metaType() == QMetaType::fromType<uint>() ? std::optional(value.toUInt()) : std::nullopt;
}

/// Numbers that have no meaning yet count as no preference.
ColorScheme::Preference preferenceFrom(uint number) {
    switch (number) {
    case 1:
        return ColorScheme::Preference::dark;
    case 2:
        return ColorScheme::Preference::light;
    default:
        return ColorScheme::Preference::none;
    }
}

} // namespace

ColorScheme::ColorScheme(QDBusConnection connection, Listener listener)
    : connection_(std::move(connection))
    , listener_(std::move(listener)) {
    if (!connection_.isConnected()) {
        return;
    }
    asking_.setSingleShot(true);
    QObject::connect(&asking_, &QTimer::timeout, &waiting_, [this] { ask(); });
    // From any sender, since looking for the portal's would wait for the bus. What was announced is not
    // believed: the portal itself is asked again.
    connection_.connect(
        QString(), portalPath(), portalInterface(), QStringLiteral("SettingChanged"), colorSchemeKey(),
        QString(), &asking_, SLOT(start()));
    asking_.start();
}

void ColorScheme::ask() {
    // This method is in all versions of the portal; its successor is not.
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), portalPath(), portalInterface(),
        QStringLiteral("Read"));
    call << colorSchemeKey().front() << colorSchemeKey().back();
    auto* const watcher =
        std::make_unique<QDBusPendingCallWatcher>(connection_.asyncCall(call), &waiting_).release();
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &waiting_, [this, watcher] {
        watcher->deleteLater();
        if (const auto number = numberIn(watcher->reply().arguments().value(0));
            number && !watcher->isError()) {
            take(preferenceFrom(*number));
        }
    });
}

void ColorScheme::take(Preference preference) {
    if (std::exchange(known_, preference) != preference) {
        listener_(preference);
    }
}

} // namespace tolvane::platform
