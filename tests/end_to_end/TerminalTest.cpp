#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

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
    TemporaryFolder folder;
};

TEST_F(Terminal, showsControlCharactersOfNamesEscaped) {
    for (const auto& [bytes, shown] : names()) {
        const auto outcome = runOnTerminal(tolvane({"report", "--", folder.file(bytes)}), true);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_TRUE(isHarmless(outcome.out)) << outcome.out;
        const Heading heading{shown, folder.path(shown)};
        const auto reports = splitReports(outcome.out, {heading});
        ASSERT_TRUE(reports) << outcome.out;
        EXPECT_TRUE(fieldsOf(reports->front(), heading)) << outcome.out;
    }
}

TEST_F(Terminal, showsNamesThatAreNoTextReadably) {
    const auto outcome = runOnTerminal(tolvane({"report", folder.file("caf\xe9\x1b")}), true);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_TRUE(isHarmless(outcome.out)) << outcome.out;
    EXPECT_TRUE(outcome.out.starts_with("Details for file caf\uFFFD\\x1b\nPath: ")) << outcome.out;
}

TEST_F(Terminal, showsAttributesEscaped) {
    const auto file = folder.file("file");
    if (!setExtendedAttribute(file, "user.red\x1b[31m\r\u009b\u202e", "\x1b[2J\a")) {
        GTEST_SKIP() << folder.path() << ": " << std::strerror(errno);
    }
    const auto outcome = runOnTerminal(tolvane({"report", file}), true);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_TRUE(isHarmless(outcome.out)) << outcome.out;
    EXPECT_TRUE(outcome.out.contains("    \"user.red\\033[31m\\r\\U009b\\U202e\" = <1b5b324a 07>;\n"))
        << outcome.out;
}

TEST_F(Terminal, showsComplaintsEscaped) {
    for (const auto& [bytes, shown] : names()) {
        const auto outcome = runOnTerminal(tolvane({"report", "--", folder.path(bytes)}), false);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.err, "tolvane-cli: " + folder.path(shown) + ": No such file or directory\n");
    }
    const auto noText = runOnTerminal(tolvane({"report", folder.path("caf\xe9")}), false);
    EXPECT_EQ(noText.err, "tolvane-cli: " + folder.path("caf\\xe9") + ": No such file or directory\n");
}

// What one stream is says nothing about the other.
TEST_F(Terminal, onOneStreamLeavesTheOtherAsItIs) {
    const auto missing = folder.path("missing\x1b");
    const auto file = folder.file("red\x1b");
    const auto output = runOnTerminal(tolvane({"report", file, missing}), true);
    EXPECT_TRUE(output.out.starts_with("Details for file red\\x1b\n")) << output.out;
    EXPECT_EQ(output.err, "tolvane-cli: " + missing + ": No such file or directory\n");
    const auto errors = runOnTerminal(tolvane({"report", file, missing}), false);
    EXPECT_TRUE(errors.out.starts_with("Details for file red\x1b\n")) << errors.out;
    EXPECT_EQ(errors.err, "tolvane-cli: " + folder.path("missing\\x1b") + ": No such file or directory\n");
}

TEST_F(Terminal, showsComplaintsAboutUsageEscaped) {
    const auto outcome = runOnTerminal(tolvane({"report", "--files0-from=-", "red\x1b[31m"}), false);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(isHarmless(outcome.err)) << outcome.err;
    EXPECT_TRUE(outcome.err.contains("red\\x1b[31m")) << outcome.err;
    const auto option = runOnTerminal(tolvane({"report", "--red\x1b[31m"}), false);
    EXPECT_EQ(option.status, 2);
    EXPECT_TRUE(isHarmless(option.err)) << option.err;
}

TEST_F(Terminal, getsJsonInAsciiThatMeansTheSame) {
    for (const auto& [bytes, shown] : names()) {
        const auto file = folder.file(bytes);
        const auto onTerminal = runOnTerminal(tolvane({"report", "--json", "--", file}), true);
        EXPECT_TRUE(isHarmless(onTerminal.out)) << onTerminal.out;
        EXPECT_TRUE(
            std::ranges::all_of(onTerminal.out, [](char c) { return static_cast<signed char>(c) >= 0; }));
        const auto elsewhere = run(tolvane({"report", "--json", "--", file}));
        auto there = nlohmann::json::parse(onTerminal.out);
        auto here = nlohmann::json::parse(elsewhere.out);
        there["facts"].erase("gathered");
        here["facts"].erase("gathered");
        EXPECT_EQ(there, here);
    }
}

} // namespace
} // namespace tolvane::tests
