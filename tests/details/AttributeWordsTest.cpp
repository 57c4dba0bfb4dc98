#include "details/AttributeWords.h"

#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/DetailsWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::ButtonState;
using platform::Dictionary;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class AttributeWords : public testing::Test, public DetailsWindow {
protected:
    void openInWords() {
        open();
        controller().attributesInWords->setState(ButtonState::on);
    }

    /// The table's cells, those of a row separated by "|".
    std::vector<std::string> rows() const {
        std::vector<std::string> texts;
        const platform::TableRows* const shown = controller().wordsTable->rows();
        for (std::size_t i = 0; shown != nullptr && i < shown->rowCount(); ++i) {
            texts.push_back(shown->text(i, 0) + "|" + shown->text(i, 1));
        }
        return texts;
    }

    /// Selects the row and returns all that it says.
    std::string text(std::size_t row) const {
        controller().wordsTable->selectRow(row);
        return controller().wordsText->string();
    }

    bool isOffered(std::string_view selector) const { return controller().isActionEnabled(selector); }

    const std::string path = "/data/notes.txt";
};

TEST_F(AttributeWords, areOneRowForEachAttributeAndOneForTheFacts) {
    openInWords();
    EXPECT_THAT(
        rows(),
        ElementsAre(
            "Unknown attribute (guess)|user.note", "Marker (guess)|user.x", "Permissions and status|"));
    EXPECT_EQ(controller().wordsTable->selectedRow(), 0U);
    EXPECT_THAT(
        controller().wordsText->string(),
        testing::AllOf(StartsWith("Unknown attribute (guess)\nuser.note\n\n"), HasSubstr("Text: hello\n")));
    EXPECT_THAT(text(2), StartsWith("Permissions and status\n\n\tread\twrite\texecute\nOwner\tyes\t-\t-\n"));
    EXPECT_THAT(text(2), HasSubstr("\nPermissions: r-------- (0400)\n"));
}

TEST_F(AttributeWords, readNothingUntilTheyAreShown) {
    fileTexts["/data/._notes.txt"] = "x";
    open();
    EXPECT_EQ(controller().wordsTable->rows(), nullptr);
    EXPECT_EQ(controller().wordsText->string(), "");
    const std::size_t calls = log.size();
    controller().attributesInWords->setState(ButtonState::on);
    EXPECT_GT(log.size(), calls);
}

TEST_F(AttributeWords, areShownAgainInTheNextWindow) {
    openInWords();
    EXPECT_TRUE(defaults.boolForKey("attributesInWords"));
    open();
    EXPECT_EQ(controller().attributesInWords->state(), ButtonState::on);
    EXPECT_EQ(controller().wordsTable->rows()->rowCount(), 3U);
    controller().attributesInWords->setState(ButtonState::off);
    EXPECT_FALSE(defaults.boolForKey("attributesInWords"));
}

TEST_F(AttributeWords, haveTheBytesWhereTheyAreWanted) {
    setAttributes({{"user.note", bytesOf("0123456789abcdef\n\x7F")}});
    openInWords();
    EXPECT_THAT(text(0), Not(HasSubstr("18 bytes")));
    controller().wordsWithBytes->setState(ButtonState::on);
    EXPECT_THAT(
        text(0), EndsWith("\n18 bytes\n"
                          "0000\t30313233343536373839616263646566\t0123456789abcdef\n"
                          "0010\t0a7f\t..\n"));
    EXPECT_THAT(text(1), StartsWith("Permissions and status"));
    EXPECT_THAT(text(1), Not(HasSubstr("0000\t")));
}

TEST_F(AttributeWords, areThoseOfTheCompanionUnderAHeading) {
    fileTexts["/data/._notes.txt"] =
        std::string(textOfBytes(companionFileWithAttributes({{"com.apple.quarantine", "0001;0;Browser;"}})));
    openInWords();
    const auto all = rows();
    ASSERT_GE(all.size(), 5U);
    const std::size_t last = all.size() - 1;
    EXPECT_EQ(all.at(3), "In the companion file:|._notes.txt");
    EXPECT_EQ(all.at(last), "Quarantine|com.apple.quarantine");
    EXPECT_TRUE(controller().wordsTable->rows()->isMarked(3, 0));
    EXPECT_FALSE(controller().wordsTable->rows()->isMarked(last, 0));
    EXPECT_THAT(text(3), HasSubstr("/data/._notes.txt\n"));
    EXPECT_THAT(text(last), HasSubstr("In the companion file ._notes.txt.\n"));
    EXPECT_THAT(text(last), HasSubstr("Agent: Browser\n"));
    controller().wordsWithBytes->setState(ButtonState::on);
    EXPECT_THAT(text(last), HasSubstr("\n15 bytes\n0000\t303030313b303b42726f777365723b\t0001;0;Browser;\n"));
}

TEST_F(AttributeWords, sayWhatCouldNotBeRead) {
    fileManager.answer = Dictionary{{"NSFileSize", std::uint64_t{1}}};
    statusFacts.facts = std::unexpected(platform::posixError(EACCES));
    openInWords();
    attributes.onList = [](const char*, std::span<char>) { return std::unexpected(EIO); };
    showAgain();
    EXPECT_THAT(rows(), ElementsAre("What could not be read|"));
    EXPECT_THAT(text(0), HasSubstr("the attributes: Input/output error\n"));
}

TEST_F(AttributeWords, areOfTheItemAsItIsNow) {
    openInWords();
    fileManager.answer = Dictionary{{"NSFileSize", std::uint64_t{1}}};
    attributes.attributes.clear();
    statusFacts.facts = std::unexpected(platform::posixError(EACCES));
    open();
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_EQ(controller().wordsText->string(), "");
}

TEST_F(AttributeWords, haveTheSizeOfTheOtherText) {
    openInWords();
    controller().incFontSize(nullptr);
    const auto& runs = controller().wordsText->textStorage()->attributedString().runs();
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs.front().attributes.font->pointSize, 13);
}

TEST_F(AttributeWords, offerToVerifyOnlyWhereThereIsAChecksum) {
    openInWords();
    EXPECT_FALSE(isOffered("verifyChecksums:"));
    EXPECT_FALSE(isOffered("stopVerification:"));
    controller().verifyChecksums(nullptr);
    tasks.workAndDeliver();
    EXPECT_THAT(rows(), Not(testing::Contains("Checksums and the content|")));
}

TEST_F(AttributeWords, compareTheContentWithTheChecksumsOnCommand) {
    setAttributes({{"user.crc32", bytesOf("352441c2")}, {"user.md5", bytesOf(std::string(32, '0'))}});
    fileTexts[path] = "abc";
    openInWords();
    EXPECT_TRUE(isOffered("verifyChecksums:"));
    EXPECT_THAT(text(3), HasSubstr("CRC-32 in user.crc32: not compared with the content yet\n"));
    controller().verifyChecksums(nullptr);
    EXPECT_FALSE(isOffered("verifyChecksums:"));
    EXPECT_TRUE(isOffered("stopVerification:"));
    EXPECT_THAT(controller().wordsText->string(), HasSubstr("Reading the content"));
    tasks.workAndDeliver();
    EXPECT_EQ(
        controller().wordsText->string(), "Checksums and the content\n\n"
                                          "CRC-32 in user.crc32: fits the content\n"
                                          "MD5 in user.md5: does not fit the content\n");
    EXPECT_TRUE(isOffered("verifyChecksums:"));
    EXPECT_FALSE(isOffered("stopVerification:"));
}

TEST_F(AttributeWords, stopReadingWhenTheUserWantsThat) {
    setAttributes({{"user.crc32", bytesOf("352441c2")}});
    fileTexts[path] = "abc";
    openInWords();
    controller().verifyChecksums(nullptr);
    controller().stopVerification(nullptr);
    tasks.workAndDeliver();
    EXPECT_THAT(text(2), EndsWith("yet\n\nStopped before the end of the content.\n"));
    EXPECT_TRUE(isOffered("verifyChecksums:"));
    controller().stopVerification(nullptr);
    EXPECT_TRUE(isOffered("verifyChecksums:"));
}

TEST_F(AttributeWords, showHowMuchIsRead) {
    setAttributes({{"user.crc32", bytesOf("00000000")}});
    fileTexts[path] = std::string(std::size_t{3} << 20U, 'a');
    openInWords();
    std::vector<std::string> seen;
    const auto subscription = controller().wordsText->textStorage()->observe(
        [&] { seen.push_back(controller().wordsText->string()); });
    controller().verifyChecksums(nullptr);
    tasks.workAndDeliver();
    EXPECT_THAT(seen, testing::Contains(HasSubstr("Reading the content: 49 %\n")));
}

} // namespace
} // namespace tolvane::tests
