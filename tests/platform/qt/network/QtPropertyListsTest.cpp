#include "platform/qt/network/QtPropertyLists.h"

#include "platform/CocoaError.h"
#include "tests/support/ScriptedSources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <plist/plist.h>

namespace tolvane::tests {
namespace {

using platform::Array;
using platform::Dictionary;
using platform::QtPropertyLists;
using platform::Result;
using platform::Value;

const std::string allKinds =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Example//DTD PLIST 1.0//EN" "http://example.com/list.dtd">
<plist version="1.0">
<!-- a comment -->
<dict>
    <key>array</key><array><string>a</string><array/><dict/></array>
    <key>data</key><data>AAEC/w==</data>
    <key>date</key><date>2001-01-02T00:00:01Z</date>
    <key>empty</key><string></string>
    <key>false</key><false/>
    <key>integer</key><integer>-5</integer>
    <key>large</key><integer>9223372036854775807</integer>
    <key>real</key><real>1.5</real>
    <key>text</key><string>ü &amp; &lt;b&gt; &#x20AC;</string>
    <key>true</key><true/>
</dict>
</plist>
)";

Dictionary allKindsRead() {
    return {
        {"array", Array{"a", Array{}, Dictionary{}}},
        {"data", platform::Data{std::byte{0}, std::byte{1}, std::byte{2}, std::byte{255}}},
        {"date", platform::Date(86401)},
        {"empty", ""},
        {"false", false},
        {"integer", std::int64_t{-5}},
        {"large", std::int64_t{9223372036854775807}},
        {"real", 1.5},
        {"text", "ü & <b> €"},
        {"true", true}};
}

Result<Value> read(std::string_view bytes) {
    return QtPropertyLists().propertyListWithData(bytesOf(bytes));
}

std::string list(const std::string& contents) {
    return "<plist version=\"1.0\">" + contents + "</plist>";
}

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

/// The binary form of a list in XML.
std::string binaryOf(const std::string& xml) {
    plist_t node = nullptr;
    plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &node);
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &bytes, &length);
    plist_free(node);
    std::string binary(bytes, length);
    plist_to_bin_free(bytes);
    return binary;
}

void expectRefusal(std::string_view bytes) {
    const auto result = read(bytes);
    ASSERT_FALSE(result) << bytes.substr(0, 100);
    EXPECT_EQ(result.error().domain, platform::NSCocoaErrorDomain);
    EXPECT_EQ(result.error().code, platform::NSPropertyListReadCorruptError);
}

TEST(QtPropertyLists, readsEveryKindInXML) {
    const auto result = read(allKinds);
    ASSERT_TRUE(result);
    EXPECT_EQ(*result, Value(allKindsRead()));
}

TEST(QtPropertyLists, readsEveryKindInTheBinaryFormat) {
    const std::string binary = binaryOf(allKinds);
    ASSERT_TRUE(binary.starts_with("bplist00"));
    const auto result = read(binary);
    ASSERT_TRUE(result);
    EXPECT_EQ(*result, Value(allKindsRead()));
}

TEST(QtPropertyLists, tellsAnIdentifierOfTheKeyedArchivesAsItsNumber) {
    const auto result = read(
        "bplist00\x80\x07\x08" + std::string(6, '\0') + "\x01\x01" + std::string(7, '\0') + "\x01"
        + std::string(15, '\0') + "\x0A");
    ASSERT_TRUE(result);
    EXPECT_EQ(*result, Value(std::uint64_t{7}));
}

TEST(QtPropertyLists, refusesAKeyOfWideCharactersThatHoldsANul) {
    using namespace std::string_literals;
    const std::string end = "\x08\x0B\x12"s + std::string(6, '\0') + "\x01\x01" + std::string(7, '\0')
                            + "\x03" + std::string(15, '\0') + "\x14";
    const auto whole = read("bplist00\xD1\x01\x02\x63\0a\0b\0c\x51x"s + end);
    ASSERT_TRUE(whole);
    EXPECT_EQ(*whole, Value(Dictionary{{"abc", "x"}}));
    expectRefusal("bplist00\xD1\x01\x02\x63\0a\0\0\0c\x51x"s + end);
}

TEST(QtPropertyLists, readsWhateverIsOnTop) {
    EXPECT_EQ(read(list("<string>a</string>")), Value("a"));
    EXPECT_EQ(read(list("<array/>")), Value(Array{}));
    EXPECT_EQ(read(list("<true/>")), Value(true));
    EXPECT_EQ(read(binaryOf(list("<array/>"))), Value(Array{}));
}

TEST(QtPropertyLists, keepsTheOrderOfAnArrayAndManyEntries) {
    std::string elements;
    Array expected;
    for (int i = 0; i < 3000; ++i) {
        elements += "<dict><key>n</key><integer>" + std::to_string(i) + "</integer></dict>";
        expected.emplace_back(Dictionary{{"n", std::int64_t{i}}});
    }
    EXPECT_EQ(read(list("<array>" + elements + "</array>")), Value(expected));
    EXPECT_EQ(read(binaryOf(list("<array>" + elements + "</array>"))), Value(expected));
}

TEST(QtPropertyLists, takesTheLastOfSeveralValuesOfAKey) {
    EXPECT_EQ(
        read(list("<dict><key>a</key><true/><key>a</key><string>b</string></dict>")),
        Value(Dictionary{{"a", "b"}}));
}

TEST(QtPropertyLists, refusesWhatIsNoList) {
    for (const char* const bytes :
         {"", " ", "hello", "<", "<plist>", "<plist></plist>", "<plist version=\"1.0\"><array>",
          "<plist><array></dict></plist>", "<plist><unknown/></plist>", "<plist><dict><true/></dict></plist>",
          "<html><body>Not found</body></html>", "bplist00", "bplist", "( { AppName = Tolvane; } )", "[]",
          "{}"}) {
        expectRefusal(bytes);
    }
    expectRefusal(std::string_view("\0\0\0", 3));
}

TEST(QtPropertyLists, refusesABinaryListThatIsCutOffOrChanged) {
    const std::string binary = binaryOf(allKinds);
    for (std::size_t length = 0; length < binary.size(); ++length) {
        expectRefusal(std::string_view(binary).substr(0, length));
    }
    // Whatever a changed byte makes of it, an answer comes.
    for (std::size_t i = 0; i < binary.size(); ++i) {
        for (const int change : {1, 0x10, 0x80, 0xFF}) {
            std::string changed = binary;
            changed[i] = static_cast<char>(changed[i] ^ change);
            static_cast<void>(read(changed));
        }
    }
}

TEST(QtPropertyLists, readsDeepListsUpToALimit) {
    const auto nested = [](int depth) {
        return list(repeated("<array>", depth) + repeated("</array>", depth));
    };
    EXPECT_TRUE(read(nested(500)));
    EXPECT_TRUE(read(binaryOf(nested(500))));
    for (const int depth : {600, 5000, 10'000, 10'001, 60'000}) {
        expectRefusal(nested(depth));
    }
    for (const int depth : {600, 5000, 9999}) {
        expectRefusal(binaryOf(nested(depth)));
    }
    expectRefusal(list(repeated("<dict><key>a</key>", 50'000)));
    expectRefusal(repeated("<array>", 140'000));
}

TEST(QtPropertyLists, readsAHugeTextButNotTooManyElements) {
    const std::string text(900'000, 'a');
    EXPECT_EQ(read(list("<string>" + text + "</string>")), Value(text));
    EXPECT_TRUE(read(list("<array>" + repeated("<true/>", 100'000) + "</array>")));
    expectRefusal(list("<array>" + repeated("<true/>", 200'001) + "</array>"));
    std::string keys;
    for (int i = 0; i < 30'000; ++i) {
        keys += "<key>" + std::to_string(i) + "</key><true/>";
    }
    EXPECT_TRUE(read(list("<dict>" + keys + "</dict>")));
}

} // namespace
} // namespace tolvane::tests
