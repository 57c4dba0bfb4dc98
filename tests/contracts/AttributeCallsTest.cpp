// What the calls for extended attributes answer on every system.
#include "tests/contracts/SystemUnderTest.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <span>
#include <string>

namespace tolvane::tests::contracts {

class AttributeCallsContract : public ContractTest {
protected:
    void SetUp() override {
        if (!setExtendedAttribute(file, "user.note", "hello")) {
            GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
        }
    }

    const std::string file = folder.file("a");
    const std::string missing = folder.path("none");
    const platform::ExtendedAttributeCalls& calls = *system.attributeCalls;
};

TEST_F(AttributeCallsContract, emptyBuffersAskForSizesAndOthersGetTheBytes) {
    const auto listSize = calls.listxattr(file.c_str(), {});
    ASSERT_TRUE(listSize);
    std::string list(static_cast<std::size_t>(*listSize), '?');
    EXPECT_EQ(calls.listxattr(file.c_str(), list), listSize);
    EXPECT_TRUE((std::string(1, '\0') + list).contains(std::string("\0user.note\0", 11)));

    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", {}), 5);
    std::array<std::byte, 8> value{};
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", value), 5);
    EXPECT_EQ(std::memcmp(value.data(), "hello\0\0\0", value.size()), 0);
    std::array<std::byte, 1> untouched{std::byte{7}};
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", std::span(untouched).first(0)), 5);
    EXPECT_EQ(untouched[0], std::byte{7});
}

TEST_F(AttributeCallsContract, bytesOfAValueAreAnsweredAsTheyAre) {
    const std::string bytes("\0\xFF\0\x80\n", 5);
    ASSERT_TRUE(setExtendedAttribute(file, "user.bytes", bytes));
    std::array<std::byte, 5> value{};
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.bytes", value), 5);
    EXPECT_EQ(std::memcmp(value.data(), bytes.data(), value.size()), 0);
    ASSERT_TRUE(setExtendedAttribute(file, "user.empty", ""));
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.empty", value), 0);
}

TEST_F(AttributeCallsContract, linksAreFollowed) {
    const std::string link = folder.symlink("link", file);
    EXPECT_EQ(calls.getxattr(link.c_str(), "user.note", {}), 5);
    EXPECT_EQ(calls.listxattr(link.c_str(), {}), calls.listxattr(file.c_str(), {}));
    const std::string dangling = folder.symlink("dangling", "none");
    EXPECT_EQ(calls.listxattr(dangling.c_str(), {}), std::unexpected(ENOENT));
}

TEST_F(AttributeCallsContract, failuresAreTheSystemsErrorNumbers) {
    std::array<std::byte, 4> tooSmall{};
    std::array<char, 2> tooShort{};
    EXPECT_EQ(calls.listxattr(missing.c_str(), {}), std::unexpected(ENOENT));
    EXPECT_EQ(calls.listxattr("", {}), std::unexpected(ENOENT));
    EXPECT_EQ(calls.getxattr(missing.c_str(), "user.note", {}), std::unexpected(ENOENT));
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.note", tooSmall), std::unexpected(ERANGE));
    EXPECT_EQ(calls.listxattr(file.c_str(), tooShort), std::unexpected(ERANGE));
    EXPECT_EQ(calls.getxattr(file.c_str(), "user.other", {}), std::unexpected(system.noSuchAttribute));
}

TEST_F(AttributeCallsContract, aNullPathIsPassedOn) {
    EXPECT_FALSE(calls.listxattr(nullptr, {}));
    EXPECT_FALSE(calls.getxattr(nullptr, "user.note", {}));
}

} // namespace tolvane::tests::contracts
