#include "platform/linux/files/LinuxExtendedAttributeCalls.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string>

namespace tolvane::platform {

namespace {

using tests::setExtendedAttribute;
using tests::TemporaryFolder;

bool listHolds(const std::string& list, const std::string& name) {
    return ('\0' + list).contains('\0' + name + '\0');
}

} // namespace

TEST(LinuxExtendedAttributeCalls, answersSizesForEmptyBuffersAndBytesForOthers) {
    const TemporaryFolder folder;
    const auto file = folder.file("a");
    if (!setExtendedAttribute(file, "user.note", "hello")) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    const LinuxExtendedAttributeCalls calls;

    const auto listSize = calls.listxattr(file.c_str(), {});
    ASSERT_TRUE(listSize);
    std::string list(static_cast<std::size_t>(*listSize), '?');
    EXPECT_EQ(calls.listxattr(file.c_str(), list), listSize);
    EXPECT_TRUE(listHolds(list, "user.note"));

    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", {}), 5);
    std::array<std::byte, 8> value{};
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", value), 5);
    EXPECT_EQ(std::memcmp(value.data(), "hello\0\0\0", value.size()), 0);
}

TEST(LinuxExtendedAttributeCalls, takesAnEmptySpanForASizeQueryWhereverItPoints) {
    const TemporaryFolder folder;
    const auto file = folder.file("a");
    if (!setExtendedAttribute(file, "user.note", "hello")) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    std::array<std::byte, 1> untouched{std::byte{7}};
    const LinuxExtendedAttributeCalls calls;
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", std::span(untouched).first(0)), 5);
    EXPECT_EQ(untouched[0], std::byte{7});
}

TEST(LinuxExtendedAttributeCalls, followsLinks) {
    const TemporaryFolder folder;
    const auto link = folder.symlink("link", folder.file("a"));
    if (!setExtendedAttribute(folder.path("a"), "user.note", "hello")) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    EXPECT_EQ(LinuxExtendedAttributeCalls().getxattr(link.c_str(), "user.note", {}), 5);
}

TEST(LinuxExtendedAttributeCalls, answersTheErrorNumberOfTheCall) {
    const TemporaryFolder folder;
    const auto file = folder.file("a");
    const LinuxExtendedAttributeCalls calls;
    EXPECT_EQ(calls.listxattr(folder.path("none").c_str(), {}), std::unexpected(ENOENT));
    EXPECT_EQ(calls.getxattr(folder.path("none").c_str(), "user.note", {}), std::unexpected(ENOENT));
    EXPECT_EQ(calls.listxattr("", {}), std::unexpected(ENOENT));

    if (!setExtendedAttribute(file, "user.note", "hello")) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    std::array<std::byte, 4> tooSmall{};
    std::array<char, 2> tooShort{};
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", tooSmall), std::unexpected(ERANGE));
    EXPECT_EQ(calls.listxattr(file.c_str(), tooShort), std::unexpected(ERANGE));
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.other", {}), std::unexpected(ENODATA));
}

TEST(LinuxExtendedAttributeCalls, passesANullPathOn) {
    const LinuxExtendedAttributeCalls calls;
    EXPECT_EQ(calls.listxattr(nullptr, {}), std::unexpected(EFAULT));
    EXPECT_EQ(calls.getxattr(nullptr, "user.note", {}), std::unexpected(EFAULT));
}

} // namespace tolvane::platform
