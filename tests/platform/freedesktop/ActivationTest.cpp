// What lets a window come to the front, on its way from one program to another.
#include "platform/freedesktop/ApplicationNames.h"
#include "platform/freedesktop/FileManagerReveal.h"
#include "platform/freedesktop/SingleInstance.h"
#include "tests/platform/freedesktop/BusTest.h"
#include "tests/platform/freedesktop/FakeOpener.h"
#include "tests/platform/freedesktop/FileManagerStub.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::platform {

namespace {

using testing::ElementsAre;
using tests::EnvironmentVariable;
using tests::FileManagerStub;

class ActivationTest : public tests::BusTest {
protected:
    /// What a file manager sends.
    static QDBusMessage openCall(const QVariantMap& platformData) {
        QDBusMessage call = QDBusMessage::createMethodCall(
            application_names::identifier, application_names::objectPath, application_names::interface,
            "Open");
        call << QStringList("file:///a") << platformData;
        return call;
    }
};

TEST_F(ActivationTest, isOfferedUnderTheNameThatTheCallerGivesIt) {
    const EnvironmentVariable none("XDG_ACTIVATION_TOKEN", std::nullopt);
    SingleInstance instance(connect());
    ASSERT_EQ(instance.start({}, {}), SingleInstance::Start::first);
    std::vector<std::string> tokens;
    instance.setHandlers(
        {.open = [&](const auto&) { tokens.push_back(StartupNotification::ofEnvironment().activationToken); },
         .activate = [] {},
         .action = [](const auto&) {}});
    const QDBusConnection fileManager = connect();
    fileManager.send(openCall({{"desktop-startup-id", "older"}}));
    fileManager.send(openCall({{"desktop-startup-id", "id"}, {"activation-token", "token"}}));
    fileManager.send(openCall({{"desktop-startup-id", "id"}, {"activation-token", ""}}));
    fileManager.send(openCall({{"desktop-startup-id", 17}}));
    fileManager.send(openCall({}));
    waitUntil([&] { return tokens.size() == 5; });
    EXPECT_THAT(tokens, ElementsAre("older", "token", "id", "17", ""));
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

TEST_F(ActivationTest, isPassedOnToTheFileManagerAnewForEachItem) {
    const tests::TemporaryFolder folder;
    FileManagerStub stub(connect());
    int made = 0;
    FileManagerReveal fileManager(connect(), FileManagerReveal::usualTimeLimit, [&] {
        return "id-" + std::to_string(++made) + "_TIME17";
    });
    EXPECT_TRUE(fileManager.reveal(folder.file("a")));
    EXPECT_TRUE(fileManager.reveal(folder.file("b")));
    waitUntil([&] { return stub.calls().size() == 2; });
    EXPECT_EQ(stub.calls()[0].arguments().value(1).toString(), "id-1_TIME17");
    EXPECT_EQ(stub.calls()[1].arguments().value(1).toString(), "id-2_TIME17");
}

TEST_F(ActivationTest, isPassedOnToTheOpenerOfTheFolder) {
    const tests::TemporaryFolder folder;
    // The opener writes down its environment in place of what it is given.
    const std::string program = folder.file(
        "xdg-open", "#!/bin/sh\nprintf '%s' \"$DESKTOP_STARTUP_ID\" >\"${0%/*}/new\"\nmv \"${0%/*}/new\" "
                    "\"${0%/*}/id\"\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    const EnvironmentVariable path("PATH", folder.path() + ":/usr/bin:/bin");
    FileManagerReveal fileManager(
        connectToNothing(), FileManagerReveal::usualTimeLimit, [] { return "id_TIME17"; });
    EXPECT_TRUE(fileManager.reveal(folder.file("a")));
    waitUntil([&] { return std::filesystem::exists(folder.path("id")); });
    EXPECT_EQ(tests::contentsOfFile(folder.path("id")), "id_TIME17");
}

} // namespace

} // namespace tolvane::platform
