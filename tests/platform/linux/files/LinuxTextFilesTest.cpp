#include "platform/linux/files/LinuxTextFiles.h"

#include "platform/linux/files/FileDescriptor.h"
#include "platform/linux/session/LinuxStreams.h"
#include "tests/support/PseudoTerminal.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <string>
#include <string_view>
#include <thread>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

using tests::contentsOfFile;
using tests::TemporaryFolder;

Result<void> write(std::string_view text, const std::string& path) {
    return LinuxTextFiles().writeInPlace(text, URL::fileURLWithPath(path));
}

} // namespace

TEST(LinuxTextFiles, writesTheBytesAndNothingElse) {
    const TemporaryFolder folder;
    const auto path = folder.path("new");
    const std::string text("a\0\r\n\u00E4", 6);
    ASSERT_TRUE(write(text, path));
    EXPECT_EQ(contentsOfFile(path), text);
    ASSERT_TRUE(write("", path));
    EXPECT_EQ(contentsOfFile(path), "");
}

TEST(LinuxTextFiles, writesLongTextsWhole) {
    const TemporaryFolder folder;
    std::string text;
    text.resize(10'000'000, 'x');
    text.back() = 'y';
    ASSERT_TRUE(write(text, folder.path("a")));
    EXPECT_EQ(contentsOfFile(folder.path("a")), text);
}

TEST(LinuxTextFiles, writesInPlace) {
    const TemporaryFolder folder;
    const auto path = folder.file("a", "much longer than what comes");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    ASSERT_EQ(link(path.c_str(), folder.path("b").c_str()), 0);
    struct stat before{};
    struct stat after{};
    ASSERT_EQ(stat(path.c_str(), &before), 0);
    ASSERT_TRUE(write("short", folder.symlink("link", "a")));
    ASSERT_EQ(stat(path.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mode, after.st_mode);
    EXPECT_EQ(contentsOfFile(folder.path("b")), "short");
}

TEST(LinuxTextFiles, leavesPermissionsOfNewFilesToTheUsersMask) {
    const TemporaryFolder folder;
    const mode_t mask = umask(027);
    EXPECT_TRUE(write("a", folder.path("a")));
    umask(mask);
    struct stat status{};
    ASSERT_EQ(stat(folder.path("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST(LinuxTextFiles, takesNamesThatAreNotUtf8) {
    const TemporaryFolder folder;
    ASSERT_TRUE(write("a", folder.path("\xFF\xFE")));
    EXPECT_EQ(contentsOfFile(folder.path("\xFF\xFE")), "a");
}

TEST(LinuxTextFiles, refusesAFifoWithoutAReaderInsteadOfWaiting) {
    const TemporaryFolder folder;
    const auto written = write("a", folder.fifo("fifo"));
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().domain, NSPOSIXErrorDomain);
    EXPECT_EQ(written.error().code, ENXIO);
    EXPECT_EQ(written.error().localizedDescription(), "No program is reading from this FIFO");
}

TEST(LinuxTextFiles, leavesTheSystemsWordsToOtherItemsThatCannotBeOpened) {
    const TemporaryFolder folder;
    const auto written = write("a", folder.socket("socket"));
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().code, ENXIO);
    EXPECT_EQ(written.error().localizedDescription(), "No such device or address");
}

TEST(LinuxTextFiles, fillsAFifoThatHasRoomWithoutAReaderAtWork) {
    const TemporaryFolder folder;
    const auto path = folder.fifo("fifo");
    const auto reader = FileDescriptor::owned(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    ASSERT_GE(reader.number(), 0);
    EXPECT_TRUE(write("a report", path));
    std::array<char, 20> piece{};
    EXPECT_EQ(read(reader.number(), piece.data(), piece.size()), 8);
}

TEST(LinuxTextFiles, tellsWhenTheReaderOfAFifoLeaves) {
    makeWriteFailuresErrors();
    const TemporaryFolder folder;
    const auto path = folder.fifo("fifo");
    const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    std::thread leaving([&] {
        // Once something has come, the writer has opened the FIFO.
        std::array<char, 1> piece{};
        while (read(reader, piece.data(), piece.size()) <= 0) {
            std::this_thread::yield();
        }
        close(reader);
    });
    const auto written = write(std::string(1'000'000, 'x'), path);
    leaving.join();
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().code, EPIPE);
}

TEST(LinuxTextFiles, writesToATerminal) {
    tests::PseudoTerminal terminal;
    const std::string name = "/proc/self/fd/" + std::to_string(terminal.descriptor());
    ASSERT_TRUE(write("a report\n", name));
    EXPECT_EQ(terminal.textUntilHangUp(), "a report\n");
}

TEST(LinuxTextFiles, writesToTheNullDevice) {
    EXPECT_TRUE(write("a", "/dev/null"));
}

TEST(LinuxTextFiles, writesIntoAFifoAtTheReadersPace) {
    const TemporaryFolder folder;
    const auto path = folder.fifo("fifo");
    const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    ASSERT_EQ(fcntl(reader, F_SETFL, 0), 0);
    const std::string text(1'000'000, 'x'); // more than a pipe holds
    std::atomic<bool> finished = false;
    bool succeeded = false;
    std::thread writer([&] {
        succeeded = write(text, path).has_value();
        finished = true;
    });
    std::string received;
    std::string piece(50'000, '\0');
    // Nothing to read means the end only when the writer is done: it may not have opened the FIFO yet.
    for (bool wasFinished = false, atEnd = false; !(wasFinished && atEnd);) {
        wasFinished = finished;
        const auto length = read(reader, piece.data(), piece.size());
        atEnd = length <= 0;
        received.append(piece, 0, atEnd ? 0 : static_cast<std::size_t>(length));
    }
    writer.join();
    close(reader);
    EXPECT_TRUE(succeeded);
    EXPECT_EQ(received, text);
}

TEST(LinuxTextFiles, tellsWhenTheDiskIsFull) {
    if (access("/dev/full", W_OK) != 0) {
        GTEST_SKIP() << "no /dev/full here";
    }
    const auto written = write("a", "/dev/full");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().domain, NSPOSIXErrorDomain);
    EXPECT_EQ(written.error().code, ENOSPC);
    EXPECT_EQ(written.error().localizedDescription(), "No space left on device");
}

TEST(LinuxTextFiles, failsWhereNothingCanBeMade) {
    const TemporaryFolder folder;
    EXPECT_EQ(write("a", folder.path()).error().code, EISDIR);
    EXPECT_EQ(write("a", folder.path("none") + "/a").error().code, ENOENT);
    EXPECT_EQ(write("a", folder.file("file") + "/a").error().code, ENOTDIR);
    EXPECT_EQ(write("a", folder.path(std::string(256, 'n'))).error().code, ENAMETOOLONG);
}

TEST(LinuxTextFiles, failsInAReadOnlyFolder) {
    const TemporaryFolder folder;
    const auto readOnly = folder.folder("readOnly");
    ASSERT_EQ(chmod(readOnly.c_str(), 0555), 0);
    const auto code = [&] {
        const auto written = write("a", readOnly + "/a");
        return written ? 0 : static_cast<int>(written.error().code);
    };
    EXPECT_EQ(tests::answerOfUnprivilegedChild(code), EACCES);
}

TEST(LinuxTextFiles, failsForUrlsThatNameNoFile) {
    for (const auto* text : {"https://example.org/a", "file://localhost", "file:///tmp/a%00b"}) {
        const auto written = LinuxTextFiles().writeInPlace("a", URL::fromText(text).value());
        ASSERT_FALSE(written) << text;
        EXPECT_EQ(written.error().code, EINVAL) << text;
    }
}

} // namespace tolvane::platform
