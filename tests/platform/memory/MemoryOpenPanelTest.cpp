#include "platform/memory/MemoryOpenPanel.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace tolvane::tests {
namespace {

TEST(MemoryOpenPanel, keepsItsSettings) {
    platform::MemoryOpenPanel panel;
    EXPECT_FALSE(panel.allowsMultipleSelection());
    EXPECT_FALSE(panel.canChooseDirectories());
    EXPECT_FALSE(panel.showsHiddenFiles());
    EXPECT_FALSE(panel.treatsFilePackagesAsDirectories());
    EXPECT_TRUE(panel.resolvesAliases());
    panel.setAllowsMultipleSelection(true);
    EXPECT_TRUE(panel.allowsMultipleSelection());
    panel.setCanChooseDirectories(true);
    EXPECT_TRUE(panel.canChooseDirectories());
    panel.setShowsHiddenFiles(true);
    EXPECT_TRUE(panel.showsHiddenFiles());
    panel.setTreatsFilePackagesAsDirectories(true);
    EXPECT_TRUE(panel.treatsFilePackagesAsDirectories());
    panel.setResolvesAliases(false);
    EXPECT_FALSE(panel.resolvesAliases());
}

TEST(MemoryOpenPanel, answersItsHandlerOnceAndLetsItGo) {
    platform::MemoryOpenPanels panels;
    platform::Window window;
    std::weak_ptr<platform::OpenPanel> watched;
    int answers = 0;
    int response = -1;
    {
        const auto panel = panels.openPanel();
        watched = panel;
        panel->beginSheetModalForWindow(window, [panel, &answers, &response](int given) {
            ++answers;
            response = given;
            EXPECT_EQ(panel->chosenURL(), platform::URL::fileURLWithPath("/in"));
        });
    }
    ASSERT_FALSE(watched.expired()) << "the handler keeps its panel alive until the answer";
    ASSERT_TRUE(panels.newest()->isWaiting());
    EXPECT_EQ(panels.newest()->window(), &window);
    panels.newest()->answer(platform::modalResponseOK, platform::URL::fileURLWithPath("/in"));
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(response, platform::modalResponseOK);
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(panels.newest(), nullptr);
}

TEST(MemoryOpenPanel, ignoresAnAnswerThatNobodyWaitsFor) {
    platform::MemoryOpenPanel panel;
    EXPECT_FALSE(panel.isWaiting());
    panel.answer(platform::modalResponseOK, platform::URL::fileURLWithPath("/in"));
    EXPECT_EQ(panel.chosenURL(), std::nullopt);

    platform::Window window;
    int answers = 0;
    panel.beginSheetModalForWindow(window, [&](int) { ++answers; });
    panel.answer(0, std::nullopt);
    panel.answer(0, std::nullopt);
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(panel.window(), nullptr);
}

} // namespace
} // namespace tolvane::tests
