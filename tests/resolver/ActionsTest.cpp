#include "tests/support/ResolverWindow.h"

#include <gtest/gtest.h>

#include <string_view>

namespace tolvane::tests {
namespace {

class ResolverActionsTest : public testing::Test {
protected:
    ResolverActionsTest() { resolver.open(); }

    void perform(std::string_view selector) {
        const auto action = resolver.controller().actionForSelector(selector);
        ASSERT_TRUE(action) << selector;
        action(nullptr);
    }

    ResolverWindow resolver;
};

TEST_F(ResolverActionsTest, analyseAndResolveWhatIsInTheInputBox) {
    resolver.paste(ResolverWindow::bookmarkText);
    perform("analyseButton:");
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_EQ(resolver.pathText(), "");
    perform("resolveButton:");
    EXPECT_EQ(resolver.pathText(), "/data/notes.txt\nvolfs path : /.vol/5/123");
}

TEST_F(ResolverActionsTest, changeTheTextSize) {
    perform("incFontSize:");
    EXPECT_EQ(resolver.controller().theFontSize(), 13.0);
    perform("decFontSize:");
    EXPECT_EQ(resolver.controller().theFontSize(), 12.0);
}

TEST_F(ResolverActionsTest, areNoOthersThanTheWindowsOwn) {
    for (const std::string_view selector : {"", "analyseButton", "copyPath:", "saveCommand:"}) {
        EXPECT_FALSE(resolver.controller().actionForSelector(selector)) << selector;
        EXPECT_FALSE(resolver.controller().isActionEnabled(selector)) << selector;
    }
    EXPECT_TRUE(resolver.controller().isActionEnabled("openFileButton:"));
}

TEST_F(ResolverActionsTest, offerToRevealAndPreviewOnceAnItemWasFound) {
    EXPECT_FALSE(resolver.controller().isActionEnabled("revealButton:"));
    EXPECT_FALSE(resolver.controller().isActionEnabled("previewButton:"));
    perform("revealButton:");
    perform("previewButton:");
    resolver.resolve(ResolverWindow::bookmarkText);
    EXPECT_TRUE(resolver.controller().isActionEnabled("revealButton:"));
    EXPECT_TRUE(resolver.controller().isActionEnabled("previewButton:"));
    resolver.resolve(ResolverWindow::garbage);
    EXPECT_TRUE(resolver.controller().isActionEnabled("revealButton:"));
}

} // namespace
} // namespace tolvane::tests
