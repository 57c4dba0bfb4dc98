#include "platform/posix/FileDescriptor.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <utility>
#include <fcntl.h>
#include <unistd.h>

namespace tolvane::platform {
namespace {

bool isOpen(int number) {
    return fcntl(number, F_GETFD) >= 0;
}

int openNull() {
    return open("/dev/null", O_WRONLY | O_CLOEXEC);
}

TEST(FileDescriptor, closesWhatItOwns) {
    const int number = openNull();
    {
        const auto descriptor = FileDescriptor::owned(number);
        EXPECT_EQ(descriptor.number(), number);
        EXPECT_TRUE(isOpen(number));
    }
    EXPECT_FALSE(isOpen(number));
}

TEST(FileDescriptor, leavesOpenWhatItBorrowedOrReleased) {
    const int number = openNull();
    {
        auto descriptor = FileDescriptor::borrowed(number);
        EXPECT_TRUE(descriptor.close());
    }
    EXPECT_TRUE(isOpen(number));
    EXPECT_EQ(FileDescriptor::owned(number).release(), number);
    EXPECT_TRUE(isOpen(number));
    ::close(number);
}

TEST(FileDescriptor, handsItsFileOnWhenMoved) {
    const int first = openNull();
    const int second = openNull();
    {
        auto descriptor = FileDescriptor::owned(first);
        const auto other = std::move(descriptor);
        EXPECT_EQ(other.number(), first);
        descriptor = FileDescriptor::owned(second);
        EXPECT_EQ(descriptor.number(), second);
        EXPECT_TRUE(isOpen(first));
    }
    EXPECT_FALSE(isOpen(first));
    EXPECT_FALSE(isOpen(second));
}

TEST(FileDescriptor, closesOnceAndReportsHowThatWent) {
    const int number = openNull();
    auto descriptor = FileDescriptor::owned(number);
    EXPECT_TRUE(descriptor.close());
    EXPECT_FALSE(isOpen(number));
    EXPECT_TRUE(descriptor.close());

    auto neverOpen = FileDescriptor::owned(number);
    const auto closed = neverOpen.close();
    ASSERT_FALSE(closed);
    EXPECT_EQ(closed.error().code, EBADF);
}

TEST(FileDescriptor, opensWithTheFlagsGivenAndClosedForOtherPrograms) {
    const tests::TemporaryFolder folder;
    const std::string path = folder.path("new");
    EXPECT_EQ(openFile(path, O_WRONLY).error().code, ENOENT);
    const auto made = openFile(path, O_WRONLY | O_CREAT, 0600);
    ASSERT_TRUE(made);
    EXPECT_TRUE(writeAll(*made, "text"));
    EXPECT_EQ(tests::contentsOfFile(path), "text");
    EXPECT_EQ(fcntl(made->number(), F_GETFD), FD_CLOEXEC);
    EXPECT_EQ(openFile(path + std::string(1, '\0'), O_RDONLY).error().code, EINVAL);
}

TEST(FileDescriptor, readsOnWhereTheAccessDateMayNotBeKept) {
    const tests::TemporaryFolder folder;
    const std::string path = folder.file("a", "text");
    const auto own = openKeepingAccessDate(path, O_NONBLOCK);
    ASSERT_TRUE(own);
    EXPECT_EQ(fcntl(own->number(), F_GETFL) & (O_NOATIME | O_NONBLOCK | O_ACCMODE), O_NOATIME | O_NONBLOCK);
    // The tests may run as any user, and only a file's owner and root may keep its date.
    const int flags = tests::answerOfUnprivilegedChild([] {
        const auto strange = openKeepingAccessDate("/etc/passwd", 0);
        return strange ? static_cast<int>((fcntl(strange->number(), F_GETFL) & O_NOATIME) != 0) : 2;
    });
    EXPECT_EQ(flags, 0);
}

TEST(FileDescriptor, failsToWriteWhatIsNotOpenForWriting) {
    const auto descriptor = FileDescriptor::owned(open("/dev/null", O_RDONLY | O_CLOEXEC));
    EXPECT_EQ(writeAll(descriptor, "a").error().code, EBADF);
    EXPECT_TRUE(writeAll(descriptor, ""));
}

} // namespace
} // namespace tolvane::platform
