#include "tests/platform/freedesktop/FileManagerStub.h"

#include <QDBusError>
#include <gtest/gtest.h>

namespace tolvane::tests {

FileManagerStub::FileManagerStub(const QDBusConnection& connection, Answer usual) : answer(usual) {
    QDBusConnection bus = connection;
    EXPECT_TRUE(bus.registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), this));
    EXPECT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.FileManager1")));
}

QString FileManagerStub::introspect(const QString& /*path*/) const {
    return {};
}

bool FileManagerStub::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    calls_.push_back(message);
    if (answer == Answer::success) {
        connection.send(message.createReply());
    } else if (answer == Answer::error) {
        connection.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("No such file")));
    }
    return true;
}

} // namespace tolvane::tests
