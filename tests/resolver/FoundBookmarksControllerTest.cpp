#include "resolver/FoundBookmarksController.h"

#include "containers/FindingTexts.h"
#include "containers/FindingsFile.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/FoundBookmarksWindow.h"
#include "tests/support/PropertyListWriters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests {
namespace {

using platform::Array;
using platform::Dictionary;
using resolver::FindingColumn;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::size_t outcomeColumn = static_cast<std::size_t>(FindingColumn::outcome);

/// A Dock with tiles whose bookmarks all lead to /Users/demo/note.txt, beside these URLs.
std::string dockWith(const std::vector<std::string>& urls) {
    Array tiles;
    for (const std::string& url : urls) {
        tiles.push_back(Dictionary{
            {"tile-data", Dictionary{
                              {"book", corpusData("note.bookmark")},
                              {"file-label", "Note"},
                              {"file-data", Dictionary{{"_CFURLString", url}}}}}});
    }
    return binaryPropertyList(Dictionary{{"persistent-apps", tiles}}).value();
}

class FoundBookmarks : public testing::Test {
protected:
    /// A Dock of which the second tile does not agree with its URL.
    void searchDock() {
        opened.files["/dock"] = dockWith({"file:///Users/demo/note.txt", "file:///Applications/Other.app/"});
        opened.search("/dock");
    }

    const platform::TableRows& rows() const { return *opened.controller().findingsTable->rows(); }

    FoundBookmarksWindow opened;
};

TEST_F(FoundBookmarks, areAlsoThoseInTheFilesAttributes) {
    opened.files["/note.txt"] = "text";
    opened.attributes->attributes = {{"user.origin", corpusText("note.bookmark")}};
    opened.search("/note.txt");
    EXPECT_EQ(rows().rowCount(), 1U);
    EXPECT_THAT(opened.controller().detailsTextbox->string(), HasSubstr("\nPath: /Users/demo/note.txt\n"));
}

TEST_F(FoundBookmarks, areListedWithTheFirstSelected) {
    searchDock();
    EXPECT_EQ(opened.window().title(), "dock — Bookmarks");
    EXPECT_EQ(opened.window().status(), "");
    EXPECT_EQ(rows().rowCount(), 2U);
    EXPECT_EQ(opened.controller().findingsTable->selectedRow(), 0U);
    EXPECT_EQ(
        opened.controller().summaryTextbox->stringValue(), "2 findings in a list of the Dock, 1 differs.");
    EXPECT_THAT(opened.controller().detailsTextbox->string(), HasSubstr("\nPath: /Users/demo/note.txt\n"));
}

TEST_F(FoundBookmarks, areNotListedBeforeTheFileWasSearched) {
    opened.files["/dock"] = dockWith({"file:///a"});
    opened.windows.searchIn({platform::URL::fileURLWithPath("/dock")});
    EXPECT_EQ(opened.window().status(), "Searching the file …");
    EXPECT_EQ(opened.controller().findingsTable->rows(), nullptr);
    EXPECT_FALSE(opened.controller().isActionEnabled("resolveAll:"));
    EXPECT_FALSE(opened.controller().isActionEnabled("exportCSV:"));
    opened.controller().filterTextbox->setStringValue("no such text");
    opened.tasks.workAndDeliver();
    EXPECT_EQ(rows().rowCount(), 0U) << "the filter holds for what comes later";
}

TEST_F(FoundBookmarks, explainTheMarkOnlyWhereThereIsOne) {
    searchDock();
    EXPECT_EQ(opened.controller().summaryTextbox->note(), containers::mismatchMeaning);
    opened.files["/other"] = dockWith({"file:///Users/demo/note.txt"});
    opened.search("/other");
    EXPECT_EQ(opened.controller().summaryTextbox->note(), "");
    EXPECT_EQ(opened.controller().summaryTextbox->stringValue(), "1 finding in a list of the Dock.");
}

TEST_F(FoundBookmarks, areNotLookedForWhereThereCanBeNone) {
    opened.files["/folder/a"] = "";
    opened.files["/empty"] = "";
    opened.files["/text"] = "only words";
    opened.files["/closed"] = "words";
    opened.contents->unreadable.insert("/closed");
    const auto statusOf = [this](const std::string& path) {
        opened.search(path);
        return opened.window().status();
    };
    EXPECT_EQ(statusOf("/folder"), "This is a folder. Bookmarks are found in one file at a time.");
    EXPECT_EQ(statusOf("/empty"), "This file is of no kind that contains bookmarks.");
    EXPECT_EQ(statusOf("/closed"), "The file cannot be searched: Permission denied.");
    EXPECT_EQ(statusOf("/missing"), "The file cannot be searched: No such file or directory.");
    EXPECT_EQ(statusOf("/text"), "This file is of no kind that contains bookmarks.");
    opened.files["/settings"] = dockWith({});
    EXPECT_EQ(statusOf("/settings"), "No bookmarks in this file, which is a list of the Dock.");
}

TEST_F(FoundBookmarks, comeWithWhatCouldNotBeRead) {
    opened.files["/broken"] = "bplist00 cut short";
    opened.search("/broken");
    EXPECT_THAT(opened.window().status(), HasSubstr("cannot be read"));
    EXPECT_FALSE(opened.controller().isActionEnabled("exportJSON:"));
}

TEST_F(FoundBookmarks, areShownInFullWhenSelected) {
    searchDock();
    opened.controller().findingsTable->selectRow(1);
    EXPECT_THAT(
        opened.controller().detailsTextbox->string(),
        HasSubstr("\nBeside it: file:///Applications/Other.app/\nAgreement: differs"));
    opened.controller().findingsTable->selectRow(std::nullopt);
    EXPECT_EQ(opened.controller().detailsTextbox->string(), "");
    EXPECT_FALSE(opened.controller().isActionEnabled("openFinding:"));
}

TEST_F(FoundBookmarks, staySelectedWhenSortedAndFiltered) {
    searchDock();
    platform::Table& table = *opened.controller().findingsTable;
    table.requestOrder({0, false});
    EXPECT_EQ(table.selectedRow(), 1U);
    opened.controller().filterTextbox->setStringValue("other.app");
    EXPECT_EQ(rows().rowCount(), 1U);
    EXPECT_EQ(table.selectedRow(), std::nullopt);
    EXPECT_EQ(opened.controller().detailsTextbox->string(), "");
    EXPECT_EQ(
        opened.controller().summaryTextbox->stringValue(),
        "1 of 2 findings in a list of the Dock, 1 differs.");
}

TEST_F(FoundBookmarks, areOpenedInAResolver) {
    searchDock();
    opened.controller().findingsTable->openRow(0);
    EXPECT_THAT(opened.shownInResolver, ElementsAre(corpusData("note.bookmark")));
}

TEST_F(FoundBookmarks, areNotOpenedWhereTheyAreAddresses) {
    opened.files["/a.webloc"] = binaryPropertyList(Dictionary{{"URL", "https://example.com/"}}).value();
    opened.search("/a.webloc");
    EXPECT_FALSE(opened.controller().isActionEnabled("openFinding:"));
    EXPECT_FALSE(opened.controller().isActionEnabled("resolveAll:"));
    opened.controller().findingsTable->openRow(0);
    EXPECT_THAT(opened.shownInResolver, IsEmpty());
    EXPECT_EQ(opened.window().status(), "This is no bookmark, so the resolver has nothing to show.");
}

TEST_F(FoundBookmarks, areAllResolved) {
    searchDock();
    opened.bookmarks->resolved =
        platform::ResolvedBookmark{platform::URL::fileURLWithPath("/now/note.txt"), true};
    opened.log.clear();
    opened.controller().resolveAll(nullptr);
    EXPECT_EQ(
        opened.controller().resolvingProgress->progress(), (platform::ProgressIndicator::Progress{0, 2}));
    EXPECT_THAT(opened.log, IsEmpty()) << "not on the main thread";
    EXPECT_FALSE(opened.controller().isActionEnabled("resolveAll:"));
    EXPECT_TRUE(opened.controller().isActionEnabled("stopResolving:"));
    opened.tasks.workAndDeliver();
    EXPECT_EQ(rows().text(0, outcomeColumn), "stale: /now/note.txt");
    EXPECT_EQ(rows().text(1, outcomeColumn), "stale: /now/note.txt");
    EXPECT_EQ(opened.window().status(), "2 items found, 2 of them stale; 0 not found.");
    EXPECT_EQ(opened.controller().resolvingProgress->progress(), platform::ProgressIndicator::Progress());
    EXPECT_THAT(
        opened.controller().detailsTextbox->string(), testing::EndsWith("Leads to (stale): /now/note.txt\n"));
    EXPECT_TRUE(opened.controller().isActionEnabled("resolveAll:")) << "again, when volumes changed";
}

TEST_F(FoundBookmarks, sayWhyTheyLeadNowhere) {
    searchDock();
    opened.bookmarks->resolved = std::unexpected(platform::posixError(2));
    opened.controller().resolveAll(nullptr);
    opened.tasks.workAndDeliver();
    EXPECT_EQ(rows().text(0, outcomeColumn), "No such file or directory");
    EXPECT_TRUE(rows().isMarked(0, outcomeColumn));
    EXPECT_EQ(opened.window().status(), "0 items found, 0 of them stale; 2 not found.");
}

TEST_F(FoundBookmarks, areNotResolvedBeforeTheUserAsks) {
    searchDock();
    EXPECT_THAT(opened.log, IsEmpty());
}

TEST_F(FoundBookmarks, areNotResolvedAnyMoreOnceStopped) {
    searchDock();
    opened.controller().resolveAll(nullptr);
    opened.controller().stopResolving(nullptr);
    opened.tasks.workAndDeliver();
    EXPECT_THAT(opened.log, IsEmpty());
    EXPECT_EQ(opened.window().status(), "Stopped. 0 items found, 0 of them stale; 0 not found.");
    EXPECT_EQ(opened.controller().resolvingProgress->progress(), platform::ProgressIndicator::Progress());
    EXPECT_TRUE(opened.controller().isActionEnabled("resolveAll:"));
}

TEST_F(FoundBookmarks, areNotResolvedAnyMoreOnceTheWindowIsClosed) {
    searchDock();
    opened.controller().resolveAll(nullptr);
    opened.window().close();
    EXPECT_EQ(opened.windows.count(), 0U);
    EXPECT_TRUE(opened.newest.expired());
    opened.tasks.workAndDeliver();
    EXPECT_THAT(opened.log, IsEmpty());
}

TEST_F(FoundBookmarks, areExportedAsTheTerminalPrintsThem) {
    searchDock();
    opened.controller().filterTextbox->setStringValue("other.app");
    opened.controller().exportJSON(nullptr);
    EXPECT_EQ(opened.savePanels.newest()->nameFieldStringValue(), "dock bookmarks.json");
    EXPECT_THAT(opened.savePanels.newest()->allowedFileTypes(), ElementsAre("json"));
    EXPECT_EQ(opened.savePanels.newest()->subject()->path(), "/dock");
    opened.savePanels.newest()->answer(
        platform::modalResponseOK, platform::URL::fileURLWithPath("/out.json"));
    const auto found = containers::findBookmarks(std::as_bytes(std::span(opened.files.at("/dock"))));
    EXPECT_EQ(
        opened.textFiles.written.at("/out.json"),
        containers::findingsAsJson("/dock", "dock", found->findings));
    EXPECT_EQ(opened.window().status(), "2 findings exported.");

    opened.controller().exportCSV(nullptr);
    opened.savePanels.newest()->answer(platform::modalResponseOK, platform::URL::fileURLWithPath("/out.csv"));
    EXPECT_EQ(
        opened.textFiles.written.at("/out.csv"), containers::findingsAsCsv("/dock", "dock", found->findings));
}

TEST_F(FoundBookmarks, areNotExportedWhereTheUserDoesNotSave) {
    searchDock();
    opened.controller().exportCSV(nullptr);
    opened.savePanels.newest()->answer(0, std::nullopt);
    EXPECT_THAT(opened.textFiles.written, IsEmpty());
}

TEST_F(FoundBookmarks, sayWhyTheyWereNotExported) {
    searchDock();
    opened.textFiles.failure = platform::posixError(28);
    opened.controller().exportCSV(nullptr);
    opened.savePanels.newest()->answer(platform::modalResponseOK, platform::URL::fileURLWithPath("/out.csv"));
    EXPECT_EQ(opened.window().status(), "Not exported: No space left on device.");
}

} // namespace
} // namespace tolvane::tests
