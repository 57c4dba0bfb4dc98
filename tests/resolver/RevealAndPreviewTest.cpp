#include "tests/resolver/OpenResolver.h"

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

class RevealAndPreviewTest : public OpenResolver {
protected:
    /// Resolves a bookmark of the item at this path.
    void find(std::string_view path) {
        bookmarks.resolveTo(path);
        resolve();
        log.clear();
    }

    void reveal() { perform("revealButton:"); }
    void preview() { perform("previewButton:"); }

    static std::string noteOf(std::string_view path) {
        return "initWithSource set thePath to POSIX file \"" + std::string(path)
               + "\"\ntell application \"Finder\" to reveal thePath";
    }

    ScriptedPreviewPanel& panel() const { return *previewPanels.panel; }
};

using RevealAndPreviewDeathTest = RevealAndPreviewTest;

TEST_F(RevealAndPreviewTest, doNothingBeforeAnythingWasFound) {
    int selections = 0;
    const auto subscription = controller().filePathTextbox->observeSelection([&] { ++selections; });
    analyse();
    log.clear();
    reveal();
    preview();
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(selections, 0);
    EXPECT_FALSE(isOffered("revealButton:"));
    EXPECT_FALSE(isOffered("previewButton:"));

    const auto bare = unconnected();
    bare->revealButton(nullptr);
    bare->previewButton(nullptr);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(RevealAndPreviewTest, workOnAnItemWhoseAttributesCouldNotBeRead) {
    fileManager.answer = std::unexpected(platform::posixError(EACCES));
    find("/hidden");
    reveal();
    preview();
    EXPECT_EQ(log.front(), noteOf("/hidden"));
    EXPECT_THAT(panel().items, ElementsAre(URL::fileURLWithPath("/hidden")));
}

TEST_F(RevealAndPreviewTest, workOnTheEarlierItemAfterGarbage) {
    find("/found");
    resolve(garbage);
    EXPECT_TRUE(isOffered("revealButton:"));
    EXPECT_TRUE(isOffered("previewButton:"));
    log.clear();
    reveal();
    preview();
    EXPECT_EQ(log.front(), noteOf("/found"));
    EXPECT_THAT(panel().items, ElementsAre(URL::fileURLWithPath("/found")));
}

// Revealing

TEST_F(RevealAndPreviewTest, runsTheScriptWithTheBytesOfThePathFoundLast) {
    for (const std::string path : {"/My Files/Größe 文.txt", "/a\"b\\c\nd\xFF"}) {
        find(path);
        reveal();
        EXPECT_THAT(log, ElementsAre(noteOf(path), "execute"));
    }
}

TEST_F(RevealAndPreviewTest, saysNothingWhenThereIsNoScriptOrItFails) {
    find("/found");
    const std::string shown = pathText();
    appleScripts.failure = platform::posixError(EPERM);
    reveal();
    EXPECT_THAT(log, ElementsAre(noteOf("/found"), "execute"));
    log.clear();
    appleScripts.givesScripts = false;
    reveal();
    EXPECT_THAT(log, ElementsAre(noteOf("/found")));
    EXPECT_EQ(pathText(), shown);
    EXPECT_EQ(outputText(), analysis);
}

// Previewing

TEST_F(RevealAndPreviewTest, selectsThePathAndThenShowsThePanel) {
    find("/found");
    const std::string shown = pathText();
    const auto subscription =
        controller().filePathTextbox->observeSelection([&] { log.emplace_back("selectText"); });
    preview();
    EXPECT_THAT(
        log, ElementsAre(
                 "selectText", "sharedPreviewPanel", "setDelegate", "setDataSource", "makeKeyAndOrderFront"));
    EXPECT_EQ(panel().delegate.lock(), sharedController());
    EXPECT_EQ(panel().dataSource.lock(), sharedController());
    EXPECT_EQ(panel().sender, &controller());
    EXPECT_TRUE(panel().isVisible);
    EXPECT_THAT(panel().items, ElementsAre(URL::fileURLWithPath("/found")));
    EXPECT_EQ(pathText(), shown) << "the window shows what it did";
    EXPECT_EQ(outputText(), analysis);
    EXPECT_EQ(controller().bmURL(), URL::fileURLWithPath("/found"));
}

TEST_F(RevealAndPreviewTest, doesNothingWithoutAPreviewPanel) {
    find("/found");
    previewPanels.available = false;
    preview();
    EXPECT_THAT(log, ElementsAre("sharedPreviewPanel"));
    EXPECT_EQ(panel().delegate.lock(), nullptr);
}

TEST_F(RevealAndPreviewTest, offersOneItemWhateverTheIndex) {
    EXPECT_EQ(controller().numberOfPreviewItemsInPreviewPanel(panel()), 1U);
    find("/found");
    EXPECT_EQ(controller().numberOfPreviewItemsInPreviewPanel(panel()), 1U);
    for (const std::size_t index : {std::size_t{0}, std::size_t{7}, SIZE_MAX}) {
        EXPECT_EQ(controller().previewPanel(panel(), index), URL::fileURLWithPath("/found"));
    }
}

TEST_F(RevealAndPreviewTest, leavesItToTheOpenPanelToAskForTheNextItem) {
    find("/found");
    preview();
    find("/next");
    EXPECT_THAT(log, IsEmpty()) << "the panel is not notified";
    EXPECT_THAT(panel().items, ElementsAre(URL::fileURLWithPath("/found")));
    panel().askDataSource();
    EXPECT_THAT(panel().items, ElementsAre(URL::fileURLWithPath("/next")));
    EXPECT_THAT(log, IsEmpty()) << "the item is not looked at";
}

TEST_F(RevealAndPreviewTest, leaveTheControllerToItsWindow) {
    find("/found");
    preview();
    const std::weak_ptr<resolver::TRViewController> watched = sharedController();
    letGo();
    EXPECT_TRUE(watched.expired()) << "the panel does not keep it";
    panel().askDataSource();
    EXPECT_THAT(panel().items, IsEmpty());
}

TEST_F(RevealAndPreviewDeathTest, stopsWhenAPreviewIsAskedForBeforeAnythingWasFound) {
    EXPECT_DEATH(
        controller().previewPanel(panel(), 0),
        "^tolvane: fatal: a preview is asked for before a bookmark was resolved");
}

} // namespace
} // namespace tolvane::tests
