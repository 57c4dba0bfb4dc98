#include "platform/freedesktop/ApplicationObject.h"

#include "platform/freedesktop/ApplicationNames.h"
#include "tests/platform/freedesktop/BusTest.h"
#include "tests/support/Process.h"

#include <QDBusError>
#include <QDBusVariant>
#include <QStringList>
#include <QVariant>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = ApplicationRequest::Kind;

/// An object of the application on the bus, and a caller on another connection.
class ApplicationObjectTest : public tests::BusTest {
protected:
    void SetUp() override {
        BusTest::SetUp();
        if (IsSkipped()) {
            return;
        }
        owner_.emplace(connect());
        caller_.emplace(connect());
        object_.emplace([this](ApplicationRequest request) { requests_.push_back(std::move(request)); });
        EXPECT_TRUE(owner_->registerVirtualObject(application_names::objectPath, &*object_));
    }

    /// What was asked for so far.
    const std::vector<ApplicationRequest>& requests() const { return requests_; }

    /// The paths of the latest request.
    std::vector<std::string> openedPaths() const {
        std::vector<std::string> paths;
        std::ranges::transform(requests_.back().urls, std::back_inserter(paths), &URL::path);
        return paths;
    }

    QString owner() const { return owner_->baseService(); }

    QDBusMessage call(
        const char* method,
        const QVariantList& arguments,
        const QString& interface = application_names::interface) const {
        QDBusMessage message = QDBusMessage::createMethodCall(
            owner(), application_names::objectPath, interface, QString::fromLatin1(method));
        message.setArguments(arguments);
        return answer(*caller_, message);
    }

    QDBusMessage open(const QStringList& uris) const { return call("Open", {uris, QVariantMap()}); }

    /// Expects that the call is refused by a message with this word.
    void expectInvalid(const char* method, const QVariantList& arguments, const char* word) const {
        const QDBusMessage refusal = call(method, arguments);
        EXPECT_EQ(refusal.errorName().toStdString(), "org.freedesktop.DBus.Error.InvalidArgs") << word;
        EXPECT_THAT(refusal.errorMessage().toStdString(), HasSubstr(word));
    }

private:
    std::vector<ApplicationRequest> requests_;
    std::optional<QDBusConnection> owner_;
    std::optional<QDBusConnection> caller_;
    std::optional<ApplicationObject> object_;
};

void expectEmptyAnswer(const QDBusMessage& answer) {
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    EXPECT_THAT(answer.arguments(), IsEmpty());
}

// Requests

TEST_F(ApplicationObjectTest, isAskedToActivateAlsoByOpeningNothing) {
    expectEmptyAnswer(call("Activate", {QVariantMap()}));
    expectEmptyAnswer(call("Activate", {QVariantMap()}, QString()));
    expectEmptyAnswer(open({}));
    expectEmptyAnswer(open({"http://localhost/a", "x"}));
    EXPECT_THAT(requests(), SizeIs(4));
    EXPECT_THAT(requests(), Each(Field(&ApplicationRequest::kind, Kind::activate)));
}

TEST_F(ApplicationObjectTest, isAskedToOpenFiles) {
    expectEmptyAnswer(open({"file:///a%20b", "file:///caf%E9", "file:///%3F%23%25", "file:///\u00E9 b"}));
    ASSERT_THAT(requests(), SizeIs(1));
    EXPECT_EQ(requests().front().kind, Kind::open);
    EXPECT_THAT(openedPaths(), ElementsAre("/a b", "/caf\xE9", "/?#%", "/\u00E9 b"));
}

TEST_F(ApplicationObjectTest, isAskedForAnAction) {
    expectEmptyAnswer(call("ActivateAction", {"resolver", QVariantList(), QVariantMap()}));
    const QVariantList parameters{
        QVariant::fromValue(QDBusVariant(7)), QVariant::fromValue(QDBusVariant("x"))};
    expectEmptyAnswer(call("ActivateAction", {"other", parameters, QVariantMap()}));
    ASSERT_THAT(requests(), SizeIs(2));
    EXPECT_EQ(requests()[0].kind, Kind::action);
    EXPECT_EQ(requests()[0].action, (RequestedAction{"resolver"}));
    EXPECT_EQ(requests()[1].action, (RequestedAction{"other"}));
}

TEST_F(ApplicationObjectTest, isAskedToShowFileNames) {
    const auto ask = [this](const QStringList& names) {
        expectEmptyAnswer(call("ActivateAction", {"show-file-names", QVariantList{names}, QVariantMap()}));
        return requests().back().action;
    };
    EXPECT_EQ(
        ask({"/a b", "file:///caf%E9", "", "\u202e"}),
        (RequestedAction{"show-file-names", {{"/a b", "file:///caf%E9", "", "\u202e"}}}));
    EXPECT_EQ(ask({}), (RequestedAction{"show-file-names", std::vector<std::string>()}));
    EXPECT_THAT(requests(), SizeIs(2));
    EXPECT_EQ(requests()[0].kind, Kind::action);
}

TEST_F(ApplicationObjectTest, refusesToShowOtherParameters) {
    const auto wrapped = [](const QVariant& value) { return QVariant::fromValue(QDBusVariant(value)); };
    for (const QVariantList& parameters : std::vector<QVariantList>{
             {},
             {"/a"},
             {7},
             {QVariantMap{{"a", "b"}}},
             {QVariantList{"/a", "/b"}},
             {QByteArray("/a")},
             {QStringList("/a"), QStringList("/b")},
             {wrapped(QVariant::fromValue(QDBusVariant(QStringList("/a"))))}}) {
        expectInvalid("ActivateAction", {"show-file-names", parameters, QVariantMap()}, "show-file-names");
    }
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(ApplicationObjectTest, receivesTheActivationTokenUnderTheNameThatTheCallerGivesIt) {
    for (const auto& [data, token] : std::vector<std::pair<QVariantMap, std::string>>{
             {{}, ""},
             {{{"desktop-startup-id", "older"}}, "older"},
             {{{"desktop-startup-id", "id"}, {"activation-token", "token"}, {"unknown", 1}}, "token"},
             {{{"desktop-startup-id", "id"}, {"activation-token", ""}}, "id"},
             {{{"desktop-startup-id", 17}}, "17"},
             {{{"activation-token", QVariantList{1, 2}}}, ""}}) {
        expectEmptyAnswer(call("Activate", {data}));
        EXPECT_EQ(requests().back().activationToken, token);
        expectEmptyAnswer(call("Open", {QStringList("file:///a"), data}));
        EXPECT_EQ(requests().back().activationToken, token);
        expectEmptyAnswer(call("ActivateAction", {"resolver", QVariantList(), data}));
        EXPECT_EQ(requests().back().activationToken, token);
    }
    EXPECT_THAT(requests(), SizeIs(18));
}

// Untrusted URIs

TEST_F(ApplicationObjectTest, leavesOutURIsThatNameNoFileHere) {
    expectEmptyAnswer(open(
        {"", "a", "/plain/path", "file:", "file:relative", "file://", "file://host/a", "file:///a%",
         "file:///a%4", "file:///a%zz", "file:///nul%00", "http://localhost/a", "data:,a", "file:///kept",
         "\xC3\xA9"}));
    ASSERT_THAT(requests(), SizeIs(1));
    EXPECT_EQ(requests().front().kind, Kind::open);
    EXPECT_THAT(openedPaths(), ElementsAre("/kept"));
}

TEST_F(ApplicationObjectTest, hasOneURLForEachPathHoweverItIsWritten) {
    expectEmptyAnswer(open(
        {"file:///a~b", "FILE:///a%7Eb", "file:///a%7eb", "file://localhost/a~b", "file:/a~b",
         "file:///%61~b", "file:///a~b?query#fragment"}));
    ASSERT_THAT(requests(), SizeIs(1));
    EXPECT_THAT(requests().front().urls, SizeIs(7));
    EXPECT_THAT(requests().front().urls, Each(URL::fileURLWithPath("/a~b")));
}

// Invalid calls

TEST_F(ApplicationObjectTest, refusesOtherArguments) {
    const std::vector<std::pair<const char*, QVariantList>> calls{
        {"Activate", {}},
        {"Activate", {"text"}},
        {"Activate", {QVariantMap(), QVariantMap()}},
        {"Open", {}},
        {"Open", {QStringList("file:///a")}},
        {"Open", {"file:///a", QVariantMap()}},
        {"Open", {QVariantMap(), QStringList("file:///a")}},
        {"Open", {QVariantList{1}, QVariantMap()}},
        {"ActivateAction", {}},
        {"ActivateAction", {"resolver"}},
        {"ActivateAction", {"resolver", QVariantMap()}},
        {"ActivateAction", {7, QVariantList(), QVariantMap()}},
        {"ActivateAction", {"resolver", QStringList(), QVariantMap()}}};
    for (const auto& [method, arguments] : calls) {
        expectInvalid(method, arguments, method);
    }
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(ApplicationObjectTest, refusesOtherMethodsAndInterfaces) {
    for (const auto& [method, interface] : std::vector<std::pair<const char*, const char*>>{
             {"activate", "org.freedesktop.Application"},
             {"Close", "org.freedesktop.Application"},
             {"Activate", "org.freedesktop.Other"},
             {"Open", ""}}) {
        const QDBusMessage refusal = call(method, {}, QString::fromLatin1(interface));
        EXPECT_EQ(refusal.type(), QDBusMessage::ErrorMessage) << method << ' ' << interface;
    }
    EXPECT_EQ(call("Close", {}).errorName().toStdString(), "org.freedesktop.DBus.Error.UnknownMethod");
    EXPECT_EQ(
        call("Activate", {}, "org.freedesktop.Other").errorName().toStdString(),
        "org.freedesktop.DBus.Error.UnknownInterface");
    EXPECT_THAT(requests(), IsEmpty());
}

// Describing itself

TEST_F(ApplicationObjectTest, describesItsInterface) {
    if (!tests::isInstalled("gdbus")) {
        GTEST_SKIP() << "gdbus is not installed";
    }
    tests::ProcessSetup setup;
    setup.command = {"gdbus",  "introspect",          "--address",     bus().address(),
                     "--dest", owner().toStdString(), "--object-path", "/example/tolvane/tolvane"};
    const auto outcome = elsewhere([&setup] { return tests::run(setup); });
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(
        outcome.out, HasSubstr("  interface org.freedesktop.Application {\n"
                               "    methods:\n"
                               "      Activate(in  a{sv} platform_data);\n"
                               "      Open(in  as uris,\n"
                               "           in  a{sv} platform_data);\n"
                               "      ActivateAction(in  s action_name,\n"
                               "                     in  av parameter,\n"
                               "                     in  a{sv} platform_data);\n"
                               "    signals:\n"
                               "    properties:\n"
                               "  };\n"));
    EXPECT_THAT(requests(), IsEmpty());
}

} // namespace
} // namespace tolvane::platform
