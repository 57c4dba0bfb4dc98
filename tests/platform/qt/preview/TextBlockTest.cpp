#include "platform/qt/preview/TextBlock.h"

#include "tests/platform/qt/preview/PreviewTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;

class TextBlockTest : public tests::PreviewTest {
protected:
    TextBlock blockOf(
        const std::string& bytes,
        std::uint64_t offset = 0,
        TextEncoding encoding = TextEncoding::utf8) const {
        const auto file = LinuxFileContents().openForReading(folder.file("text", bytes));
        EXPECT_TRUE(file);
        const auto block = readTextBlock(**file, encoding, offset);
        EXPECT_TRUE(block);
        return block.value_or(TextBlock{});
    }

    static std::vector<std::string> textsOf(const TextBlock& block) {
        std::vector<std::string> texts;
        std::ranges::transform(block.lines, std::back_inserter(texts), [](const TextLine& line) {
            return line.text.toStdString();
        });
        return texts;
    }

    static std::optional<TextEncoding> encodingOf(const std::string& bytes) {
        return textEncodingOf(std::as_bytes(std::span(bytes)));
    }
};

TEST_F(TextBlockTest, endsLinesInAllThreeWays) {
    const auto block = blockOf("one\ntwo\r\nthree\rfour\n\nsix");
    EXPECT_THAT(textsOf(block), ElementsAre("one", "two", "three", "four", "", "six"));
    EXPECT_EQ(block.lines[2].offset, 9U);
    EXPECT_TRUE(block.reachesBegin());
    EXPECT_TRUE(block.reachesEnd);
}

TEST_F(TextBlockTest, hasNoLineBehindALastLineEnd) {
    EXPECT_THAT(textsOf(blockOf("a\n")), ElementsAre("a"));
    EXPECT_THAT(textsOf(blockOf("")), ElementsAre(""));
    EXPECT_THAT(textsOf(blockOf("\n")), ElementsAre(""));
}

TEST_F(TextBlockTest, makesVisibleWhatHidesOrSteers) {
    EXPECT_THAT(
        textsOf(blockOf("a\x1B[0m\x7F \xE2\x80\xAE"
                        "b\xE2\x80\x8B"
                        "c\xC2\x85"
                        "d\tx")),
        ElementsAre("a⟨ESC⟩[0m⟨DEL⟩ ⟨U+202E⟩b⟨U+200B⟩c⟨U+0085⟩d" + std::string("      ") + "x"));
    EXPECT_THAT(textsOf(blockOf(std::string("a\0b", 3))), ElementsAre("a⟨NUL⟩b"));
}

TEST_F(TextBlockTest, showsDamagedUtf8AsReplacements) {
    EXPECT_THAT(textsOf(blockOf("a\xFFz\xE2\x82")), ElementsAre("a\xEF\xBF\xBDz\xEF\xBF\xBD"));
}

TEST_F(TextBlockTest, leavesOutAByteOrderMarkInFrontAlone) {
    EXPECT_THAT(
        textsOf(blockOf("\xEF\xBB\xBF"
                        "a\xEF\xBB\xBF")),
        ElementsAre("a⟨U+FEFF⟩"));
}

TEST_F(TextBlockTest, readsUtf16) {
    const std::string little(
        "\xFF\xFE"
        "a\0\n\0\x3D\xD8\x00\xDE\r\0\n\0\x00\xDC",
        16);
    EXPECT_EQ(encodingOf(little), TextEncoding::utf16LittleEndian);
    EXPECT_THAT(
        textsOf(blockOf(little, 0, TextEncoding::utf16LittleEndian)), ElementsAre("a", "😀", "\xEF\xBF\xBD"));
    const std::string big("\xFE\xFF\0a\0\nx", 7);
    EXPECT_EQ(encodingOf(big), TextEncoding::utf16BigEndian);
    EXPECT_THAT(textsOf(blockOf(big, 0, TextEncoding::utf16BigEndian)), ElementsAre("a", "\xEF\xBF\xBD"))
        << "half a character at the end";
}

TEST_F(TextBlockTest, cutsLinesWithoutEnd) {
    std::string bytes;
    while (bytes.size() < 3 * longestTextLine) {
        bytes += "\xE2\x82\xAC"; // A character of three bytes, which no cut may divide.
    }
    const auto block = blockOf(bytes);
    ASSERT_EQ(block.lines.size(), 4U);
    for (const TextLine& line : block.lines) {
        EXPECT_FALSE(line.text.contains(QChar::ReplacementCharacter));
        EXPECT_LE(line.text.toUtf8().size(), static_cast<qsizetype>(longestTextLine));
    }
}

TEST_F(TextBlockTest, beginsAtTheBeginningOfALine) {
    tests::MadeUpFile file(1'000'000'000'000, 100);
    const auto block = readTextBlock(file, TextEncoding::utf8, 500'000'000'050);
    ASSERT_TRUE(block);
    for (const TextLine& line : block->lines) {
        ASSERT_EQ(line.offset % 100, 0U);
        ASSERT_TRUE(line.text.startsWith(QStringLiteral("line at %1.").arg(line.offset)));
    }
    EXPECT_EQ(block->lines[block->lineAt(500'000'000'050)].offset, 500'000'000'000U);
    EXPECT_LE(file.bytesRead(), 2 * textBlockReach);
    EXPECT_FALSE(block->reachesEnd);
    EXPECT_FALSE(block->reachesBegin());
}

TEST_F(TextBlockTest, beginsAtACharacterWhereNoLineDoes) {
    std::string bytes;
    while (bytes.size() < 3 * textBlockReach) {
        bytes += "\xE2\x82\xAC";
    }
    for (std::uint64_t offset = bytes.size() / 2; offset < bytes.size() / 2 + 3; ++offset) {
        const auto block = blockOf(bytes, offset);
        ASSERT_FALSE(block.lines.empty());
        EXPECT_EQ(block.lines.front().offset % 3, 0U);
        EXPECT_FALSE(block.lines.front().text.contains(QChar::ReplacementCharacter));
    }
}

TEST_F(TextBlockTest, givesTheLastLinesOfAFileThatHasBecomeShorter) {
    tests::MadeUpFile file(1000, 100);
    const auto block = readTextBlock(file, TextEncoding::utf8, 1'000'000);
    ASSERT_TRUE(block);
    EXPECT_EQ(block->lines.size(), 10U);
    EXPECT_TRUE(block->reachesEnd);
    file.setSize(0);
    EXPECT_EQ(readTextBlock(file, TextEncoding::utf8, 500)->lines.size(), 1U);
}

TEST_F(TextBlockTest, isOfTextAlone) {
    EXPECT_EQ(encodingOf("Plain text.\n\tAnd more.\n"), TextEncoding::utf8);
    EXPECT_EQ(
        encodingOf("Stra\xDF"
                   "e in an older encoding\n"),
        TextEncoding::utf8);
    EXPECT_EQ(encodingOf(std::string("a\0b", 3)), std::nullopt);
    EXPECT_EQ(
        encodingOf("\x7F"
                   "ELF\x02\x01\x01\x03\x04\x05"),
        std::nullopt);
    EXPECT_EQ(encodingOf(std::string(500, '\x9C')), std::nullopt);
}

} // namespace
} // namespace tolvane::platform
