// A file manager on the bus that shows nothing, but remembers what it was asked for.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <vector>

namespace tolvane::tests {

class FileManagerStub final : public QDBusVirtualObject {
public:
    enum class Answer { success, error, none };

    /// Takes the file manager's name on this connection.
    explicit FileManagerStub(const QDBusConnection& connection, Answer answer = Answer::success);

    Answer answer;

    /// Every call, in order.
    const std::vector<QDBusMessage>& calls() const { return calls_; }

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    std::vector<QDBusMessage> calls_;
};

} // namespace tolvane::tests
