#include "platform/linux/FileDescriptor.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
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

} // namespace

TEST(FileDescriptor, closesWhatItOwns) {
    const int number = openNull();
    {
        const auto descriptor = FileDescriptor::owned(number);
        EXPECT_EQ(descriptor.number(), number);
        EXPECT_TRUE(isOpen(number));
    }
    EXPECT_FALSE(isOpen(number));
}

TEST(FileDescriptor, leavesOpenWhatItBorrowed) {
    const int number = openNull();
    {
        auto descriptor = FileDescriptor::borrowed(number);
        EXPECT_TRUE(descriptor.close());
    }
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

TEST(FileDescriptor, closesOnceAndTellsHowThatWent) {
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

TEST(FileDescriptor, failsToWriteWhatIsNotOpenForWriting) {
    const auto descriptor = FileDescriptor::owned(open("/dev/null", O_RDONLY | O_CLOEXEC));
    EXPECT_EQ(writeAll(descriptor, "a").error().code, EBADF);
    EXPECT_TRUE(writeAll(descriptor, ""));
}

} // namespace tolvane::platform
