#include "platform/linux/files/LinuxFileManager.h"

#include "platform/linux/files/LinuxExtendedAttributeCalls.h"
#include "tests/platform/linux/FolderTest.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {
namespace {

Result<Dictionary> attributesOf(std::string_view path) {
    const LinuxExtendedAttributeCalls calls;
    return LinuxFileManager(calls).attributesOfItemAtPath(path);
}

std::optional<std::uint64_t> integer(const Dictionary& attributes, std::string_view key) {
    const Value* value = attributes.find(key);
    return value == nullptr ? std::nullopt : value->exactUInt64();
}

template <typename T>
std::optional<T> fact(const Dictionary& attributes, std::string_view key) {
    const Value* value = attributes.find(key);
    const T* found = value == nullptr ? nullptr : value->as<T>();
    return found == nullptr ? std::nullopt : std::optional(*found);
}

std::optional<std::string> text(const Dictionary& attributes, std::string_view key) {
    return fact<std::string>(attributes, key);
}

std::optional<std::string> typeOf(std::string_view path) {
    return text(attributesOf(path).value(), NSFileType);
}

using LinuxFileManagerTest = tests::FolderTest;

TEST_F(LinuxFileManagerTest, answersWhatStatAnswersInNumbersOfItsWidths) {
    const auto path = folder.file("a", "hello");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    ASSERT_EQ(link(path.c_str(), folder.path("b").c_str()), 0);
    const auto expected = tests::statusOf(path);
    const auto attributes = attributesOf(path).value();
    EXPECT_EQ(integer(attributes, NSFileSize), 5U);
    EXPECT_EQ(integer(attributes, NSFilePosixPermissions), 0640U);
    EXPECT_EQ(fact<std::uint64_t>(attributes, NSFileSystemNumber), expected.st_dev);
    EXPECT_EQ(fact<std::uint64_t>(attributes, NSFileSystemFileNumber), expected.st_ino);
    EXPECT_EQ(fact<std::uint32_t>(attributes, NSFileOwnerAccountID), expected.st_uid);
    EXPECT_EQ(fact<std::uint32_t>(attributes, NSFileGroupOwnerAccountID), expected.st_gid);
    EXPECT_EQ(fact<std::uint32_t>(attributes, NSFileReferenceCount), 2U);
    EXPECT_EQ(text(attributes, NSFileType), "NSFileTypeRegular");
}

TEST_F(LinuxFileManagerTest, reportsTheModificationDateToTheNanosecond) {
    const auto path = folder.file("a");
    const timespec stamps[] = {{0, UTIME_OMIT}, {-86'399, 123'456'789}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), stamps, 0), 0);
    const auto modified = fact<Date>(attributesOf(path).value(), NSFileModificationDate);
    ASSERT_TRUE(modified);
    EXPECT_EQ(modified->iso8601(), "1969-12-31T00:00:01.123456789Z");
}

TEST_F(LinuxFileManagerTest, reportsTheCreationDateExactlyWhereTheFileSystemKeepsOne) {
    for (const auto& path : {folder.file("a"), std::string("/proc/self/stat"), std::string("/dev/null")}) {
        struct statx expected{};
        ASSERT_EQ(statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BTIME, &expected), 0);
        const auto created = fact<Date>(attributesOf(path).value(), NSFileCreationDate);
        EXPECT_EQ(created.has_value(), (expected.stx_mask & STATX_BTIME) != 0) << path;
        if (created) {
            EXPECT_EQ(created->unixSeconds(), expected.stx_btime.tv_sec) << path;
            EXPECT_EQ(created->nanoseconds(), expected.stx_btime.tv_nsec) << path;
        }
    }
}

TEST_F(LinuxFileManagerTest, reportsTheKindOfEveryItem) {
    EXPECT_EQ(typeOf(folder.file("file")), "NSFileTypeRegular");
    EXPECT_EQ(typeOf(folder.folder("folder")), "NSFileTypeDirectory");
    EXPECT_EQ(typeOf(folder.symlink("link", "file")), "NSFileTypeSymbolicLink");
    EXPECT_EQ(typeOf(folder.socket("socket")), "NSFileTypeSocket");
    EXPECT_EQ(typeOf(folder.fifo("fifo")), "NSFileTypeUnknown");
    EXPECT_EQ(typeOf("/dev/null"), "NSFileTypeCharacterSpecial");
    EXPECT_EQ(typeOf("/proc/self/stat"), "NSFileTypeRegular");
    EXPECT_EQ(typeOf("/proc/self/exe"), "NSFileTypeSymbolicLink");
    EXPECT_EQ(typeOf("/"), "NSFileTypeDirectory");
}

TEST_F(LinuxFileManagerTest, looksAtLinksThemselves) {
    folder.file("a", "much longer than the link to it");
    for (const auto& path :
         {folder.symlink("good", "a"), folder.symlink("dangling", "b"), folder.symlink("c", "c")}) {
        const auto attributes = attributesOf(path).value();
        EXPECT_EQ(integer(attributes, NSFileSize), 1U) << path;
        EXPECT_EQ(text(attributes, NSFileType), "NSFileTypeSymbolicLink") << path;
        EXPECT_EQ(attributes.find(NSFileExtendedAttributes), nullptr) << path;
    }
}

TEST_F(LinuxFileManagerTest, listsTheExtendedAttributesOfALinksTarget) {
    const auto link = folder.symlink("link", folder.file("a"));
    if (!tests::setExtendedAttribute(link, "user.note", "hello")) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    EXPECT_NE(attributesOf(link).value().find(NSFileExtendedAttributes), nullptr);
}

TEST_F(LinuxFileManagerTest, neverOpensTheItem) {
    // Opening these would wait for the other end, or be refused.
    EXPECT_TRUE(attributesOf(folder.fifo("fifo")));
    EXPECT_TRUE(attributesOf(folder.socket("socket")));
    const auto secret = folder.file("secret", "abc");
    ASSERT_EQ(chmod(secret.c_str(), 0), 0);
    EXPECT_EQ(tests::answerOfUnprivilegedChild([&] { return attributesOf(secret) ? 1 : 0; }), 1);
}

TEST_F(LinuxFileManagerTest, failsWithTheSystemsError) {
    const auto missing = attributesOf(folder.path("none"));
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().domain, NSPOSIXErrorDomain);
    EXPECT_EQ(missing.error().code, ENOENT);
    EXPECT_EQ(attributesOf("").error().code, ENOENT);
    EXPECT_EQ(attributesOf(folder.file("a") + "/b").error().code, ENOTDIR);
}

TEST_F(LinuxFileManagerTest, namesOwnerAndGroup) {
    const LinuxExtendedAttributeCalls calls;
    const LinuxFileManager manager(
        calls, AccountNames(
                   [](std::uint32_t) { return std::optional<std::string>("ada"); },
                   [](std::uint32_t) { return std::optional<std::string>("staff"); }));
    const auto attributes = manager.attributesOfItemAtPath("/dev/null").value();
    EXPECT_EQ(text(attributes, NSFileOwnerAccountName), "ada");
    EXPECT_EQ(text(attributes, NSFileGroupOwnerAccountName), "staff");
    EXPECT_EQ(text(attributesOf("/").value(), NSFileOwnerAccountName), "root");
}

TEST_F(LinuxFileManagerTest, leavesTheNameOutForAnUnknownOwner) {
    const auto path = folder.file("a");
    constexpr std::uint32_t unknown = 3'999'999'999;
    if (chown(path.c_str(), unknown, unknown) != 0) {
        GTEST_SKIP() << "may not give files away: " << std::strerror(errno);
    }
    const auto attributes = attributesOf(path).value();
    EXPECT_EQ(integer(attributes, NSFileOwnerAccountID), unknown);
    EXPECT_EQ(integer(attributes, NSFileGroupOwnerAccountID), unknown);
    EXPECT_EQ(attributes.find(NSFileOwnerAccountName), nullptr);
    EXPECT_EQ(attributes.find(NSFileGroupOwnerAccountName), nullptr);
}

} // namespace
} // namespace tolvane::platform
