#include "platform/linux/LinuxBookmarks.h"

#include <gtest/gtest.h>

namespace tolvane::platform {

TEST(LinuxBookmarks, failsToMakeABookmark) {
    const auto data = LinuxBookmarks().bookmarkData(URL::fileURLWithPath("/"));
    ASSERT_FALSE(data);
    EXPECT_EQ(data.error().domain, NSCocoaErrorDomain);
    EXPECT_EQ(data.error().code, 256);
    EXPECT_EQ(data.error().localizedDescription(), "Bookmarks cannot be made on this system yet.");
}

TEST(LinuxBookmarks, failsToReadAnAliasFile) {
    const auto data = LinuxBookmarks().bookmarkDataWithContentsOfURL(URL::fileURLWithPath("/"));
    ASSERT_FALSE(data);
    EXPECT_EQ(data.error().domain, NSCocoaErrorDomain);
    EXPECT_EQ(data.error().code, 256);
    EXPECT_EQ(data.error().localizedDescription(), "Alias files cannot be read on this system yet.");
}

TEST(LinuxBookmarks, failsToResolveABookmark) {
    const auto bookmark = LinuxBookmarks().URLByResolvingBookmarkData({});
    ASSERT_FALSE(bookmark);
    EXPECT_EQ(bookmark.error().domain, NSCocoaErrorDomain);
    EXPECT_EQ(bookmark.error().code, 259);
    EXPECT_EQ(bookmark.error().localizedDescription(), "Bookmarks cannot be resolved on this system yet.");
}

} // namespace tolvane::platform
