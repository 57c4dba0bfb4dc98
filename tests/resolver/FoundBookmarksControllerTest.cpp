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

using platform::Dictionary;
using resolver::FindingColumn;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::size_t outcomeColumn = static_cast<std::size_t>(FindingColumn::outcome);

class FoundBookmarks : public testing::Test, public FoundBookmarksWindow {
protected:
    /// A Dock of which the second tile does not agree with its URL.
    void searchDock() {
        files["/dock"] = dockWith({"file:///Users/demo/note.txt", "file:///Applications/Other.app/"});
        search("/dock");
    }

    const platform::TableRows& rows() const { return *controller().findingsTable->rows(); }
    std::string detailsText() const { return controller().detailsTextbox->string(); }
    const std::string& summary() const { return controller().summaryTextbox->stringValue(); }
    const std::string& status() const { return window().status(); }
    bool isOffered(std::string_view selector) const { return controller().isActionEnabled(selector); }

    void saveTo(std::string_view path) {
        savePanels.newest()->answer(platform::modalResponseOK, platform::URL::fileURLWithPath(path));
    }
};

TEST_F(FoundBookmarks, areAlsoThoseInTheFilesAttributes) {
    files["/note.txt"] = "text";
    attributes->attributes = {{"user.origin", corpusText("note.bookmark")}};
    search("/note.txt");
    EXPECT_EQ(rows().rowCount(), 1U);
    EXPECT_THAT(detailsText(), HasSubstr("\nPath: /Users/demo/note.txt\n"));
}

TEST_F(FoundBookmarks, areListedWithTheFirstSelected) {
    searchDock();
    EXPECT_EQ(window().title(), "dock — Bookmarks");
    EXPECT_EQ(status(), "");
    EXPECT_EQ(rows().rowCount(), 2U);
    EXPECT_EQ(controller().findingsTable->selectedRow(), 0U);
    EXPECT_EQ(summary(), "2 findings in a list of the Dock, 1 differs.");
    EXPECT_THAT(detailsText(), HasSubstr("\nPath: /Users/demo/note.txt\n"));
    EXPECT_THAT(log, IsEmpty()) << "nothing is resolved before the user asks";
}

TEST_F(FoundBookmarks, areNotListedBeforeTheFileWasSearched) {
    files["/dock"] = dockWith({"file:///a"});
    windows.searchIn({platform::URL::fileURLWithPath("/dock")});
    EXPECT_EQ(status(), "Searching the file …");
    EXPECT_EQ(controller().findingsTable->rows(), nullptr);
    EXPECT_FALSE(isOffered("resolveAll:"));
    EXPECT_FALSE(isOffered("exportCSV:"));
    controller().filterTextbox->setStringValue("no such text");
    tasks.workAndDeliver();
    EXPECT_EQ(rows().rowCount(), 0U) << "the filter holds for what comes later";
}

TEST_F(FoundBookmarks, explainTheMarkOnlyWhereThereIsOne) {
    searchDock();
    EXPECT_EQ(controller().summaryTextbox->note(), containers::mismatchMeaning);
    files["/other"] = dockWith({"file:///Users/demo/note.txt"});
    search("/other");
    EXPECT_EQ(controller().summaryTextbox->note(), "");
    EXPECT_EQ(summary(), "1 finding in a list of the Dock.");
}

TEST_F(FoundBookmarks, areNotLookedForWhereThereCanBeNone) {
    files["/folder/a"] = "";
    files["/empty"] = "";
    files["/text"] = "only words";
    files["/picture"] = "\x89PNG\r\n\x1A\n" + std::string(3, '\0');
    files["/closed"] = "words";
    contents->unreadable.insert("/closed");
    const auto statusOf = [this](const std::string& path) {
        search(path);
        return status();
    };
    EXPECT_EQ(statusOf("/folder"), "This is a folder. Bookmarks are found in one file at a time.");
    EXPECT_EQ(statusOf("/empty"), "This file is of no kind that contains bookmarks.");
    EXPECT_EQ(statusOf("/closed"), "The file cannot be searched: Permission denied.");
    EXPECT_EQ(statusOf("/missing"), "The file cannot be searched: No such file or directory.");
    EXPECT_EQ(statusOf("/picture"), "This file is of no kind that contains bookmarks.");
    EXPECT_EQ(statusOf("/text"), "This file is of no kind that contains bookmarks.");
    files["/settings"] = dockWith({});
    EXPECT_EQ(statusOf("/settings"), "No bookmarks in this file, which is a list of the Dock.");
}

TEST_F(FoundBookmarks, comeWithWhatCouldNotBeRead) {
    files["/broken"] = "bplist00 cut short";
    search("/broken");
    EXPECT_THAT(status(), HasSubstr("cannot be read"));
    EXPECT_FALSE(isOffered("exportJSON:"));
}

TEST_F(FoundBookmarks, areShownInFullWhenSelected) {
    searchDock();
    controller().findingsTable->selectRow(1);
    EXPECT_THAT(detailsText(), HasSubstr("\nBeside it: file:///Applications/Other.app/\nAgreement: differs"));
    controller().findingsTable->selectRow(std::nullopt);
    EXPECT_EQ(detailsText(), "");
    EXPECT_FALSE(isOffered("openFinding:"));
}

TEST_F(FoundBookmarks, staySelectedWhenSortedAndFiltered) {
    searchDock();
    platform::Table& table = *controller().findingsTable;
    table.requestOrder({0, false});
    EXPECT_EQ(table.selectedRow(), 1U);
    controller().filterTextbox->setStringValue("other.app");
    EXPECT_EQ(rows().rowCount(), 1U);
    EXPECT_EQ(table.selectedRow(), std::nullopt);
    EXPECT_EQ(detailsText(), "");
    EXPECT_EQ(summary(), "1 of 2 findings in a list of the Dock, 1 differs.");
}

TEST_F(FoundBookmarks, areOpenedInAResolver) {
    searchDock();
    controller().findingsTable->openRow(0);
    EXPECT_THAT(shownInResolver, ElementsAre(corpusData("note.bookmark")));
}

TEST_F(FoundBookmarks, areNotOpenedWhereTheyAreAddresses) {
    files["/a.webloc"] = binaryPropertyList(Dictionary{{"URL", "https://example.com/"}}).value();
    search("/a.webloc");
    EXPECT_FALSE(isOffered("openFinding:"));
    EXPECT_FALSE(isOffered("resolveAll:"));
    controller().findingsTable->openRow(0);
    EXPECT_THAT(shownInResolver, IsEmpty());
    EXPECT_EQ(status(), "This is no bookmark, so the resolver has nothing to show.");
}

TEST_F(FoundBookmarks, areAllResolved) {
    searchDock();
    bookmarks->resolveTo("/now/note.txt", true);
    log.clear();
    controller().resolveAll(nullptr);
    EXPECT_EQ(controller().resolvingProgress->progress(), (platform::ProgressIndicator::Progress{0, 2}));
    EXPECT_THAT(log, IsEmpty()) << "not on the main thread";
    EXPECT_FALSE(isOffered("resolveAll:"));
    EXPECT_TRUE(isOffered("stopResolving:"));
    tasks.workAndDeliver();
    EXPECT_EQ(rows().text(0, outcomeColumn), "stale: /now/note.txt");
    EXPECT_EQ(rows().text(1, outcomeColumn), "stale: /now/note.txt");
    EXPECT_EQ(status(), "2 items found, 2 of them stale; 0 not found.");
    EXPECT_EQ(controller().resolvingProgress->progress(), platform::ProgressIndicator::Progress());
    EXPECT_THAT(detailsText(), testing::EndsWith("Leads to (stale): /now/note.txt\n"));
    EXPECT_TRUE(isOffered("resolveAll:")) << "again, when volumes changed";
}

TEST_F(FoundBookmarks, sayWhyTheyLeadNowhere) {
    searchDock();
    bookmarks->resolved = std::unexpected(platform::posixError(2));
    controller().resolveAll(nullptr);
    tasks.workAndDeliver();
    EXPECT_EQ(rows().text(0, outcomeColumn), "No such file or directory");
    EXPECT_TRUE(rows().isMarked(0, outcomeColumn));
    EXPECT_EQ(status(), "0 items found, 0 of them stale; 2 not found.");
}

TEST_F(FoundBookmarks, areNotResolvedAnyMoreOnceStopped) {
    searchDock();
    controller().resolveAll(nullptr);
    controller().stopResolving(nullptr);
    tasks.workAndDeliver();
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(status(), "Stopped. 0 items found, 0 of them stale; 0 not found.");
    EXPECT_EQ(controller().resolvingProgress->progress(), platform::ProgressIndicator::Progress());
    EXPECT_TRUE(isOffered("resolveAll:"));
}

TEST_F(FoundBookmarks, areNotResolvedAnyMoreOnceTheWindowIsClosed) {
    searchDock();
    controller().resolveAll(nullptr);
    window().close();
    EXPECT_EQ(windows.count(), 0U);
    EXPECT_TRUE(newest.expired());
    tasks.workAndDeliver();
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(FoundBookmarks, areExportedAsTheTerminalPrintsThem) {
    searchDock();
    controller().filterTextbox->setStringValue("other.app");
    controller().exportJSON(nullptr);
    EXPECT_EQ(savePanels.newest()->nameFieldStringValue(), "dock bookmarks.json");
    EXPECT_THAT(savePanels.newest()->allowedFileTypes(), ElementsAre("json"));
    EXPECT_EQ(savePanels.newest()->subject()->path(), "/dock");
    saveTo("/out.json");
    const auto found = containers::findBookmarks(std::as_bytes(std::span(files.at("/dock"))));
    EXPECT_EQ(
        textFiles.written.at("/out.json"), containers::findingsAsJson("/dock", "dock", found->findings));
    EXPECT_EQ(status(), "2 findings exported.");

    controller().exportCSV(nullptr);
    saveTo("/out.csv");
    EXPECT_EQ(textFiles.written.at("/out.csv"), containers::findingsAsCsv("/dock", "dock", found->findings));
}

TEST_F(FoundBookmarks, areNotExportedWhereTheUserDoesNotSave) {
    searchDock();
    controller().exportCSV(nullptr);
    savePanels.newest()->answer(0, std::nullopt);
    EXPECT_THAT(textFiles.written, IsEmpty());
}

TEST_F(FoundBookmarks, sayWhyTheyWereNotExported) {
    searchDock();
    textFiles.failure = platform::posixError(28);
    controller().exportCSV(nullptr);
    saveTo("/out.csv");
    EXPECT_EQ(status(), "Not exported: No space left on device.");
}

} // namespace
} // namespace tolvane::tests
