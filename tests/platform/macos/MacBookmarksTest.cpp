#include "platform/macos/bookmarks/MacBookmarks.h"

#include "tests/platform/macos/substitute/Substitute.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

namespace tolvane {
namespace {

using namespace platform;
using namespace tests::macos;
using testing::ElementsAre;

class MacBookmarksTest : public testing::Test {
protected:
    MacBookmarksTest() {
        substitute.bookmark = [] { return newData({'b', 'o', 'o', 'k'}); };
        substitute.resolvedItem = [] { return newURL("file:///moved/item"); };
        substitute.bookmarkProperties = [] {
            return newDictionary({{newString("NSURLBookmarkDetailedDescription"), newString("lines")}});
        };
        substitute.error = [] { return newError("NSCocoaErrorDomain", 259, "Not a bookmark."); };
    }

    /// Runs an operation with each of its calls failing in turn, and then with none. None leaves an object
    /// behind.
    template <typename Operation>
    void failEachCall(std::size_t calls, const Operation& succeeds) {
        for (std::size_t index = 0; index <= calls; ++index) {
            substitute.failCall(index);
            EXPECT_EQ(succeeds(), index == calls) << index;
            EXPECT_EQ(substitute.hasFailed(), index < calls) << index;
            EXPECT_EQ(livingObjects(), 0U) << index;
        }
    }

    Substitute substitute;
    MacBookmarks bookmarks;
    const URL item = URL::fileURLWithPath("/folder/item");
    const Data book{std::byte{'b'}, std::byte{'o'}, std::byte{'o'}, std::byte{'k'}};
};

TEST_F(MacBookmarksTest, makesBookmarksWithoutOptionsValuesOrBase) {
    EXPECT_EQ(bookmarks.bookmarkData(item), book);
    EXPECT_THAT(substitute.calls, ElementsAre("bookmark of file:///folder/item 0 null null"));
}

TEST_F(MacBookmarksTest, readsTheBookmarkInAFile) {
    EXPECT_EQ(bookmarks.bookmarkDataWithContentsOfURL(item), book);
    EXPECT_THAT(substitute.calls, ElementsAre("bookmark in file:///folder/item"));
}

TEST_F(MacBookmarksTest, resolvesWithoutOptionsAndDoesNotSayHow) {
    substitute.isStale = true;
    const auto resolved = bookmarks.URLByResolvingBookmarkData(book);
    ASSERT_TRUE(resolved);
    EXPECT_EQ(resolved->url, URL::fileURLWithPath("/moved/item"));
    EXPECT_TRUE(resolved->isStale);
    EXPECT_EQ(resolved->match.volume, VolumeMatch::unknown);
    EXPECT_EQ(resolved->match.item, ItemMatch::unknown);
    EXPECT_EQ(resolved->match.storedNumber, std::nullopt);
    EXPECT_THAT(substitute.calls, ElementsAre("resolve 4 bytes 0 null null"));
}

TEST_F(MacBookmarksTest, reportsTheSystemsError) {
    substitute.bookmark = nullptr;
    substitute.resolvedItem = nullptr;
    EXPECT_EQ(bookmarks.bookmarkData(item).error().code, NSFileReadCorruptFileError);
    EXPECT_EQ(bookmarks.bookmarkDataWithContentsOfURL(item).error().code, NSFileReadCorruptFileError);
    EXPECT_EQ(bookmarks.URLByResolvingBookmarkData(book).error().localizedDescription(), "Not a bookmark.");
}

TEST_F(MacBookmarksTest, refusesURLsWithoutAPath) {
    const URL page = URL::fromText("https://example.org/a").value();
    EXPECT_EQ(bookmarks.bookmarkData(page).error().code, EINVAL);
    EXPECT_EQ(bookmarks.bookmarkDataWithContentsOfURL(page).error().code, EINVAL);
    EXPECT_TRUE(substitute.calls.empty());
}

TEST_F(MacBookmarksTest, returnsThePropertiesOfOneKey) {
    const ReadProperties read = readSystemProperties(book);
    EXPECT_FALSE(read.failure);
    EXPECT_EQ(
        read.properties(NSURLBookmarkDetailedDescription),
        (Dictionary{{std::string(NSURLBookmarkDetailedDescription), "lines"}}));
    EXPECT_THAT(
        substitute.calls, ElementsAre(
                              "properties [NSURLBookmarkAllPropertiesKey] of 4 bytes",
                              "properties [NSURLBookmarkDetailedDescription] of 4 bytes"));
}

TEST_F(MacBookmarksTest, saysThatTheSystemReadsNothing) {
    substitute.bookmarkProperties = nullptr;
    const ReadProperties read = readSystemProperties(book);
    ASSERT_TRUE(read.failure);
    EXPECT_EQ(read.failure->code, NSFileReadCorruptFileError);
    EXPECT_EQ(read.properties(NSURLBookmarkAllPropertiesKey), std::nullopt);
}

TEST_F(MacBookmarksTest, leavesNothingBehindWhereACallFails) {
    failEachCall(2, [this] { return bookmarks.bookmarkData(item).has_value(); });
    failEachCall(2, [this] { return bookmarks.bookmarkDataWithContentsOfURL(item).has_value(); });
    failEachCall(4, [this] { return !readSystemProperties(book).failure; });
    failEachCall(5, [this] {
        const auto resolved = bookmarks.URLByResolvingBookmarkData(book);
        return resolved && resolved->url;
    });
}

} // namespace
} // namespace tolvane
