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

using testing::ElementsAre;
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

    /// The only request so far.
    const ApplicationRequest& onlyRequest() const {
        EXPECT_THAT(requests_, SizeIs(1));
        return requests_.at(0);
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

    /// Runs gdbus with this command for the object, and then these arguments.
    tests::ProcessOutcome gdbus(const std::string& command, const std::vector<std::string>& arguments) {
        tests::ProcessSetup setup;
        setup.command = {"gdbus",         command,
                         "--address",     bus().address(),
                         "--dest",        owner().toStdString(),
                         "--object-path", "/example/tolvane/tolvane"};
        setup.command.insert(setup.command.end(), arguments.begin(), arguments.end());
        return elsewhere([&setup] { return tests::run(setup); });
    }

    /// The paths of the latest request.
    std::vector<std::string> openedPaths() const {
        std::vector<std::string> paths;
        std::ranges::transform(requests_.back().urls, std::back_inserter(paths), &URL::path);
        return paths;
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

TEST_F(ApplicationObjectTest, isAskedToActivate) {
    expectEmptyAnswer(call("Activate", {QVariantMap()}));
    EXPECT_EQ(onlyRequest().kind, Kind::activate);
    EXPECT_EQ(onlyRequest().activationToken, "");
}

TEST_F(ApplicationObjectTest, isAskedToOpenFiles) {
    expectEmptyAnswer(open({"file:///a%20b", "file:///caf%E9", "file:///%3F%23%25"}));
    EXPECT_EQ(onlyRequest().kind, Kind::open);
    EXPECT_THAT(openedPaths(), ElementsAre("/a b", "/caf\xE9", "/?#%"));
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
        const QDBusMessage refusal = call("ActivateAction", {"show-file-names", parameters, QVariantMap()});
        EXPECT_EQ(refusal.errorName().toStdString(), "org.freedesktop.DBus.Error.InvalidArgs");
        EXPECT_THAT(refusal.errorMessage().toStdString(), HasSubstr("show-file-names"));
    }
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(ApplicationObjectTest, receivesTheActivationToken) {
    const QVariantMap data{{"activation-token", "token"}, {"desktop-startup-id", "id"}, {"unknown", 1}};
    expectEmptyAnswer(call("Activate", {data}));
    expectEmptyAnswer(call("Open", {QStringList("file:///a"), data}));
    expectEmptyAnswer(call("ActivateAction", {"resolver", QVariantList(), data}));
    expectEmptyAnswer(call("Activate", {QVariantMap{{"activation-token", QVariantList{1, 2}}}}));
    ASSERT_THAT(requests(), SizeIs(4));
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(requests()[i].activationToken, "token");
    }
    EXPECT_EQ(requests()[3].activationToken, "") << "the token must be a text";
}

TEST_F(ApplicationObjectTest, isAskedWithoutAnInterface) {
    expectEmptyAnswer(call("Activate", {QVariantMap()}, QString()));
    EXPECT_THAT(requests(), SizeIs(1));
}

// Untrusted URIs

TEST_F(ApplicationObjectTest, leavesOutURIsThatNameNoFileHere) {
    expectEmptyAnswer(open(
        {"", "a", "/plain/path", "file:", "file:relative", "file://", "file://host/a", "file:///a%",
         "file:///a%4", "file:///a%zz", "file:///nul%00", "http://localhost/a", "data:,a", "file:///kept",
         "\xC3\xA9"}));
    EXPECT_EQ(onlyRequest().kind, Kind::open);
    EXPECT_THAT(openedPaths(), ElementsAre("/kept"));
}

TEST_F(ApplicationObjectTest, hasOneURLForEachPathHoweverItIsWritten) {
    expectEmptyAnswer(open(
        {"file:///a~b", "FILE:///a%7Eb", "file:///a%7eb", "file://localhost/a~b", "file:/a~b",
         "file:///%61~b", "file:///a~b?query#fragment"}));
    EXPECT_THAT(onlyRequest().urls, SizeIs(7));
    EXPECT_THAT(onlyRequest().urls, testing::Each(URL::fileURLWithPath("/a~b")));
}

TEST_F(ApplicationObjectTest, acceptsLettersThatAreNotEncoded) {
    expectEmptyAnswer(open({QString::fromUtf8("file:///caf\xC3\xA9 b")}));
    EXPECT_THAT(openedPaths(), ElementsAre("/caf\xC3\xA9 b"));
}

TEST_F(ApplicationObjectTest, activatesWhenThereIsNothingToOpen) {
    expectEmptyAnswer(open({}));
    expectEmptyAnswer(open({"http://localhost/a", "x"}));
    ASSERT_THAT(requests(), SizeIs(2));
    EXPECT_EQ(requests()[0].kind, Kind::activate);
    EXPECT_EQ(requests()[1].kind, Kind::activate);
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
        const QDBusMessage refusal = call(method, arguments);
        EXPECT_EQ(refusal.type(), QDBusMessage::ErrorMessage) << method;
        EXPECT_EQ(refusal.errorName().toStdString(), "org.freedesktop.DBus.Error.InvalidArgs") << method;
        EXPECT_THAT(refusal.errorMessage().toStdString(), HasSubstr(method));
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
    const auto outcome = gdbus("introspect", {});
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

TEST_F(ApplicationObjectTest, isCalledByOtherPrograms) {
    if (!tests::isInstalled("gdbus")) {
        GTEST_SKIP() << "gdbus is not installed";
    }
    const auto outcome = gdbus(
        "call",
        {"--method", "org.freedesktop.Application.Open", "['file:///a']", "{'activation-token': <'token'>}"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "()\n");
    EXPECT_EQ(onlyRequest().activationToken, "token");
    EXPECT_THAT(openedPaths(), ElementsAre("/a"));
}

} // namespace
} // namespace tolvane::platform
