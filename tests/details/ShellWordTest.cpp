#include "details/ShellWord.h"

#include "tests/support/DetailsWindow.h"
#include "tests/support/Process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using details::shellWord;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ShellWord, quotesNoMoreThanIsNeeded) {
    EXPECT_EQ(shellWord("/home/demo/notes-1_a.txt"), "/home/demo/notes-1_a.txt");
    EXPECT_EQ(shellWord("/a b"), "'/a b'");
    EXPECT_EQ(shellWord("/Übersicht"), "'/Übersicht'");
    EXPECT_EQ(shellWord("/it's"), "'/it'\\''s'");
    EXPECT_EQ(shellWord("/$HOME`a`\\n\"!*~"), "'/$HOME`a`\\n\"!*~'");
    EXPECT_EQ(shellWord("/a\nb"), "$'/a\\012b'");
    EXPECT_EQ(
        shellWord("/\xFF"
                  "7'\\"),
        "$'/\\3777\\'\\\\'");
    EXPECT_EQ(shellWord("/a\u202Eb"), "$'/a\\342\\200\\256b'");
    EXPECT_EQ(shellWord(""), "''");
}

TEST(ShellWord, isTakenForTheSameBytesByEveryShell) {
    std::vector<std::string> names{
        "/plain",
        "/a b'c\"d",
        "/-\n\t\r",
        "/ü 字",
        "/\xC3",
        "/\xC3'\\\xFF"
        "0",
        "/*?[a]{b,c}"};
    std::string everyByte = "/";
    for (int byte = 1; byte < 256; ++byte) {
        everyByte += static_cast<char>(byte);
    }
    names.push_back(everyByte);
    std::string script;
    std::string expected;
    for (const std::string& name : names) {
        script += "printf '%s|' " + shellWord(name) + "\n";
        expected += name + "|";
    }
    int shells = 0;
    for (const char* const shell : {"bash", "zsh", "ksh", "mksh"}) {
        if (!isInstalled(shell)) {
            continue;
        }
        ++shells;
        ProcessSetup setup;
        setup.command = {shell};
        setup.input = script;
        EXPECT_EQ(run(setup).out, expected) << shell;
        setup.environment.emplace_back("LC_ALL=C.UTF-8");
        EXPECT_EQ(run(setup).out, expected) << shell;
    }
    EXPECT_GT(shells, 0);
}

class ShellWordInWindow : public testing::Test, public DetailsWindow {};

TEST_F(ShellWordInWindow, isCopiedWithTheBytesAndNotWhatIsShown) {
    url = platform::URL::fileURLWithPath("/data/\xFF b");
    open();
    EXPECT_EQ(controller().pathTextbox->stringValue(), "/data/\uFFFD b");
    EXPECT_THAT(controller().pathTextbox->note(), testing::HasSubstr("not the exact name"));
    controller().copyShellWord(nullptr);
    EXPECT_THAT(pasteboard.texts(), ElementsAre("$'/data/\\377 b'"));
}

TEST_F(ShellWordInWindow, isNotCopiedWithoutARecord) {
    open();
    EXPECT_EQ(controller().pathTextbox->note(), "") << "the path is shown exactly";
    window().setWindowController({});
    controller().copyShellWord(nullptr);
    EXPECT_THAT(pasteboard.texts(), IsEmpty());
}

} // namespace
} // namespace tolvane::tests
