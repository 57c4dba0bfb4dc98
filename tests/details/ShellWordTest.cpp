#include "details/ShellWord.h"

#include "tests/support/DetailsWindow.h"
#include "tests/support/Process.h"
#include "tests/support/SessionBus.h"

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

TEST(CopyAsShellWord, copiesTheBytesAndNotWhatIsShown) {
    DetailsWindow details;
    details.url = platform::URL::fileURLWithPath("/data/\xFF b");
    details.open();
    details.controller().copyShellWord(nullptr);
    EXPECT_THAT(details.pasteboard.texts(), ElementsAre("$'/data/\\377 b'"));
}

TEST(CopyAsShellWord, copiesNothingWithoutARecord) {
    DetailsWindow details;
    details.open();
    details.window().setWindowController({});
    details.controller().copyShellWord(nullptr);
    EXPECT_THAT(details.pasteboard.texts(), IsEmpty());
}

TEST(PathField, saysWhenItDoesNotShowTheExactName) {
    DetailsWindow exact;
    exact.open();
    EXPECT_EQ(exact.controller().pathTextbox->note(), "");
    DetailsWindow details;
    details.url = platform::URL::fileURLWithPath("/data/\xFF");
    details.open();
    EXPECT_EQ(details.controller().pathTextbox->stringValue(), "/data/\uFFFD");
    EXPECT_THAT(details.controller().pathTextbox->note(), testing::HasSubstr("not the exact name"));
}

} // namespace
} // namespace tolvane::tests
