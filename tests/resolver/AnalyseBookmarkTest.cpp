#include "resolver/AnalyseBookmark.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::resolver {
namespace {

using platform::Dictionary;

TEST(AnalyseBookmark, removesSpacesLineFeedsAndTabsFromTheText) {
    EXPECT_EQ(cleanedBookmarkText(" Ym9v\n\tazQC \n"), "Ym9vazQC");
    EXPECT_EQ(cleanedBookmarkText(" \n\t"), "");
    EXPECT_EQ(cleanedBookmarkText("a\u00A0b"), "a\u00A0b");
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        if (c != ' ' && c != '\n' && c != '\t') {
            EXPECT_EQ(cleanedBookmarkText(std::string{'a', c, 'b'}), (std::string{'a', c, 'b'})) << byte;
        }
    }
}

TEST(AnalyseBookmark, decodesTheTextOrSaysWhereItFails) {
    EXPECT_EQ(decodedBookmark(""), platform::Data());
    EXPECT_EQ(decodedBookmark("AAAA"), platform::Data(3));
    EXPECT_EQ(decodedBookmark("AAAA!").error(), *platform::base64Fault("AAAA!"));
}

TEST(AnalyseBookmark, asksForAllPropertiesAndThenForTheDescription) {
    std::vector<std::string> keys;
    const std::string analysis = bookmarkAnalysis([&](std::string_view key) {
        keys.emplace_back(key);
        return keys.size() == 1 ? std::nullopt : std::optional(Dictionary());
    });
    EXPECT_THAT(
        keys, testing::ElementsAre("NSURLBookmarkAllPropertiesKey", "NSURLBookmarkDetailedDescription"));
    EXPECT_EQ(analysis, "nil\n\n\nOptional([:])");
}

/// The debug notation of this answer.
std::string notationOf(const std::optional<Dictionary>& answer) {
    const std::string text = bookmarkAnalysis(
        [&](std::string_view key) { return key.ends_with("AllPropertiesKey") ? answer : std::nullopt; });
    EXPECT_TRUE(text.ends_with("\n\n\nnil")) << text;
    return text.substr(0, text.size() - 6);
}

TEST(AnalyseBookmark, writesAnswersInTheDebugNotationOfThePlatform) {
    EXPECT_EQ(notationOf(std::nullopt), "nil");
    EXPECT_EQ(notationOf(Dictionary{}), "Optional([:])");
    EXPECT_EQ(
        notationOf(Dictionary{
            {"NSURLBookmarkAllPropertiesKey",
             Dictionary{
                 {"NSURLIsDirectoryKey", false},
                 {"NSURLNameKey", "Größe"},
                 {"NSURLParentKey", Dictionary{{"NSURLFileSizeKey", std::int64_t{7}}}}}}}),
        "Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkAllPropertiesKey): {\n"
        "    NSURLIsDirectoryKey = 0;\n"
        "    NSURLNameKey = \"Gr\\U00f6\\U00dfe\";\n"
        "    NSURLParentKey =     {\n"
        "        NSURLFileSizeKey = 7;\n"
        "    };\n"
        "}])");
    EXPECT_EQ(
        notationOf(Dictionary{{"NSURLBookmarkDetailedDescription", "a \"b\"\n\tc\n"}}),
        "Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkDetailedDescription): a \"b\"\n\tc\n])");
    EXPECT_EQ(
        notationOf(Dictionary{{"b", "two"}, {"a", std::int32_t{1}}}),
        "Optional([__C.NSURLResourceKey(_rawValue: a): 1, __C.NSURLResourceKey(_rawValue: b): two])");
}

} // namespace
} // namespace tolvane::resolver
