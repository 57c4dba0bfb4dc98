#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct Name {
    std::string bytes;
    std::string onTerminal;
};

const std::vector<Name>& names() {
    static const std::vector<Name> all{
        {"plain", "plain"},
        {"\u00fcml\u00e4ut \u65e5\u672c", "\u00fcml\u00e4ut \u65e5\u672c"},
        {"red\x1b[31m", "red\\x1b[31m"},
        {"bell\a", "bell\\x07"},
        {"back\b", "back\\x08"},
        {"tab\t", "tab\\t"},
        {"line\nfeed", "line\\nfeed"},
        {"return\r", "return\\r"},
        {"delete\x7f", "delete\\x7f"},
        {"back\\slash", "back\\\\slash"},
        {"\\x1b", "\\\\x1b"},
        {"c1 \u009b31m", "c1 \\u{9b}31m"},
        {"right \u202e to left", "right \\u{202e} to left"},
        {"separator\u2028", "separator\\u{2028}"}};
    return all;
}

class Terminal : public testing::Test {
protected:
    /// What a run that must succeed shows on the terminal.
    static std::string shown(const std::vector<std::string>& arguments) {
        const auto outcome = runOnTerminal(tolvane(arguments), true);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_TRUE(isHarmless(outcome.out)) << outcome.out;
        return outcome.out;
    }

    TemporaryFolder folder;
};

TEST_F(Terminal, showsControlCharactersOfNamesEscaped) {
    for (const auto& [bytes, onTerminal] : names()) {
        reportsIn(shown({"report", "--", folder.file(bytes)}), {{onTerminal, folder.path(onTerminal)}});
    }
}

TEST_F(Terminal, showsNamesThatAreNotUtf8Readably) {
    EXPECT_THAT(
        shown({"report", folder.file("caf\xe9\x1b")}), StartsWith("Details for file caf\uFFFD\\x1b\nPath: "));
}

TEST_F(Terminal, showsAttributesEscaped) {
    const auto file = folder.file("file");
    if (!setExtendedAttribute(file, "user.red\x1b[31m\r\u009b\u202e", "\x1b[2J\a")) {
        GTEST_SKIP() << folder.path() << ": " << std::strerror(errno);
    }
    EXPECT_THAT(
        shown({"report", file}), HasSubstr("    \"user.red\\033[31m\\r\\U009b\\U202e\" = <1b5b324a 07>;\n"));
}

TEST_F(Terminal, showsComplaintsEscaped) {
    auto cases = names();
    cases.push_back({"caf\xe9", "caf\\xe9"});
    for (const auto& [bytes, onTerminal] : cases) {
        expectComplaint(
            runOnTerminal(tolvane({"report", "--", folder.path(bytes)}), false),
            folder.path(onTerminal) + ": No such file or directory");
    }
}

// What one stream is says nothing about the other.
TEST_F(Terminal, onOneStreamLeavesTheOtherAsItIs) {
    const auto missing = folder.path("missing\x1b");
    const auto file = folder.file("red\x1b");
    const auto output = runOnTerminal(tolvane({"report", file, missing}), true);
    EXPECT_THAT(output.out, StartsWith("Details for file red\\x1b\n"));
    EXPECT_EQ(output.err, "tolvane-cli: " + missing + ": No such file or directory\n");
    const auto errors = runOnTerminal(tolvane({"report", file, missing}), false);
    EXPECT_THAT(errors.out, StartsWith("Details for file red\x1b\n"));
    EXPECT_EQ(errors.err, "tolvane-cli: " + folder.path("missing\\x1b") + ": No such file or directory\n");
}

TEST_F(Terminal, showsComplaintsAboutUsageEscaped) {
    const auto outcome = runOnTerminal(tolvane({"report", "--files0-from=-", "red\x1b[31m"}), false);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(isHarmless(outcome.err)) << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr("red\\x1b[31m"));
    const auto option = runOnTerminal(tolvane({"report", "--red\x1b[31m"}), false);
    EXPECT_EQ(option.status, 2);
    EXPECT_TRUE(isHarmless(option.err)) << option.err;
}

TEST_F(Terminal, getsJsonInAsciiThatMeansTheSame) {
    for (const auto& [bytes, onTerminal] : names()) {
        const auto file = folder.file(bytes);
        const auto text = shown({"report", "--json", "--", file});
        EXPECT_TRUE(std::ranges::all_of(text, [](char c) { return static_cast<signed char>(c) >= 0; }));
        auto there = nlohmann::json::parse(text);
        auto here = nlohmann::json::parse(printed({"report", "--json", "--", file}));
        there["facts"].erase("gathered");
        here["facts"].erase("gathered");
        EXPECT_EQ(there, here);
    }
}

} // namespace
} // namespace tolvane::tests
