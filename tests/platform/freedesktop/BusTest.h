// What tests over the session bus share: a bus of their own, connections to it, and the event loop.
#pragma once

#include "tests/support/SessionBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QTest>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <functional>
#include <future>
#include <optional>
#include <string>
#include <utility>

namespace tolvane::tests {

class BusTest : public testing::Test {
protected:
    /// Skips the test where there is no program to be the bus.
    void SetUp() override;
    void TearDown() override;

    SessionBus& bus() { return *bus_; }

    /// Puts another bus in place of the first.
    void setBus(const SessionBusSetup& setup) { bus_.emplace(setup); }

    /// A new connection, which ends with the test.
    QDBusConnection connect();

    /// A connection to no bus.
    QDBusConnection connectToNothing();

    /// Ends a connection early. Copies of it would keep it alive.
    void disconnect(QDBusConnection& connection);

    /// Runs the event loop until the condition holds, and fails the test if it takes too long.
    static void waitUntil(const std::function<bool()>& condition);

    /// Runs the event loop for some time, for what must not happen.
    static void waitFor(std::chrono::milliseconds time) { QTest::qWait(static_cast<int>(time.count())); }

    /// Calls the function in another thread while the event loop runs here.
    template <typename Function>
    static auto elsewhere(Function function) {
        auto future = std::async(std::launch::async, std::move(function));
        waitUntil(
            [&future] { return future.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
        return future.get();
    }

    /// The answer to the call, got while the event loop runs.
    static QDBusMessage answer(const QDBusConnection& connection, const QDBusMessage& call) {
        return connection.call(call, QDBus::BlockWithGui);
    }

private:
    QDBusConnection connect(const std::string& address);

    int argumentCount_ = 1;
    std::array<char, 5> name_{'t', 'e', 's', 't', '\0'};
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    std::optional<QCoreApplication> application_;
    std::optional<SessionBus> bus_;
    QStringList connections_;
};

/// An environment variable's value for as long as the object lives.
class EnvironmentVariable {
public:
    /// Without a value it is not set.
    EnvironmentVariable(const char* name, const std::optional<std::string>& value);
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() { set(before_); }

private:
    void set(const std::optional<std::string>& value) const;

    const char* name_;
    std::optional<std::string> before_;
};

} // namespace tolvane::tests
