// What URLResources and FileManager answer on every system.
#include "tests/contracts/SystemUnderTest.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <optional>
#include <vector>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests::contracts {

using namespace platform;

class FactsContract : public ContractTest {
protected:
    using Keys = std::vector<std::string_view>;

    Dictionary resources(const std::string& path, const Keys& keys) const {
        const auto values = system.resources->resourceValuesForKeys(urlOf(path), keys);
        EXPECT_TRUE(values) << path << ": " << values.error().localizedDescription();
        return values.value_or(Dictionary());
    }

    std::optional<std::int64_t> resource(const std::string& path, std::string_view key) const {
        return number(resources(path, {key}), key);
    }

    Dictionary attributes(const std::string& path) const {
        const auto found = system.fileManager->attributesOfItemAtPath(path);
        EXPECT_TRUE(found) << path << ": " << found.error().localizedDescription();
        return found.value_or(Dictionary());
    }

    static std::optional<std::int64_t> number(const Dictionary& values, std::string_view key) {
        const Value* value = values.find(key);
        return value == nullptr ? std::nullopt : value->exactInt64();
    }

    template <typename T>
    static std::optional<T> valueIn(const Dictionary& values, std::string_view key) {
        const Value* value = values.find(key);
        const T* found = value == nullptr ? nullptr : value->as<T>();
        return found == nullptr ? std::nullopt : std::optional(*found);
    }

    std::optional<std::string> kindOf(const std::string& path) const {
        return valueIn<std::string>(attributes(path), NSFileType);
    }
};

TEST_F(FactsContract, sizesAreThoseOfFilesAndOfLinksThemselves) {
    const std::string file = folder.file("a.txt", "hello, world");
    EXPECT_EQ(resource(file, NSURLFileSizeKey), 12);
    EXPECT_EQ(resource(file, NSURLTotalFileSizeKey), 12);
    EXPECT_EQ(resource(folder.file("empty"), NSURLFileSizeKey), 0);
    for (const auto& link : {folder.symlink("good", "a.txt"), folder.symlink("dangling", "b.txt")}) {
        EXPECT_EQ(resource(link, NSURLFileSizeKey), 5) << link;
    }
}

TEST_F(FactsContract, otherItemsHaveNoSize) {
    for (const auto& path : {folder.folder("b"), folder.fifo("c")}) {
        const auto values = resources(path, {NSURLFileSizeKey, NSURLTotalFileSizeKey});
        EXPECT_EQ(values.find(NSURLFileSizeKey), nullptr) << path;
        EXPECT_EQ(values.find(NSURLTotalFileSizeKey), nullptr) << path;
    }
}

TEST_F(FactsContract, onlyTheKeysThatWereAskedForAreAnswered) {
    const std::string file = folder.file("a", "abc");
    EXPECT_EQ(resources(file, {NSURLFileSizeKey}).size(), 1U);
    EXPECT_EQ(
        resources(
            file,
            {NSURLFileSizeKey, NSURLTotalFileSizeKey, NSURLTypeIdentifierKey, NSURLFileResourceIdentifierKey})
            .size(),
        4U);
    EXPECT_TRUE(resources(file, {"NSURLSomethingElse"}).empty());
}

TEST_F(FactsContract, typesAreThoseOfFoldersAndLinks) {
    const Keys type{NSURLTypeIdentifierKey};
    EXPECT_EQ(URLResourceValues(resources(folder.folder("b"), type)).typeIdentifier(), "public.folder");
    EXPECT_EQ(
        URLResourceValues(resources(folder.symlink("c", "a"), type)).typeIdentifier(), "public.symlink");
    EXPECT_EQ(URLResourceValues(resources(folder.file("a.txt"), type)).typeIdentifier(), "public.plain-text");
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

TEST_F(FactsContract, keptValuesAreAnsweredForWhatHasVanished) {
    auto url = urlOf(folder.path("vanished"));
    url.keepResourceValue(NSURLFileSizeKey, std::int64_t{42});
    const Keys kept{NSURLFileSizeKey};
    const Keys more{NSURLFileSizeKey, NSURLTypeIdentifierKey};
    EXPECT_EQ(
        system.resources->resourceValuesForKeys(url, kept),
        (Dictionary{{std::string(NSURLFileSizeKey), std::int64_t{42}}}));
    EXPECT_FALSE(system.resources->resourceValuesForKeys(url, more));
}

TEST_F(FactsContract, urlsThatNameNoFileAreRefused) {
    const Keys keys{NSURLFileSizeKey};
    for (const auto* text : {"https://example.org/a", "file:///tmp/a%00b"}) {
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
    EXPECT_EQ(kindOf(folder.symlink("link", "file")), NSFileTypeSymbolicLink);
    EXPECT_EQ(kindOf(folder.symlink("loop", "loop")), NSFileTypeSymbolicLink);
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
