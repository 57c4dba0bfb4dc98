#include "tests/resolver/OpenResolver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <optional>

namespace tolvane::tests {
namespace {

using platform::AttributedString;
using platform::URL;
using testing::ElementsAre;

class ChosenFileTest : public OpenResolver {
protected:
    /// Presses the button and answers the panel.
    void choose(int response, std::optional<URL> chosen) {
        perform("openFileButton:");
        log.clear();
        openPanels.newest()->inner.answer(response, std::move(chosen));
    }

    void chooseAlias() { choose(platform::modalResponseOK, URL::fileURLWithPath("/data/alias")); }

    void drop(const std::vector<URL>& files) const {
        EXPECT_TRUE(controller().inputTextbox->performDragOperation(files));
    }
};

using ChosenFileDeathTest = ChosenFileTest;

TEST_F(ChosenFileTest, setsThePanelUpAndShowsItOnTheWindow) {
    controller().openFileButton(nullptr);
    EXPECT_THAT(
        log, ElementsAre(
                 "openPanel", "setAllowsMultipleSelection false", "setCanChooseDirectories true",
                 "setShowsHiddenFiles true", "setTreatsFilePackagesAsDirectories true",
                 "setResolvesAliases false", "beginSheetModalForWindow"));
    const auto panel = openPanels.newest();
    ASSERT_TRUE(panel) << "it waits after the action has returned";
    EXPECT_TRUE(panel->inner.isWaiting());
    EXPECT_EQ(panel->window, &window());
    EXPECT_EQ(inputText(), "");
    panel->inner.answer(0, std::nullopt);
}

TEST_F(ChosenFileTest, showsAndAnalysesTheBookmarkThatTheFileHolds) {
    setPathText("/earlier");
    chooseAlias();
    EXPECT_EQ(inputText(), "c3RvcmVkIGJvb2ttYXJr");
    EXPECT_EQ(outputText(), analysis);
    EXPECT_EQ(properties.readFrom, bytesOf("stored bookmark"));
    EXPECT_THAT(
        log, ElementsAre(
                 "bookmarkDataWithContents /data/alias", "bookmarkProperties NSURLBookmarkAllPropertiesKey",
                 "bookmarkProperties NSURLBookmarkDetailedDescription"))
        << "no bookmark is made or resolved";
    EXPECT_EQ(pathText(), "/earlier");
    EXPECT_EQ(controller().bmURL(), std::nullopt);
    EXPECT_EQ(status(), "");
}

TEST_F(ChosenFileTest, givesTheInputAColourAndNoFont) {
    controller().inputTextbox->textStorage()->setAttributedString(
        {"typed", {{}, platform::Font::systemFontOfSize(40)}});
    AttributedString whenFirstSet;
    auto subscription = controller().inputTextbox->textStorage()->observe([&] {
        if (whenFirstSet.string().empty()) {
            whenFirstSet = styledInput();
        }
    });
    chooseAlias();
    EXPECT_EQ(whenFirstSet, AttributedString("c3RvcmVkIGJvb2ttYXJr", {platform::Color::textColor, {}}));
    EXPECT_EQ(styledInput(), whenFirstSet);
}

TEST_F(ChosenFileTest, changesNothingWhenThePanelIsCancelledOrHasNoURL) {
    analyse();
    const AttributedString before = styledInput();
    for (const int response : {0, -1, 1000}) {
        choose(response, URL::fileURLWithPath("/data/alias"));
        EXPECT_TRUE(log.empty()) << response;
    }
    choose(platform::modalResponseOK, std::nullopt);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(styledInput(), before);
    EXPECT_EQ(outputText(), analysis);
    EXPECT_EQ(pathText(), "");
}

TEST_F(ChosenFileTest, saysWhenTheItemHoldsNoBookmark) {
    analyse();
    setPathText("/earlier");
    bookmarks.stored = std::unexpected(platform::cocoaError(259, "Expected at byte 4: more."));
    choose(platform::modalResponseOK, URL::fileURLWithPath("/data"));
    EXPECT_EQ(inputText(), "Couldn't get Alias.");
    EXPECT_EQ(status(), "Expected at byte 4: more.");
    EXPECT_THAT(log, ElementsAre("bookmarkDataWithContents /data"));
    EXPECT_EQ(outputText(), analysis) << "the output box is left as it was";
    EXPECT_EQ(pathText(), "/earlier");

    controller().analyseButton(nullptr);
    EXPECT_EQ(pathText(), "Couldn't analyse Bookmark.") << "the message is not base-64";
    EXPECT_EQ(inputText(), "Couldn'tgetAlias.");
}

TEST_F(ChosenFileTest, canBeDropped) {
    drop({URL::fileURLWithPath("/data/\xFF")});
    EXPECT_EQ(inputText(), "c3RvcmVkIGJvb2ttYXJr");
    EXPECT_EQ(outputText(), analysis);
    EXPECT_EQ(pathText(), "");
    EXPECT_EQ(status(), "");
    bookmarks.stored = std::unexpected(platform::cocoaError(259, "Expected at byte 4: more."));
    drop({URL::fileURLWithPath("/data/a")});
    EXPECT_EQ(inputText(), "Couldn't get Alias.");
    EXPECT_EQ(status(), "Expected at byte 4: more.");
}

TEST_F(ChosenFileTest, isReadOneAtATime) {
    paste("kept");
    drop({URL::fileURLWithPath("/data/a"), URL::fileURLWithPath("/data/b")});
    EXPECT_EQ(inputText(), "kept");
    EXPECT_THAT(status(), testing::HasSubstr("one file"));
}

TEST_F(ChosenFileTest, leavesTheItemFoundLastAlone) {
    resolve();
    const std::string shown = pathText();
    chooseAlias();
    EXPECT_EQ(controller().bmURL(), url);
    EXPECT_EQ(pathText(), shown);
}

TEST_F(ChosenFileTest, makesAPanelForEachPressAndReleasesIt) {
    chooseAlias();
    EXPECT_EQ(openPanels.newest(), nullptr);
    bookmarks.stored = platform::Data(3'000, std::byte{0xFF});
    chooseAlias();
    EXPECT_EQ(inputText(), std::string(4'000, '/')) << "in one line";
    EXPECT_EQ(properties.readFrom, *bookmarks.stored);
    EXPECT_EQ(openPanels.newest(), nullptr);
}

TEST_F(ChosenFileTest, fillsTheWindowThatWasClosedMeanwhile) {
    controller().openFileButton(nullptr);
    const std::weak_ptr<resolver::TRViewController> watched = sharedController();
    letGo();
    ASSERT_FALSE(watched.expired()) << "the waiting panel keeps it";
    std::string shown;
    const auto subscription = watched.lock()->outputTextbox->textStorage()->observe(
        [&] { shown = watched.lock()->outputTextbox->string(); });
    openPanels.newest()->inner.answer(platform::modalResponseOK, URL::fileURLWithPath("/data/alias"));
    EXPECT_EQ(shown, analysis);
    EXPECT_TRUE(watched.expired());
}

TEST_F(ChosenFileDeathTest, stopsWithoutAWindow) {
    EXPECT_DEATH(
        unconnected()->openFileButton(nullptr), "^tolvane: fatal: the resolver view is in no window");
}

TEST_F(ChosenFileDeathTest, stopsAtAnUnconnectedOutlet) {
    const auto bare = unconnected();
    bare->view().setWindow(std::make_shared<platform::Window>());
    bare->openFileButton(nullptr);
    const auto panel = openPanels.newest();
    for (const bool holdsOne : {true, false}) {
        if (!holdsOne) {
            bookmarks.stored = std::unexpected(platform::posixError(EISDIR));
        }
        EXPECT_DEATH(
            panel->inner.answer(platform::modalResponseOK, url),
            "^tolvane: fatal: outlet inputTextbox is not connected");
    }
    panel->inner.answer(0, std::nullopt);
}

} // namespace
} // namespace tolvane::tests
