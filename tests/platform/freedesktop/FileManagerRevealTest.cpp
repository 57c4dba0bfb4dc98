#include "platform/freedesktop/FileManagerReveal.h"

#include "platform/values/URL.h"
#include "tests/platform/freedesktop/BusTest.h"
#include "tests/platform/freedesktop/FakeOpener.h"
#include "tests/platform/freedesktop/FileManagerStub.h"
#include "tests/support/TemporaryFolder.h"

#include <QDBusError>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using tests::BusTest;
using tests::FakeOpener;
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

class FileManagerRevealTest : public BusTest {
protected:
    const TemporaryFolder& folder() const { return folder_; }
    const FakeOpener& opener() const { return *opener_; }

    void SetUp() override {
        BusTest::SetUp();
        if (!IsSkipped()) {
            opener_.emplace();
        }
    }

    /// Waits for a start of the opener, and checks that it is the only one, for this folder.
    void expectOpened(const std::string& path) {
        waitUntil([this] { return opener().starts().size() >= 2; });
        EXPECT_THAT(opener().starts(), ElementsAre("1", uriOf(path)));
    }

    /// Reveals a file, and expects its folder to be opened.
    void expectFolderOpenedBy(FileManagerReveal& fileManager) {
        EXPECT_TRUE(fileManager.reveal(folder().file("a")));
        expectOpened(folder().path());
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
        EXPECT_THAT(opener().starts(), ElementsAre("1", uriOf(folder().path())));
    }

private:
    TemporaryFolder folder_;
    std::optional<FakeOpener> opener_;
};

// Asking the file manager

TEST_F(FileManagerRevealTest, asksTheFileManagerToShowTheItem) {
    FileManagerStub stub(connect());
    FileManagerReveal fileManager(connect());
    const std::string path = folder().file("a");
    EXPECT_TRUE(fileManager.reveal(path));
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
    EXPECT_THAT(opener().starts(), IsEmpty());
}

TEST_F(FileManagerRevealTest, namesTheItemByItsBytes) {
    FileManagerStub stub(connect());
    FileManagerReveal fileManager(connect());
    for (const std::string& name : awkwardNames) {
        const std::string path = folder().file(name);
        const std::size_t before = stub.calls().size();
        EXPECT_TRUE(fileManager.reveal(path)) << name;
        waitUntil([&] { return stub.calls().size() > before; });
        const auto uris = stub.calls().back().arguments().value(0).toStringList();
        ASSERT_EQ(uris.size(), 1) << name;
        const auto url = URL::fromText(uris.front().toStdString());
        ASSERT_TRUE(url) << name;
        EXPECT_EQ(url->path(), path);
        EXPECT_TRUE(uris.front().startsWith(QLatin1String("file:///"))) << name;
    }
}

TEST_F(FileManagerRevealTest, doesNotWaitForTheAnswer) {
    // The stub is in this thread, so it can answer only once the call has returned.
    FileManagerStub stub(connect());
    FileManagerReveal fileManager(connect());
    EXPECT_TRUE(fileManager.reveal(folder().file("a")));
    EXPECT_THAT(stub.calls(), IsEmpty());
    waitForCall(stub);
}

TEST_F(FileManagerRevealTest, revealsItemsOfEveryKindWithoutOpeningThem) {
    FileManagerStub stub(connect());
    FileManagerReveal fileManager(connect());
    // Opening a FIFO without a writer would never return.
    const std::vector<std::string> paths{
        folder().fifo("fifo"),
        folder().folder("folder"),
        folder().folder("other") + "/",
        folder().symlink("dangling", "/nonexistent"),
        folder().symlink("loop", "loop"),
        folder().socket("socket"),
        "/"};
    for (const std::string& path : paths) {
        EXPECT_TRUE(fileManager.reveal(path)) << path;
    }
    waitUntil([&] { return stub.calls().size() == paths.size(); });
    for (std::size_t i = 0; i < paths.size(); ++i) {
        EXPECT_EQ(
            stub.calls()[i].arguments().value(0).toStringList(),
            QStringList(QString::fromStdString(uriOf(paths[i]))));
    }
}

TEST_F(FileManagerRevealTest, doesNothingForMissingItems) {
    FileManagerStub stub(connect());
    FileManagerReveal fileManager(connect());
    FileManagerReveal withoutBus(connectToNothing());
    const std::string path = folder().file("a");
    for (const std::string& missing :
         {""s, "a"s, "."s, "relative/a"s, "~"s, path + "b", path + "/", path + "/b", path + "\0"s,
          path + "\0b"s, "/" + std::string(300, 'x'), "/" + std::string(10'000, 'x')}) {
        EXPECT_FALSE(fileManager.reveal(missing)) << missing;
        EXPECT_FALSE(withoutBus.reveal(missing)) << missing;
    }
    waitFor(longEnough);
    EXPECT_THAT(stub.calls(), IsEmpty());
    EXPECT_THAT(opener().starts(), IsEmpty());
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
    EXPECT_TRUE(fileManager.reveal(folder().file("a")));
    waitForCall(stub);
    EXPECT_THAT(opener().starts(), IsEmpty());
    disconnect(leaving);
    expectOpened(folder().path());
}

TEST_F(FileManagerRevealTest, opensTheFolderWhenTheBusEndsWithoutAnAnswer) {
    FileManagerStub stub(connect(), Answer::none);
    FileManagerReveal fileManager(connect());
    EXPECT_TRUE(fileManager.reveal(folder().file("a")));
    waitForCall(stub);
    bus().end();
    expectOpened(folder().path());
    EXPECT_TRUE(fileManager.reveal(folder().file("a"))) << "nor does it need one later";
    waitUntil([this] { return opener().starts().size() == 4; });
}

TEST_F(FileManagerRevealTest, opensTheFolderWhereThereIsNoBus) {
    FileManagerReveal fileManager(connectToNothing());
    expectFolderOpenedBy(fileManager);
}

TEST_F(FileManagerRevealTest, givesTheOpenerOneArgumentForEveryName) {
    FileManagerReveal fileManager(connectToNothing());
    std::vector<std::string> expected;
    for (const std::string& name : awkwardNames) {
        const std::string parent = folder().folder(name);
        EXPECT_TRUE(fileManager.reveal(folder().file(name + "/item")));
        expected.insert(expected.end(), {"1", uriOf(parent)});
        waitUntil([&] { return opener().starts().size() >= expected.size(); });
        EXPECT_EQ(opener().starts(), expected);
    }
}

TEST_F(FileManagerRevealTest, opensTheFolderThatHoldsTheItem) {
    FileManagerReveal fileManager(connectToNothing());
    std::vector<std::string> expected;
    const std::string sub = folder().folder("sub");
    for (const auto& [path, parent] : std::vector<std::pair<std::string, std::string>>{
             {"/", "/"},
             {"//", "/"},
             {"/tmp", "/"},
             {"//tmp//", "/"},
             {sub, folder().path()},
             {sub + "/", folder().path()},
             {sub + "//", folder().path()},
             {folder().path() + "//sub", folder().path()},
             {sub + "/..", sub}}) {
        EXPECT_TRUE(fileManager.reveal(path)) << path;
        expected.insert(expected.end(), {"1", uriOf(parent)});
        waitUntil([&] { return opener().starts().size() >= expected.size(); });
        EXPECT_EQ(opener().starts(), expected) << path;
    }
}

TEST_F(FileManagerRevealTest, isSilentWhereThereIsNoOpenerEither) {
    const tests::EnvironmentVariable path("PATH", folder().folder("empty"));
    FileManagerReveal fileManager(connectToNothing());
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    EXPECT_TRUE(fileManager.reveal(folder().file("a")));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_THAT(opener().starts(), IsEmpty());
}

// No longer waiting for the file manager

TEST_F(FileManagerRevealTest, opensTheFolderWhenTheFileManagerDoesNotAnswerInTime) {
    FileManagerStub stub(connect(), Answer::none);
    FileManagerReveal fileManager(connect(), shortLimit);
    expectFolderOpenedBy(fileManager);
    EXPECT_EQ(stub.calls().size(), 1U);
    waitFor(longEnough);
    EXPECT_THAT(opener().starts(), ElementsAre("1", uriOf(folder().path()))) << "and only once";
}

TEST_F(FileManagerRevealTest, opensNothingBeforeTheLimit) {
    FileManagerStub stub(connect(), Answer::none);
    FileManagerReveal fileManager(connect(), std::chrono::hours(1));
    EXPECT_TRUE(fileManager.reveal(folder().file("a")));
    waitForCall(stub);
    waitFor(longEnough);
    EXPECT_THAT(opener().starts(), IsEmpty());
}

TEST_F(FileManagerRevealTest, opensNothingAtTheLimitWhenTheFileManagerHasAnswered) {
    FileManagerStub stub(connect());
    FileManagerReveal fileManager(connect(), longEnough);
    EXPECT_TRUE(fileManager.reveal(folder().file("a")));
    waitForCall(stub);
    waitFor(2 * longEnough);
    EXPECT_THAT(opener().starts(), IsEmpty());
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
    const std::string sub = folder().folder("sub");
    EXPECT_TRUE(fileManager.reveal(folder().file("a")));
    waitUntil([this] { return opener().starts().size() == 2; });
    EXPECT_TRUE(fileManager.reveal(folder().file("sub/b")));
    waitUntil([this] { return opener().starts().size() == 4; });
    EXPECT_THAT(opener().starts(), ElementsAre("1", uriOf(folder().path()), "1", uriOf(sub)));
}

TEST_F(FileManagerRevealTest, mayEndWhileTheFileManagerIsAsked) {
    FileManagerStub stub(connect(), Answer::none);
    auto fileManager = std::make_unique<FileManagerReveal>(connect());
    EXPECT_TRUE(fileManager->reveal(folder().file("a")));
    waitForCall(stub);
    fileManager.reset();
    stub.answer = Answer::error;
    FileManagerReveal other(connect());
    const std::string sub = folder().folder("sub");
    EXPECT_TRUE(other.reveal(folder().file("sub/item")));
    expectOpened(sub);
}

} // namespace
} // namespace tolvane::platform
