#include "platform/freedesktop/FileManagerReveal.h"

#include "platform/values/URL.h"
#include "tests/platform/freedesktop/BusTest.h"
#include "tests/platform/freedesktop/FileManagerStub.h"
#include "tests/support/TemporaryFolder.h"

#include <QDBusError>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using namespace std::string_literals;
using testing::IsEmpty;
using tests::BusTest;
using tests::EnvironmentVariable;
using tests::FileManagerStub;
using tests::TemporaryFolder;
using Answer = FileManagerStub::Answer;

constexpr std::chrono::milliseconds shortLimit(50);
/// Much longer than it takes to start a program.
constexpr std::chrono::milliseconds longEnough(1'000);

const std::vector<std::string> awkwardNames{"plain",      "a b",         "-dash", "--help",     "it's",
                                            "\"quoted\"", "back\\slash", "$(id)", "two\nlines", "caf\xC3\xA9",
                                            "caf\xE9",    "100%",        "a?b#c", ";&|",        " "};

std::string uriOf(const std::string& path) {
    return URL::fileURLWithPath(path).absoluteString();
}

/// The first xdg-open that is found. It opens nothing, but writes down what it was given.
class FakeOpener {
public:
    FakeOpener() {
        const std::string program = folder_.file(
            "xdg-open",
            "#!/bin/sh\n{ printf '%s ' $# \"$@\"; echo \"$DESKTOP_STARTUP_ID\"; } >>\"${0%/*}/starts\"\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }

    /// The number of arguments, these, and the startup id, for every start.
    std::vector<std::string> starts() const {
        std::ifstream stream(folder_.path("starts"));
        std::vector<std::string> lines;
        for (std::string line; std::getline(stream, line) && !stream.eof();) {
            lines.push_back(line);
        }
        return lines;
    }

private:
    TemporaryFolder folder_;
    EnvironmentVariable path_{"PATH", folder_.path() + ":/usr/bin:/bin"};
    EnvironmentVariable startupId_{"DESKTOP_STARTUP_ID", std::nullopt};
};

std::string startFor(const std::string& path, const std::string& startupId = {}) {
    return "1 " + uriOf(path) + " " + startupId;
}

class FileManagerRevealTest : public BusTest {
protected:
    void expectStarts(const std::vector<std::string>& expected) {
        waitUntil([&] { return opener.starts().size() >= expected.size(); });
        EXPECT_EQ(opener.starts(), expected);
    }

    /// Reveals a file, and expects its folder to be opened.
    void expectFolderOpenedBy(FileManagerReveal& fileManager) {
        EXPECT_TRUE(fileManager.reveal(folder.file("a")));
        expectStarts({startFor(folder.path())});
    }

    static void waitForCall(const FileManagerStub& stub) {
        waitUntil([&stub] { return !stub.calls().empty(); });
    }

    /// Has the file manager do this after the folder was opened, and expects it not to be opened again.
    void expectOpenedOnceIf(
        const std::function<void(QDBusConnection&, const QDBusMessage& call)>& comesTooLate) {
        QDBusConnection slow = connect();
        const FileManagerStub stub(slow, Answer::none);
        FileManagerReveal fileManager(connect(), shortLimit);
        expectFolderOpenedBy(fileManager);
        waitForCall(stub);
        comesTooLate(slow, stub.calls().front());
        waitFor(longEnough);
        EXPECT_EQ(stub.calls().size(), 1U);
        expectStarts({startFor(folder.path())});
    }

    const TemporaryFolder folder;
    const FakeOpener opener;
};

// Asking the file manager

TEST_F(FileManagerRevealTest, asksTheFileManagerToShowTheItemWithoutWaitingForTheAnswer) {
    // The stub is in this thread, so it can answer only once the call has returned.
    FileManagerStub stub(connect());
    FileManagerReveal fileManager(connect());
    const std::string path = folder.file("a");
    EXPECT_TRUE(fileManager.reveal(path));
    EXPECT_THAT(stub.calls(), IsEmpty());
    waitForCall(stub);
    const QDBusMessage& call = stub.calls().front();
    EXPECT_EQ(call.path().toStdString(), "/org/freedesktop/FileManager1");
    EXPECT_EQ(call.interface().toStdString(), "org.freedesktop.FileManager1");
    EXPECT_EQ(call.member().toStdString(), "ShowItems");
    EXPECT_EQ(call.signature().toStdString(), "ass");
    EXPECT_EQ(call.arguments().value(0).toStringList(), QStringList(QString::fromStdString(uriOf(path))));
    EXPECT_EQ(call.arguments().value(1).toString(), QString());
    waitFor(longEnough);
    EXPECT_EQ(stub.calls().size(), 1U);
    EXPECT_THAT(opener.starts(), IsEmpty());
}

TEST_F(FileManagerRevealTest, namesItemsOfEveryKindByTheirBytesWithoutOpeningThem) {
    FileManagerStub stub(connect());
    FileManagerReveal fileManager(connect());
    // Opening a FIFO without a writer would never return.
    std::vector<std::string> paths{
        folder.fifo("fifo"),
        folder.folder("folder"),
        folder.folder("other") + "/",
        folder.symlink("dangling", "/nonexistent"),
        folder.symlink("loop", "loop"),
        folder.socket("socket"),
        "/"};
    for (const std::string& name : awkwardNames) {
        paths.push_back(folder.file(name));
    }
    for (const std::string& path : paths) {
        EXPECT_TRUE(fileManager.reveal(path)) << path;
    }
    waitUntil([&] { return stub.calls().size() == paths.size(); });
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const auto uris = stub.calls()[i].arguments().value(0).toStringList();
        EXPECT_EQ(uris, QStringList(QString::fromStdString(uriOf(paths[i]))));
    }
}

TEST_F(FileManagerRevealTest, doesNothingForMissingItems) {
    FileManagerStub stub(connect());
    FileManagerReveal fileManager(connect());
    FileManagerReveal withoutBus(connectToNothing());
    const std::string path = folder.file("a");
    for (const std::string& missing :
         {""s, "a"s, "."s, "relative/a"s, "~"s, path + "b", path + "/", path + "/b", path + "\0"s,
          path + "\0b"s, "/" + std::string(300, 'x'), "/" + std::string(10'000, 'x')}) {
        EXPECT_FALSE(fileManager.reveal(missing)) << missing;
        EXPECT_FALSE(withoutBus.reveal(missing)) << missing;
    }
    waitFor(longEnough);
    EXPECT_THAT(stub.calls(), IsEmpty());
    EXPECT_THAT(opener.starts(), IsEmpty());
}

TEST_F(FileManagerRevealTest, passesTheActivationOnAnewForEachItem) {
    FileManagerStub stub(connect());
    int made = 0;
    const auto newId = [&made] { return "id-" + std::to_string(++made) + "_TIME17"; };
    FileManagerReveal fileManager(connect(), FileManagerReveal::usualTimeLimit, newId);
    EXPECT_TRUE(fileManager.reveal(folder.file("a")));
    EXPECT_TRUE(fileManager.reveal(folder.file("b")));
    waitUntil([&] { return stub.calls().size() == 2; });
    EXPECT_EQ(stub.calls()[0].arguments().value(1).toString(), "id-1_TIME17");
    EXPECT_EQ(stub.calls()[1].arguments().value(1).toString(), "id-2_TIME17");
    FileManagerReveal withoutBus(connectToNothing(), FileManagerReveal::usualTimeLimit, newId);
    EXPECT_TRUE(withoutBus.reveal(folder.file("a")));
    expectStarts({startFor(folder.path(), "id-3_TIME17")});
}

// Opening the folder instead

TEST_F(FileManagerRevealTest, opensTheFolderWhenTheFileManagerFails) {
    FileManagerStub stub(connect(), Answer::error);
    FileManagerReveal fileManager(connect());
    expectFolderOpenedBy(fileManager);
    EXPECT_EQ(stub.calls().size(), 1U);
}

TEST_F(FileManagerRevealTest, opensTheFolderWhereThereIsNoFileManager) {
    FileManagerReveal fileManager(connect());
    expectFolderOpenedBy(fileManager);
}

TEST_F(FileManagerRevealTest, opensTheFolderWhenTheFileManagerDoesNotStart) {
    setBus({.services = {{"org.freedesktop.FileManager1", "/bin/false"}}});
    FileManagerReveal fileManager(connect());
    expectFolderOpenedBy(fileManager);
}

TEST_F(FileManagerRevealTest, opensTheFolderWhenTheFileManagerEndsWithoutAnAnswer) {
    QDBusConnection leaving = connect();
    FileManagerStub stub(leaving, Answer::none);
    FileManagerReveal fileManager(connect());
    EXPECT_TRUE(fileManager.reveal(folder.file("a")));
    waitForCall(stub);
    EXPECT_THAT(opener.starts(), IsEmpty());
    disconnect(leaving);
    expectStarts({startFor(folder.path())});
}

TEST_F(FileManagerRevealTest, opensTheFolderWhenTheBusEndsWithoutAnAnswer) {
    FileManagerStub stub(connect(), Answer::none);
    FileManagerReveal fileManager(connect());
    EXPECT_TRUE(fileManager.reveal(folder.file("a")));
    waitForCall(stub);
    bus().end();
    expectStarts({startFor(folder.path())});
    EXPECT_TRUE(fileManager.reveal(folder.file("a"))) << "nor does it need one later";
    expectStarts({startFor(folder.path()), startFor(folder.path())});
}

TEST_F(FileManagerRevealTest, opensTheFolderThatHoldsTheItemByOneArgumentForEveryName) {
    FileManagerReveal fileManager(connectToNothing());
    const std::string sub = folder.folder("sub");
    std::vector<std::pair<std::string, std::string>> rows{
        {"/", "/"},
        {"//", "/"},
        {"/tmp", "/"},
        {"//tmp//", "/"},
        {sub, folder.path()},
        {sub + "/", folder.path()},
        {sub + "//", folder.path()},
        {folder.path() + "//sub", folder.path()},
        {sub + "/..", sub}};
    for (const std::string& name : awkwardNames) {
        const std::string parent = folder.folder(name);
        rows.emplace_back(folder.file(name + "/item"), parent);
    }
    std::vector<std::string> expected;
    for (const auto& [path, parent] : rows) {
        EXPECT_TRUE(fileManager.reveal(path)) << path;
        expected.push_back(startFor(parent));
        expectStarts(expected);
    }
}

TEST_F(FileManagerRevealTest, isSilentWhereThereIsNoOpenerEither) {
    const EnvironmentVariable path("PATH", folder.folder("empty"));
    FileManagerReveal fileManager(connectToNothing());
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    EXPECT_TRUE(fileManager.reveal(folder.file("a")));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_THAT(opener.starts(), IsEmpty());
}

// No longer waiting for the file manager

TEST_F(FileManagerRevealTest, opensNothingBeforeTheLimit) {
    FileManagerStub stub(connect(), Answer::none);
    FileManagerReveal fileManager(connect(), std::chrono::hours(1));
    EXPECT_TRUE(fileManager.reveal(folder.file("a")));
    waitForCall(stub);
    waitFor(longEnough);
    EXPECT_THAT(opener.starts(), IsEmpty());
}

TEST_F(FileManagerRevealTest, opensNothingAtTheLimitWhenTheFileManagerHasAnswered) {
    FileManagerStub stub(connect());
    FileManagerReveal fileManager(connect(), longEnough);
    EXPECT_TRUE(fileManager.reveal(folder.file("a")));
    waitForCall(stub);
    waitFor(2 * longEnough);
    EXPECT_THAT(opener.starts(), IsEmpty());
}

TEST_F(FileManagerRevealTest, opensTheFolderOnceWhenAFailureComesTooLate) {
    expectOpenedOnceIf([](const QDBusConnection& slow, const QDBusMessage& call) {
        slow.send(call.createErrorReply(QDBusError::Failed, QString()));
    });
}

TEST_F(FileManagerRevealTest, opensTheFolderOnceWhenTheAnswerComesTooLate) {
    expectOpenedOnceIf(
        [](const QDBusConnection& slow, const QDBusMessage& call) { slow.send(call.createReply()); });
}

TEST_F(FileManagerRevealTest, opensTheFolderOnceWhenTheFileManagerEndsTooLate) {
    expectOpenedOnceIf([this](QDBusConnection& slow, const QDBusMessage& /*call*/) { disconnect(slow); });
}

TEST_F(FileManagerRevealTest, opensTheFolderWhenTheFileManagerStartsTooSlowly) {
    setBus({.services = {{"org.freedesktop.FileManager1", "/bin/sleep 20"}}});
    FileManagerReveal fileManager(connect(), shortLimit);
    expectFolderOpenedBy(fileManager);
}

TEST_F(FileManagerRevealTest, waitsForEachItemByItself) {
    FileManagerStub stub(connect(), Answer::none);
    FileManagerReveal fileManager(connect(), shortLimit);
    expectFolderOpenedBy(fileManager);
    const std::string sub = folder.folder("sub");
    EXPECT_TRUE(fileManager.reveal(folder.file("sub/b")));
    expectStarts({startFor(folder.path()), startFor(sub)});
}

TEST_F(FileManagerRevealTest, mayEndWhileTheFileManagerIsAsked) {
    FileManagerStub stub(connect(), Answer::none);
    auto fileManager = std::make_unique<FileManagerReveal>(connect());
    EXPECT_TRUE(fileManager->reveal(folder.file("a")));
    waitForCall(stub);
    fileManager.reset();
    stub.answer = Answer::error;
    FileManagerReveal other(connect());
    const std::string sub = folder.folder("sub");
    EXPECT_TRUE(other.reveal(folder.file("sub/item")));
    expectStarts({startFor(sub)});
}

} // namespace
} // namespace tolvane::platform
