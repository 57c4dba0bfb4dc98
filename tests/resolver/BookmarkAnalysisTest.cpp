#include "resolver/BookmarkAnalysis.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

namespace tolvane::resolver {
namespace {

using platform::Dictionary;

TEST(BookmarkAnalysis, saysNilForAMissingAnswer) {
    EXPECT_EQ(bookmarkAnalysis(std::nullopt, std::nullopt), "nil\n\n\nnil");
}

TEST(BookmarkAnalysis, marksAnEmptyAnswer) {
    EXPECT_EQ(bookmarkAnalysis(Dictionary{}, std::nullopt), "Optional([:])\n\n\nnil");
    EXPECT_EQ(bookmarkAnalysis(std::nullopt, Dictionary{}), "nil\n\n\nOptional([:])");
}

TEST(BookmarkAnalysis, describesNestedPropertiesOneALine) {
    const Dictionary all{
        {"NSURLBookmarkAllPropertiesKey",
         Dictionary{
             {"NSURLIsDirectoryKey", false},
             {"NSURLNameKey", "Größe"},
             {"NSURLParentKey", Dictionary{{"NSURLFileSizeKey", std::int64_t{7}}}}}}};
    EXPECT_EQ(
        bookmarkAnalysis(all, std::nullopt),
        "Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkAllPropertiesKey): {\n"
        "    NSURLIsDirectoryKey = 0;\n"
        "    NSURLNameKey = \"Gr\\U00f6\\U00dfe\";\n"
        "    NSURLParentKey =     {\n"
        "        NSURLFileSizeKey = 7;\n"
        "    };\n"
        "}])\n\n\nnil");
}

TEST(BookmarkAnalysis, showsTheDetailedDescriptionAsItsText) {
    EXPECT_EQ(
        bookmarkAnalysis(std::nullopt, Dictionary{{"NSURLBookmarkDetailedDescription", "a \"b\"\n\tc\n"}}),
        "nil\n\n\n"
        "Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkDetailedDescription): a \"b\"\n\tc\n])");
}

TEST(BookmarkAnalysis, separatesEntriesByACommaAndASpace) {
    EXPECT_EQ(
        bookmarkAnalysis(Dictionary{{"b", "two"}, {"a", std::int32_t{1}}}, Dictionary{{"c", true}}),
        "Optional([__C.NSURLResourceKey(_rawValue: a): 1, __C.NSURLResourceKey(_rawValue: b): two])\n\n\n"
        "Optional([__C.NSURLResourceKey(_rawValue: c): 1])");
}

} // namespace
} // namespace tolvane::resolver
