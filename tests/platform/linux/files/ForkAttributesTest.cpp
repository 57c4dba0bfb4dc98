#include "platform/linux/files/ForkAttributes.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>

namespace tolvane::platform {

namespace {

using tests::setExtendedAttribute;
using tests::TemporaryFolder;

} // namespace

TEST(ForkAttributes, findsNoneOnAnItemWithoutAttributes) {
    const TemporaryFolder folder;
    for (const auto& path : {folder.file("a"), folder.fifo("fifo"), folder.path("none")}) {
        const auto attributes = forkAttributesOfItem(path);
        EXPECT_EQ(attributes.resourceFork, nullptr) << path;
        EXPECT_EQ(attributes.finderInfo, nullptr) << path;
    }
}

TEST(ForkAttributes, prefersTheFirstKnownNameInWhateverOrderTheyAreListed) {
    const TemporaryFolder folder;
    const auto path = folder.file("a");
    if (!setExtendedAttribute(path, "user.org.netatalk.ResourceFork", "123")) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    EXPECT_STREQ(forkAttributesOfItem(path).resourceFork, "user.org.netatalk.ResourceFork");
    ASSERT_TRUE(setExtendedAttribute(path, "user.com.apple.ResourceFork", "1"));
    ASSERT_TRUE(setExtendedAttribute(path, "user.com.apple.FinderInfo", "1"));
    EXPECT_STREQ(forkAttributesOfItem(path).resourceFork, "user.com.apple.ResourceFork");
    EXPECT_STREQ(forkAttributesOfItem(path).finderInfo, "user.com.apple.FinderInfo");
}

TEST(ForkAttributes, takesNoOtherNameForAKnownOne) {
    const TemporaryFolder folder;
    const auto path = folder.file("a");
    if (!setExtendedAttribute(path, "user.com.apple.ResourceForks", "1")
        || !setExtendedAttribute(path, "user.user.com.apple.ResourceFork", "1")
        || !setExtendedAttribute(path, "user.com.apple.FinderInf", "1")
        || !setExtendedAttribute(path, "user.com.apple.resourcefork", "1")) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    EXPECT_EQ(forkAttributesOfItem(path).resourceFork, nullptr);
    EXPECT_EQ(forkAttributesOfItem(path).finderInfo, nullptr);
}

TEST(ForkAttributes, findsAKnownNameInALongList) {
    const TemporaryFolder folder("/dev/shm");
    const auto path = folder.file("a");
    for (int number = 0; number < 100; ++number) {
        if (!setExtendedAttribute(path, "user." + std::string(240, 'n') + std::to_string(number), "")) {
            GTEST_SKIP() << "no such long lists here: " << std::strerror(errno);
        }
    }
    ASSERT_TRUE(setExtendedAttribute(path, "user.com.apple.ResourceFork", "1"));
    EXPECT_STREQ(forkAttributesOfItem(path).resourceFork, "user.com.apple.ResourceFork");
}

TEST(ForkAttributes, looksAtLinksThemselves) {
    const TemporaryFolder folder;
    const auto path = folder.file("a");
    if (!setExtendedAttribute(path, "user.com.apple.ResourceFork", "123")) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    const auto link = folder.symlink("link", "a");
    EXPECT_EQ(forkAttributesOfItem(link).resourceFork, nullptr);
    EXPECT_EQ(attributeSize(link, "user.com.apple.ResourceFork"), std::nullopt);
    EXPECT_EQ(attributeSize(path, "user.com.apple.ResourceFork"), 3);
}

TEST(ForkAttributes, hasNoSizeOfAnAttributeThatIsNotThere) {
    const TemporaryFolder folder;
    EXPECT_EQ(attributeSize(folder.file("a"), "user.com.apple.ResourceFork"), std::nullopt);
    EXPECT_EQ(attributeSize(folder.path("none"), "user.com.apple.ResourceFork"), std::nullopt);
}

TEST(ForkAttributes, readsFinderInformationOfTheRightSizeOnly) {
    const TemporaryFolder folder;
    const auto path = folder.file("a");
    const char* name = "user.com.apple.FinderInfo";
    if (!setExtendedAttribute(path, name, "TEXT" + std::string(28, '\x7F'))) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    const auto info = readFinderInfo(path, name);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->front(), std::byte{'T'});
    EXPECT_EQ(info->back(), std::byte{0x7F});
    for (const std::size_t wrongSize : {0U, 31U, 33U}) {
        ASSERT_TRUE(setExtendedAttribute(path, name, std::string(wrongSize, 'x')));
        EXPECT_FALSE(readFinderInfo(path, name)) << wrongSize;
    }
}

} // namespace tolvane::platform
