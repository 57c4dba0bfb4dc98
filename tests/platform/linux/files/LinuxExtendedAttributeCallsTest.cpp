#include "platform/linux/files/LinuxExtendedAttributeCalls.h"

#include "tests/platform/linux/FolderTest.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/xattr.h>

namespace tolvane::platform {
namespace {

using LinuxExtendedAttributeCallsTest = tests::AttributeTest;

TEST_F(LinuxExtendedAttributeCallsTest, doesNotFollowThemWhereTheLinkItselfIsAskedFor) {
    const auto file = folder.file("a");
    setAttribute(file, "user.note", "hello");
    const auto link = folder.symlink("link", "nowhere");
    const LinuxLinkAttributeCalls own;
    EXPECT_EQ(own.listxattr(link.c_str(), {}).value_or(-1), 0);
    EXPECT_EQ(own.getxattr(link.c_str(), "user.note", {}), std::unexpected(ENODATA));
    EXPECT_EQ(own.getxattr(file.c_str(), "user.note", {}), 5);
    if (lsetxattr(link.c_str(), "trusted.note", "abc", 3, 0) != 0) {
        GTEST_SKIP() << "only root gives links attributes";
    }
    EXPECT_EQ(own.getxattr(link.c_str(), "trusted.note", {}), 3);
    EXPECT_EQ(
        LinuxExtendedAttributeCalls().getxattr(link.c_str(), "trusted.note", {}), std::unexpected(ENOENT));
}

TEST_F(LinuxExtendedAttributeCallsTest, passesANullPathOn) {
    const LinuxExtendedAttributeCalls calls;
    EXPECT_EQ(calls.listxattr(nullptr, {}), std::unexpected(EFAULT));
    EXPECT_EQ(calls.getxattr(nullptr, "user.note", {}), std::unexpected(EFAULT));
}

} // namespace
} // namespace tolvane::platform
