#include "tests/support/ResolverWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::URL;
using testing::ElementsAre;
using testing::IsEmpty;

class RevealAndPreviewTest : public testing::Test {
protected:
    RevealAndPreviewTest() { resolver.open(); }

    /// Resolves a bookmark of the item at this path.
    void find(std::string_view path) {
        resolver.bookmarks.resolved = platform::ResolvedBookmark{URL::fileURLWithPath(path), false};
        resolver.resolve(ResolverWindow::bookmarkText);
        resolver.log.clear();
    }

    void reveal() { resolver.controller().revealButton(nullptr); }
    void preview() { resolver.controller().previewButton(nullptr); }

    static std::string noteOf(std::string_view path) {
        return "initWithSource set thePath to POSIX file \"" + std::string(path)
               + "\"\ntell application \"Finder\" to reveal thePath";
    }

    /// What the panel shows.
    const std::vector<URL>& items() { return resolver.previewPanels.panel().items(); }

    ResolverWindow resolver;
};

using RevealAndPreviewDeathTest = RevealAndPreviewTest;

TEST_F(RevealAndPreviewTest, doNothingBeforeAnythingWasFound) {
    int selections = 0;
    const auto subscription = resolver.controller().filePathTextbox->observeSelection([&] { ++selections; });
    resolver.analyse(ResolverWindow::bookmarkText);
    resolver.log.clear();
    reveal();
    preview();
    EXPECT_THAT(resolver.log, IsEmpty());
    EXPECT_EQ(selections, 0);

    const auto bare = resolver::TRViewController::initWithCoder({}, resolver.resolverSources());
    bare->revealButton(nullptr);
    bare->previewButton(nullptr);
    EXPECT_THAT(resolver.log, IsEmpty());
}

TEST_F(RevealAndPreviewTest, workOnAnItemWhoseAttributesCouldNotBeRead) {
    resolver.fileManager.answer = std::unexpected(platform::posixError(EACCES));
    find("/hidden");
    reveal();
    preview();
    EXPECT_EQ(resolver.log.front(), noteOf("/hidden"));
    EXPECT_THAT(items(), ElementsAre(URL::fileURLWithPath("/hidden")));
}

TEST_F(RevealAndPreviewTest, workOnTheEarlierItemAfterGarbage) {
    find("/found");
    resolver.resolve(ResolverWindow::garbage);
    resolver.log.clear();
    reveal();
    preview();
    EXPECT_EQ(resolver.log.front(), noteOf("/found"));
    EXPECT_THAT(items(), ElementsAre(URL::fileURLWithPath("/found")));
}

// Revealing

TEST_F(RevealAndPreviewTest, runsTheScriptWithTheBytesOfThePathFoundLast) {
    for (const std::string path : {"/My Files/Größe.txt", "/a\"b\\c\xFF"}) {
        find(path);
        reveal();
        EXPECT_THAT(resolver.log, ElementsAre(noteOf(path), "execute"));
    }
}

TEST_F(RevealAndPreviewTest, saysNothingWhenThereIsNoScriptOrItFails) {
    find("/found");
    const std::string shown = resolver.pathText();
    resolver.appleScripts.failure = platform::posixError(EPERM);
    reveal();
    EXPECT_THAT(resolver.log, ElementsAre(noteOf("/found"), "execute"));
    resolver.log.clear();
    resolver.appleScripts.givesScripts = false;
    reveal();
    EXPECT_THAT(resolver.log, ElementsAre(noteOf("/found")));
    EXPECT_EQ(resolver.pathText(), shown);
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
}

// Previewing

TEST_F(RevealAndPreviewTest, selectsThePathAndThenShowsThePanel) {
    find("/found");
    const std::string shown = resolver.pathText();
    const auto subscription = resolver.controller().filePathTextbox->observeSelection(
        [&] { resolver.log.emplace_back("selectText"); });
    preview();
    EXPECT_THAT(
        resolver.log,
        ElementsAre(
            "selectText", "sharedPreviewPanel", "setDelegate", "setDataSource", "makeKeyAndOrderFront"));
    auto& panel = resolver.previewPanels.panel();
    EXPECT_EQ(panel.delegate(), resolver.sharedController());
    EXPECT_EQ(panel.dataSource(), resolver.sharedController());
    EXPECT_EQ(resolver.previewPanels.sender(), &resolver.controller());
    EXPECT_TRUE(panel.isVisible());
    EXPECT_THAT(panel.items(), ElementsAre(URL::fileURLWithPath("/found")));
    EXPECT_EQ(resolver.pathText(), shown) << "the window shows what it did";
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_EQ(resolver.controller().bmURL(), URL::fileURLWithPath("/found"));
}

TEST_F(RevealAndPreviewTest, doesNothingWithoutAPreviewPanel) {
    find("/found");
    resolver.previewPanels.available = false;
    preview();
    EXPECT_THAT(resolver.log, ElementsAre("sharedPreviewPanel"));
    EXPECT_EQ(resolver.previewPanels.panel().delegate(), nullptr);
}

TEST_F(RevealAndPreviewTest, offersOneItemWhateverTheIndex) {
    platform::MemoryPreviewPanel panel;
    EXPECT_EQ(resolver.controller().numberOfPreviewItemsInPreviewPanel(panel), 1U);
    find("/found");
    EXPECT_EQ(resolver.controller().numberOfPreviewItemsInPreviewPanel(panel), 1U);
    for (const std::size_t index : {std::size_t{0}, std::size_t{7}, SIZE_MAX}) {
        EXPECT_EQ(resolver.controller().previewPanel(panel, index), URL::fileURLWithPath("/found"));
    }
}

TEST_F(RevealAndPreviewTest, leavesItToTheOpenPanelToAskForTheNextItem) {
    find("/found");
    preview();
    find("/next");
    EXPECT_THAT(resolver.log, IsEmpty()) << "the panel is not notified";
    EXPECT_THAT(items(), ElementsAre(URL::fileURLWithPath("/found")));
    resolver.previewPanels.panel().askDataSource();
    EXPECT_THAT(items(), ElementsAre(URL::fileURLWithPath("/next")));
    EXPECT_THAT(resolver.log, IsEmpty()) << "the item is not looked at";
}

TEST_F(RevealAndPreviewTest, leaveTheControllerToItsWindow) {
    find("/found");
    preview();
    const std::weak_ptr<resolver::TRViewController> watched = resolver.sharedController();
    resolver.letGo();
    EXPECT_TRUE(watched.expired()) << "the panel does not keep it";
    resolver.previewPanels.panel().askDataSource();
    EXPECT_THAT(items(), IsEmpty());
}

TEST_F(RevealAndPreviewDeathTest, stopsWhenAPreviewIsAskedForBeforeAnythingWasFound) {
    const platform::MemoryPreviewPanel panel;
    EXPECT_DEATH(
        resolver.controller().previewPanel(panel, 0),
        "^tolvane: fatal: a preview is asked for before a bookmark was resolved");
}

} // namespace
} // namespace tolvane::tests
