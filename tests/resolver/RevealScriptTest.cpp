#include "resolver/RevealScript.h"

#include <gtest/gtest.h>

namespace tolvane::resolver {
namespace {

TEST(RevealScript, putsThePathBetween27And45Characters) {
    const std::string script = revealScript("/data/notes.txt");
    EXPECT_EQ(
        script, "set thePath to POSIX file \"/data/notes.txt\"\n"
                "tell application \"Finder\" to reveal thePath");
    EXPECT_EQ(script.find("/data/notes.txt"), 27U);
    EXPECT_EQ(revealScript("").size(), 27U + 45U);
}

TEST(RevealScript, insertsThePathUnchanged) {
    for (const std::string path : {"/My Files/Größe 文.txt", "/a\"b\\c\nd\xFF"}) {
        EXPECT_TRUE(revealScript(path).contains("file \"" + path + "\"\ntell")) << path;
    }
}

} // namespace
} // namespace tolvane::resolver
