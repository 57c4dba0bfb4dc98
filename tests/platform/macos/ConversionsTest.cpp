#include "platform/macos/values/Conversions.h"

#include "tests/platform/macos/substitute/Substitute.h"

#include <gtest/gtest.h>

#include <limits>

namespace tolvane {
namespace {

using namespace platform;
using namespace tests::macos;
using platform::macos::Owned;

/// The value of an object that only the test refers to.
std::optional<Value> valueOfNew(CFTypeRef object) {
    const Owned<CFTypeRef> owned(object);
    return platform::macos::valueOf(object);
}

class MacConversions : public testing::Test {
protected:
    Substitute substitute;
};

TEST_F(MacConversions, convertsEveryKindOfNumberInItsOwnWidth) {
    const auto valueOfNumber = [](CFNumberType type, std::int64_t value) {
        return valueOfNew(newNumber({type, value}));
    };
    EXPECT_EQ(valueOfNumber(kCFNumberSInt8Type, -128), Value(std::int8_t{-128}));
    EXPECT_EQ(valueOfNumber(kCFNumberSInt16Type, 0644), Value(std::int16_t{0644}));
    EXPECT_EQ(valueOfNumber(kCFNumberSInt32Type, 501), Value(std::int32_t{501}));
    constexpr std::int64_t large = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(valueOfNumber(kCFNumberSInt64Type, large), Value(large));
    constexpr CFNumberType longLong = 11;
    EXPECT_EQ(valueOfNumber(longLong, 7), Value(std::int64_t{7}));
    EXPECT_EQ(valueOfNew(newNumber({kCFNumberFloat32Type, 0.5})), Value(0.5F));
    EXPECT_EQ(valueOfNew(newNumber({kCFNumberFloat64Type, 0.1})), Value(0.1));
    constexpr CFNumberType graphicsFloat = 16;
    EXPECT_EQ(valueOfNew(newNumber({graphicsFloat, 2.5})), Value(2.5));
}

TEST_F(MacConversions, leavesOutANumberThatNoTypeTakes) {
    EXPECT_EQ(valueOfNew(newNumber({kCFNumberSInt64Type, std::int64_t{-1}, true})), std::nullopt);
}

TEST_F(MacConversions, convertsTextDatesDataAndTruth) {
    EXPECT_EQ(valueOfNew(newString(u"Grüße 🎈")), Value("Grüße 🎈"));
    EXPECT_EQ(valueOfNew(newString(u"")), Value(""));
    EXPECT_EQ(valueOfNew(newString(std::u16string{u'a', static_cast<char16_t>(0xD83C)})), Value("a\uFFFD"));
    EXPECT_EQ(valueOfNew(newDate(745340822.25)), Value(Date(745340822.25)));
    EXPECT_EQ(valueOfNew(newData({1, 255})), Value(Data{std::byte{1}, std::byte{255}}));
    EXPECT_EQ(valueOfNew(newData({})), Value(Data{}));
    EXPECT_EQ(valueOfNew(newBoolean(true)), Value(true));
    EXPECT_EQ(valueOfNew(newBoolean(false)), Value(false));
    EXPECT_EQ(valueOfNew(newNull()), Value(Null{}));
}

TEST_F(MacConversions, convertsURLsAndUUIDs) {
    const auto url = URL::fromText("file:///a%20b");
    ASSERT_TRUE(url);
    EXPECT_EQ(valueOfNew(newURL("file:///a%20b")), Value(*url));
    EXPECT_EQ(valueOfNew(newURL("no address")), std::nullopt);
    EXPECT_EQ(valueOfNew(newURL("")), std::nullopt);
    const auto uuid = valueOfNew(newUUID({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 255}));
    ASSERT_TRUE(uuid && uuid->as<UUID>() != nullptr);
    EXPECT_EQ(uuid->as<UUID>()->text(), "00010203-0405-0607-0809-0A0B0C0D0EFF");
}

TEST_F(MacConversions, leavesOutElementsAndEntriesOfUnknownKinds) {
    EXPECT_EQ(
        valueOfNew(newArray({newString("a"), newOther(), newBoolean(true)})),
        Value(Array{Value("a"), Value(true)}));
    EXPECT_EQ(
        valueOfNew(newDictionary(
            {{newString("b"), newOther()},
             {newNumber({kCFNumberSInt8Type, std::int64_t{1}}), newString("key that is no text")},
             {newString("z"), newDictionary({{newString("inner"), newArray({})}})},
             {newString("a"), newString("1")}})),
        Value(Dictionary{{"a", "1"}, {"z", Dictionary{{"inner", Array{}}}}}));
    EXPECT_EQ(valueOfNew(newOther()), std::nullopt);
    EXPECT_EQ(platform::macos::valueOf(nullptr), std::nullopt);
}

TEST_F(MacConversions, leavesOutAURLWhenACallFails) {
    for (std::size_t index = 0;; ++index) {
        substitute.failCall(index);
        const auto url = valueOfNew(newURL("file:///a"));
        if (!substitute.hasFailed()) {
            EXPECT_TRUE(url);
            EXPECT_EQ(index, 3U);
            return;
        }
        EXPECT_EQ(url, std::nullopt) << index;
    }
}

TEST_F(MacConversions, makesURLsOfPathsWithTheSlashAtTheirEnd) {
    const auto textOfURL = [](std::string_view path) {
        const auto url = platform::macos::fileURLOf(URL::fileURLWithPath(path));
        const auto back = url ? platform::macos::urlOf(url.get()) : std::nullopt;
        return back ? back->absoluteString() : "none";
    };
    EXPECT_EQ(textOfURL("/a/b"), "file:///a/b");
    EXPECT_EQ(textOfURL("/a/b/"), "file:///a/b/");
    EXPECT_FALSE(platform::macos::fileURLOf(URL::fromText("https://example.org/a").value()));
}

TEST_F(MacConversions, keepsDomainCodeAndDescriptionOfAnError) {
    const Owned<CFErrorRef> owned(static_cast<CFErrorRef>(
        const_cast<void*>(newError("NSCocoaErrorDomain", 260, "There is no such file."))));
    const Error error = platform::macos::errorOf(owned);
    EXPECT_EQ(error.domain, NSCocoaErrorDomain);
    EXPECT_EQ(error.code, NSFileReadNoSuchFileError);
    EXPECT_EQ(error.localizedDescription(), "There is no such file.");

    substitute.failCall(0);
    EXPECT_EQ(platform::macos::errorOf(owned).localizedDescription(), "NSCocoaErrorDomain error 260");
    EXPECT_EQ(platform::macos::errorOf(Owned<CFErrorRef>()).code, NSFileReadUnknownError);
}

} // namespace
} // namespace tolvane
