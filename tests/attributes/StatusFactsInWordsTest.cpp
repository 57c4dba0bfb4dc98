#include "attributes/StatusFactsInWords.h"

#include "tests/attributes/Explaining.h"

#include <cerrno>

namespace tolvane::tests {
namespace {

using attributes::explainFacts;
using platform::Date;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;

platform::StatusFacts factsOfMode(std::uint32_t mode) {
    platform::StatusFacts facts;
    facts.mode = mode;
    facts.ownerID = 1000;
    facts.groupID = 100;
    return facts;
}

std::vector<std::string> linesAbout(const platform::StatusFacts& facts) {
    return linesOf(explainFacts(facts, false).words);
}

TEST(StatusFactsInWords, showPermissionsInLettersWordsAndAsAGrid) {
    const auto file = explainFacts(factsOfMode(0100640), false, knownAccounts());
    EXPECT_THAT(linesOf(file.words), Contains("Permissions: rw-r----- (0640)"));
    EXPECT_EQ(
        file.words.summary, "What is permitted on this regular file: its owner u1000: read, write; group "
                            "g100: read; others: nothing.");
    EXPECT_THAT(
        file.grid, ElementsAre(
                       "        read  write  execute", //
                       "Owner   yes   yes    -",       //
                       "Group   yes   -      -",       //
                       "Others  -     -      -"));
    EXPECT_EQ(file.words.name, "");
    EXPECT_EQ(file.words.fields.at(0).value, platform::Value(std::uint64_t{0640}));
}

TEST(StatusFactsInWords, sayWhatTheBitsMeanForFolders) {
    const auto folder = explainFacts(factsOfMode(0043775), false);
    EXPECT_EQ(
        folder.words.summary,
        "What is permitted on this folder: its owner 1000: list, change entries, enter; group 100: list, "
        "change entries, enter; others: list, enter.");
    EXPECT_THAT(
        folder.grid, ElementsAre(
                         "        list  change  enter", //
                         "Owner   yes   yes     yes",   //
                         "Group   yes   yes     yes    set-group-ID", "Others  yes   -       yes    sticky"));
    EXPECT_THAT(
        linesOf(folder.words),
        Contains("Special bits: set-group-ID: new entries get the folder's group; sticky: entries are "
                 "renamed and deleted by their owners, the folder's owner and root"));
    EXPECT_THAT(
        linesAbout(factsOfMode(0044000)), Contains("Special bits: set-user-ID, without effect on folders"));
}

TEST(StatusFactsInWords, nameTheSpecialBitsOfFiles) {
    const auto file = explainFacts(factsOfMode(0107000), false);
    EXPECT_THAT(linesOf(file.words), Contains("Permissions: --S--S--T (7000)"));
    EXPECT_THAT(
        linesOf(file.words),
        Contains("Special bits: set-user-ID: runs as its owner; set-group-ID: runs with its group; sticky, "
                 "without effect on files"));
    EXPECT_THAT(file.grid.at(1), EndsWith("-     -      -        set-user-ID"));
}

TEST(StatusFactsInWords, sayThatALinksPermissionsHaveNoEffect) {
    EXPECT_EQ(
        explainFacts(factsOfMode(0120777), false).words.summary,
        "Permissions of a symbolic link, which have no effect: those of its target count.");
}

TEST(StatusFactsInWords, doNotInventAKind) {
    EXPECT_EQ(
        explainFacts(factsOfMode(0), false).words.summary,
        "What is permitted on this item: its owner 1000: nothing; group 100: nothing; others: nothing.");
}

TEST(StatusFactsInWords, nameFlagsAsLsattrDoesAndThoseThatAreNotKnown) {
    platform::StatusFacts facts = factsOfMode(0100644);
    facts.flags = 0x10 | 0x20 | 0x80;
    facts.knownFlags = 0x10 | 0x20 | 0x40;
    const auto words = explainFacts(facts, false).words;
    EXPECT_THAT(linesOf(words), Contains("Flags: immutable (i), append only (a)"));
    EXPECT_EQ(words.fields.back().value, platform::Value(std::uint64_t{0x30}));
    EXPECT_THAT(
        words.notes, ElementsAre("Not known without opening the item: the project number, and the flags "
                                 "that lsattr shows as s u c S A m E I j t D T e V C x N P F"));
    facts.flags = 0;
    EXPECT_THAT(linesAbout(facts), Contains("Flags: none of i a d"));
    facts.knownFlags = 0;
    EXPECT_THAT(linesAbout(facts), Not(Contains(testing::StartsWith("Flags"))));
}

TEST(StatusFactsInWords, sayWhatTheCurrentUserMayDoAndWhyNot) {
    platform::StatusFacts facts = factsOfMode(0100644);
    facts.currentAccess = platform::ItemAccess{0, EROFS, EACCES};
    EXPECT_THAT(
        linesAbout(facts),
        Contains("Current user: read; not write (Read-only file system); not execute (Permission denied)"));
    facts.currentAccess = platform::ItemAccess{EACCES, 0, 0};
    facts.mode = 0040000;
    EXPECT_THAT(
        linesAbout(facts), Contains("Current user: not list (Permission denied); change entries; enter"));
}

TEST(StatusFactsInWords, haveSizeAndDatesWhereTheyAreKnown) {
    platform::StatusFacts facts = factsOfMode(0100644);
    facts.allocatedSize = 4096;
    EXPECT_THAT(linesAbout(facts), ElementsAre("Permissions: rw-r--r-- (0644)", "Size on disk: 4096 bytes"));
    facts.accessDate = Date::fromUnixTime(0, 5);
    facts.statusChangeDate = Date::fromUnixTime(-1, 0);
    EXPECT_THAT(
        linesAbout(facts),
        testing::IsSupersetOf(
            {"Last access: 1970-01-01 00:00:00.000000005 UTC", "Status change: 1969-12-31 23:59:59 UTC"}));
}

TEST(StatusFactsInWords, sayThatAnAccessControlListMakesTheGroupAMask) {
    EXPECT_THAT(
        explainFacts(factsOfMode(0100644), true).words.notes,
        Contains("The item has an access control list: the group's permissions are its mask, and who may do "
                 "what is in the list"));
}

} // namespace
} // namespace tolvane::tests
