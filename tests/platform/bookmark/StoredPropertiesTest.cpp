#include "platform/bookmark/StoredProperties.h"

#include "platform/bookmark/BookmarkDescription.h"
#include "platform/bookmark/BookmarkProperties.h"
#include "tests/platform/bookmark/Examples.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

namespace tolvane::platform {
namespace {

using namespace tests;
using Keys = std::vector<std::string_view>;

std::optional<Dictionary> answerFor(const Keys& keys, const Data& bookmark) {
    return StoredProperties().resourceValuesForKeys(keys, bookmark);
}

TEST(StoredProperties, answersTheTwoQuestionsOfTheAnalysis) {
    for (const Data& bookmark : {noteBookmark(), noteAliasFile()}) {
        const BookmarkStructure structure = readWell(bookmark);
        EXPECT_EQ(
            answerFor({NSURLBookmarkAllPropertiesKey}, bookmark),
            (Dictionary{{"NSURLBookmarkAllPropertiesKey", bookmarkProperties(structure)}}));
        EXPECT_EQ(
            answerFor({NSURLBookmarkDetailedDescription}, bookmark),
            (Dictionary{{"NSURLBookmarkDetailedDescription", bookmarkDetailedDescription(structure)}}));
    }
}

TEST(StoredProperties, answersAnyOtherKeyWithThePropertyOfThatName) {
    EXPECT_EQ(
        answerFor({"NSURLNameKey", "NSURLIsDirectoryKey", "_NSURLPathKey"}, noteBookmark()),
        (Dictionary{
            {"NSURLNameKey", "note.txt"},
            {"NSURLIsDirectoryKey", false},
            {"_NSURLPathKey", "/Users/demo/note.txt"}}));
}

TEST(StoredProperties, leavesOutWhatTheBookmarkDoesNotTell) {
    EXPECT_EQ(
        answerFor({"NSURLFileSizeKey", "NSURLNameKey"}, noteBookmark()),
        (Dictionary{{"NSURLNameKey", "note.txt"}}));
    EXPECT_EQ(answerFor({"NSURLFileSizeKey"}, noteBookmark()), Dictionary{});
    EXPECT_EQ(answerFor({""}, noteBookmark()), Dictionary{});
    EXPECT_EQ(answerFor({}, noteBookmark()), Dictionary{});
}

TEST(StoredProperties, answersSeveralKeysAtOnceAndEachOnce) {
    const auto answer = answerFor(
        {"NSURLNameKey", NSURLBookmarkDetailedDescription, NSURLBookmarkAllPropertiesKey, "NSURLNameKey"},
        noteBookmark());
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->size(), 3U);
    const auto* const all = answer->find(NSURLBookmarkAllPropertiesKey);
    ASSERT_NE(all, nullptr);
    ASSERT_NE(all->as<Dictionary>(), nullptr);
    EXPECT_EQ(*all->as<Dictionary>(), bookmarkProperties(readWell(noteBookmark())));
}

TEST(StoredProperties, hasNoAnswerForWhatIsNoBookmark) {
    for (const Keys& keys : {Keys{}, Keys{"NSURLNameKey"}, Keys{NSURLBookmarkAllPropertiesKey}}) {
        EXPECT_EQ(answerFor(keys, {}), std::nullopt);
        EXPECT_EQ(answerFor(keys, bytesOfHex("00")), std::nullopt);
        EXPECT_EQ(answerFor(keys, front(noteBookmark(), 647)), std::nullopt);
    }
    for (const auto& entry :
         std::filesystem::directory_iterator(TOLVANE_SOURCE_DIR "/tests/data/bookmarks")) {
        const bool isBad = entry.path().filename().string().starts_with("bad-");
        EXPECT_EQ(!answerFor({"NSURLNameKey"}, bytesOfFile(entry.path())), isBad) << entry.path();
    }
}

} // namespace
} // namespace tolvane::platform
