#include "containers/TextRuns.h"

#include "tests/containers/Samples.h"

namespace tolvane::containers {
namespace {

using namespace tests;

std::vector<std::string> placesIn(std::string_view text) {
    Collector collector;
    collectFromText(text, "", collector);
    std::vector<std::string> places;
    for (const Finding& finding : collector.findings()) {
        EXPECT_EQ(finding.path, "/Users/demo/note.txt");
        places.push_back(finding.where);
    }
    return places;
}

TEST(TextRuns, areFoundInBase64AndHexadecimal) {
    const std::string base64 = noteBase64();
    const std::string hex = hexOf(noteData());
    EXPECT_EQ(placesIn(base64), std::vector<std::string>{""});
    EXPECT_EQ(
        placesIn("a \"" + base64 + "\", b 0x" + hex + "\n"),
        (std::vector<std::string>{"@3", "@" + std::to_string(3 + base64.size() + 7)}));
    EXPECT_EQ(placesIn(hexOf(noteData(), platform::HexCase::upper)), std::vector<std::string>{""});
}

TEST(TextRuns, needNoPadding) {
    std::string base64 = base64Of(corpusText("note.bookmark") + "x");
    while (base64.ends_with('=')) {
        base64.pop_back();
    }
    Collector collector;
    collectFromText(base64, "", collector);
    EXPECT_EQ(collector.findings().size(), 1U);
}

TEST(TextRuns, areNotFoundInOtherTexts) {
    for (const auto* const text : {"", "Ym9va", "626f6f6b", "Ym9vaXYm9va 626f6f6b626f6f6b", "book mark"}) {
        EXPECT_TRUE(placesIn(text).empty()) << text;
    }
}

TEST(TextRuns, thatAreCutShortAreFoundAsUnreadable) {
    const std::string hex = hexOf(noteData());
    Collector collector;
    collectFromText("{length = 648, bytes = 0x" + hex.substr(0, 201) + " ... }", "/a", collector);
    ASSERT_EQ(collector.findings().size(), 1U);
    EXPECT_FALSE(collector.findings()[0].isReadable);
    EXPECT_EQ(collector.findings()[0].where, "/a@25");
}

TEST(TextRuns, giveBytesWhereATextIsDigitsAlone) {
    EXPECT_EQ(bytesOfDigits(" 62 6F\n6f6B\t"), bytesOf("book"));
    EXPECT_EQ(bytesOfDigits("Ym9v\r\naw=="), bytesOf("book"));
    for (const auto* const text : {"", " \n", "626", "book!", "Ym9va"}) {
        EXPECT_EQ(bytesOfDigits(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace tolvane::containers
