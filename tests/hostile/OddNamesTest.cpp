// Names of the longest length and of every kind that programs handle wrongly, on terminals and in bookmarks.
#include "tests/oracle/OddNames.h"

#include "tests/oracle/ReportText.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <utility>

namespace tolvane::tests {
namespace {

using nlohmann::json;

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
    TemporaryFolder folder;
    std::string home = std::filesystem::canonical(folder.path()).string();
    std::string name = GetParam().longest();
    std::string path = home + "/" + name;
};

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
    const auto made = run(tolvane({"bookmark", "make", "--", name}, {.folder = home}));
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
    Of, OddNames, testing::ValuesIn(oddNames()), [](const testing::TestParamInfo<OddName>& odd) {
        return std::string(odd.param.kind);
    });

} // namespace
} // namespace tolvane::tests
