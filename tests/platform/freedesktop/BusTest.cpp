#include "tests/platform/freedesktop/BusTest.h"

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QTimer>
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

bool BusTest::waitUntil(const std::function<bool()>& condition) {
    constexpr std::chrono::seconds mostTime(60);
    constexpr std::chrono::milliseconds betweenLooks(5);
    if (condition()) {
        return true;
    }
    QEventLoop loop;
    bool holds = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        holds = condition();
        if (holds) {
            loop.quit();
        }
    });
    look.start(betweenLooks);
    QTimer::singleShot(mostTime, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_TRUE(holds) << "What the test waits for does not happen";
    return holds;
}

void BusTest::waitFor(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

QDBusMessage BusTest::answer(const QDBusConnection& connection, const QDBusMessage& call) {
    const QDBusPendingCallWatcher watcher(connection.asyncCall(call));
    waitUntil([&watcher] { return watcher.isFinished(); });
    return watcher.reply();
}

EnvironmentVariable::EnvironmentVariable(const char* name, const std::optional<std::string>& value)
    : name_(name)
    , wasSet_(qEnvironmentVariableIsSet(name))
    , before_(qgetenv(name)) {
    if (value) {
        qputenv(name, QByteArray::fromStdString(*value));
    } else {
        qunsetenv(name);
    }
}

EnvironmentVariable::~EnvironmentVariable() {
    if (wasSet_) {
        qputenv(name_, before_);
    } else {
        qunsetenv(name_);
    }
}

} // namespace tolvane::tests
