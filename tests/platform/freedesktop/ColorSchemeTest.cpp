#include "platform/freedesktop/ColorScheme.h"

#include "tests/platform/freedesktop/BusTest.h"

#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

namespace tolvane::platform {

namespace {

using Preference = ColorScheme::Preference;
using testing::ElementsAre;
using testing::IsEmpty;

const QString portalObject = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

/// The settings portal of a desktop, with one setting.
class PortalStub final : public QDBusVirtualObject {
public:
    PortalStub(const QDBusConnection& connection, QVariant firstValue)
        : value(std::move(firstValue))
        , connection_(connection) {
        EXPECT_TRUE(connection_.registerVirtualObject(portalObject, this));
        EXPECT_TRUE(connection_.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    }

    /// Announces whatever the setting is.
    void announce(const QString& group = appearance, const QString& key = colorScheme) {
        QDBusMessage signal =
            QDBusMessage::createSignal(portalObject, settings, QStringLiteral("SettingChanged"));
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        connection_.send(signal);
    }

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        ++asked;
        EXPECT_EQ(message.interface(), settings);
        EXPECT_EQ(message.member(), "Read");
        EXPECT_EQ(message.arguments(), (QVariantList{appearance, colorScheme}));
        if (!answers) {
            return true;
        }
        // The portal wraps the value twice.
        const QVariant inner = QVariant::fromValue(QDBusVariant(value));
        return connection.send(
            value.isValid() ? message.createReply(QVariant::fromValue(QDBusVariant(inner)))
                            : message.createErrorReply("org.freedesktop.portal.Error.NotFound", "not found"));
    }

    QVariant value;
    bool answers = true;
    int asked = 0;

private:
    QDBusConnection connection_;
};

class ColorSchemeTest : public tests::BusTest {
protected:
    void listen(const QDBusConnection& connection) {
        scheme_.emplace(connection, [this](Preference preference) { heard.push_back(preference); });
    }
    void listen() { listen(connect()); }
    void waitUntilHeard(std::size_t count) {
        waitUntil([&] { return heard.size() >= count; });
    }
    void stopListening() { scheme_.reset(); }

    std::vector<Preference> heard;

private:
    std::optional<ColorScheme> scheme_;
};

TEST_F(ColorSchemeTest, isWhatThePortalSaysAndFollowsAChange) {
    PortalStub portal(connect(), 0U);
    listen();
    EXPECT_THAT(heard, IsEmpty()) << "nothing waits for the portal";
    EXPECT_EQ(portal.asked, 0);
    waitUntilHeard(1);
    for (const uint value : {1U, 2U, 1U, 99U}) {
        portal.value = value;
        portal.announce();
        waitUntilHeard(heard.size() + 1);
    }
    EXPECT_THAT(
        heard,
        ElementsAre(
            Preference::none, Preference::dark, Preference::light, Preference::dark, Preference::none));
}

TEST_F(ColorSchemeTest, isReportedOnceAndNotAskedForAgainForOtherSettings) {
    PortalStub portal(connect(), 1U);
    listen();
    waitUntilHeard(1);
    portal.announce(appearance, "accent-color");
    portal.announce("org.gnome.desktop.interface");
    waitFor(std::chrono::milliseconds(200));
    EXPECT_EQ(portal.asked, 1);
    portal.announce();
    waitUntil([&] { return portal.asked == 2; });
    portal.value = 2U;
    portal.announce();
    waitUntilHeard(2);
    EXPECT_THAT(heard, ElementsAre(Preference::dark, Preference::light));
}

TEST_F(ColorSchemeTest, isNotBelievedFromOthers) {
    PortalStub portal(connect(), 2U);
    listen();
    waitUntilHeard(1);
    QDBusMessage lie = QDBusMessage::createSignal(portalObject, settings, QStringLiteral("SettingChanged"));
    lie << appearance << colorScheme << QVariant::fromValue(QDBusVariant(1U));
    connect().send(lie);
    waitUntil([&] { return portal.asked == 2; });
    waitFor(std::chrono::milliseconds(100));
    EXPECT_THAT(heard, ElementsAre(Preference::light));
}

TEST_F(ColorSchemeTest, isUnknownWithoutABusOrAPortal) {
    listen(connectToNothing());
    waitFor(std::chrono::milliseconds(100));
    EXPECT_THAT(heard, IsEmpty());
    listen();
    waitFor(std::chrono::milliseconds(300));
    EXPECT_THAT(heard, IsEmpty());
    PortalStub later(connect(), 1U);
    later.announce();
    waitUntilHeard(1);
    EXPECT_THAT(heard, ElementsAre(Preference::dark)) << "a portal may come later";
}

TEST_F(ColorSchemeTest, isUnknownWherePortalsDoNotHaveIt) {
    PortalStub portal(connect(), {});
    for (const QVariant& value : {QVariant(), QVariant("dark"), QVariant(true), QVariant(QStringList("1"))}) {
        portal.value = value;
        portal.asked = 0;
        listen();
        waitUntil([&] { return portal.asked == 1; });
        waitFor(std::chrono::milliseconds(100));
        EXPECT_THAT(heard, IsEmpty());
        stopListening();
    }
}

TEST_F(ColorSchemeTest, mayGoWhileThePortalIsAsked) {
    PortalStub portal(connect(), 1U);
    portal.answers = false;
    listen();
    waitUntil([&] { return portal.asked == 1; });
    stopListening();
    waitFor(std::chrono::milliseconds(100));
    EXPECT_THAT(heard, IsEmpty());
}

} // namespace

} // namespace tolvane::platform
