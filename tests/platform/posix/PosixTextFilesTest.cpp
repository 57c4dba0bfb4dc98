#include "platform/posix/PosixTextFiles.h"

#include "platform/posix/FileDescriptorStreams.h"
#include "tests/platform/linux/FolderTest.h"
#include "tests/support/Process.h"
#include "tests/support/PseudoTerminal.h"

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
using Failure = std::pair<std::int64_t, std::string>;

Result<void> write(std::string_view text, const std::string& path) {
    return PosixTextFiles().writeInPlace(text, URL::fileURLWithPath(path));
}

Failure failureToWrite(const std::string& path) {
    const auto written = write("a", path);
    if (written) {
        ADD_FAILURE() << path << " was written";
        return {};
    }
    EXPECT_EQ(written.error().domain, NSPOSIXErrorDomain);
    return {written.error().code, written.error().localizedDescription()};
}

using PosixTextFilesTest = tests::FolderTest;

TEST_F(PosixTextFilesTest, writesTheBytesAndNothingElseToAnyName) {
    const auto path = folder.path("\xFF\xFE");
    for (const std::string& text :
         {std::string("a\0\r\n\u00E4", 6), std::string(10'000'000, 'x') + 'y', std::string()}) {
        ASSERT_TRUE(write(text, path)) << text.size();
        EXPECT_TRUE(contentsOfFile(path) == text) << text.size();
    }
}

TEST_F(PosixTextFilesTest, writesInPlace) {
    const auto path = folder.file("a", "much longer than what comes");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    ASSERT_EQ(link(path.c_str(), folder.path("b").c_str()), 0);
    const auto before = tests::statusOf(path);
    ASSERT_TRUE(write("short", folder.symlink("link", "a")));
    EXPECT_EQ(tests::statusOf(path).st_ino, before.st_ino);
    EXPECT_EQ(tests::statusOf(path).st_mode, before.st_mode);
    EXPECT_EQ(contentsOfFile(folder.path("b")), "short");
}

TEST_F(PosixTextFilesTest, leavesPermissionsOfNewFilesToTheUsersMask) {
    const mode_t mask = umask(027);
    EXPECT_TRUE(write("a", folder.path("a")));
    umask(mask);
    EXPECT_EQ(tests::statusOf(folder.path("a")).st_mode & 07777U, 0640U);
}

TEST_F(PosixTextFilesTest, refusesAFifoWithoutAReaderAndASocketInsteadOfWaiting) {
    EXPECT_EQ(failureToWrite(folder.fifo("fifo")), Failure(ENXIO, "No program is reading from this FIFO"));
    EXPECT_EQ(failureToWrite(folder.socket("socket")), Failure(ENXIO, "No such device or address"));
}

TEST_F(PosixTextFilesTest, fillsAFifoThatHasRoomWithoutAReaderAtWork) {
    const auto path = folder.fifo("fifo");
    const auto reader = tests::openedFile(path, O_RDONLY | O_NONBLOCK);
    EXPECT_TRUE(write("a report", path));
    std::array<char, 20> piece{};
    EXPECT_EQ(read(reader.number(), piece.data(), piece.size()), 8);
}

TEST_F(PosixTextFilesTest, reportsWhenTheReaderOfAFifoLeaves) {
    makeWriteFailuresErrors();
    const auto path = folder.fifo("fifo");
    auto reader = tests::openedFile(path, O_RDONLY | O_NONBLOCK);
    std::thread leaving([&] {
        // Once something has come, the writer has opened the FIFO.
        std::array<char, 1> piece{};
        while (read(reader.number(), piece.data(), piece.size()) <= 0) {
            std::this_thread::yield();
        }
        EXPECT_TRUE(reader.close());
    });
    const auto written = write(std::string(1'000'000, 'x'), path);
    leaving.join();
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().code, EPIPE);
}

TEST_F(PosixTextFilesTest, writesToATerminalAndTheNullDevice) {
    tests::PseudoTerminal terminal;
    const std::string name = "/proc/self/fd/" + std::to_string(terminal.descriptor());
    ASSERT_TRUE(write("a report\n", name));
    EXPECT_EQ(terminal.textUntilHangUp(), "a report\n");
    EXPECT_TRUE(write("a", "/dev/null"));
}

TEST_F(PosixTextFilesTest, writesIntoAFifoAtTheReadersPace) {
    const auto path = folder.fifo("fifo");
    const auto reader = tests::openedFile(path, O_RDONLY | O_NONBLOCK);
    ASSERT_EQ(fcntl(reader.number(), F_SETFL, 0), 0);
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
        const auto length = read(reader.number(), piece.data(), piece.size());
        atEnd = length <= 0;
        received.append(piece, 0, atEnd ? 0 : static_cast<std::size_t>(length));
    }
    writer.join();
    EXPECT_TRUE(succeeded);
    EXPECT_EQ(received, text);
}

TEST_F(PosixTextFilesTest, reportsWhenTheDiskIsFull) {
    if (access("/dev/full", W_OK) != 0) {
        GTEST_SKIP() << "no /dev/full here";
    }
    EXPECT_EQ(failureToWrite("/dev/full"), Failure(ENOSPC, "No space left on device"));
}

TEST_F(PosixTextFilesTest, failsForUrlsThatNameNoFile) {
    for (const auto* text : {"https://example.org/a", "file://localhost", "file:///tmp/a%00b"}) {
        const auto written = PosixTextFiles().writeInPlace("a", URL::fromText(text).value());
        ASSERT_FALSE(written) << text;
        EXPECT_EQ(written.error().code, EINVAL) << text;
    }
}

} // namespace
} // namespace tolvane::platform
