#include "platform/linux/files/LinuxExtendedAttributeCalls.h"
#include "platform/linux/files/LinuxFileManager.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

namespace {

using tests::setExtendedAttribute;
using tests::TemporaryFolder;
using Attributes = std::map<std::string, std::string>;

// What stands under NSFileExtendedAttributes, values as text; nothing when the entry is absent.
std::optional<Attributes> extendedAttributes(
    const ExtendedAttributeCalls& calls, const std::string& path = "/dev/null") {
    const auto attributes = LinuxFileManager(calls).attributesOfItemAtPath(path).value();
    const Value* entry = attributes.find(NSFileExtendedAttributes);
    if (entry == nullptr) {
        return std::nullopt;
    }
    Attributes shown;
    for (const auto& [name, value] : *entry->as<Dictionary>()) {
        std::string bytes;
        for (const std::byte byte : *value.as<Data>()) {
            bytes += std::to_integer<char>(byte);
        }
        shown.emplace(name, bytes);
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

// Attributes that a test makes up, failing ones among them. Every call is noted down.
class MadeUpAttributes final : public ExtendedAttributeCalls {
public:
    std::expected<std::string, int> list;
    std::map<std::string, std::expected<std::string, int>> values;
    mutable std::vector<std::string> calls;

    MadeUpAttributes(
        std::expected<std::string, int> names,
        std::map<std::string, std::expected<std::string, int>> contents)
        : list(std::move(names))
        , values(std::move(contents)) {}

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
    static Answer answer(const std::expected<std::string, int>& bytes, std::span<Byte> buffer) {
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

// A list as the system writes it, from names with a bar behind each.
std::string listOf(std::string names) {
    std::ranges::replace(names, '|', '\0');
    return names;
}

} // namespace

TEST(LinuxFileManagerExtendedAttributes, listsNamesWithTheirValues) {
    const TemporaryFolder folder;
    const auto path = folder.file("a");
    const std::string binary("\0\xFF\0\n", 4);
    if (!setExtendedAttribute(path, "user.note", "hello") || !setExtendedAttribute(path, "user.empty", "")
        || !setExtendedAttribute(path, "user.binary", binary)) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    const Attributes expected{{"user.note", "hello"}, {"user.empty", ""}, {"user.binary", binary}};
    EXPECT_EQ(userAttributes(path), expected);
}

TEST(LinuxFileManagerExtendedAttributes, listsThoseOfFolders) {
    const TemporaryFolder folder;
    if (!setExtendedAttribute(folder.path(), "user.note", "hello")) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    EXPECT_EQ(userAttributes(folder.path()), (Attributes{{"user.note", "hello"}}));
}

TEST(LinuxFileManagerExtendedAttributes, readsLargeValuesWhole) {
    const TemporaryFolder folder("/dev/shm");
    const auto path = folder.file("a");
    std::string large(60'000, 'x');
    large.back() = 'y';
    if (!setExtendedAttribute(path, "user.large", large)) {
        GTEST_SKIP() << "no large attributes here: " << std::strerror(errno);
    }
    EXPECT_EQ(userAttributes(path), (Attributes{{"user.large", large}}));
}

TEST(LinuxFileManagerExtendedAttributes, showsNamesThatAreNotUtf8AndLosesNone) {
    const TemporaryFolder folder;
    const auto path = folder.file("a");
    if (!setExtendedAttribute(path, "user.a\xFF", "1") || !setExtendedAttribute(path, "user.a\xFE", "2")
        || !setExtendedAttribute(path, "user.a\uFFFD", "readable")) {
        GTEST_SKIP() << "no such attributes here: " << std::strerror(errno);
    }
    const auto attributes = userAttributes(path);
    ASSERT_TRUE(attributes);
    ASSERT_EQ(attributes->size(), 3U);
    EXPECT_EQ(attributes->at("user.a\uFFFD"), "readable");
    EXPECT_EQ(attributes->at("user.a\uFFFD\uFFFD") + attributes->at("user.a\uFFFD\uFFFD\uFFFD"), "12");
}

TEST(LinuxFileManagerExtendedAttributes, readsListAndValuesWithOneCallEach) {
    const MadeUpAttributes calls(listOf("user.a|user.b|"), {{"user.a", "123"}, {"user.b", ""}});
    EXPECT_EQ(extendedAttributes(calls), (Attributes{{"user.a", "123"}, {"user.b", ""}}));
    const std::vector<std::string> expected{"list /dev/null 1024", "get user.a 1024", "get user.b 1024"};
    EXPECT_EQ(calls.calls, expected);
}

TEST(LinuxFileManagerExtendedAttributes, offersTheMostThatLinuxAllowsWhereThatIsTooLittle) {
    const std::string longName = "user." + std::string(1'100, 'n');
    const std::string large(65'536, 'v');
    const MadeUpAttributes calls(listOf(longName + "|user.b|"), {{longName, "1"}, {"user.b", large}});
    EXPECT_EQ(extendedAttributes(calls), (Attributes{{longName, "1"}, {"user.b", large}}));
    const std::vector<std::string> expected{
        "list /dev/null 1024", "list /dev/null 65536", "get " + longName + " 1024", "get user.b 1024",
        "get user.b 65536"};
    EXPECT_EQ(calls.calls, expected);
}

TEST(LinuxFileManagerExtendedAttributes, leavesTheEntryOutWhenNoRoomIsEnough) {
    const MadeUpAttributes values(listOf("user.a|"), {{"user.a", std::string(65'537, 'v')}});
    EXPECT_EQ(extendedAttributes(values), std::nullopt);
    const MadeUpAttributes names(std::string(65'537, 'n'), {});
    EXPECT_EQ(extendedAttributes(names), std::nullopt);
    EXPECT_EQ(names.calls.size(), 2U) << "nothing is tried a third time";
}

TEST(LinuxFileManagerExtendedAttributes, makesOneCallForAnItemWithoutAttributes) {
    const MadeUpAttributes calls("", {});
    EXPECT_EQ(extendedAttributes(calls), std::nullopt);
    EXPECT_EQ(calls.calls, std::vector<std::string>{"list /dev/null 1024"});
}

TEST(LinuxFileManagerExtendedAttributes, leavesTheEntryOutWhenListingFails) {
    const MadeUpAttributes calls(std::unexpected(ENOTSUP), {});
    EXPECT_EQ(extendedAttributes(calls), std::nullopt);
    EXPECT_EQ(calls.calls.size(), 1U);
}

TEST(LinuxFileManagerExtendedAttributes, takesALastNameWithoutItsTerminator) {
    EXPECT_EQ(
        extendedAttributes(MadeUpAttributes("user.a", {{"user.a", "1"}})), (Attributes{{"user.a", "1"}}));
}

TEST(LinuxFileManagerExtendedAttributes, passesOverEmptyNamesAndLosesNoOther) {
    const MadeUpAttributes calls(
        listOf("|user.a|||user.b||"), {{"", std::unexpected(ERANGE)}, {"user.a", "1"}, {"user.b", "2"}});
    EXPECT_EQ(extendedAttributes(calls), (Attributes{{"user.a", "1"}, {"user.b", "2"}}));
}

TEST(LinuxFileManagerExtendedAttributes, leavesOutTheOnesThatWereRemovedMeanwhile) {
    const auto list = listOf("user.a|user.b|user.c|");
    EXPECT_EQ(extendedAttributes(MadeUpAttributes(list, {{"user.c", "2"}})), (Attributes{{"user.c", "2"}}));
    EXPECT_EQ(extendedAttributes(MadeUpAttributes(list, {})), std::nullopt);
}

TEST(LinuxFileManagerExtendedAttributes, leavesTheEntryOutRatherThanListingItInPart) {
    const MadeUpAttributes calls(
        listOf("user.a|user.b|"), {{"user.a", "1"}, {"user.b", std::unexpected(EACCES)}});
    EXPECT_EQ(extendedAttributes(calls), std::nullopt);
}

} // namespace tolvane::platform
