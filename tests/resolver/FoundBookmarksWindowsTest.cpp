#include "resolver/FoundBookmarksWindows.h"

#include "tests/support/FoundBookmarksWindow.h"

#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using platform::URL;

TEST(FoundBookmarksWindows, openOneForEachChosenFile) {
    FoundBookmarksWindow opened;
    const auto action = opened.windows.actionForSelector("findBookmarks:");
    ASSERT_TRUE(action);
    action(nullptr);
    EXPECT_EQ(opened.windows.count(), 0U) << "nothing is chosen yet";
    opened.chosen({URL::fileURLWithPath("/a"), URL::fileURLWithPath("/b")});
    EXPECT_EQ(opened.windows.count(), 2U);
    EXPECT_TRUE(opened.window().isVisible());
    EXPECT_EQ(opened.window().title(), "b — Bookmarks");
}

TEST(FoundBookmarksWindows, openNoneWhereNothingIsChosen) {
    FoundBookmarksWindow opened;
    opened.windows.findBookmarks(nullptr);
    opened.chosen({});
    EXPECT_EQ(opened.windows.count(), 0U);
}

TEST(FoundBookmarksWindows, areReleasedWhenClosed) {
    FoundBookmarksWindow opened;
    opened.search("/a");
    const auto first = opened.newest;
    opened.search("/b");
    first.lock()->view().window()->close();
    EXPECT_TRUE(first.expired());
    EXPECT_EQ(opened.windows.count(), 1U);
    EXPECT_EQ(opened.window().title(), "b — Bookmarks");
}

} // namespace
} // namespace tolvane::tests
