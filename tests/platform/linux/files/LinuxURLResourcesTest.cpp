#include "platform/linux/files/LinuxURLResources.h"

#include "platform/services/DocumentOpening.h"
#include "tests/contracts/SystemUnderTest.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace tolvane::platform {
namespace {

using tests::setExtendedAttribute;

using LinuxURLResourcesTest = tests::contracts::FactsTest;

TEST_F(LinuxURLResourcesTest, reportsTheSizesOfLinksThemselvesAndOfWhatTheKernelMakesUp) {
    for (const auto& path : {folder.symlink("self", "self"), folder.symlink("dangling", "none")}) {
        EXPECT_EQ(resource(path, NSURLFileSizeKey), 4) << path;
        EXPECT_EQ(resource(path, NSURLTotalFileSizeKey), 4) << path;
    }
    EXPECT_EQ(resource("/proc/self/stat", NSURLFileSizeKey), 0);
}

TEST_F(LinuxURLResourcesTest, countsAResourceForkUnderEachOfItsNames) {
    for (const std::string name :
         {"user.com.apple.ResourceFork", "osx.com.apple.ResourceFork", "user.org.netatalk.ResourceFork"}) {
        const auto path = folder.file(name, "hello");
        if (!setExtendedAttribute(path, name, "123")) {
            EXPECT_TRUE(name.starts_with("osx.") || errno == ENOTSUP)
                << "other names are for file systems of their own";
            continue;
        }
        EXPECT_EQ(resource(path, NSURLFileSizeKey), 5) << name;
        EXPECT_EQ(resource(path, NSURLTotalFileSizeKey), 8) << name;
    }
}

TEST_F(LinuxURLResourcesTest, countsAResourceForkThatMayNotBeReadAsNone) {
    constexpr int noAnswer = 200;
    const auto path = folder.file("a", "hello");
    if (!setExtendedAttribute(path, "user.com.apple.ResourceFork", "123")) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    const int total = tests::answerOfUnprivilegedChild(
        [&] { return static_cast<int>(resource(path, NSURLTotalFileSizeKey).value_or(noAnswer)); });
    EXPECT_EQ(total, 5);
}

TEST_F(LinuxURLResourcesTest, identifiesItemsByFileNumberAndDevice) {
    const auto path = folder.symlink("link", folder.file("a"));
    const auto expected = tests::statusOf(path);
    const auto data =
        valueIn<Data>(resources(path, {NSURLFileResourceIdentifierKey}), NSURLFileResourceIdentifierKey);
    ASSERT_EQ(data.value_or(Data()).size(), 16U);
    std::array<std::uint64_t, 2> numbers{};
    std::memcpy(numbers.data(), data->data(), data->size());
    EXPECT_EQ(numbers[0], expected.st_ino);
    EXPECT_EQ(numbers[1], expected.st_dev);
}

TEST_F(LinuxURLResourcesTest, reportsTheTypeOfEveryKindOfItem) {
    EXPECT_EQ(typeOf(folder.file("a.TXT")), "public.plain-text");
    EXPECT_EQ(typeOf(folder.file("a")), "public.data");
    EXPECT_EQ(typeOf(folder.folder("b") + "/"), "public.folder");
    EXPECT_EQ(typeOf(folder.symlink("c.txt", "a.TXT")), "public.symlink");
    EXPECT_EQ(typeOf(folder.fifo("d")), "public.named-pipe");
    EXPECT_EQ(typeOf(folder.socket("e")), "public.socket");
    EXPECT_EQ(typeOf("/dev/null"), "public.character-special");
}

TEST_F(LinuxURLResourcesTest, reportsExecutablesByAnyOfTheirBits) {
    const auto path = folder.file("a");
    for (const mode_t mode : {0700U, 0610U, 0601U}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_EQ(typeOf(path), "public.unix-executable") << mode;
    }
    ASSERT_EQ(chmod(path.c_str(), 04666), 0);
    EXPECT_EQ(typeOf(path), "public.data");
}

TEST_F(LinuxURLResourcesTest, takesMountedFileSystemsForVolumes) {
    EXPECT_EQ(typeOf("/"), "public.volume");
    EXPECT_EQ(typeOf("//"), "public.volume");
    if (tests::statusOf("/proc").st_dev == tests::statusOf("/").st_dev) {
        GTEST_SKIP() << "nothing is mounted at /proc";
    }
    EXPECT_EQ(typeOf("/proc"), "public.volume");
    EXPECT_EQ(typeOf("/proc/self/fd"), "public.folder");
}

TEST_F(LinuxURLResourcesTest, heedsFinderInformationOfFiles) {
    const auto alias = folder.file("alias");
    const auto plainText = folder.file("text");
    if (!setExtendedAttribute(
            alias, "user.com.apple.FinderInfo", tests::finderInfoOfFile("abcd", "efgh", 0x8000))
        || !setExtendedAttribute(
            plainText, "user.com.apple.FinderInfo", tests::finderInfoOfFile("TEXT", "ttxt", 0))) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    EXPECT_EQ(typeOf(alias), "com.apple.alias-file");
    EXPECT_EQ(typeOf(plainText), "com.apple.traditional-mac-plain-text");
    ASSERT_TRUE(setExtendedAttribute(alias, "user.com.apple.FinderInfo", "too short"));
    EXPECT_EQ(typeOf(alias), "public.data");
}

TEST_F(LinuxURLResourcesTest, failsAsTheSystemDoes) {
    const auto values =
        system.resources->resourceValuesForKeys(urlOf(folder.path("none")), Keys{NSURLFileSizeKey});
    EXPECT_EQ(values.error().code, ENOENT);
}

/// The values by which an opened item is known again.
class RememberedValues : public LinuxURLResourcesTest {
protected:
    Dictionary valuesOf(const std::string& path) const {
        return resources(path, {rememberedKeys.begin(), rememberedKeys.end()});
    }
};

TEST_F(RememberedValues, areTheSameWhileNothingChanges) {
    const std::string path = folder.file("a", "1");
    const auto before = valuesOf(path);
    EXPECT_NE(before.find(NSURLFileResourceIdentifierKey), nullptr);
    EXPECT_NE(before.find(NSURLAttributeModificationDateKey), nullptr);
    EXPECT_EQ(tests::contentsOfFile(path), "1");
    EXPECT_EQ(valuesOf(path), before) << "reading is no change";
}

TEST_F(RememberedValues, tellOfEveryKindOfChange) {
    const std::string path = folder.file("a", "1");
    const auto dateOf = [&] {
        return valueIn<Date>(valuesOf(path), NSURLAttributeModificationDateKey)
            .value()
            .timeIntervalSinceReferenceDate();
    };
    // The file system's clock ticks more slowly than this runs.
    const auto changes = [&](const auto& change) {
        const double before = dateOf();
        for (int i = 0; i < 10'000 && dateOf() == before; ++i) {
            change();
        }
        return dateOf() != before;
    };
    EXPECT_TRUE(changes([&] { folder.file("a", "2"); }));
    EXPECT_TRUE(changes([&] { EXPECT_EQ(chmod(path.c_str(), 0600), 0); }));
    EXPECT_TRUE(changes([&] { std::filesystem::last_write_time(path, std::filesystem::file_time_type{}); }))
        << "even where the other date is set back";
}

TEST_F(RememberedValues, areThoseOfALinkItself) {
    const std::string target = folder.file("a", "1");
    const std::string link = folder.symlink("link", "a");
    const auto before = valuesOf(link);
    EXPECT_EQ(chmod(target.c_str(), 0600), 0);
    folder.file("a", "longer");
    EXPECT_EQ(valuesOf(link), before);
    EXPECT_NE(valuesOf(target), before);
}

} // namespace
} // namespace tolvane::platform
