#include "cli/ResolutionWitness.h"

#include "tests/support/ScriptedSources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::ElementsAre;

class ResolutionWitnessTest : public testing::Test {
protected:
    CallLog log;
    ScriptedBookmarks bookmarks{log};
    ScriptedFileManager fileManager{log};
    cli::ResolutionWitness witness{bookmarks, fileManager};
};

TEST_F(ResolutionWitnessTest, handsEverythingOn) {
    const URL url = URL::fileURLWithPath("/a");
    bookmarks.made = bytesOf("made");
    bookmarks.stored = bytesOf("stored");
    bookmarks.resolved = platform::ResolvedBookmark{url, true};
    fileManager.answer = platform::Dictionary{{"NSFileSize", std::uint64_t{7}}};
    EXPECT_EQ(*witness.bookmarkData(url), bytesOf("made"));
    EXPECT_EQ(*witness.bookmarkDataWithContentsOfURL(url), bytesOf("stored"));
    EXPECT_EQ(witness.URLByResolvingBookmarkData(bytesOf("x"))->url, url);
    EXPECT_EQ(bookmarks.resolvedFrom, bytesOf("x"));
    EXPECT_EQ(*witness.attributesOfItemAtPath("/a"), *fileManager.answer);
    EXPECT_EQ(log.size(), 4U);
}

TEST_F(ResolutionWitnessTest, keepsWhatCameBackLast) {
    EXPECT_FALSE(witness.resolved());
    EXPECT_FALSE(witness.attributesFailure());

    static_cast<void>(witness.URLByResolvingBookmarkData({}));
    ASSERT_TRUE(witness.resolved());
    EXPECT_EQ(witness.resolved()->error().code, EIO);

    bookmarks.resolved = platform::ResolvedBookmark{URL::fileURLWithPath("/a"), true};
    fileManager.answer = std::unexpected(platform::posixError(EACCES));
    static_cast<void>(witness.URLByResolvingBookmarkData({}));
    static_cast<void>(witness.attributesOfItemAtPath("/a"));
    EXPECT_TRUE((*witness.resolved())->isStale);
    EXPECT_EQ(witness.attributesFailure()->code, EACCES);

    static_cast<void>(witness.URLByResolvingBookmarkData({}));
    EXPECT_FALSE(witness.attributesFailure()) << "that was of the one before";
    EXPECT_THAT(log, ElementsAre("resolve", "resolve", "attributesOfItemAtPath /a", "resolve"));
}

} // namespace
} // namespace tolvane::tests
