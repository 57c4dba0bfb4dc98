#include "platform/linux/LinuxBookmarks.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvane::platform {

TEST(LinuxBookmarks, failsToMakeABookmark) {
    const auto data = LinuxBookmarks().bookmarkData(URL::fileURLWithPath("/"));
    ASSERT_FALSE(data);
    EXPECT_EQ(data.error().domain, NSCocoaErrorDomain);
    EXPECT_EQ(data.error().code, 256);
    EXPECT_EQ(data.error().localizedDescription(), "Bookmarks cannot be made on this system yet.");
}

TEST(LinuxBookmarks, readsAliasFiles) {
    const std::string file = TOLVANE_SOURCE_DIR "/tests/data/bookmarks/note.alias";
    const auto data = LinuxBookmarks().bookmarkDataWithContentsOfURL(URL::fileURLWithPath(file));
    ASSERT_TRUE(data);
    EXPECT_EQ(data->size(), 648U);
    EXPECT_EQ(LinuxBookmarks().bookmarkDataWithContentsOfURL(URL::fileURLWithPath("/")).error().code, 259);
}

TEST(LinuxBookmarks, failsToResolveABookmark) {
    const auto bookmark = LinuxBookmarks().URLByResolvingBookmarkData({});
    ASSERT_FALSE(bookmark);
    EXPECT_EQ(bookmark.error().domain, NSCocoaErrorDomain);
    EXPECT_EQ(bookmark.error().code, 259);
    EXPECT_EQ(bookmark.error().localizedDescription(), "Bookmarks cannot be resolved on this system yet.");
}

} // namespace tolvane::platform
