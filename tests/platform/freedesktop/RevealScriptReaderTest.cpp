#include "platform/freedesktop/RevealScriptReader.h"

#include "resolver/RevealScript.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using namespace std::string_literals;
using resolver::revealScript;

/// The path that is revealed when this one was put into the script.
std::optional<std::string> revealed(const std::string& path) {
    return pathOfRevealScript(revealScript(path));
}

// Paths

TEST(RevealScriptReader, readsAPathAsItStands) {
    for (const std::string& path :
         {"/tmp/a"s,
          "/"s,
          ""s,
          "relative"s,
          "/with blanks/ and more "s,
          "/tab\there"s,
          "/it's"s,
          "/caf\xC3\xA9"s,
          "/caf\xE9"s,
          "/\xFF\xFE\x80"s,
          "/nul\0byte"s,
          "/two\nlines"s,
          "/two\r\nlines\r"s,
          "\n"s,
          "/a -- b"s,
          "/a # b"s,
          "/a (* b"s,
          "/set thePath to"s,
          "/$(id)`id`;&|<>"s,
          "/\xC2\xAC\n"s,
          std::string(100'000, 'x')}) {
        EXPECT_EQ(revealed(path), path);
    }
}

TEST(RevealScriptReader, readsEscapesInAPath) {
    for (const auto& [put, got] : std::vector<std::pair<std::string, std::string>>{
             {R"(/a\"b)", "/a\"b"},
             {R"(/a\\b)", "/a\\b"},
             {R"(/a\nb)", "/a\nb"},
             {R"(/a\rb)", "/a\rb"},
             {R"(/a\tb)", "/a\tb"},
             {R"(/a\")", "/a\""},
             {R"(/a\\)", "/a\\"},
             {R"(\\\\)", "\\\\"},
             {R"(/a\\nb)", "/a\\nb"},
             {R"(/a\\\nb)", "/a\\\nb"},
             {R"(\"\"\"\\)", "\"\"\"\\"}}) {
        EXPECT_EQ(revealed(put), got) << put;
    }
}

TEST(RevealScriptReader, findsNothingForAnEscapeThatTheLanguageDoesNotHave) {
    for (const std::string& path :
         {R"(/a\b)"s, R"(/a\N)"s, R"(/a\0)"s, R"(/a\ b)"s, R"(/a\x41)"s, R"(/a\'b)"s, "/a\\\nb"s, "/a\\\0b"s,
          "/a\\\xE9"s, R"(/a\\\b)"s}) {
        EXPECT_EQ(revealed(path), std::nullopt) << path;
    }
}

TEST(RevealScriptReader, findsNothingWhenAPathChangesWhereTheLiteralEnds) {
    for (const std::string& path :
         {R"(/a\)"s, R"(\)"s, R"(/a\\\)"s, R"(")"s, R"(/a"b)"s, R"(/a")"s, R"("/a)"s, R"("quoted")"s,
          R"(/a""b)"s, R"(/a" & "b)"s, R"(/a\\"b)"s, "/a\"\n\"b"s,
          "/a\"\ntell application \"Finder\" to reveal thePath"s,
          "/a\"\ntell application \"Finder\" to reveal thePath\nset thePath to POSIX file \"/b"s,
          "/a\" --\nb"s, "/a\" (*"s, "/a\" (* *) (* *"s, "/a\" (* (* *)"s}) {
        EXPECT_EQ(revealed(path), std::nullopt) << path;
    }
}

TEST(RevealScriptReader, leavesOutWhatAPathMakesAComment) {
    for (const std::string comment :
         {"\" -- b", "\"-- \" \\", "\" # b", "\" (* b *) -- c", "\" -- b\r\n\t\n# c",
          "\" (* (**) \n (* b *) \"*) -- c"}) {
        EXPECT_EQ(revealed("/a" + comment), "/a") << comment;
    }
}

// Scripts

TEST(RevealScriptReader, findsNothingInAScriptThatIsCutAnywhere) {
    const std::string whole = revealScript("/a");
    ASSERT_EQ(pathOfRevealScript(whole), "/a");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(pathOfRevealScript(whole.substr(0, length)), std::nullopt) << length;
    }
}

TEST(RevealScriptReader, findsNothingWhereAByteIsMissingOutsideThePath) {
    const std::string whole = revealScript("/a");
    for (std::size_t i = 0; i < whole.size(); ++i) {
        const bool ofPath = whole[i] == '/' || (whole[i] == 'a' && whole[i - 1] == '/');
        if (!ofPath) {
            std::string cut = whole;
            cut.erase(i, 1);
            EXPECT_EQ(pathOfRevealScript(cut), std::nullopt) << cut;
        }
    }
}

TEST(RevealScriptReader, findsNothingInAnotherScript) {
    for (const std::string& script :
         {""s, "beep"s, "set thePath to POSIX file \"/a\""s, "tell application \"Finder\" to reveal thePath"s,
          "set thePath to POSIX file \"/a\" tell application \"Finder\" to reveal thePath"s,
          "set thePath to\nPOSIX file \"/a\"\ntell application \"Finder\" to reveal thePath"s,
          "set other to POSIX file \"/a\"\ntell application \"Finder\" to reveal other"s,
          "set thePath to POSIX file \"/a\"\ntell application \"Other\" to reveal thePath"s,
          "set thePath to POSIX file \"/a\"\ntell application Finder to reveal thePath"s,
          "set thePath to POSIX file \"/a\"\ntell application \"Finder\" to open thePath"s,
          "set thePath to POSIX file /a\ntell application \"Finder\" to reveal thePath"s,
          "set \"thePath\" to POSIX file \"/a\"\ntell application \"Finder\" to reveal thePath"s,
          revealScript("/a") + "\nbeep", revealScript("/a") + " of it", "beep\n" + revealScript("/a"),
          revealScript("/a") + "\n" + revealScript("/a"), revealScript("/a") + "\0"s}) {
        EXPECT_EQ(pathOfRevealScript(script), std::nullopt) << script;
    }
}

} // namespace
} // namespace tolvane::platform
