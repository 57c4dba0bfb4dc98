#include "resolver/BookmarkText.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvane::resolver {
namespace {

TEST(BookmarkText, losesItsSpacesLineFeedsAndTabs) {
    EXPECT_EQ(cleanedBookmarkText(" Ym9v\n\tazQC \n"), "Ym9vazQC");
    EXPECT_EQ(cleanedBookmarkText(" \n\t"), "");
    EXPECT_EQ(cleanedBookmarkText(""), "");
}

TEST(BookmarkText, keepsEveryOtherCharacter) {
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        if (c != ' ' && c != '\n' && c != '\t') {
            EXPECT_EQ(cleanedBookmarkText(std::string{'a', c, 'b'}), (std::string{'a', c, 'b'})) << byte;
        }
    }
    EXPECT_EQ(cleanedBookmarkText("a\u00A0b"), "a\u00A0b");
}

} // namespace
} // namespace tolvane::resolver
