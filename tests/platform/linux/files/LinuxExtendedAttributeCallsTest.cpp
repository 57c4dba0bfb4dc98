#include "platform/linux/files/LinuxExtendedAttributeCalls.h"

#include "tests/platform/linux/FolderTest.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <sys/xattr.h>

namespace tolvane::platform {
namespace {
using namespace std::string_literals;

class LinuxExtendedAttributeCallsTest : public tests::AttributeTest {
protected:
    void SetUp() override {
        AttributeTest::SetUp();
        setAttribute(folder.file("a"), "user.note", "hello");
    }

    const std::string file = folder.path("a");
    const LinuxExtendedAttributeCalls calls;
};

TEST_F(LinuxExtendedAttributeCallsTest, answersSizesForEmptyBuffersAndBytesForOthers) {
    const auto listSize = calls.listxattr(file.c_str(), {});
    ASSERT_TRUE(listSize);
    std::string list(static_cast<std::size_t>(*listSize), '?');
    EXPECT_EQ(calls.listxattr(file.c_str(), list), listSize);
    EXPECT_TRUE(("\0"s + list).contains("\0user.note\0"s));

    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", {}), 5);
    std::array<std::byte, 8> value{};
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", value), 5);
    EXPECT_EQ(std::memcmp(value.data(), "hello\0\0\0", value.size()), 0);
    std::array<std::byte, 1> untouched{std::byte{7}};
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", std::span(untouched).first(0)), 5);
    EXPECT_EQ(untouched[0], std::byte{7});
}

TEST_F(LinuxExtendedAttributeCallsTest, followsLinks) {
    const auto link = folder.symlink("link", file);
    EXPECT_EQ(calls.getxattr(link.c_str(), "user.note", {}), 5);
}

TEST_F(LinuxExtendedAttributeCallsTest, doesNotFollowThemWhereTheLinkItselfIsAskedFor) {
    const auto link = folder.symlink("link", "nowhere");
    const LinuxLinkAttributeCalls own;
    EXPECT_EQ(own.listxattr(link.c_str(), {}).value_or(-1), 0);
    EXPECT_EQ(own.getxattr(link.c_str(), "user.note", {}), std::unexpected(ENODATA));
    EXPECT_EQ(own.getxattr(file.c_str(), "user.note", {}), 5);
    if (lsetxattr(link.c_str(), "trusted.note", "abc", 3, 0) != 0) {
        GTEST_SKIP() << "only root gives links attributes";
    }
    EXPECT_EQ(own.getxattr(link.c_str(), "trusted.note", {}), 3);
    EXPECT_EQ(calls.getxattr(link.c_str(), "trusted.note", {}), std::unexpected(ENOENT));
}

TEST_F(LinuxExtendedAttributeCallsTest, answersTheErrorNumberOfTheCall) {
    EXPECT_EQ(calls.listxattr(folder.path("none").c_str(), {}), std::unexpected(ENOENT));
    EXPECT_EQ(calls.getxattr(folder.path("none").c_str(), "user.note", {}), std::unexpected(ENOENT));
    EXPECT_EQ(calls.listxattr("", {}), std::unexpected(ENOENT));

    std::array<std::byte, 4> tooSmall{};
    std::array<char, 2> tooShort{};
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", tooSmall), std::unexpected(ERANGE));
    EXPECT_EQ(calls.listxattr(file.c_str(), tooShort), std::unexpected(ERANGE));
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.other", {}), std::unexpected(ENODATA));
}

TEST_F(LinuxExtendedAttributeCallsTest, passesANullPathOn) {
    EXPECT_EQ(calls.listxattr(nullptr, {}), std::unexpected(EFAULT));
    EXPECT_EQ(calls.getxattr(nullptr, "user.note", {}), std::unexpected(EFAULT));
}

} // namespace
} // namespace tolvane::platform
