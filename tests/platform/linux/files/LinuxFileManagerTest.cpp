#include "platform/linux/files/LinuxFileManager.h"

#include "platform/linux/files/LinuxExtendedAttributeCalls.h"
#include "tests/contracts/SystemUnderTest.h"
#include "tests/platform/linux/FolderTest.h"
#include "tests/support/OldAliasFiles.h"
#include "tests/support/Unprivileged.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;

using LinuxFileManagerTest = tests::contracts::FactsTest;

TEST_F(LinuxFileManagerTest, reportsNumbersOfTheSystemsWidths) {
    const auto path = folder.file("a");
    const auto expected = tests::statusOf(path);
    const auto found = attributes(path);
    EXPECT_EQ(valueIn<std::uint64_t>(found, NSFileSystemNumber), expected.st_dev);
    EXPECT_EQ(valueIn<std::uint64_t>(found, NSFileSystemFileNumber), expected.st_ino);
    EXPECT_EQ(valueIn<std::uint32_t>(found, NSFileOwnerAccountID), expected.st_uid);
    EXPECT_EQ(valueIn<std::uint32_t>(found, NSFileGroupOwnerAccountID), expected.st_gid);
    EXPECT_EQ(valueIn<std::uint32_t>(found, NSFileReferenceCount), 1U);
}

TEST_F(LinuxFileManagerTest, reportsTheModificationDateToTheNanosecond) {
    const auto path = folder.file("a");
    const timespec stamps[] = {{0, UTIME_OMIT}, {-86'399, 123'456'789}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), stamps, 0), 0);
    const auto modified = valueIn<Date>(attributes(path), NSFileModificationDate);
    ASSERT_TRUE(modified);
    EXPECT_EQ(modified->iso8601(), "1969-12-31T00:00:01.123456789Z");
}

TEST_F(LinuxFileManagerTest, reportsTheCreationDateExactlyWhereTheFileSystemKeepsOne) {
    for (const auto& path : {folder.file("a"), std::string("/proc/self/stat"), std::string("/dev/null")}) {
        struct statx expected{};
        ASSERT_EQ(statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BTIME, &expected), 0);
        const auto created = valueIn<Date>(attributes(path), NSFileCreationDate);
        EXPECT_EQ(created.has_value(), (expected.stx_mask & STATX_BTIME) != 0) << path;
        if (created) {
            EXPECT_EQ(created->unixSeconds(), expected.stx_btime.tv_sec) << path;
            EXPECT_EQ(created->nanoseconds(), expected.stx_btime.tv_nsec) << path;
        }
    }
}

TEST_F(LinuxFileManagerTest, reportsTheKindOfEveryItem) {
    EXPECT_EQ(kindOf(folder.socket("socket")), "NSFileTypeSocket");
    EXPECT_EQ(kindOf("/dev/null"), "NSFileTypeCharacterSpecial");
    EXPECT_EQ(kindOf("/proc/self/stat"), "NSFileTypeRegular");
    EXPECT_EQ(kindOf("/proc/self/exe"), "NSFileTypeSymbolicLink");
    EXPECT_EQ(kindOf("/"), "NSFileTypeDirectory");
}

TEST_F(LinuxFileManagerTest, looksAtLinksThemselvesButAtTheExtendedAttributesOfTheirTargets) {
    const auto target = folder.file("a", "much longer than the link to it");
    const auto link = folder.symlink("good", "a");
    for (const auto& path : {link, folder.symlink("dangling", "b"), folder.symlink("c", "c")}) {
        const auto found = attributes(path);
        EXPECT_EQ(number(found, NSFileSize), 1) << path;
        EXPECT_EQ(found.find(NSFileExtendedAttributes), nullptr) << path;
    }
    if (!tests::setExtendedAttribute(target, "user.note", "hello")) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    EXPECT_NE(attributes(link).find(NSFileExtendedAttributes), nullptr);
}

TEST_F(LinuxFileManagerTest, neverOpensTheItem) {
    // Opening these would wait for the other end, or be refused.
    attributes(folder.fifo("fifo"));
    attributes(folder.socket("socket"));
    const auto secret = folder.file("secret", "abc");
    ASSERT_EQ(chmod(secret.c_str(), 0), 0);
    EXPECT_EQ(tests::answerOfUnprivilegedChild([&] { return attributes(secret).empty() ? 0 : 1; }), 1);
}

TEST_F(LinuxFileManagerTest, failsWithTheSystemsError) {
    for (const auto& [path, code] :
         {std::pair(folder.path("none"), ENOENT), {"", ENOENT}, {folder.file("a") + "/b", ENOTDIR}}) {
        const auto found = system.fileManager->attributesOfItemAtPath(path);
        ASSERT_FALSE(found) << path;
        EXPECT_EQ(found.error().domain, NSPOSIXErrorDomain) << path;
        EXPECT_EQ(found.error().code, code) << path;
    }
}

TEST_F(LinuxFileManagerTest, namesOwnerAndGroup) {
    const LinuxExtendedAttributeCalls calls;
    const LinuxFileManager manager(
        calls, AccountNames(
                   [](std::uint32_t) { return std::optional<std::string>("ada"); },
                   [](std::uint32_t) { return std::optional<std::string>("staff"); }));
    const auto found = manager.attributesOfItemAtPath("/dev/null").value();
    EXPECT_EQ(valueIn<std::string>(found, NSFileOwnerAccountName), "ada");
    EXPECT_EQ(valueIn<std::string>(found, NSFileGroupOwnerAccountName), "staff");
    EXPECT_EQ(valueIn<std::string>(attributes("/"), NSFileOwnerAccountName), "root");
}

TEST_F(LinuxFileManagerTest, leavesTheNameOutForAnUnknownOwner) {
    const auto path = folder.file("a");
    constexpr std::uint32_t unknown = 3'999'999'999;
    if (chown(path.c_str(), unknown, unknown) != 0) {
        GTEST_SKIP() << "may not give files away: " << std::strerror(errno);
    }
    const auto found = attributes(path);
    EXPECT_EQ(number(found, NSFileOwnerAccountID), unknown);
    EXPECT_EQ(number(found, NSFileGroupOwnerAccountID), unknown);
    EXPECT_EQ(found.find(NSFileOwnerAccountName), nullptr);
    EXPECT_EQ(found.find(NSFileGroupOwnerAccountName), nullptr);
}

using Attributes = std::map<std::string, std::string>;

// The entry NSFileExtendedAttributes with values as text; nothing if it is absent.
std::optional<Attributes> extendedAttributes(
    const ExtendedAttributeCalls& calls, const std::string& path = "/dev/null") {
    const auto attributes = LinuxFileManager(calls).attributesOfItemAtPath(path).value();
    const Value* entry = attributes.find(NSFileExtendedAttributes);
    if (entry == nullptr) {
        return std::nullopt;
    }
    Attributes shown;
    for (const auto& [name, value] : *entry->as<Dictionary>()) {
        shown.emplace(name, tests::textOf(*value.as<Data>()));
    }
    return shown;
}

// Only the attributes that users set: a system may add labels of its own.
std::optional<Attributes> userAttributes(const std::string& path) {
    auto attributes = extendedAttributes(LinuxExtendedAttributeCalls(), path);
    if (attributes) {
        std::erase_if(*attributes, [](const auto& entry) { return !entry.first.starts_with("user."); });
    }
    return attributes;
}

// Invented attributes, which may fail. Every call is logged.
using Bytes = std::expected<std::string, int>;

class MadeUpAttributes final : public ExtendedAttributeCalls {
public:
    MadeUpAttributes(Bytes names, std::map<std::string, Bytes> contents)
        : list(std::move(names))
        , values(std::move(contents)) {}

    const Bytes list;
    const std::map<std::string, Bytes> values;
    mutable std::vector<std::string> calls;

    Answer listxattr(const char* path, std::span<char> buffer) const override {
        calls.push_back("list " + std::string(path) + " " + std::to_string(buffer.size()));
        return answer(list, buffer);
    }

    Answer getxattr(const char* /*path*/, const char* name, std::span<std::byte> buffer) const override {
        calls.push_back("get " + std::string(name) + " " + std::to_string(buffer.size()));
        const auto value = values.find(name);
        return value == values.end() ? std::unexpected(ENODATA) : answer(value->second, buffer);
    }

private:
    template <typename Byte>
    static Answer answer(const Bytes& bytes, std::span<Byte> buffer) {
        if (!bytes) {
            return std::unexpected(bytes.error());
        }
        if (buffer.size() < bytes->size()) {
            return std::unexpected(ERANGE);
        }
        std::memcpy(buffer.data(), bytes->data(), bytes->size());
        return static_cast<std::int64_t>(bytes->size());
    }
};

// A list as the system returns it, from names that end in a bar.
std::string listOf(std::string names) {
    std::ranges::replace(names, '|', '\0');
    return names;
}

using LinuxFileManagerExtendedAttributesTest = tests::AttributeTest;

TEST_F(LinuxFileManagerExtendedAttributesTest, listsNamesWithTheirValues) {
    const auto path = folder.file("a");
    const std::string binary("\0\xFF\0\n", 4);
    setAttribute(path, "user.note", "hello");
    setAttribute(path, "user.empty", "");
    setAttribute(path, "user.binary", binary);
    const Attributes expected{{"user.note", "hello"}, {"user.empty", ""}, {"user.binary", binary}};
    EXPECT_EQ(userAttributes(path), expected);
    setAttribute(folder.path(), "user.note", "hello");
    EXPECT_EQ(userAttributes(folder.path()), (Attributes{{"user.note", "hello"}})) << "of a folder";
}

TEST_F(LinuxFileManagerExtendedAttributesTest, readsLargeValuesWhole) {
    const tests::TemporaryFolder roomy("/dev/shm");
    const auto path = roomy.file("a");
    std::string large(60'000, 'x');
    large.back() = 'y';
    if (!tests::setExtendedAttribute(path, "user.large", large)) {
        GTEST_SKIP() << "no large attributes here: " << std::strerror(errno);
    }
    EXPECT_EQ(userAttributes(path), (Attributes{{"user.large", large}}));
}

TEST_F(LinuxFileManagerExtendedAttributesTest, showsNamesThatAreNotUtf8AndLosesNone) {
    const auto path = folder.file("a");
    setAttribute(path, "user.a\xFF", "1");
    setAttribute(path, "user.a\xFE", "2");
    setAttribute(path, "user.a\uFFFD", "readable");
    const auto attributes = userAttributes(path);
    ASSERT_TRUE(attributes);
    ASSERT_EQ(attributes->size(), 3U);
    EXPECT_EQ(attributes->at("user.a\uFFFD"), "readable");
    EXPECT_EQ(attributes->at("user.a\uFFFD\uFFFD") + attributes->at("user.a\uFFFD\uFFFD\uFFFD"), "12");
}

TEST_F(LinuxFileManagerExtendedAttributesTest, readsListAndValuesWithOneCallEach) {
    const MadeUpAttributes calls(listOf("user.a|user.b|"), {{"user.a", "123"}, {"user.b", ""}});
    EXPECT_EQ(extendedAttributes(calls), (Attributes{{"user.a", "123"}, {"user.b", ""}}));
    EXPECT_THAT(calls.calls, ElementsAre("list /dev/null 1024", "get user.a 1024", "get user.b 1024"));
}

TEST_F(LinuxFileManagerExtendedAttributesTest, offersTheMostThatLinuxAllowsWhereThatIsTooLittle) {
    const std::string longName = "user." + std::string(1'100, 'n');
    const std::string large(65'536, 'v');
    const MadeUpAttributes calls(listOf(longName + "|user.b|"), {{longName, "1"}, {"user.b", large}});
    EXPECT_EQ(extendedAttributes(calls), (Attributes{{longName, "1"}, {"user.b", large}}));
    EXPECT_THAT(
        calls.calls, ElementsAre(
                         "list /dev/null 1024", "list /dev/null 65536", "get " + longName + " 1024",
                         "get user.b 1024", "get user.b 65536"));
}

TEST_F(LinuxFileManagerExtendedAttributesTest, leavesTheEntryOutWhenNoRoomIsEnoughOrListingFails) {
    const MadeUpAttributes values(listOf("user.a|"), {{"user.a", std::string(65'537, 'v')}});
    EXPECT_EQ(extendedAttributes(values), std::nullopt);
    const MadeUpAttributes names(std::string(65'537, 'n'), {});
    EXPECT_EQ(extendedAttributes(names), std::nullopt);
    EXPECT_EQ(names.calls.size(), 2U) << "nothing is tried a third time";
    const MadeUpAttributes unsupported(std::unexpected(ENOTSUP), {});
    EXPECT_EQ(extendedAttributes(unsupported), std::nullopt);
    EXPECT_EQ(unsupported.calls.size(), 1U);
    const MadeUpAttributes none("", {});
    EXPECT_EQ(extendedAttributes(none), std::nullopt);
    EXPECT_EQ(none.calls.size(), 1U);
}

TEST_F(LinuxFileManagerExtendedAttributesTest, areAllOrNoneButForEmptyNamesAndRemovedOnes) {
    struct Row {
        const char* name;
        MadeUpAttributes calls;
        std::optional<Attributes> expected;
    };
    const std::vector<Row> rows{
        {"a value fails",
         {listOf("user.a|user.b|"), {{"user.a", "1"}, {"user.b", std::unexpected(EACCES)}}},
         std::nullopt},
        {"the last name has no terminator", {"user.a", {{"user.a", "1"}}}, Attributes{{"user.a", "1"}}},
        {"names are empty",
         {listOf("|user.a|||user.b||"), {{"", std::unexpected(ERANGE)}, {"user.a", "1"}, {"user.b", "2"}}},
         Attributes{{"user.a", "1"}, {"user.b", "2"}}},
        {"two were removed meanwhile",
         {listOf("user.a|user.b|user.c|"), {{"user.c", "2"}}},
         Attributes{{"user.c", "2"}}},
        {"all were removed meanwhile", {listOf("user.a|user.b|"), {}}, std::nullopt}};
    for (const auto& [name, calls, expected] : rows) {
        EXPECT_EQ(extendedAttributes(calls), expected) << name;
    }
}

} // namespace
} // namespace tolvane::platform
