#include "cli/BookmarkInput.h"

#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/values/Base64.h"
#include "tests/cli/CliProgram.h"
#include "tests/support/AliasRecords.h"
#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/OldAliasFiles.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests {
namespace {

using namespace std::string_literals;

std::string complaintAbout(const std::string& text) {
    std::string cleaned = text;
    std::erase_if(cleaned, [](char c) { return c == ' ' || c == '\n' || c == '\t'; });
    const auto fault = platform::base64Fault(cleaned);
    return fault ? cli::base64Complaint(text, *fault) : "none";
}

TEST(BookmarkInput, namesThePlaceInTheTextAsItWasGiven) {
    const std::string character = ": a letter, a digit, '+', '/' or the padding '='; there is ";
    EXPECT_EQ(complaintAbout("Zm9v"), "none");
    EXPECT_EQ(complaintAbout("!"), "Expected at character 1" + character + "\"!\".");
    EXPECT_EQ(complaintAbout("Zm 9v\tZ!"), "Expected at character 8" + character + "\"!\".");
    EXPECT_EQ(complaintAbout("Zm9v \n\n Z.9v\n"), "Expected at line 3, character 3" + character + "\".\".");
    EXPECT_EQ(complaintAbout("Zm9v\r\nZm9v"), "Expected at line 1, character 5" + character + "U+000D.");
    EXPECT_EQ(complaintAbout("\nZm9v\n  "), "none");
    EXPECT_EQ(
        complaintAbout("Zm9vYg\n"),
        "Expected at line 2, character 1: another character: they come in groups of "
        "four; there the text ends.");
}

TEST(BookmarkInput, namesCharactersInWordsThatAreSafeToShow) {
    const auto shown = [](const std::string& character) {
        const std::string complaint = complaintAbout("Zm" + character);
        return complaint.substr(complaint.rfind("there "));
    };
    EXPECT_EQ(shown("-"), "there is \"-\".");
    EXPECT_EQ(shown("\""), "there is U+0022.");
    EXPECT_EQ(shown("\\"), "there is U+005C.");
    EXPECT_EQ(shown("\x1B"), "there is U+001B.");
    EXPECT_EQ(shown("\x7F"), "there is U+007F.");
    EXPECT_EQ(shown("\u00E9"), "there is U+00E9.");
    EXPECT_EQ(shown("\U0001F600"), "there is U+1F600.");
    EXPECT_EQ(shown("\xE9"), "there is the byte 0xE9.");
    EXPECT_EQ(shown(std::string(1, '\0')), "there is U+0000.");
}

class BookmarkInputTest : public CliProgram {
protected:
    /// What is shown for a file with these contents.
    std::string shownFor(const std::string& fileContents) {
        files["f"] = fileContents;
        run("bookmark show --json --file f");
        return output.text;
    }
};

TEST_F(BookmarkInputTest, isRecognisedByItsContents) {
    const std::string asFile = shownFor(corpusText("note.alias"));
    EXPECT_TRUE(asFile.contains(R"("container":"aliasFile")"));
    const std::string bare = shownFor(corpusText("note.bookmark"));
    EXPECT_TRUE(bare.contains(R"("container":"bare")"));
    EXPECT_EQ(shownFor(base64Of(corpusText("note.bookmark")) + "\n"), bare);
    EXPECT_EQ(shownFor(base64Of(corpusText("note.alias"))), asFile);
    EXPECT_TRUE(shownFor(corpusText("alias-record.bookmark")).contains(R"("container":"bareAlias")"));
}

TEST_F(BookmarkInputTest, isTheAliasRecordOfAFileFromBeforeBookmarks) {
    bookmarks.stored = platform::bookmarkOfAliasRecord(aliasBytes(2, 0, "Disk"));
    for (const std::string contents : {"", "no bookmark"}) {
        EXPECT_TRUE(shownFor(contents).contains(R"("label":"aliasData")")) << errors.text;
    }
    EXPECT_EQ(log.front(), "bookmarkDataWithContents /here/f");
    log.clear();
    shownFor(corpusText("note.bookmark"));
    EXPECT_TRUE(log.empty()) << "its data comes first";
}

TEST_F(BookmarkInputTest, isRefusedWhenItIsTooLong) {
    files["f"] = std::string(cli::longestBookmarkInput + 1, 'A');
    EXPECT_EQ(complaint("bookmark show --file f"), "tolvane-cli: f: more than 25165824 bytes are not read\n");
}

TEST_F(BookmarkInputTest, thatIsNotTextIsParsedAsABookmark) {
    files["f"] = "Book\0\0\0\0"s;
    EXPECT_EQ(run("bookmark show --file f"), cli::ExitStatus::failure);
    EXPECT_EQ(output.text, "nil\n\n\nnil\n");
    EXPECT_EQ(
        errors.text,
        "tolvane-cli: f: Not a readable bookmark: expected the letters \"book\" or \"alis\" at byte 0.\n");
}

TEST_F(BookmarkInputTest, canBeAnAliasRecord) {
    const std::string record(textOfBytes(writtenAlias(noteAlias())));
    bookmarks.stored = std::unexpected(platform::posixError(EINVAL));
    const std::string shown = shownFor(record);
    EXPECT_TRUE(shown.contains(R"("aliasRecord":{"version":2,)")) << shown;
    EXPECT_EQ(shownFor(base64Of(record)), shown);
    EXPECT_TRUE(printed("bookmark show --file f").contains("posixPath:"));
}

} // namespace
} // namespace tolvane::tests
