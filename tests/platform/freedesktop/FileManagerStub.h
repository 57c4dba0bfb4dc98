// A file manager on the bus that shows nothing, and records what it was asked for.
#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <gtest/gtest.h>

#include <vector>

namespace tolvane::tests {

class FileManagerStub final : public QDBusVirtualObject {
public:
    enum class Answer { success, error, none };

    /// Takes the file manager's name on this connection.
    explicit FileManagerStub(const QDBusConnection& connection, Answer usual = Answer::success)
        : answer(usual) {
        QDBusConnection bus = connection;
        EXPECT_TRUE(bus.registerVirtualObject("/org/freedesktop/FileManager1", this));
        EXPECT_TRUE(bus.registerService("org.freedesktop.FileManager1"));
    }

    Answer answer;

    /// Every call, in order.
    const std::vector<QDBusMessage>& calls() const { return calls_; }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        calls_.push_back(message);
        if (answer == Answer::success) {
            connection.send(message.createReply());
        } else if (answer == Answer::error) {
            connection.send(message.createErrorReply(QDBusError::Failed, "No such file"));
        }
        return true;
    }

private:
    std::vector<QDBusMessage> calls_;
};

} // namespace tolvane::tests
