#include "cli/FileBookmarks.h"

#include "platform/values/Base64.h"
#include "tests/cli/CliProgram.h"
#include "tests/cli/WrittenJson.h"
#include "tests/support/AliasRecords.h"
#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/PropertyListWriters.h"

#include <gmock/gmock.h>

namespace tolvane::tests {
namespace {

using cli::ExitStatus;
using platform::Array;
using platform::Data;
using platform::Dictionary;
using testing::HasSubstr;

/// A list with a bookmark, an alias record, and a bookmark that is cut off.
class FileBookmarks : public CliProgram {
protected:
    FileBookmarks() {
        Data cut = corpusData("note.bookmark");
        cut.resize(cut.size() - 4);
        const Array items{
            Dictionary{{"Bookmark", corpusData("note.bookmark")}}, Dictionary{{"Alias", alias}},
            Dictionary{{"Bookmark", cut}}};
        files["/here/list"] = binaryPropertyList(Dictionary{{"items", items}}).value();
        files["/here/location"] = xmlPropertyList(Dictionary{{"URL", "https://example.org/"}}).value();
        files["/here/none"] = "nothing of that kind";
        bookmarks.resolveTo("/data/notes.txt", true);
        bookmarks.stored = std::unexpected(platform::posixError(EINVAL));
    }

    Data alias = writtenAlias(noteAlias());
};

TEST_F(FileBookmarks, areShownAndResolvedByTheirNumbers) {
    const std::string shown = printed("bookmark show --json --file list --at 0");
    EXPECT_EQ(shown, printed({"bookmark", "show", "--json", base64Of(corpusText("note.bookmark"))}));
    EXPECT_THAT(printed("bookmark show --file list --at=1"), HasSubstr("posixPath:\"/folder/note.txt\""));
    EXPECT_THAT(printed("bookmark resolve --file list --at 0"), HasSubstr("/data/notes.txt\n"));
    EXPECT_EQ(bookmarks.resolvedFrom, corpusData("note.bookmark"));
}

TEST_F(FileBookmarks, areReadAsTheyAreStored) {
    EXPECT_EQ(printed("bookmark read --at 1 list"), platform::base64EncodedString(alias) + "\n");
}

TEST_F(FileBookmarks, haveNumbersWithinTheFile) {
    EXPECT_EQ(
        complaint("bookmark read --at 3 list"),
        "tolvane-cli: list: it has no bookmark with the number 3; the last one is 2\n");
    EXPECT_EQ(
        complaint("bookmark show --file location --at 0"),
        "tolvane-cli: location: number 0 is no bookmark; its kind is url\n");
    EXPECT_EQ(complaint("bookmark read --at 0 none"), "tolvane-cli: none: it contains no bookmark\n");
    EXPECT_EQ(complaint("bookmark read --at 0 missing"), "tolvane-cli: missing: No such file or directory\n");
}

TEST_F(FileBookmarks, thatCannotBeReadSayWhy) {
    files["/here/broken"] = "bplist00";
    EXPECT_THAT(complaint("bookmark read --at 0 broken"), HasSubstr("The property list cannot be read"));
}

TEST_F(FileBookmarks, areResolvedOneAfterTheOther) {
    EXPECT_EQ(run("bookmark resolve --all --file list"), ExitStatus::success);
    EXPECT_EQ(
        output.text, "0\tstale\t/data/notes.txt\n1\tstale\t/data/notes.txt\n2\tstale\t/data/notes.txt\n");
    EXPECT_EQ(errors.text, "tolvane-cli: list: 3 bookmarks: 3 found, 3 of them stale; 0 not found\n");
    EXPECT_EQ(run("bookmark resolve --all --file missing"), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: missing: No such file or directory\n");
}

TEST_F(FileBookmarks, thatAreNotFoundSayWhyInOneLine) {
    bookmarks.resolved =
        std::unexpected(platform::cocoaError(platform::NSFileNoSuchFileError, "Nothing is at /a\nb."));
    EXPECT_EQ(run("bookmark resolve --all --file list"), ExitStatus::failure);
    EXPECT_THAT(output.text, HasSubstr("2\tnot found\tNothing is at /a\\nb.\n"));
    EXPECT_EQ(errors.text, "tolvane-cli: list: 3 bookmarks: 0 found, 0 of them stale; 3 not found\n");
}

TEST_F(FileBookmarks, showHowFarTheyAreOnATerminalAlone) {
    errors.terminal = true;
    run("bookmark resolve --all --file list");
    EXPECT_EQ(
        errors.text,
        "\r1 of 3\r      \r\r2 of 3\r      \r\r3 of 3\r      \rtolvane-cli: list: 3 bookmarks: 3 "
        "found, 3 of them stale; 0 not found\n");
}

TEST_F(FileBookmarks, areComparedWithWhatWasFound) {
    bookmarks.made = corpusData("note.bookmark");
    run("bookmark resolve --all --json --file list");
    const Json first = Json::parse(output.text.substr(0, output.text.find('\n')));
    EXPECT_EQ(first["where"], "/items[0]/Bookmark");
    EXPECT_EQ(first["resolution"]["path"], "/data/notes.txt");
    EXPECT_EQ(first["resolution"]["compared"].size(), 9U);
    for (const Json& fact : first["resolution"]["compared"]) {
        EXPECT_EQ(fact["stored"], fact["found"]);
        EXPECT_NE(fact["differs"], true);
    }
}

TEST_F(FileBookmarks, areWrittenToFilesOfTheirOwn) {
    EXPECT_EQ(
        printed("bookmark read --extract out list"),
        "0000.bookmark\t/items[0]/Bookmark\n0001.alias\t/items[1]/Alias\n"
        "0002.bookmark\t/items[2]/Bookmark\n");
    EXPECT_EQ(extracted["/here/out/0000.bookmark"], corpusData("note.bookmark"));
    EXPECT_EQ(extracted["/here/out/0001.alias"], alias);
    EXPECT_EQ(extracted.size(), 3U);
}

TEST_F(FileBookmarks, leaveWhatIsThereAsItIs) {
    extracted["/here/out/0001.alias"] = {};
    EXPECT_EQ(run("bookmark read --extract out list"), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: out/0001.alias: File exists\n");
    EXPECT_EQ(extracted["/here/out/0001.alias"], Data());
    EXPECT_EQ(extracted.size(), 3U) << "the others are written";
    EXPECT_EQ(
        complaint("bookmark read --extract missing list"),
        "tolvane-cli: missing: No such file or directory\n");
}

TEST_F(FileBookmarks, thatAreBrokenAreSalvagedOnRequest) {
    EXPECT_EQ(run("bookmark show --salvage --file list --at 2"), ExitStatus::failure);
    EXPECT_THAT(output.text, HasSubstr("pathComponents"));
    EXPECT_THAT(output.text, testing::EndsWith("which are not there\n"));
    EXPECT_EQ(
        errors.text,
        "tolvane-cli: list: Not a readable bookmark: expected a total size within the bytes that "
        "are there at byte 4.\n");
    EXPECT_EQ(
        printed("bookmark show --salvage --file list --at 0"), printed("bookmark show --file list --at 0"));
    EXPECT_EQ(
        complaint("bookmark show --salvage AAAA"),
        "tolvane-cli: Nothing of the bookmark can be read: expected the letters \"book\" or \"alis\" at byte "
        "0.\n");
}

TEST_F(FileBookmarks, canBeInExtendedAttributes) {
    attributes.attributes = {{"user.app", corpusText("note.bookmark")}, {"user.other", "text"}};
    files["/here/note"] = corpusText("note.bookmark");
    EXPECT_THAT(printed("bookmark find note"), HasSubstr("note\t1\tbookmark\t/attributes/user.app\t"));
    EXPECT_THAT(printed("bookmark find --json none"), HasSubstr(R"("container":"attributes")"));
    attributes.onList = [](const char*, std::span<char>) { return std::unexpected(ENOTSUP); };
    EXPECT_EQ(printed("bookmark find none"), "");
}

} // namespace
} // namespace tolvane::tests
