#include "platform/linux/LinuxBookmarks.h"

#include "platform/bookmark/BookmarkContents.h"
#include "platform/bookmark/BookmarkReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::platform {

TEST(LinuxBookmarks, makesBookmarks) {
    const LinuxBookmarks bookmarks;
    const auto data = bookmarks.bookmarkData(URL::fileURLWithPath("/dev/null"));
    ASSERT_TRUE(data) << data.error().localizedDescription();
    const auto structure = readBookmark(*data);
    ASSERT_TRUE(structure);
    const std::vector<std::string> components{"dev", "null"};
    EXPECT_EQ(bookmarkContents(*structure).pathComponents, components);
    EXPECT_EQ(bookmarks.bookmarkData(URL::fileURLWithPath("/none of that name")).error().code, 260);
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
