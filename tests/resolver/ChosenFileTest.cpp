#include "tests/support/ResolverWindow.h"

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

class ChosenFileTest : public testing::Test {
protected:
    ChosenFileTest() { resolver.open(); }

    /// Presses the button and answers the panel.
    void choose(int response, std::optional<URL> chosen) {
        resolver.controller().openFileButton(nullptr);
        resolver.log.clear();
        resolver.openPanels.newest()->inner.answer(response, std::move(chosen));
    }

    void chooseAlias() { choose(platform::modalResponseOK, URL::fileURLWithPath("/data/alias")); }

    const AttributedString& input() const {
        return resolver.controller().inputTextbox->textStorage()->attributedString();
    }

    ResolverWindow resolver;
};

using ChosenFileDeathTest = ChosenFileTest;

TEST_F(ChosenFileTest, setsThePanelUpAndShowsItOnTheWindow) {
    resolver.controller().openFileButton(nullptr);
    EXPECT_THAT(
        resolver.log, ElementsAre(
                          "openPanel", "setAllowsMultipleSelection false", "setCanChooseDirectories true",
                          "setShowsHiddenFiles true", "setTreatsFilePackagesAsDirectories true",
                          "setResolvesAliases false", "beginSheetModalForWindow"));
    const auto panel = resolver.openPanels.newest();
    ASSERT_TRUE(panel) << "it waits after the action has returned";
    EXPECT_TRUE(panel->inner.isWaiting());
    EXPECT_EQ(panel->inner.window(), &resolver.window());
    EXPECT_EQ(resolver.inputText(), "");
    panel->inner.answer(0, std::nullopt);
}

TEST_F(ChosenFileTest, showsAndAnalysesTheBookmarkThatTheFileHolds) {
    resolver.controller().filePathTextbox->setStringValue("/earlier");
    chooseAlias();
    EXPECT_EQ(resolver.inputText(), "c3RvcmVkIGJvb2ttYXJr");
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_EQ(resolver.properties.readFrom, bytesOf("stored bookmark"));
    EXPECT_THAT(
        resolver.log,
        ElementsAre(
            "bookmarkDataWithContents /data/alias", "bookmarkProperties NSURLBookmarkAllPropertiesKey",
            "bookmarkProperties NSURLBookmarkDetailedDescription"))
        << "no bookmark is made or resolved";
    EXPECT_EQ(resolver.pathText(), "/earlier");
    EXPECT_EQ(resolver.controller().bmURL(), std::nullopt);
}

TEST_F(ChosenFileTest, givesTheInputAColourAndNoFont) {
    resolver.controller().inputTextbox->textStorage()->setAttributedString(
        {"typed", {{}, platform::Font::systemFontOfSize(40)}});
    AttributedString whenFirstSet;
    auto subscription = resolver.controller().inputTextbox->textStorage()->observe([&] {
        if (whenFirstSet.string().empty()) {
            whenFirstSet = input();
        }
    });
    chooseAlias();
    EXPECT_EQ(whenFirstSet, AttributedString("c3RvcmVkIGJvb2ttYXJr", {platform::Color::textColor, {}}));
    EXPECT_EQ(input(), whenFirstSet);
}

TEST_F(ChosenFileTest, changesNothingWhenThePanelIsCancelledOrHasNoURL) {
    resolver.analyse(ResolverWindow::bookmarkText);
    const AttributedString before = input();
    for (const int response : {0, -1, 1000}) {
        choose(response, URL::fileURLWithPath("/data/alias"));
        EXPECT_TRUE(resolver.log.empty()) << response;
    }
    choose(platform::modalResponseOK, std::nullopt);
    EXPECT_TRUE(resolver.log.empty());
    EXPECT_EQ(input(), before);
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_EQ(resolver.pathText(), "");
}

TEST_F(ChosenFileTest, saysWhenTheItemHoldsNoBookmark) {
    resolver.analyse(ResolverWindow::bookmarkText);
    resolver.controller().filePathTextbox->setStringValue("/earlier");
    resolver.bookmarks.stored = std::unexpected(platform::posixError(EISDIR));
    choose(platform::modalResponseOK, URL::fileURLWithPath("/data"));
    EXPECT_EQ(resolver.inputText(), "Couldn't get Alias.");
    EXPECT_THAT(resolver.log, ElementsAre("bookmarkDataWithContents /data"));
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis) << "the output box is left as it was";
    EXPECT_EQ(resolver.pathText(), "/earlier");

    resolver.controller().analyseButton(nullptr);
    EXPECT_EQ(resolver.pathText(), "Couldn't analyse Bookmark.") << "the message is not base-64";
    EXPECT_EQ(resolver.inputText(), "Couldn'tgetAlias.");
}

TEST_F(ChosenFileTest, leavesTheItemFoundLastAlone) {
    resolver.resolve(ResolverWindow::bookmarkText);
    const std::string shown = resolver.pathText();
    chooseAlias();
    EXPECT_EQ(resolver.controller().bmURL(), resolver.url);
    EXPECT_EQ(resolver.pathText(), shown);
}

TEST_F(ChosenFileTest, makesAPanelForEachPressAndReleasesIt) {
    chooseAlias();
    EXPECT_EQ(resolver.openPanels.newest(), nullptr);
    resolver.bookmarks.stored = platform::Data(3'000, std::byte{0xFF});
    chooseAlias();
    EXPECT_EQ(resolver.inputText(), std::string(4'000, '/')) << "in one line";
    EXPECT_EQ(resolver.properties.readFrom, *resolver.bookmarks.stored);
    EXPECT_EQ(resolver.openPanels.newest(), nullptr);
}

TEST_F(ChosenFileTest, fillsTheWindowThatWasClosedMeanwhile) {
    resolver.controller().openFileButton(nullptr);
    const std::weak_ptr<resolver::TRViewController> watched = resolver.sharedController();
    resolver.letGo();
    ASSERT_FALSE(watched.expired()) << "the waiting panel keeps it";
    std::string shown;
    const auto subscription = watched.lock()->outputTextbox->textStorage()->observe(
        [&] { shown = watched.lock()->outputTextbox->string(); });
    resolver.openPanels.newest()->inner.answer(
        platform::modalResponseOK, URL::fileURLWithPath("/data/alias"));
    EXPECT_EQ(shown, ResolverWindow::analysis);
    EXPECT_TRUE(watched.expired());
}

TEST_F(ChosenFileDeathTest, stopsWithoutAWindow) {
    const auto windowless = resolver::TRViewController::initWithCoder({}, resolver.resolverSources());
    EXPECT_DEATH(windowless->openFileButton(nullptr), "^tolvane: fatal: the resolver view is in no window");
}

TEST_F(ChosenFileDeathTest, stopsAtAnUnconnectedOutlet) {
    const auto bare = resolver::TRViewController::initWithCoder({}, resolver.resolverSources());
    bare->view().setWindow(std::make_shared<platform::Window>());
    bare->openFileButton(nullptr);
    const auto panel = resolver.openPanels.newest();
    for (const bool holdsOne : {true, false}) {
        if (!holdsOne) {
            resolver.bookmarks.stored = std::unexpected(platform::posixError(EISDIR));
        }
        EXPECT_DEATH(
            panel->inner.answer(platform::modalResponseOK, resolver.url),
            "^tolvane: fatal: outlet inputTextbox is not connected");
    }
    panel->inner.answer(0, std::nullopt);
}

} // namespace
} // namespace tolvane::tests
