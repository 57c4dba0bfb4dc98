#include "cli/TerminalText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

using namespace std::string_view_literals;

TEST(TerminalText, leavesReadableTextAlone) {
    for (const auto text : {""sv, "plain name.txt"sv, "Gr\u00FC\u00DFe"sv, "\U0001F600"sv, "\u05E9"sv}) {
        EXPECT_EQ(cli::terminalLine(text), text);
        EXPECT_EQ(cli::terminalLines(text), text);
    }
}

TEST(TerminalText, escapesWhatWouldSteerTheTerminal) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases{
        {"\x1B[2J"sv, "\\x1b[2J"},
        {"a\nb\tc\rd"sv, "a\\nb\\tc\\rd"},
        {"\0"sv, "\\x00"},
        {"\x7F"sv, "\\x7f"},
        {"\u009B31m"sv, "\\u{9b}31m"},
        {"\u202Egpj"sv, "\\u{202e}gpj"},
        {"\u2066"sv, "\\u{2066}"},
        {"\u200F"sv, "\\u{200f}"},
        {"\u061C"sv, "\\u{61c}"},
        {"\u2028\u2029"sv, "\\u{2028}\\u{2029}"},
        {"a\\nb"sv, "a\\\\nb"},
        {"\xFF\xC3"sv, "\\xff\\xc3"},
    };
    for (const auto& [raw, shown] : cases) {
        EXPECT_EQ(cli::terminalLine(raw), shown);
    }
}

TEST(TerminalText, keepsTheLayoutOfTextInSeveralLines) {
    EXPECT_EQ(
        cli::terminalLines("{\n    \"a\\U202e\" = <00>;\n}\n\x1B[0m\xE2\x80\xAE"),
        "{\n    \"a\\U202e\" = <00>;\n}\n\\x1b[0m\\u{202e}");
}

TEST(TerminalText, cleansEveryTextThatComesFromOutside) {
    const std::string evil = "\x1B]0;x\a\n";
    using Texts = details::DetailsTexts;
    details::ReportFields fields;
    fields.windowTitle = evil;
    for (const auto member :
         {&Texts::pathTextbox, &Texts::bookmarkPathTextbox, &Texts::ownerNameTextbox,
          &Texts::groupNameTextbox, &Texts::typeTextbox, &Texts::inodeText}) {
        fields.texts.*member = evil;
    }
    const std::string report = details::reportText(cli::terminalFields(fields));
    EXPECT_EQ(report.find('\x1B'), std::string::npos);
    EXPECT_EQ(report.find('\a'), std::string::npos);
    EXPECT_TRUE(
        report.starts_with("Details for file \\x1b]0;x\\x07\\n\nPath: \\x1b]0;x\\x07\\n\nvolfs path: "));
}

} // namespace
} // namespace tolvane::tests
