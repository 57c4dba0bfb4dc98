// Names of the longest length and of every kind that programs handle wrongly, in everything that shows them.
#include "tests/oracle/Expectation.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

using nlohmann::json;

constexpr std::size_t longestName = 255;

struct OddName {
    const char* kind;
    /// What the name is made of, again and again.
    std::string piece;
    bool isText = true;
    /// What stands once before all the rest.
    std::string start = {};

    std::string name() const {
        std::string bytes = start;
        while (bytes.size() + piece.size() <= longestName) {
            bytes += piece;
        }
        return bytes + std::string(longestName - bytes.size(), 'x');
    }

    friend std::ostream& operator<<(std::ostream& stream, const OddName& odd) { return stream << odd.kind; }
};

const std::vector<OddName>& oddNamesOfFullLength() {
    using namespace std::string_literals;
    static const std::vector<OddName> all{
        {"blanks", " "},
        {"dots", "."},
        {"dashes", "-"},
        {"option", "x", true, "--json="},
        {"lineFeeds", "\n"},
        {"reportRows", "\nPath: x\nvolfs path: \n"},
        {"carriageReturns", "\r"},
        {"tabs", "\t"},
        {"backspaces", "a\b"},
        {"escapes", "\x1b[2J\x1b]0;title\a"},
        {"deviceControls", "\x1bP0;0q\x1b\\\x0e\x0f\x05"},
        {"allControls", "\x01\x02\x03\x04\x05\x06\x07\x08\x0b\x0c\x0e\x0f\x10\x1a\x1c\x1f\x7f"},
        {"c1Controls", "\u0080\u0084\u0085\u008d\u0090\u009b31m\u009d\u009f"},
        {"backslashes", "\\n\\x1b\\u{202e}"},
        {"quotes", "\"'`$(x)"},
        {"percents", "%2F%00%n%s"},
        {"bidiOverrides", "\u202Etxt.\u202Dexe\u202C\u202A\u202B"},
        {"bidiIsolates", "\u2066a\u2067b\u2068c\u2069"},
        {"bidiMarks", "\u200E\u200F\u061C"},
        {"separators", "\u2028\u2029"},
        {"invisible", "\u200B\u200C\u200D\u2060\uFEFF\u00AD\u034F\u180E"},
        {"tags", "\U000E0001\U000E0041\U000E007F"},
        {"variations", "\uFE0F\uFE00\U000E0100"},
        {"privateUse", "\uE000\uF8FF\U000F0000\U00100000"},
        {"noncharacters", "\uFDD0\uFFFE\uFFFF\U0001FFFE\U0010FFFF"},
        {"emoji", "\U0001F600"},
        {"families", "\U0001F469\u200D\U0001F469\u200D\U0001F467"},
        {"loneMarks", "\u0301"},
        {"marksWithoutEnd", "\u0335\u0336\u0489", true, "Z"},
        {"composed", "\u00e9"},
        {"decomposed", "e\u0301"},
        {"hangulComposed", "\uac00"},
        {"hangulDecomposed", "\u1100\u1161"},
        {"rightToLeft", "\u05d0\u0627"},
        {"replacements", "\uFFFD"},
        {"loneContinuations", "\x80\xbf", false},
        {"cutTwo", "\xc3", false},
        {"cutThree", "\xe2\x82", false},
        {"cutFour", "\xf0\x9f\x98", false},
        {"overlongSlash", "\xc0\xaf", false},
        {"overlongThree", "\xe0\x80\xaf", false},
        {"overlongFour", "\xf0\x80\x80\xaf", false},
        {"overlongNul", "\xc0\x80", false},
        {"highSurrogates", "\xed\xa0\xbd", false},
        {"lowSurrogates", "\xed\xb8\x80", false},
        {"surrogatePairs", "\xed\xa0\xbd\xed\xb8\x80", false},
        {"pastTheEnd", "\xf4\x90\x80\x80", false},
        {"fiveBytes", "\xf8\x88\x80\x80\x80", false},
        {"sixBytes", "\xfc\x84\x80\x80\x80\x80", false},
        {"neverBytes", "\xfe\xff", false},
        {"latin1", "caf\xe9 ", false},
        {"shiftJis", "\x93\xfa\x96\x7b", false},
        {"rawC1",
         "\x9b"
         "31m\x90",
         false},
        {"escapeInGarbage", "\xff\x1b[31m\xe2\x80", false},
        {"bidiInGarbage", "\xff\u202E\xfe", false},
    };
    return all;
}

bool isObeyed(UChar32 c) {
    constexpr std::array<std::pair<UChar32, UChar32>, 7> ranges{{
        {0x00, 0x1F},     // what moves the cursor and begins an escape
        {0x7F, 0x9F},     // the same in eight bits
        {0x061C, 0x061C}, // marks, embeddings, overrides and isolates of direction
        {0x200E, 0x200F},
        {0x202A, 0x202E},
        {0x2066, 0x2069},
        {0x2028, 0x2029}, // lines and paragraphs
    }};
    return c != '\n' && std::ranges::any_of(ranges, [c](const auto& range) {
               return range.first <= c && c <= range.second;
           });
}

/// Expects text that no terminal takes for commands.
void expectOnlyShown(const std::string& text) {
    ASSERT_EQ(readableText(text), text) << "this is no UTF-8";
    const auto characters = icu::UnicodeString::fromUTF8(text);
    for (std::int32_t i = 0; i < characters.length(); i = characters.moveIndex32(i, 1)) {
        const UChar32 c = characters.char32At(i);
        ASSERT_FALSE(isObeyed(c)) << "U+" << std::hex << c << " at " << std::dec << i << " of " << text;
    }
}

class OddNames : public testing::TestWithParam<OddName> {
protected:
    ProcessOutcome runHere(std::vector<std::string> arguments) const {
        return run(tolvane(std::move(arguments), {.folder = home}));
    }

    TemporaryFolder folder;
    std::string home = std::filesystem::canonical(folder.path()).string();
    std::string name = GetParam().name();
    std::string path = home + "/" + name;
};

TEST_P(OddNames, areReportedWithEveryByte) {
    ASSERT_EQ(name.size(), longestName);
    folder.file(name, "words");
    const auto text = runHere({"report", "--", name});
    EXPECT_EQ(text.status, 0) << text.err;
    EXPECT_EQ(reportIn(text.out, path)["filemanSize"], "5");

    const auto line = runHere({"report", "--json", "--", name});
    EXPECT_EQ(line.status, 0) << line.err;
    EXPECT_EQ(std::ranges::count(line.out, '\n'), 1);
    const json report = json::parse(line.out);
    EXPECT_EQ(report["facts"]["pathBytes"], GetParam().isText ? json() : json(hexText(path)));
    EXPECT_EQ(report["pathTextbox"], readableText(path));
    EXPECT_EQ(readableText(path) == path, GetParam().isText);
}

TEST_P(OddNames, areShownByTerminalsAndNotObeyed) {
    folder.file(name, "words");
    for (const auto& setup : {tolvane({"report", path}), tolvane({"report", "--json", path})}) {
        const auto outcome = runOnTerminal(setup, true);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_NE(outcome.out, "");
        expectOnlyShown(outcome.out);
    }
    const auto complaint = runOnTerminal(tolvane({"report", path + "/below"}), false);
    EXPECT_TRUE(isComplaint(complaint)) << complaint.err;
    EXPECT_TRUE(complaint.err.ends_with(": Not a directory\n")) << complaint.err;
    expectOnlyShown(complaint.err);
}

TEST_P(OddNames, leadBackToTheirItemsOrAreRefused) {
    folder.file(name, "words");
    const auto made = runHere({"bookmark", "make", "--", name});
    if (!GetParam().isText) {
        EXPECT_TRUE(isComplaint(made));
        EXPECT_TRUE(made.err.ends_with(
            ": A name on the way to the item is not UTF-8, and a bookmark cannot hold it.\n"))
            << made.err;
        return;
    }
    ASSERT_EQ(made.status, 0) << made.err;
    const auto resolved = printed({"bookmark", "resolve", made.out});
    EXPECT_TRUE(resolved.starts_with(path + "\nvolfs path : /.vol/")) << resolved;
    EXPECT_EQ(json::parse(printed({"bookmark", "resolve", "--json", made.out}))["path"], path);
    for (const auto& setup :
         {tolvane({"bookmark", "resolve", made.out}), tolvane({"bookmark", "show", made.out}),
          tolvane({"bookmark", "show", "--json", made.out})}) {
        const auto shown = runOnTerminal(setup, true);
        EXPECT_EQ(shown.status, 0) << shown.err;
        expectOnlyShown(shown.out);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Of, OddNames, testing::ValuesIn(oddNamesOfFullLength()), [](const testing::TestParamInfo<OddName>& odd) {
        return std::string(odd.param.kind);
    });

// Names that look the same are two items, each with its own report and its own bookmark.
TEST(OddTwins, areToldApart) {
    const TemporaryFolder folder;
    const std::string home = std::filesystem::canonical(folder.path()).string();
    const std::vector<std::string> twins{"caf\u00e9", "cafe\u0301", "caf\u00e9\u200B", "caf\u00e9 "};
    for (const auto& twin : twins) {
        folder.file(twin, std::string(twin.size(), 'x'));
    }
    for (const auto& twin : twins) {
        const json report = json::parse(printed({"report", "--json", home + "/" + twin}));
        EXPECT_EQ(report["facts"]["filemanSize"], twin.size());
        EXPECT_EQ(report["bookmarkPathTextbox"], home + "/" + twin);
    }
}

} // namespace
} // namespace tolvane::tests
