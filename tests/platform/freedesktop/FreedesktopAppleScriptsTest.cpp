#include "platform/freedesktop/FreedesktopAppleScripts.h"

#include "resolver/ResolveBookmark.h"
#include "tests/platform/freedesktop/BusTest.h"
#include "tests/platform/freedesktop/FakeOpener.h"
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
using tests::TemporaryFolder;

class FreedesktopAppleScriptsTest : public tests::BusTest {
protected:
    FreedesktopAppleScripts scripts() {
        return FreedesktopAppleScripts(std::make_shared<FileManagerReveal>(connect()));
    }

    /// The one URI of the stub's latest call, after it has come.
    static std::string latestURI(const FileManagerStub& stub) {
        waitUntil([&stub] { return !stub.calls().empty(); });
        return stub.calls().back().arguments().value(0).toStringList().join(' ').toStdString();
    }
};

TEST_F(FreedesktopAppleScriptsTest, revealThePathInTheScript) {
    const FileManagerStub stub(connect());
    const TemporaryFolder folder;
    const std::string path = folder.file("caf\xE9");
    const auto script = scripts().initWithSource(revealScript(path));
    ASSERT_TRUE(script);
    EXPECT_THAT(stub.calls(), IsEmpty()) << "making a script does not run it";
    EXPECT_TRUE(script->executeAndReturnError());
    EXPECT_EQ(latestURI(stub), "file://" + folder.path() + "/caf%E9");
}

TEST_F(FreedesktopAppleScriptsTest, revealWhatAnEscapeInThePathStandsFor) {
    const FileManagerStub stub(connect());
    const TemporaryFolder folder;
    folder.file("a\tb");
    const auto script = scripts().initWithSource(revealScript(folder.path(R"(a\tb)")));
    ASSERT_TRUE(script);
    EXPECT_TRUE(script->executeAndReturnError());
    EXPECT_EQ(latestURI(stub), "file://" + folder.path() + "/a%09b");
}

TEST_F(FreedesktopAppleScriptsTest, areNoneWhereTheSourceDoesNotCompile) {
    const TemporaryFolder folder;
    EXPECT_FALSE(scripts().initWithSource(""));
    EXPECT_FALSE(scripts().initWithSource("beep"));
    EXPECT_FALSE(scripts().initWithSource(revealScript(folder.file("a\"b"))));
    EXPECT_FALSE(scripts().initWithSource(revealScript(folder.file("a\\b"))));
}

TEST_F(FreedesktopAppleScriptsTest, failWhereThereIsNoSuchFile) {
    const tests::FakeOpener opener;
    const FileManagerStub stub(connect());
    const TemporaryFolder folder;
    for (const std::string& path : {std::string(), std::string("relative"), folder.path("missing")}) {
        const auto script = scripts().initWithSource(revealScript(path));
        ASSERT_TRUE(script) << path;
        const auto result = script->executeAndReturnError();
        ASSERT_FALSE(result) << path;
        EXPECT_EQ(result.error().domain, "NSCocoaErrorDomain");
        EXPECT_EQ(result.error().code, 4);
    }
    waitFor(std::chrono::milliseconds(200));
    EXPECT_THAT(stub.calls(), IsEmpty());
    EXPECT_THAT(opener.starts(), IsEmpty());
}

TEST_F(FreedesktopAppleScriptsTest, mayBeGoneBeforeTheirScripts) {
    const FileManagerStub stub(connect());
    const TemporaryFolder folder;
    const std::string path = folder.file("a");
    const std::unique_ptr<AppleScript> script = scripts().initWithSource(revealScript(path));
    EXPECT_TRUE(script->executeAndReturnError());
    EXPECT_TRUE(script->executeAndReturnError()) << "and run again";
    waitUntil([&stub] { return stub.calls().size() == 2; });
    EXPECT_EQ(latestURI(stub), "file://" + path);
}

} // namespace

} // namespace tolvane::platform
