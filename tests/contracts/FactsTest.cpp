// What URLResources and FileManager answer on every system.
#include "tests/contracts/SystemUnderTest.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests::contracts {

using namespace platform;

using FactsContract = FactsTest;

TEST_F(FactsContract, sizesAreThoseOfFilesAndOfLinksThemselves) {
    const std::string file = folder.file("a.txt", "hello, world");
    EXPECT_EQ(resource(file, NSURLFileSizeKey), 12);
    EXPECT_EQ(resource(file, NSURLTotalFileSizeKey), 12);
    EXPECT_EQ(resource(folder.file("empty"), NSURLFileSizeKey), 0);
    EXPECT_EQ(resource(folder.file("empty"), NSURLTotalFileSizeKey), 0);
    for (const auto& link : {folder.symlink("good", "a.txt"), folder.symlink("dangling", "b.txt")}) {
        EXPECT_EQ(resource(link, NSURLFileSizeKey), 5) << link;
    }
}

TEST_F(FactsContract, otherItemsHaveNoSize) {
    for (const auto& path :
         {folder.folder("b"), folder.fifo("c"), folder.socket("d"), std::string("/dev/null")}) {
        EXPECT_EQ(resources(path, {NSURLFileSizeKey, NSURLTotalFileSizeKey}), Dictionary()) << path;
    }
}

TEST_F(FactsContract, onlyTheKeysThatWereAskedForAreAnswered) {
    const std::string file = folder.file("a", "abc");
    EXPECT_EQ(resources(file, {NSURLFileSizeKey}).size(), 1U);
    const Keys all{
        NSURLFileSizeKey, NSURLTotalFileSizeKey, NSURLTypeIdentifierKey, NSURLFileResourceIdentifierKey};
    EXPECT_EQ(resources(file, all).size(), 4U);
    EXPECT_TRUE(resources(file, {}).empty());
    EXPECT_TRUE(resources(file, {"NSURLSomethingElse"}).empty());
}

TEST_F(FactsContract, typesAreThoseOfFoldersAndLinks) {
    EXPECT_EQ(typeOf(folder.folder("b")), "public.folder");
    EXPECT_EQ(typeOf(folder.symlink("c", "a")), "public.symlink");
    EXPECT_EQ(typeOf(folder.file("a.txt")), "public.plain-text");
}

TEST_F(FactsContract, identifiersAreOfSixteenBytesAndTellItemsApart) {
    const auto identifier = [this](const std::string& path) {
        return valueIn<Data>(
            resources(path, {NSURLFileResourceIdentifierKey}), NSURLFileResourceIdentifierKey);
    };
    const std::string file = folder.file("a");
    const auto first = identifier(file);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->size(), 16U);
    EXPECT_EQ(identifier(file), first);
    EXPECT_NE(identifier(folder.file("b")), first);
    EXPECT_NE(identifier(folder.symlink("c", "a")), first);
}

TEST_F(FactsContract, keptValuesAreAnsweredForWhatHasVanishedAndBeforeThoseOfTheItem) {
    auto url = urlOf(folder.path("vanished"));
    const Keys kept{NSURLFileSizeKey, NSURLFileResourceIdentifierKey};
    const Dictionary expected{
        {"NSURLFileSizeKey", std::int64_t{42}}, {"NSURLFileResourceIdentifierKey", Data(16)}};
    for (const auto& [key, value] : expected) {
        url.keepResourceValue(key, value);
    }
    EXPECT_EQ(system.resources->resourceValuesForKeys(url, kept), expected);
    const Keys more{kept[0], kept[1], NSURLTotalFileSizeKey};
    EXPECT_FALSE(system.resources->resourceValuesForKeys(url, more));
    folder.file("vanished", "abc");
    const auto found = system.resources->resourceValuesForKeys(url, more).value_or(Dictionary());
    EXPECT_EQ(number(found, NSURLFileSizeKey), 42);
    EXPECT_EQ(number(found, NSURLTotalFileSizeKey), 3);
}

TEST_F(FactsContract, urlsThatNameNoFileAreRefused) {
    const Keys keys{NSURLFileSizeKey};
    for (const auto* text : {"https://example.org/a", "file://localhost", "file:///tmp/a%00b"}) {
        const auto values = system.resources->resourceValuesForKeys(URL::fromText(text).value(), keys);
        ASSERT_FALSE(values) << text;
        EXPECT_EQ(values.error().domain, NSPOSIXErrorDomain) << text;
        EXPECT_EQ(values.error().code, EINVAL) << text;
    }
}

TEST_F(FactsContract, attributesAreWhatStatReturns) {
    const std::string file = folder.file("a", "hello");
    ASSERT_EQ(chmod(file.c_str(), 0640), 0);
    ASSERT_EQ(link(file.c_str(), folder.path("b").c_str()), 0);
    const struct stat expected = statusOf(file);
    const Dictionary found = attributes(file);
    EXPECT_EQ(number(found, NSFileSize), 5);
    EXPECT_EQ(number(found, NSFilePosixPermissions), 0640);
    EXPECT_EQ(number(found, NSFileSystemNumber), static_cast<std::int64_t>(expected.st_dev));
    EXPECT_EQ(number(found, NSFileSystemFileNumber), static_cast<std::int64_t>(expected.st_ino));
    EXPECT_EQ(number(found, NSFileOwnerAccountID), expected.st_uid);
    EXPECT_EQ(number(found, NSFileGroupOwnerAccountID), expected.st_gid);
    EXPECT_EQ(number(found, NSFileReferenceCount), 2);
}

TEST_F(FactsContract, permissionsAreAllTwelveBits) {
    const std::string file = folder.file("a");
    const std::string below = folder.folder("b");
    ASSERT_EQ(chmod(file.c_str(), 04755), 0);
    ASSERT_EQ(chmod(below.c_str(), 01777), 0);
    EXPECT_EQ(number(attributes(file), NSFilePosixPermissions), 04755);
    EXPECT_EQ(number(attributes(below), NSFilePosixPermissions), 01777);
    ASSERT_EQ(chmod(file.c_str(), 0), 0);
    EXPECT_EQ(number(attributes(file), NSFilePosixPermissions), 0);
}

// A system may keep dates as doubles, whose steps are of a tenth of a microsecond.
TEST_F(FactsContract, modificationDatesAreExactToAMicrosecond) {
    const std::string file = folder.file("a");
    const timespec stamps[] = {{0, 0}, {1'723'220'822, 123'456'789}};
    ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), stamps, 0), 0);
    const auto modified = valueIn<Date>(attributes(file), NSFileModificationDate);
    ASSERT_TRUE(modified);
    EXPECT_EQ(modified->unixSeconds(), 1'723'220'822);
    EXPECT_NEAR(modified->nanoseconds(), 123'456'789.0, 1'000.0);
}

TEST_F(FactsContract, kindsAreThoseOfTheItemsThemselves) {
    EXPECT_EQ(kindOf(folder.file("file")), NSFileTypeRegular);
    EXPECT_EQ(kindOf(folder.folder("folder")), NSFileTypeDirectory);
    for (const auto& link :
         {folder.symlink("link", "file"), folder.symlink("loop", "loop"), folder.symlink("dangling", "b")}) {
        EXPECT_EQ(kindOf(link), NSFileTypeSymbolicLink) << link;
    }
    EXPECT_EQ(kindOf(folder.fifo("fifo")), NSFileTypeUnknown);
    EXPECT_EQ(kindOf("/dev/null"), NSFileTypeCharacterSpecial);
}

TEST_F(FactsContract, namesMayHaveEveryCharacter) {
    for (const auto* name :
         {"a b", "100%", "a#b?c", "\u00E4\u00DF \u65E5\u672C", "line\nfeed", "\"quoted\""}) {
        const std::string file = folder.file(name, "1234567");
        EXPECT_EQ(resource(file, NSURLFileSizeKey), 7) << name;
        EXPECT_EQ(number(attributes(file), NSFileSize), 7) << name;
    }
}

TEST_F(FactsContract, missingItemsHaveNoFacts) {
    const std::string file = folder.file("a");
    const Keys keys{NSURLFileSizeKey};
    for (const auto& path : {folder.path("none"), file + "/b"}) {
        const auto values = system.resources->resourceValuesForKeys(urlOf(path), keys);
        ASSERT_FALSE(values) << path;
        EXPECT_FALSE(values.error().localizedDescription().empty()) << path;
        const auto found = system.fileManager->attributesOfItemAtPath(path);
        ASSERT_FALSE(found) << path;
        EXPECT_FALSE(found.error().localizedDescription().empty()) << path;
    }
    EXPECT_FALSE(system.fileManager->attributesOfItemAtPath(""));
    EXPECT_FALSE(system.fileManager->attributesOfItemAtPath(std::string_view("/\0", 2)));
}

} // namespace tolvane::tests::contracts
