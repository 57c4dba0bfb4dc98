#include "platform/linux/files/ForkAttributes.h"

#include "tests/platform/linux/FolderTest.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvane::platform {
namespace {

using ForkAttributesTest = tests::AttributeTest;

TEST_F(ForkAttributesTest, prefersTheFirstKnownNameInWhateverOrderTheyAreListed) {
    const auto path = folder.file("a");
    setAttribute(path, "user.org.netatalk.ResourceFork", "123");
    EXPECT_STREQ(forkAttributesOfItem(path).resourceFork, "user.org.netatalk.ResourceFork");
    setAttribute(path, "user.com.apple.ResourceFork", "1");
    setAttribute(path, "user.com.apple.FinderInfo", "1");
    EXPECT_STREQ(forkAttributesOfItem(path).resourceFork, "user.com.apple.ResourceFork");
    EXPECT_STREQ(forkAttributesOfItem(path).finderInfo, "user.com.apple.FinderInfo");
}

TEST_F(ForkAttributesTest, findsNoneWithoutAttributesAndTakesNoOtherNameForAKnownOne) {
    const auto path = folder.file("a");
    for (const auto* name :
         {"user.com.apple.ResourceForks", "user.user.com.apple.ResourceFork", "user.com.apple.FinderInf",
          "user.com.apple.resourcefork"}) {
        setAttribute(path, name, "1");
    }
    for (const auto& item : {path, folder.file("b"), folder.fifo("fifo"), folder.path("none")}) {
        EXPECT_EQ(forkAttributesOfItem(item).resourceFork, nullptr) << item;
        EXPECT_EQ(forkAttributesOfItem(item).finderInfo, nullptr) << item;
    }
}

TEST_F(ForkAttributesTest, findsAKnownNameInALongList) {
    const tests::TemporaryFolder roomy("/dev/shm");
    const auto path = roomy.file("a");
    for (int number = 0; number < 100; ++number) {
        if (!tests::setExtendedAttribute(
                path, "user." + std::string(240, 'n') + std::to_string(number), "")) {
            GTEST_SKIP() << "no such long lists here: " << std::strerror(errno);
        }
    }
    setAttribute(path, "user.com.apple.ResourceFork", "1");
    EXPECT_STREQ(forkAttributesOfItem(path).resourceFork, "user.com.apple.ResourceFork");
}

TEST_F(ForkAttributesTest, looksAtLinksThemselvesAndHasNoSizeOfWhatIsNotThere) {
    constexpr const char* name = "user.com.apple.ResourceFork";
    const auto path = folder.file("a");
    const auto link = folder.symlink("link", "a");
    setAttribute(path, name, "123");
    EXPECT_EQ(forkAttributesOfItem(link).resourceFork, nullptr);
    EXPECT_EQ(attributeSize(path, name), 3);
    for (const auto& other : {link, folder.file("b"), folder.path("none")}) {
        EXPECT_EQ(attributeSize(other, name), std::nullopt) << other;
    }
}

TEST_F(ForkAttributesTest, readsFinderInformationOfTheRightSizeOnly) {
    const auto path = folder.file("a");
    const char* name = "user.com.apple.FinderInfo";
    setAttribute(path, name, "TEXT" + std::string(28, '\x7F'));
    const auto info = readFinderInfo(path, name);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->front(), std::byte{'T'});
    EXPECT_EQ(info->back(), std::byte{0x7F});
    for (const std::size_t wrongSize : {0U, 31U, 33U}) {
        setAttribute(path, name, std::string(wrongSize, 'x'));
        EXPECT_FALSE(readFinderInfo(path, name)) << wrongSize;
    }
}

} // namespace
} // namespace tolvane::platform
