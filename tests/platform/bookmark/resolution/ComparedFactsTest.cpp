#include "platform/bookmark/resolution/ComparedFacts.h"

#include "tests/platform/bookmark/Examples.h"
#include "tests/support/AliasRecords.h"

namespace tolvane::platform {
namespace {

using namespace tests;

ComparedFact factNamed(std::string_view name, const BookmarkContents& stored, const BookmarkContents& found) {
    for (const ComparedFact& fact : comparedFacts(stored, found)) {
        if (fact.name == name) {
            return fact;
        }
    }
    ADD_FAILURE() << name;
    return {};
}

TEST(ComparedFacts, ofABookmarkWithItselfDifferInNothing) {
    std::vector<std::string_view> names;
    for (const ComparedFact& fact : comparedFacts(noteContents(), noteContents())) {
        names.push_back(fact.name);
        EXPECT_EQ(fact.stored, fact.found) << fact.name;
        EXPECT_EQ(fact.differs, false) << fact.name;
    }
    EXPECT_EQ(
        names, (std::vector<std::string_view>{
                   "path", "name", "fileNumbers", "creationDate", "volumeName", "volumeUUID",
                   "volumeCapacity", "volumeCreationDate", "mountPoint"}));
}

TEST(ComparedFacts, areUnknownWhereOneSideHasNone) {
    for (const ComparedFact& fact : comparedFacts(noteContents(), BookmarkContents())) {
        EXPECT_TRUE(fact.stored) << fact.name;
        EXPECT_FALSE(fact.found) << fact.name;
        EXPECT_FALSE(fact.differs) << fact.name;
    }
    EXPECT_EQ(comparedFacts(noteBookmark(), Data()), comparedFacts(noteContents(), BookmarkContents()));
}

TEST(ComparedFacts, differInWhatHasChanged) {
    BookmarkContents found = noteContents();
    found.pathComponents->back() = "renamed.txt";
    found.volume.name = "Other";
    found.volume.capacity = 1;
    EXPECT_EQ(factNamed("path", noteContents(), found).differs, true);
    EXPECT_EQ(factNamed("name", noteContents(), found).found, Value("renamed.txt"));
    EXPECT_EQ(factNamed("name", noteContents(), found).differs, true);
    EXPECT_EQ(factNamed("volumeName", noteContents(), found).differs, true);
    EXPECT_EQ(factNamed("volumeCapacity", noteContents(), found).differs, true);
    EXPECT_EQ(factNamed("fileNumbers", noteContents(), found).differs, false);
    EXPECT_EQ(factNamed("mountPoint", noteContents(), found).differs, false);
}

TEST(ComparedFacts, countFileNumbersFromTheMountPoint) {
    BookmarkContents stored;
    stored.volume.path = "/Volumes/Disk";
    stored.fileIDs = {std::nullopt, std::nullopt, std::nullopt, 30};
    BookmarkContents found;
    found.volume.path = "/mnt";
    found.fileIDs = {7, 20, 30};
    EXPECT_EQ(
        factNamed("fileNumbers", stored, found).found,
        Value(Array{Value(std::int64_t{20}), Value(std::int64_t{30})}));
    EXPECT_EQ(factNamed("fileNumbers", stored, found).differs, false) << "one is not known";
    found.fileIDs = {7, 20, 31};
    EXPECT_EQ(factNamed("fileNumbers", stored, found).differs, true);
    found.fileIDs = {7, 30};
    EXPECT_EQ(factNamed("fileNumbers", stored, found).differs, true);
}

TEST(ComparedFacts, passOverTheCaseOfUUIDsAndTheLastDigitsOfDates) {
    BookmarkContents stored;
    stored.volume.uuid = "AAAAAAAA-0000-0000-0000-000000000001";
    stored.creationDate = Date(100.0);
    BookmarkContents found = stored;
    found.volume.uuid = "aaaaaaaa-0000-0000-0000-000000000001";
    found.creationDate = Date(100.000'000'1);
    EXPECT_EQ(factNamed("volumeUUID", stored, found).differs, false);
    EXPECT_EQ(factNamed("creationDate", stored, found).differs, false);
    found.volume.uuid = "aaaaaaaa-0000-0000-0000-000000000002";
    found.creationDate = Date(100.001);
    EXPECT_EQ(factNamed("volumeUUID", stored, found).differs, true);
    EXPECT_EQ(factNamed("creationDate", stored, found).differs, true);
}

TEST(ComparedFacts, areThoseOfAnAliasRecordToo) {
    const auto facts = comparedFacts(writtenAlias(noteAlias(3)), noteBookmark());
    ASSERT_FALSE(facts.empty());
    EXPECT_EQ(facts.front().stored, Value("/Volumes/Disk/folder/note.txt"));
    EXPECT_EQ(facts.front().differs, true);
}

} // namespace
} // namespace tolvane::platform
