#include "platform/freedesktop/FreedesktopAppleScripts.h"

#include "resolver/ResolveBookmark.h"
#include "tests/platform/freedesktop/BusTest.h"
#include "tests/platform/freedesktop/FileManagerStub.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tolvane::platform {
namespace {

using resolver::revealScript;
using testing::IsEmpty;
using tests::FileManagerStub;

class FreedesktopAppleScriptsTest : public tests::BusTest {
protected:
    std::unique_ptr<AppleScript> scriptOf(const std::string& source) {
        return FreedesktopAppleScripts(std::make_shared<FileManagerReveal>(connect())).initWithSource(source);
    }

    /// Runs the script for this path, and returns the one URI of the call that comes.
    std::string uriRevealedBy(const std::string& path) {
        QDBusConnection connection = connect();
        const FileManagerStub stub(connection);
        // The object that made the script is gone by now.
        const auto script = scriptOf(revealScript(path));
        EXPECT_TRUE(script);
        EXPECT_THAT(stub.calls(), IsEmpty()) << "making a script does not run it";
        EXPECT_TRUE(script->executeAndReturnError());
        EXPECT_TRUE(script->executeAndReturnError()) << "and run again";
        waitUntil([&stub] { return stub.calls().size() == 2; });
        disconnect(connection);
        return stub.calls().back().arguments().value(0).toStringList().join(' ').toStdString();
    }

    const tests::TemporaryFolder folder;
};

TEST_F(FreedesktopAppleScriptsTest, revealThePathInTheScript) {
    EXPECT_EQ(uriRevealedBy(folder.file("caf\xE9")), "file://" + folder.path() + "/caf%E9");
    folder.file("a\tb");
    EXPECT_EQ(uriRevealedBy(folder.path(R"(a\tb)")), "file://" + folder.path() + "/a%09b")
        << "an escape in the path stands for its character";
}

TEST_F(FreedesktopAppleScriptsTest, areNoneWhereTheSourceDoesNotCompile) {
    EXPECT_FALSE(scriptOf(""));
    EXPECT_FALSE(scriptOf("beep"));
    EXPECT_FALSE(scriptOf(revealScript(folder.file("a\"b"))));
    EXPECT_FALSE(scriptOf(revealScript(folder.file("a\\b"))));
}

TEST_F(FreedesktopAppleScriptsTest, failForMissingFiles) {
    for (const std::string& path : {std::string(), std::string("relative"), folder.path("missing")}) {
        const auto script = scriptOf(revealScript(path));
        ASSERT_TRUE(script) << path;
        const auto result = script->executeAndReturnError();
        ASSERT_FALSE(result) << path;
        EXPECT_EQ(result.error().domain, "NSCocoaErrorDomain");
        EXPECT_EQ(result.error().code, 4);
    }
}

} // namespace
} // namespace tolvane::platform
