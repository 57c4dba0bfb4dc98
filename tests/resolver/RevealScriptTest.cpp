#include "resolver/RevealScript.h"

#include <gtest/gtest.h>

namespace tolvane::resolver {
namespace {

TEST(RevealScript, hasTwoLines) {
    EXPECT_EQ(
        revealScript("/data/notes.txt"), "set thePath to POSIX file \"/data/notes.txt\"\n"
                                         "tell application \"Finder\" to reveal thePath");
}

TEST(RevealScript, putsThePathBetween27And45Characters) {
    EXPECT_EQ(revealScript("").size(), 27U + 45U);
    EXPECT_EQ(revealScript("/a").find("/a"), 27U);
    EXPECT_EQ(revealScript("/a").substr(29).size(), 45U);
}

TEST(RevealScript, takesSpacesAndLettersOfAllScriptsAsTheyAre) {
    EXPECT_TRUE(revealScript("/My Files/Größe 文.txt")
                    .starts_with("set thePath to POSIX file \"/My Files/Größe 文.txt\"\n"));
}

TEST(RevealScript, escapesNothing) {
    EXPECT_TRUE(revealScript("/a\"b\\c\nd\xFF").contains("file \"/a\"b\\c\nd\xFF\"\ntell"));
}

} // namespace
} // namespace tolvane::resolver
