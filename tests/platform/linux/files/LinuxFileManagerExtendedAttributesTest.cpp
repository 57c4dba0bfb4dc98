#include "platform/linux/files/LinuxExtendedAttributeCalls.h"
#include "platform/linux/files/LinuxFileManager.h"
#include "tests/platform/linux/FolderTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;
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
        const Data& bytes = *value.as<Data>();
        shown.emplace(name, std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
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
}

TEST_F(LinuxFileManagerExtendedAttributesTest, listsThoseOfFolders) {
    setAttribute(folder.path(), "user.note", "hello");
    EXPECT_EQ(userAttributes(folder.path()), (Attributes{{"user.note", "hello"}}));
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
}

TEST_F(LinuxFileManagerExtendedAttributesTest, makesOneCallForAnItemWithoutAttributes) {
    const MadeUpAttributes calls("", {});
    EXPECT_EQ(extendedAttributes(calls), std::nullopt);
    EXPECT_THAT(calls.calls, ElementsAre("list /dev/null 1024"));
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
