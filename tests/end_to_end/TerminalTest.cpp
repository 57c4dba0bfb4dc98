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

TEST_F(Terminal, showsAttributesEscaped) {
    const auto file = folder.file("file");
    if (!setExtendedAttribute(file, "user.red\x1b[31m\r\u009b\u202e", "\x1b[2J\a")) {
        GTEST_SKIP() << folder.path() << ": " << std::strerror(errno);
    }
    EXPECT_THAT(
        shown({"report", file}), HasSubstr("    \"user.red\\033[31m\\r\\U009b\\U202e\" = <1b5b324a 07>;\n"));
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
    for (const char* const name :
         {"plain", "\u00fcml\u00e4ut \u65e5\u672c", "red\x1b[31m", "line\nfeed", "delete\x7f", "back\\slash",
          "c1 \u009b31m", "right \u202e to left", "separator\u2028"}) {
        const auto file = folder.file(name);
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
