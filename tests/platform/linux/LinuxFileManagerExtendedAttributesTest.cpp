#include "platform/linux/LinuxExtendedAttributeCalls.h"
#include "platform/linux/LinuxFileManager.h"
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

// A file whose attributes change between one call and the next: `before` answers the size queries, `after`
// the reads. Every call is noted down.
class ChangingAttributes final : public ExtendedAttributeCalls {
public:
    struct State {
        std::expected<std::string, int> list;
        std::map<std::string, std::expected<std::string, int>> values;
    };

    ChangingAttributes(State before, State after) : before_(std::move(before)), after_(std::move(after)) {}
    explicit ChangingAttributes(const State& state) : ChangingAttributes(state, state) {}

    Answer listxattr(const char* path, std::span<char> buffer) const override {
        calls.push_back("list " + std::string(path) + " " + std::to_string(buffer.size()));
        return answer(buffer.empty() ? before_.list : after_.list, buffer);
    }

    Answer getxattr(const char* /*path*/, const char* name, std::span<std::byte> buffer) const override {
        calls.push_back("get " + std::string(name) + " " + std::to_string(buffer.size()));
        const auto& values = buffer.empty() ? before_.values : after_.values;
        const auto value = values.find(name);
        return value == values.end() ? std::unexpected(ENODATA) : answer(value->second, buffer);
    }

    mutable std::vector<std::string> calls;

private:
    template <typename Byte>
    static Answer answer(const std::expected<std::string, int>& bytes, std::span<Byte> buffer) {
        if (!bytes) {
            return std::unexpected(bytes.error());
        }
        if (!buffer.empty() && buffer.size() < bytes->size()) {
            return std::unexpected(ERANGE);
        }
        if (!buffer.empty()) {
            std::memcpy(buffer.data(), bytes->data(), bytes->size());
        }
        return static_cast<std::int64_t>(bytes->size());
    }

    State before_;
    State after_;
};

using State = ChangingAttributes::State;

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

TEST(LinuxFileManagerExtendedAttributes, asksForEachSizeAndReadsExactlyThatMuch) {
    const ChangingAttributes calls(State{listOf("user.a|user.b|"), {{"user.a", "123"}, {"user.b", "12345"}}});
    EXPECT_EQ(extendedAttributes(calls), (Attributes{{"user.a", "123"}, {"user.b", "12345"}}));
    const std::vector<std::string> expected{"list /dev/null 0", "list /dev/null 14", "get user.a 0",
                                            "get user.a 3",     "get user.b 0",      "get user.b 5"};
    EXPECT_EQ(calls.calls, expected);
}

TEST(LinuxFileManagerExtendedAttributes, makesOneCallForAnItemWithoutAttributes) {
    const ChangingAttributes calls(State{"", {}});
    EXPECT_EQ(extendedAttributes(calls), std::nullopt);
    EXPECT_EQ(calls.calls, std::vector<std::string>{"list /dev/null 0"});
}

TEST(LinuxFileManagerExtendedAttributes, leavesTheEntryOutWhenListingFails) {
    EXPECT_EQ(extendedAttributes(ChangingAttributes(State{std::unexpected(ENOTSUP), {}})), std::nullopt);
    const State readable{listOf("user.a|"), {{"user.a", "1"}}};
    const State unlistable{std::unexpected(EACCES), {{"user.a", "1"}}};
    EXPECT_EQ(extendedAttributes(ChangingAttributes(readable, unlistable)), std::nullopt);
}

TEST(LinuxFileManagerExtendedAttributes, leavesTheEntryOutWhenTheListGrewMeanwhile) {
    const State before{listOf("user.a|"), {{"user.a", "1"}}};
    const State after{listOf("user.a|user.b|"), {{"user.a", "1"}, {"user.b", "2"}}};
    const ChangingAttributes calls(before, after);
    EXPECT_EQ(extendedAttributes(calls), std::nullopt);
    EXPECT_EQ(calls.calls.size(), 2U);
}

TEST(LinuxFileManagerExtendedAttributes, listsWhatIsLeftWhenTheListShrankMeanwhile) {
    const State before{listOf("user.a|user.b|"), {{"user.a", "1"}, {"user.b", "2"}}};
    const State after{listOf("user.b|"), {{"user.b", "2"}}};
    EXPECT_EQ(extendedAttributes(ChangingAttributes(before, after)), (Attributes{{"user.b", "2"}}));
    EXPECT_EQ(extendedAttributes(ChangingAttributes(before, State{"", {}})), std::nullopt);
}

TEST(LinuxFileManagerExtendedAttributes, takesWhatIsLeftOfAValueThatShrankMeanwhile) {
    const State before{listOf("user.a|"), {{"user.a", "12345"}}};
    const State after{listOf("user.a|"), {{"user.a", "12"}}};
    EXPECT_EQ(extendedAttributes(ChangingAttributes(before, after)), (Attributes{{"user.a", "12"}}));
}

TEST(LinuxFileManagerExtendedAttributes, leavesTheEntryOutWhenAValueGrewMeanwhile) {
    const State before{listOf("user.a|user.b|"), {{"user.a", "12"}, {"user.b", "1"}}};
    const State after{listOf("user.a|user.b|"), {{"user.a", "123"}, {"user.b", "1"}}};
    const ChangingAttributes calls(before, after);
    EXPECT_EQ(extendedAttributes(calls), std::nullopt);
    EXPECT_EQ(calls.calls.back(), "get user.a 2");
}

TEST(LinuxFileManagerExtendedAttributes, leavesOutTheOnesThatWereRemovedMeanwhile) {
    const auto list = listOf("user.a|user.b|user.c|");
    const State before{list, {{"user.b", "1"}, {"user.c", "2"}}};
    const State after{list, {{"user.c", "2"}}};
    EXPECT_EQ(extendedAttributes(ChangingAttributes(before, after)), (Attributes{{"user.c", "2"}}));
    EXPECT_EQ(extendedAttributes(ChangingAttributes(State{list, {}})), std::nullopt);
}

TEST(LinuxFileManagerExtendedAttributes, leavesTheEntryOutRatherThanListingItInPart) {
    const State state{listOf("user.a|user.b|"), {{"user.a", "1"}, {"user.b", std::unexpected(EACCES)}}};
    EXPECT_EQ(extendedAttributes(ChangingAttributes(state)), std::nullopt);
}

} // namespace tolvane::platform
