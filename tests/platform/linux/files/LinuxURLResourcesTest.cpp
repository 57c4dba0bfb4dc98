#include "platform/linux/files/LinuxURLResources.h"

#include "tests/platform/linux/FolderTest.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>
#include <sys/stat.h>

namespace tolvane::platform {
namespace {

using tests::answerOfUnprivilegedChild;
using tests::setExtendedAttribute;
using Keys = std::vector<std::string_view>;

constexpr std::string_view declaredTypes = "identifier\textensions\tmime-types\tconforms-to\n"
                                           "public.plain-text\ttxt\ttext/plain\tpublic.data\n"
                                           "public.data\t\t\t\n"
                                           "com.apple.alias-file\t\t\tpublic.data\n"
                                           "com.apple.traditional-mac-plain-text\t\t\tpublic.plain-text\n";

const Keys sizesAndType{NSURLFileSizeKey, NSURLTotalFileSizeKey, NSURLTypeIdentifierKey};
const Keys allKeys{
    NSURLFileSizeKey, NSURLTotalFileSizeKey, NSURLTypeIdentifierKey, NSURLFileResourceIdentifierKey};

Result<Dictionary> valuesOf(const URL& url, const Keys& keys) {
    const auto table = TypeTable::parse(declaredTypes).value();
    return LinuxURLResources(table).resourceValuesForKeys(url, keys);
}

URLResourceValues valuesAtPath(const std::string& path, const Keys& keys = sizesAndType) {
    return URLResourceValues(valuesOf(URL::fileURLWithPath(path), keys).value());
}

std::string finderInfo(std::string_view typeAndCreator, unsigned char highFlags) {
    std::string info(typeAndCreator);
    info.resize(32);
    info[8] = static_cast<char>(highFlags);
    return info;
}

using LinuxURLResourcesTest = tests::FolderTest;

TEST_F(LinuxURLResourcesTest, reportsSizesOfFilesAndOfLinksThemselves) {
    const auto file = valuesAtPath(folder.file("a.txt", "hello"));
    EXPECT_EQ(file.fileSize(), 5);
    EXPECT_EQ(file.totalFileSize(), 5);
    for (const auto& path : {folder.symlink("good", "a.txt"), folder.symlink("dangling", "b.txt")}) {
        EXPECT_EQ(valuesAtPath(path).fileSize(), 5) << path;
        EXPECT_EQ(valuesAtPath(path).totalFileSize(), 5) << path;
    }
    EXPECT_EQ(valuesAtPath(folder.symlink("loop", "loop")).fileSize(), 4);
    EXPECT_EQ(valuesAtPath(folder.file("empty")).fileSize(), 0);
    EXPECT_EQ(valuesAtPath(folder.file("empty")).totalFileSize(), 0);
    EXPECT_EQ(valuesAtPath("/proc/self/stat").fileSize(), 0);
}

TEST_F(LinuxURLResourcesTest, hasNoSizesForOtherItems) {
    for (const auto& path :
         {folder.folder("b"), folder.fifo("c"), folder.socket("d"), std::string("/dev/null")}) {
        const auto values = valuesOf(URL::fileURLWithPath(path), sizesAndType).value();
        EXPECT_EQ(values.find(NSURLFileSizeKey), nullptr) << path;
        EXPECT_EQ(values.find(NSURLTotalFileSizeKey), nullptr) << path;
    }
}

TEST_F(LinuxURLResourcesTest, answersExactlyTheKeysAsked) {
    const auto url = URL::fileURLWithPath(folder.file("a", "abc"));
    EXPECT_EQ(valuesOf(url, {NSURLFileSizeKey}).value().size(), 1U);
    EXPECT_EQ(valuesOf(url, allKeys).value().size(), 4U);
    EXPECT_TRUE(valuesOf(url, {}).value().empty());
    EXPECT_TRUE(valuesOf(url, {"NSURLSomethingElse"}).value().empty());
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
        EXPECT_EQ(valuesAtPath(path).fileSize(), 5) << name;
        EXPECT_EQ(valuesAtPath(path).totalFileSize(), 8) << name;
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
    const int total = answerOfUnprivilegedChild(
        [&] { return static_cast<int>(valuesAtPath(path).totalFileSize().value_or(noAnswer)); });
    EXPECT_EQ(total, 5);
}

TEST_F(LinuxURLResourcesTest, identifiesItemsByFileNumberAndDevice) {
    const auto path = folder.symlink("link", folder.file("a"));
    const auto expected = tests::statusOf(path);
    const auto values = valuesOf(URL::fileURLWithPath(path), {NSURLFileResourceIdentifierKey}).value();
    const auto* data = values.find(NSURLFileResourceIdentifierKey)->as<Data>();
    ASSERT_NE(data, nullptr);
    ASSERT_EQ(data->size(), 16U);
    std::array<std::uint64_t, 2> numbers{};
    std::memcpy(numbers.data(), data->data(), data->size());
    EXPECT_EQ(numbers[0], expected.st_ino);
    EXPECT_EQ(numbers[1], expected.st_dev);
}

TEST_F(LinuxURLResourcesTest, reportsTheTypeOfEveryKindOfItem) {
    EXPECT_EQ(valuesAtPath(folder.file("a.TXT")).typeIdentifier(), "public.plain-text");
    EXPECT_EQ(valuesAtPath(folder.file("a")).typeIdentifier(), "public.data");
    EXPECT_EQ(valuesAtPath(folder.folder("b")).typeIdentifier(), "public.folder");
    EXPECT_EQ(valuesAtPath(folder.path("b") + "/").typeIdentifier(), "public.folder");
    EXPECT_EQ(valuesAtPath(folder.symlink("c.txt", "a.TXT")).typeIdentifier(), "public.symlink");
    EXPECT_EQ(valuesAtPath(folder.fifo("d")).typeIdentifier(), "public.named-pipe");
    EXPECT_EQ(valuesAtPath(folder.socket("e")).typeIdentifier(), "public.socket");
    EXPECT_EQ(valuesAtPath("/dev/null").typeIdentifier(), "public.character-special");
}

TEST_F(LinuxURLResourcesTest, reportsExecutablesByAnyOfTheirBits) {
    const auto path = folder.file("a");
    for (const mode_t mode : {0700U, 0610U, 0601U}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_EQ(valuesAtPath(path).typeIdentifier(), "public.unix-executable") << mode;
    }
    ASSERT_EQ(chmod(path.c_str(), 04666), 0);
    EXPECT_EQ(valuesAtPath(path).typeIdentifier(), "public.data");
}

TEST_F(LinuxURLResourcesTest, takesMountedFileSystemsForVolumes) {
    EXPECT_EQ(valuesAtPath("/").typeIdentifier(), "public.volume");
    EXPECT_EQ(valuesAtPath("//").typeIdentifier(), "public.volume");
    if (tests::statusOf("/proc").st_dev == tests::statusOf("/").st_dev) {
        GTEST_SKIP() << "nothing is mounted at /proc";
    }
    EXPECT_EQ(valuesAtPath("/proc").typeIdentifier(), "public.volume");
    EXPECT_EQ(valuesAtPath("/proc/self/fd").typeIdentifier(), "public.folder");
}

TEST_F(LinuxURLResourcesTest, heedsFinderInformationOfFiles) {
    const auto alias = folder.file("alias");
    const auto plainText = folder.file("text");
    if (!setExtendedAttribute(alias, "user.com.apple.FinderInfo", finderInfo("", 0x80))
        || !setExtendedAttribute(plainText, "user.com.apple.FinderInfo", finderInfo("TEXT", 0))) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    EXPECT_EQ(valuesAtPath(alias).typeIdentifier(), "com.apple.alias-file");
    EXPECT_EQ(valuesAtPath(plainText).typeIdentifier(), "com.apple.traditional-mac-plain-text");
    ASSERT_TRUE(setExtendedAttribute(alias, "user.com.apple.FinderInfo", "too short"));
    EXPECT_EQ(valuesAtPath(alias).typeIdentifier(), "public.data");
}

TEST_F(LinuxURLResourcesTest, answersKeptValuesOfAVanishedItemAndBeforeThoseOfTheItem) {
    auto url = URL::fileURLWithPath(folder.path("vanished"));
    url.keepResourceValue(NSURLFileSizeKey, std::int64_t{42});
    url.keepResourceValue(NSURLFileResourceIdentifierKey, Data(16));
    const auto values = valuesOf(url, {NSURLFileSizeKey, NSURLFileResourceIdentifierKey});
    ASSERT_TRUE(values);
    EXPECT_EQ(*values->find(NSURLFileSizeKey), Value(std::int64_t{42}));
    EXPECT_EQ(*values->find(NSURLFileResourceIdentifierKey), Value(Data(16)));

    EXPECT_EQ(valuesOf(url, {NSURLFileSizeKey, NSURLTypeIdentifierKey}).error().code, ENOENT);
    folder.file("vanished", "abc");
    const URLResourceValues ofTheItem(valuesOf(url, sizesAndType).value());
    EXPECT_EQ(ofTheItem.fileSize(), 42);
    EXPECT_EQ(ofTheItem.totalFileSize(), 3);
}

TEST_F(LinuxURLResourcesTest, failsForUrlsThatNameNoItem) {
    for (const auto* text : {"https://example.org/a", "file://localhost", "file:///tmp/a%00b"}) {
        const auto values = valuesOf(URL::fromText(text).value(), {NSURLFileSizeKey});
        ASSERT_FALSE(values) << text;
        EXPECT_EQ(values.error().domain, NSPOSIXErrorDomain) << text;
        EXPECT_EQ(values.error().code, EINVAL) << text;
    }
    EXPECT_EQ(valuesOf(URL::fileURLWithPath(folder.path("none")), allKeys).error().code, ENOENT);
}

} // namespace
} // namespace tolvane::platform
