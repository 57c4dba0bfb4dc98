#include "platform/freedesktop/SingleInstance.h"

#include "platform/freedesktop/ApplicationNames.h"
#include "tests/platform/freedesktop/BusTest.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusVirtualObject>
#include <QEventLoop>
#include <QTimer>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using tests::EnvironmentVariable;
using Start = SingleInstance::Start;

constexpr std::chrono::milliseconds briefLimit(1'000);
/// Only a failure reaches it, however busy the machine is.
constexpr std::chrono::milliseconds patientLimit = std::chrono::seconds(60);

URL file(const std::string& path) {
    return URL::fileURLWithPath(path);
}

/// Records what it is asked to do.
struct Asked {
    std::vector<std::string> what = {};

    ApplicationHandlers handlers() {
        return {
            .open =
                [this](const std::vector<URL>& urls) {
                    std::string line = "open";
                    for (const URL& url : urls) {
                        line += ' ' + url.absoluteString();
                    }
                    what.push_back(line);
                },
            .activate = [this] { what.emplace_back("activate"); },
            .action =
                [this](const RequestedAction& action) {
                    std::string line = "action " + action.name;
                    for (const std::string& text : action.texts.value_or(std::vector<std::string>())) {
                        line += ' ' + text;
                    }
                    what.push_back(line);
                }};
    }
};

/// Another owner of the application's name.
class Stranger final : public QDBusVirtualObject {
public:
    using Answer = std::function<void(const QDBusMessage&, const QDBusConnection&)>;

    Stranger(const QDBusConnection& connection, Answer answer) : answer_(std::move(answer)) {
        QDBusConnection bus = connection;
        EXPECT_TRUE(bus.registerVirtualObject(application_names::objectPath, this));
        EXPECT_TRUE(bus.registerService(application_names::identifier));
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        answer_(message, connection);
        return true;
    }

private:
    Answer answer_;
};

class SingleInstanceTest : public tests::BusTest {
protected:
    struct Outcome {
        Start start = Start::alone;
        std::string message;
    };

    /// Starts another instance as another process would, while the event loop runs here.
    Outcome startAnother(
        const std::vector<URL>& urls,
        const StartupNotification& notification = {},
        std::chrono::milliseconds timeLimit = patientLimit,
        const RequestedAction& action = {}) {
        const QDBusConnection connection = connect();
        return elsewhere([&] {
            SingleInstance instance(connection, timeLimit);
            const Start start = instance.start(urls, notification, action);
            return Outcome{start, instance.message()};
        });
    }

    void expectHandedOver(const std::vector<URL>& urls, const StartupNotification& notification = {}) {
        const Outcome outcome = startAnother(urls, notification);
        EXPECT_EQ(outcome.start, Start::handedOver) << outcome.message;
        EXPECT_EQ(outcome.message, "");
    }

    static void expectAlone(const Outcome& outcome, const std::string& reason) {
        EXPECT_EQ(outcome.start, Start::alone);
        EXPECT_EQ(outcome.message, "This instance runs by itself: " + reason);
    }

    /// The instance that came first, without handlers.
    std::unique_ptr<SingleInstance> firstInstance() {
        auto instance = std::make_unique<SingleInstance>(connect());
        EXPECT_EQ(instance->start({}, {}), Start::first);
        return instance;
    }

    /// Waits until the handlers were asked so many times, and returns for what.
    const std::vector<std::string>& askedFor(std::size_t times = 1) {
        waitUntil([&] { return asked.what.size() >= times; });
        return asked.what;
    }

    Asked asked;
};

// The first

TEST_F(SingleInstanceTest, isTheFirstWhereThereIsNoOtherAndKeepsItsName) {
    SingleInstance instance(connect());
    EXPECT_EQ(instance.start({file("/a")}, {}), Start::first);
    EXPECT_EQ(instance.message(), "");
    QDBusMessage call = QDBusMessage::createMethodCall(
        "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName");
    constexpr uint replaceExisting = 2;
    call << "example.tolvane.tolvane" << replaceExisting;
    constexpr uint inQueue = 2;
    EXPECT_EQ(answer(connect(), call).arguments().value(0).toUInt(), inQueue);
}

TEST_F(SingleInstanceTest, leavesItsNameToTheNextOnTheSameConnectionOrAnother) {
    const QDBusConnection connection = connect();
    for (const QDBusConnection& next : {connection, connection, connect()}) {
        SingleInstance instance(next);
        EXPECT_EQ(instance.start({}, {}), Start::first);
    }
}

// Handing over

TEST_F(SingleInstanceTest, handsOverWhatTheUserNamedAndOtherwiseActivates) {
    const auto instance = firstInstance();
    instance->setHandlers(asked.handlers());
    expectHandedOver({file("/a b"), file("/caf\xE9"), file("/-x\n\"'")});
    expectHandedOver({});
    // A URL that names no file is left out by the instance that gets it, but must not spoil the call.
    expectHandedOver(
        {URL::fromText("http://localhost/caf\xE9").value(), URL::fromText("file:///caf\xE9 x").value()});
    EXPECT_THAT(
        askedFor(3),
        ElementsAre(
            "open file:///a%20b file:///caf%E9 file:///-x%0A%22'", "activate", "open file:///caf%E9%20x"));
}

TEST_F(SingleInstanceTest, handsOverAThousandURLs) {
    std::vector<URL> opened;
    const auto instance = firstInstance();
    auto handlers = asked.handlers();
    handlers.open = [&](const std::vector<URL>& urls) { opened = urls; };
    instance->setHandlers(handlers);
    constexpr std::size_t count = 1'000;
    std::vector<URL> urls;
    urls.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        urls.push_back(file("/" + std::string(1'000, '\xE9') + std::to_string(i)));
    }
    expectHandedOver(urls);
    waitUntil([&] { return !opened.empty(); });
    EXPECT_EQ(opened, urls);
}

TEST_F(SingleInstanceTest, passesTheStartupNotificationOn) {
    std::vector<QVariantMap> data;
    const Stranger stranger(connect(), [&](const QDBusMessage& message, const QDBusConnection& connection) {
        data.push_back(qdbus_cast<QVariantMap>(message.arguments().back()));
        connection.send(message.createReply());
    });
    {
        const EnvironmentVariable id("DESKTOP_STARTUP_ID", "id");
        const EnvironmentVariable token("XDG_ACTIVATION_TOKEN", "token");
        expectHandedOver({}, StartupNotification::ofEnvironment());
        expectHandedOver({file("/a")}, StartupNotification::ofEnvironment());
    }
    const EnvironmentVariable id("DESKTOP_STARTUP_ID", std::nullopt);
    const EnvironmentVariable token("XDG_ACTIVATION_TOKEN", "");
    expectHandedOver({}, StartupNotification::ofEnvironment());
    const QVariantMap both{{"desktop-startup-id", "id"}, {"activation-token", "token"}};
    EXPECT_THAT(data, ElementsAre(both, both, QVariantMap()));
}

// Handlers

TEST_F(SingleInstanceTest, keepsRequestsUntilThereAreHandlersAndKnowsThem) {
    const auto instance = firstInstance();
    EXPECT_FALSE(instance->hasRequestsWaiting());
    // The caller has its answer, so a program that ended now would lose the request.
    expectHandedOver({file("/a")});
    EXPECT_TRUE(instance->hasRequestsWaiting());
    expectHandedOver({});
    expectHandedOver({file("/b")});
    instance->setHandlers(asked.handlers());
    EXPECT_THAT(asked.what, IsEmpty()) << "handlers run from the event loop";
    EXPECT_TRUE(instance->hasRequestsWaiting());
    expectHandedOver({file("/c")});
    EXPECT_THAT(askedFor(4), ElementsAre("open file:///a", "activate", "open file:///b", "open file:///c"));
    EXPECT_FALSE(instance->hasRequestsWaiting());
}

TEST_F(SingleInstanceTest, answersTheCallerBeforeAHandlerRuns) {
    const auto instance = firstInstance();
    std::atomic<bool> answered = false;
    bool wasAnswered = false;
    auto handlers = asked.handlers();
    handlers.activate = [&] {
        // Like an alert that the user has not closed yet, but without an event loop.
        for (int i = 0; i < 1'000 && !answered; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        wasAnswered = answered;
    };
    instance->setHandlers(handlers);
    const QDBusConnection connection = connect();
    elsewhere([&] {
        SingleInstance other(connection, std::chrono::seconds(60));
        answered = other.start({}, {}) == Start::handedOver;
        return 0;
    });
    EXPECT_TRUE(wasAnswered);
}

TEST_F(SingleInstanceTest, answersOthersWhileAHandlerWaits) {
    const auto instance = firstInstance();
    auto handlers = asked.handlers();
    handlers.activate = [this] {
        asked.what.emplace_back("alert");
        expectHandedOver({file("/a")});
        askedFor(2);
        asked.what.emplace_back("alert ends");
    };
    instance->setHandlers(handlers);
    expectHandedOver({});
    EXPECT_THAT(askedFor(3), ElementsAre("alert", "open file:///a", "alert ends"));
}

TEST_F(SingleInstanceTest, handsOverAnAction) {
    const auto instance = firstInstance();
    instance->setHandlers(asked.handlers());
    const auto hand = [this](const RequestedAction& action) {
        EXPECT_EQ(startAnother({}, {}, patientLimit, action).start, Start::handedOver);
    };
    hand({"plain"});
    hand({"many", {{"/a b", "file:///caf%E9", "\u00e9"}}});
    hand({"empty", std::vector<std::string>()});
    EXPECT_THAT(
        askedFor(3), ElementsAre("action plain", "action many /a b file:///caf%E9 \u00e9", "action empty"));
}

TEST_F(SingleInstanceTest, leavesToItsCallerWhatItHasNotTakenOn) {
    // The call has arrived, but the instance ends before its event loop gets to it.
    auto instance = firstInstance();
    instance->setHandlers(asked.handlers());
    const QDBusConnection connection = connect();
    auto next = std::async(std::launch::async, [&connection] {
        SingleInstance other(connection, std::chrono::seconds(60));
        return other.start({file("/a")}, {});
    });
    // Long enough for the call. A later one finds no owner, which ends the same.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_FALSE(instance->hasRequestsWaiting());
    instance.reset();
    waitUntil([&] { return next.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
    EXPECT_EQ(next.get(), Start::first);
}

TEST_F(SingleInstanceTest, offersTheActivationTokenWhileAHandlerRuns) {
    const EnvironmentVariable none("XDG_ACTIVATION_TOKEN", std::nullopt);
    const auto instance = firstInstance();
    std::vector<std::string> tokens;
    const auto note = [&] { tokens.push_back(StartupNotification::ofEnvironment().activationToken); };
    instance->setHandlers({[&](const auto&) { note(); }, note, [&](const auto&) { note(); }});
    expectHandedOver({file("/a")}, {.activationToken = "one"});
    expectHandedOver({}, {.startupId = "id", .activationToken = "two"});
    expectHandedOver({});
    waitUntil([&] { return tokens.size() == 3; });
    EXPECT_THAT(tokens, ElementsAre("one", "two", ""));
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

TEST_F(SingleInstanceTest, mayEndWithRequestsWaiting) {
    auto instance = firstInstance();
    expectHandedOver({file("/a")});
    instance->setHandlers(asked.handlers());
    instance.reset();
    waitFor(briefLimit);
    EXPECT_THAT(asked.what, IsEmpty());
}

// Alone

TEST_F(SingleInstanceTest, isAloneWithoutAMessageWhereThereIsNoBus) {
    SingleInstance instance(connectToNothing());
    EXPECT_EQ(instance.start({file("/a")}, {}), Start::alone);
    EXPECT_EQ(instance.message(), "");
    instance.setHandlers(asked.handlers());
}

TEST_F(SingleInstanceTest, isAloneWhenTheOwnerDoesNotAnswerInTime) {
    int calls = 0;
    const Stranger stranger(connect(), [&](const auto&, const auto&) { ++calls; });
    expectAlone(
        startAnother({file("/a")}, {}, briefLimit), "the running instance does not answer within 1000 ms.");
    EXPECT_EQ(calls, 1) << "the owner may still do it, so it is not asked twice";
}

TEST_F(SingleInstanceTest, isAloneWhenTheOwnerAnswersAnError) {
    const Stranger stranger(connect(), [](const QDBusMessage& message, const QDBusConnection& connection) {
        connection.send(message.createErrorReply("org.example.Error", "No room."));
    });
    expectAlone(startAnother({}), "the running instance answers org.example.Error: No room.");
}

TEST_F(SingleInstanceTest, isAloneWhenTheOwnerIsAnotherProgram) {
    QDBusConnection connection = connect();
    ASSERT_TRUE(connection.registerService(application_names::identifier));
    expectAlone(startAnother({}), "another program owns the application's name on the session bus.");
}

TEST_F(SingleInstanceTest, isAloneWhenTheBusIsGone) {
    SingleInstance instance(connect());
    bus().end();
    EXPECT_EQ(instance.start({}, {}), Start::alone);
}

TEST_F(SingleInstanceTest, isNoObjectOnTheBusWhenItIsNotTheFirst) {
    const Stranger stranger(connect(), [](const auto&, const auto&) {});
    const QDBusConnection connection = connect();
    SingleInstance instance(connection, briefLimit);
    EXPECT_EQ(instance.start({}, {}), Start::alone);
    QDBusMessage call = QDBusMessage::createMethodCall(
        connection.baseService(), application_names::objectPath, application_names::interface, "Activate");
    call << QVariantMap();
    EXPECT_EQ(answer(connect(), call).errorName().toStdString(), "org.freedesktop.DBus.Error.UnknownObject");
}

// Races

TEST_F(SingleInstanceTest, replacesAnOwnerThatEndsWithoutAnAnswer) {
    QDBusConnection leaving = connect();
    const Stranger stranger(leaving, [&](const auto&, const auto&) {
        QTimer::singleShot(0, QCoreApplication::instance(), [&] { disconnect(leaving); });
    });
    const Outcome outcome = startAnother({file("/a")}, {}, patientLimit);
    EXPECT_EQ(outcome.start, Start::first) << outcome.message;
}

TEST_F(SingleInstanceTest, isOneOfManyThatStartAtOnce) {
    constexpr std::size_t many = 8;
    std::atomic<int> first = 0;
    std::atomic<int> handedOver = 0;
    std::atomic<int> activated = 0;
    std::vector<QDBusConnection> connections;
    connections.reserve(many);
    for (std::size_t i = 0; i < many; ++i) {
        connections.push_back(connect());
    }
    std::vector<std::jthread> threads;
    threads.reserve(many);
    for (const QDBusConnection& connection : connections) {
        threads.emplace_back([&, connection] {
            // Without one, nothing handles the events of this thread.
            const QEventLoop loop;
            SingleInstance instance(connection, patientLimit);
            const Start start = instance.start({}, {});
            if (start == Start::handedOver) {
                ++handedOver;
            } else if (start == Start::first) {
                ++first;
                instance.setHandlers({[](const auto&) {}, [&] { ++activated; }, [](const auto&) {}});
                waitUntil([&] { return activated == many - 1; });
            }
        });
    }
    threads.clear();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(handedOver, many - 1);
    EXPECT_EQ(activated, many - 1);
}

} // namespace
} // namespace tolvane::platform
