#include "tests/platform/freedesktop/BusTest.h"

#include <QTest>
#include <QUuid>

namespace tolvane::tests {

void BusTest::SetUp() {
    if (!isInstalled(SessionBus::program)) {
        GTEST_SKIP() << SessionBus::program << " is not installed";
    }
    application_.emplace(argumentCount_, arguments_.data());
    bus_.emplace();
}

void BusTest::TearDown() {
    for (const QString& name : connections_) {
        QDBusConnection::disconnectFromBus(name);
    }
}

QDBusConnection BusTest::connect() {
    const auto connection = connect(bus_->address());
    EXPECT_TRUE(connection.isConnected());
    return connection;
}

QDBusConnection BusTest::connectToNothing() {
    const auto connection = connect("unix:path=/nonexistent");
    EXPECT_FALSE(connection.isConnected());
    return connection;
}

QDBusConnection BusTest::connect(const std::string& address) {
    const QString name = QUuid::createUuid().toString();
    connections_ << name;
    return QDBusConnection::connectToBus(QString::fromStdString(address), name);
}

void BusTest::disconnect(QDBusConnection& connection) {
    const QString name = connection.name();
    connections_.removeAll(name);
    connection = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(name);
}

void BusTest::waitUntil(const std::function<bool()>& condition) {
    EXPECT_TRUE(QTest::qWaitFor(condition, 60'000)) << "What the test waits for does not happen";
}

EnvironmentVariable::EnvironmentVariable(const char* name, const std::optional<std::string>& value)
    : name_(name)
    , before_(qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name).toStdString()) : std::nullopt) {
    set(value);
}

void EnvironmentVariable::set(const std::optional<std::string>& value) const {
    value ? qputenv(name_, QByteArray::fromStdString(*value)) : qunsetenv(name_);
}

} // namespace tolvane::tests
