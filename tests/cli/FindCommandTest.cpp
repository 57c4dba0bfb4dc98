#include "cli/FindCommand.h"

#include "tests/cli/CliProgram.h"
#include "tests/cli/WrittenJson.h"
#include "tests/support/AliasRecords.h"
#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/PropertyListWriters.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace tolvane::tests {
namespace {

using cli::ExitStatus;
using platform::Array;
using platform::Data;
using platform::Dictionary;
using testing::HasSubstr;

class FindBookmarksVerb : public CliProgram {
protected:
    std::string alias = std::string(textOfBytes(writtenAlias(noteAlias())));
};

TEST_F(FindBookmarksVerb, printsALineForEach) {
    files["/here/dock"] = dockWith({"file:///Users/demo/note.txt"});
    files["/here/alias"] = alias;
    EXPECT_EQ(
        printed("bookmark find dock alias"),
        "dock\t0\tbookmark\t/persistent-apps[0]/tile-data/book\t/Users/demo/note.txt\tTest Disk\t"
        "2023-03-08 20:26:40 +0000\n"
        "alias\t0\talias\t\t/Volumes/Disk/folder/note.txt\tDisk\t2018-01-28T16:00:00 local time\n");
}

TEST_F(FindBookmarksVerb, marksWhatDiffersFromItsNeighbour) {
    files["/here/dock"] = dockWith({"file:///Applications/Other.app/"});
    EXPECT_THAT(
        printed("bookmark find dock"), HasSubstr("+0000\tdiffers from file:///Applications/Other.app/\n"));
}

TEST_F(FindBookmarksVerb, endsALineWithTheListsFlagsInWords) {
    const Dictionary item{{"Alias", corpusData("note.bookmark")}, {"Hide", true}};
    const Dictionary list{{"SessionItems", Dictionary{{"CustomListItems", Array{item}}}}};
    files["/here/login"] = binaryPropertyList(list).value();
    EXPECT_THAT(printed("bookmark find login"), HasSubstr("+0000\tflags: hidden at login\n"));
    EXPECT_FALSE(printed("bookmark find --json login").contains("hidden"));
}

TEST_F(FindBookmarksVerb, keepsEachFindingOnALineOfItsOwn) {
    WrittenAlias odd = noteAlias();
    odd.tags = {{18, "/a\nb\tc"}, {19, "/Volumes/Disk"}};
    files["/here/a\nb"] = textOfBytes(writtenAlias(odd));
    const std::string text = printed({"bookmark", "find", "a\nb"});
    EXPECT_TRUE(text.starts_with("a\\nb\t0\t")) << text;
    EXPECT_THAT(text, HasSubstr("/Volumes/Disk/a\\nb\\tc"));
    EXPECT_EQ(std::ranges::count(text, '\n'), 1);
}

TEST_F(FindBookmarksVerb, printsAnObjectForEach) {
    files["/here/dock"] = dockWith({"file:///Applications/Other.app/"});
    const Json json = Json::parse(printed("bookmark find --json dock"));
    EXPECT_EQ(json["file"], "dock");
    EXPECT_EQ(json["index"], 0);
    EXPECT_EQ(json["where"], "/persistent-apps[0]/tile-data/book");
    EXPECT_EQ(json["container"], "dock");
    EXPECT_EQ(json["kind"], "bookmark");
    EXPECT_EQ(json["version"], 0x1004'0000);
    EXPECT_EQ(json["length"], 648);
    EXPECT_EQ(json["path"], "/Users/demo/note.txt");
    EXPECT_EQ(json["url"], nullptr);
    EXPECT_EQ(json["volumeName"], "Test Disk");
    EXPECT_EQ(json["volumeUUID"], "11111111-2222-3333-4444-555555555555");
    EXPECT_EQ(json["created"]["date"], "2023-03-08T20:26:40.500000000Z");
    EXPECT_EQ(json["name"], "Note");
    EXPECT_EQ(json["neighbour"], "file:///Applications/Other.app/");
    EXPECT_EQ(json["mismatch"], true);
    EXPECT_EQ(json["warnings"], Json::array());
}

TEST_F(FindBookmarksVerb, givesTheLocalTimeOfOldAliasesAsText) {
    files["/here/alias"] = alias;
    const Json json = Json::parse(printed("bookmark find --json alias"));
    EXPECT_EQ(json["createdLocal"], "2018-01-28T16:00:00");
    EXPECT_FALSE(json.contains("created"));
    EXPECT_EQ(json.size(), 16U);
}

TEST_F(FindBookmarksVerb, saysNothingOfFilesThatAreNoContainers) {
    files["/here/text"] = "text";
    files["/here/empty"] = "";
    files["/here/binary"] = std::string(10'000, '\0');
    EXPECT_EQ(printed("bookmark find text empty binary"), "");
}

TEST_F(FindBookmarksVerb, saysWhereAContainerIsBroken) {
    files["/here/list"] = "bplist00 and no more";
    EXPECT_THAT(
        complaint("bookmark find list"), HasSubstr("list: The property list cannot be read: expected "));
    std::string cut = corpusText("note.bookmark");
    cut.pop_back();
    files["/here/cut"] = cut;
    EXPECT_EQ(run("bookmark find cut"), ExitStatus::failure);
    EXPECT_EQ(output.text, "cut\t0\tbookmark\t\tnot readable\t\t\n");
    EXPECT_THAT(errors.text, HasSubstr("cut: Not a readable bookmark: expected"));
}

TEST_F(FindBookmarksVerb, searchesFoldersWhenAsked) {
    files["/here/folder/a"] = alias;
    files["/here/folder/deep/b"] = alias;
    EXPECT_THAT(
        complaint("bookmark find folder"), HasSubstr("folder: a folder is searched with --recursive only"));
    const std::string text = printed("bookmark find --recursive folder");
    EXPECT_THAT(text, HasSubstr("folder/a\t0\t"));
    EXPECT_THAT(text, HasSubstr("\nfolder/deep/b\t0\t"));
}

TEST_F(FindBookmarksVerb, goesOnAfterWhatCannotBeRead) {
    files["/here/a/closed/x"] = alias;
    files["/here/a/secret"] = alias;
    files["/here/a/z"] = alias;
    contents.unreadable = {"/here/a/closed", "/here/a/secret"};
    EXPECT_EQ(run({"bookmark", "find", "--recursive", "nowhere", "a", ""}), ExitStatus::failure);
    EXPECT_THAT(output.text, HasSubstr("a/z\t0\talias"));
    EXPECT_THAT(errors.text, HasSubstr("nowhere: No such file or directory\n"));
    EXPECT_THAT(errors.text, HasSubstr("a/closed: Permission denied\n"));
    EXPECT_THAT(errors.text, HasSubstr("a/secret: Permission denied\n"));
    EXPECT_THAT(errors.text, HasSubstr("tolvane-cli: ''"));
}

TEST_F(FindBookmarksVerb, printsTheSameWithSeveralThreads) {
    Words arguments = "bookmark find";
    for (int i = 0; i < 100; ++i) {
        arguments.push_back("file " + std::to_string(i));
        files["/here/" + arguments.back()] = i % 3 == 0 ? "nothing" : alias;
    }
    const std::string byOne = printed(arguments);
    arguments.insert(arguments.end(), {"--jobs", "4"});
    EXPECT_EQ(printed(arguments), byOne);
    EXPECT_EQ(std::ranges::count(byOne, '\n'), 66);
}

// These are searched one at a time.
TEST_F(FindBookmarksVerb, searchesLargeFilesToo) {
    const std::string large = alias + std::string(std::size_t{17} << 20U, '\0');
    files = {{"/here/a", large}, {"/here/b", large}, {"/here/c", alias}, {"/here/d", large}};
    contents.unreadable = {"/here/b"};
    EXPECT_EQ(run("bookmark find --jobs 4 b d c b a"), ExitStatus::failure);
    EXPECT_EQ(
        errors.text, "tolvane-cli: b: Permission denied\n"
                     "tolvane-cli: b: Permission denied\n");
    EXPECT_THAT(output.text, HasSubstr("c\t0\talias"));
}

} // namespace
} // namespace tolvane::tests
