#include "platform/qt/preview/FileText.h"

#include "tests/platform/qt/preview/PreviewTest.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace tolvane::platform {
namespace {

class FileTextTest : public tests::PreviewTest {
protected:
    FileText read(const std::string& bytes, TextEncoding encoding = TextEncoding::utf8) const {
        const auto file = PosixFileContents().openForReading(folder.file("text", bytes));
        EXPECT_TRUE(file);
        const auto text = readFileText(**file, encoding);
        EXPECT_TRUE(text);
        return text.value_or(FileText{});
    }

    static std::optional<TextEncoding> encodingOf(const std::string& bytes) {
        return textEncodingOf(std::as_bytes(std::span(bytes)));
    }
};

TEST_F(FileTextTest, hasLineFeedsReplacementsForDamageAndNoByteOrderMarkInFront) {
    EXPECT_EQ(read("one\ntwo\r\nthree\rfour\n\nsix").text, "one\ntwo\nthree\nfour\n\nsix");
    EXPECT_EQ(read("\r\r\n\r").text, "\n\n\n");
    EXPECT_EQ(read("a\xFFz\xE2\x82").text, "a\uFFFDz\uFFFD");
    EXPECT_EQ(read("\uFEFFa\uFEFF").text, "a\uFEFF");
}

TEST_F(FileTextTest, isReadFromUtf16) {
    const std::string little(
        "\xFF\xFE"
        "a\0\n\0\x3D\xD8\x00\xDE\r\0\n\0\x00\xDC",
        16);
    EXPECT_EQ(encodingOf(little), TextEncoding::utf16LittleEndian);
    EXPECT_EQ(read(little, TextEncoding::utf16LittleEndian).text, "a\n😀\n\xEF\xBF\xBD");
    const std::string big("\xFE\xFF\0a\0\nx", 7);
    EXPECT_EQ(encodingOf(big), TextEncoding::utf16BigEndian);
    EXPECT_EQ(read(big, TextEncoding::utf16BigEndian).text, "a\n\xEF\xBF\xBD")
        << "half a character at the end";
}

TEST_F(FileTextTest, isTheFrontOfALargeFile) {
    const std::string front(longestFileText, 'x');
    const std::string path = folder.file("large", front);
    std::filesystem::resize_file(path, 10'000'000'000);
    const tests::CountedFiles files;
    const auto text = readFileText(**files.openForReading(path), TextEncoding::utf8);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->length, longestFileText);
    EXPECT_EQ(text->fileSize, 10'000'000'000U);
    EXPECT_FALSE(text->isWhole());
    EXPECT_TRUE(text->text == front);
    EXPECT_EQ(files.bytesRead(), longestFileText);
}

TEST_F(FileTextTest, isWholeUpToTheBound) {
    EXPECT_TRUE(read("").isWhole());
    EXPECT_TRUE(read(std::string(longestFileText, 'x')).isWhole());
    EXPECT_FALSE(read(std::string(longestFileText + 1, 'x')).isWhole());
}

TEST_F(FileTextTest, endsWithAWholeCharacterWhereTheFileGoesOn) {
    const std::string euro = "\xE2\x82\xAC";
    const auto cut = read(std::string(longestFileText - 2, 'x') + euro);
    EXPECT_EQ(cut.text, std::string(longestFileText - 2, 'x'));
    EXPECT_EQ(cut.length, longestFileText - 2);
    EXPECT_EQ(cut.fileSize, longestFileText + 1);
    std::string pairs;
    while (pairs.size() < longestFileText - 2) {
        pairs += std::string("x\0", 2);
    }
    const auto pair = read(pairs + "\x3D\xD8" + std::string("\0\xDE", 2), TextEncoding::utf16LittleEndian);
    EXPECT_EQ(pair.text, std::string(pairs.size() / 2, 'x'));
    EXPECT_EQ(pair.length, pairs.size());
}

TEST_F(FileTextTest, endsBeforeTooManyHiddenCharacters) {
    const std::string bytes = "\t" + std::string(mostHiddenCharacters, '\x01') + "\x1B";
    const auto text = read(bytes);
    EXPECT_EQ(text.text, bytes.substr(0, bytes.size() - 1));
    EXPECT_EQ(text.length, bytes.size() - 1);
    EXPECT_FALSE(text.isWhole());
    EXPECT_TRUE(read(std::string(2 * mostHiddenCharacters, '\t')).isWhole()) << "blanks and lines are none";
    EXPECT_TRUE(read(std::string(2 * mostHiddenCharacters, '\n')).isWhole());
}

TEST_F(FileTextTest, isReadFromFilesThatGiveNoSize) {
    const auto opened = PosixFileContents().openForReading("/proc/self/status");
    ASSERT_TRUE(opened);
    const auto text = readFileText(**opened, TextEncoding::utf8);
    ASSERT_TRUE(text);
    EXPECT_TRUE(text->text.starts_with("Name:"));
    EXPECT_TRUE(text->isWhole());
    EXPECT_EQ(text->fileSize, text->length);
}

TEST_F(FileTextTest, encodingIsOfTextAlone) {
    EXPECT_EQ(encodingOf("Plain text.\n\tAnd more.\n"), TextEncoding::utf8);
    EXPECT_EQ(encodingOf("Gr\xFC\xDF in an older encoding\n"), TextEncoding::utf8);
    EXPECT_EQ(encodingOf(std::string("a\0b", 3)), std::nullopt);
    EXPECT_EQ(encodingOf("\177ELF\x02\x01\x01\x03\x04\x05"), std::nullopt);
    EXPECT_EQ(encodingOf(std::string(500, '\x9C')), std::nullopt);
}

} // namespace
} // namespace tolvane::platform
