#include "resolver/FindingRows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::resolver {
namespace {

using containers::Finding;
using containers::FindingKind;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t index(FindingColumn column) {
    return static_cast<std::size_t>(column);
}

Finding findingOf(const std::string& path) {
    Finding finding;
    finding.path = path;
    return finding;
}

std::vector<std::size_t> shownIn(const FindingRows& rows) {
    std::vector<std::size_t> shown;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        shown.push_back(rows.findingAt(row));
    }
    return shown;
}

std::vector<std::size_t> sortedBy(FindingRows& rows, FindingColumn column, bool isAscending = true) {
    rows.sort({index(column), isAscending});
    return shownIn(rows);
}

TEST(FindingRows, haveATextInEachColumn) {
    Finding finding = findingOf("/Applications/Mail.app");
    finding.where = "/persistent-apps[0]/tile-data/book";
    finding.volumeName = "Disk";
    finding.created = platform::Date(0);
    finding.name = "Mail";
    finding.neighbour = "file:///b";
    finding.mismatch = true;
    finding.flags = {"hidden", "enabled"};
    const FindingRows rows({finding});
    std::vector<std::string> texts;
    for (std::size_t column = 0; column < rows.columns().size(); ++column) {
        texts.push_back(rows.text(0, column));
    }
    EXPECT_THAT(
        texts, ElementsAre(
                   "0", "bookmark", "/Applications/Mail.app", "differs", "file:///b", "", "Mail", "Disk",
                   "2001-01-01 00:00:00 +0000", "hidden, enabled", "/persistent-apps[0]/tile-data/book"));
}

TEST(FindingRows, markWhatIsToBeNoticed) {
    std::vector<Finding> findings(3);
    findings[1].mismatch = true;
    findings[2].isReadable = false;
    FindingRows rows(findings);
    rows.setOutcome(0, {.text = "No such file or directory"});
    EXPECT_FALSE(rows.isMarked(0, index(FindingColumn::agreement)));
    EXPECT_TRUE(rows.isMarked(1, index(FindingColumn::agreement)));
    EXPECT_TRUE(rows.isMarked(1, index(FindingColumn::neighbour)));
    EXPECT_FALSE(rows.isMarked(1, index(FindingColumn::target)));
    EXPECT_TRUE(rows.isMarked(2, index(FindingColumn::target)));
    EXPECT_TRUE(rows.isMarked(0, index(FindingColumn::outcome)));
    EXPECT_FALSE(rows.isMarked(1, index(FindingColumn::outcome)));
}

TEST(FindingRows, sayWhetherABookmarkAgreesOnlyWhereThatIsKnown) {
    std::vector<Finding> findings(2);
    findings[0].mismatch = false;
    const FindingRows rows(findings);
    EXPECT_EQ(rows.text(0, index(FindingColumn::agreement)), "agrees");
    EXPECT_EQ(rows.text(1, index(FindingColumn::agreement)), "");
}

TEST(FindingRows, areSortedByTextsAndKeepTheContainersOrderOtherwise) {
    FindingRows rows({findingOf("/b"), findingOf("/a"), findingOf("/b"), findingOf("/a")});
    EXPECT_THAT(sortedBy(rows, FindingColumn::target), ElementsAre(1, 3, 0, 2));
    EXPECT_THAT(sortedBy(rows, FindingColumn::target, false), ElementsAre(0, 2, 1, 3));
    EXPECT_THAT(sortedBy(rows, FindingColumn::number), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(sortedBy(rows, FindingColumn::number, false), ElementsAre(3, 2, 1, 0));
}

TEST(FindingRows, areSortedByNumberAndNotByItsDigits) {
    FindingRows rows(std::vector<Finding>(11));
    EXPECT_EQ(sortedBy(rows, FindingColumn::number).back(), 10U);
}

TEST(FindingRows, areSortedByDateWithThoseWithoutOneFirst) {
    std::vector<Finding> findings(3);
    findings[0].created = platform::Date(9e9);
    findings[2].createdLocal = platform::Date(-1e9);
    FindingRows rows(findings);
    EXPECT_THAT(sortedBy(rows, FindingColumn::created), ElementsAre(1, 2, 0));
}

TEST(FindingRows, areFilteredByAnyColumnWithoutRegardToCase) {
    Finding named;
    named.name = "Übersicht MAIL";
    FindingRows rows({findingOf("/mail"), findingOf("/b"), named});
    rows.filter("Mail");
    EXPECT_THAT(shownIn(rows), ElementsAre(0, 2));
    rows.filter("Übersicht");
    EXPECT_THAT(shownIn(rows), ElementsAre(2));
    rows.filter("nothing of the kind");
    EXPECT_THAT(shownIn(rows), IsEmpty());
    rows.filter("");
    EXPECT_EQ(rows.rowCount(), 3U);
}

TEST(FindingRows, stayFilteredWhenSortedAndSortedWhenFiltered) {
    FindingRows rows({findingOf("/x/b"), findingOf("/y"), findingOf("/x/a")});
    rows.filter("/x/");
    EXPECT_THAT(sortedBy(rows, FindingColumn::target), ElementsAre(2, 0));
    rows.filter("");
    EXPECT_THAT(shownIn(rows), ElementsAre(2, 0, 1));
}

TEST(FindingRows, findTheRowOfAFinding) {
    FindingRows rows({findingOf("/b"), findingOf("/a")});
    rows.sort({index(FindingColumn::target), true});
    EXPECT_EQ(rows.rowOf(0), 1U);
    rows.filter("/a");
    EXPECT_EQ(rows.rowOf(0), std::nullopt);
    EXPECT_EQ(rows.rowOf(1), 0U);
}

TEST(FindingRows, showWhereAFindingLeads) {
    FindingRows rows(std::vector<Finding>(2));
    EXPECT_EQ(rows.outcomeOf(0), nullptr);
    rows.setOutcome(0, {.isFound = true, .text = "/now"});
    rows.setOutcome(1, {.isFound = true, .isStale = true, .text = "/elsewhere"});
    EXPECT_EQ(rows.text(0, index(FindingColumn::outcome)), "/now");
    EXPECT_EQ(rows.text(1, index(FindingColumn::outcome)), "stale: /elsewhere");
    EXPECT_TRUE(rows.outcomeOf(1)->isStale);
}

} // namespace
} // namespace tolvane::resolver
