#include "platform/memory/MemorySavePanel.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace tolvane::tests {
namespace {

TEST(MemorySavePanel, answersItsHandlerOnceAndLetsItGo) {
    platform::MemorySavePanels panels;
    std::weak_ptr<platform::SavePanel> watched;
    int answers = 0;
    int response = -1;
    {
        const auto panel = panels.savePanel();
        watched = panel;
        panel->beginWithCompletionHandler([panel, &answers, &response](int given) {
            ++answers;
            response = given;
        });
    }
    ASSERT_FALSE(watched.expired()) << "the handler keeps its panel alive until the answer";
    ASSERT_TRUE(panels.newest()->isWaiting());
    panels.newest()->answer(platform::modalResponseOK, platform::URL::fileURLWithPath("/out"));
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(response, platform::modalResponseOK);
    EXPECT_TRUE(watched.expired());
}

TEST(MemorySavePanel, hasNoChoiceBeforeTheAnswer) {
    platform::MemorySavePanel panel;
    EXPECT_EQ(panel.chosenURL(), std::nullopt);
    panel.answer(platform::modalResponseOK, platform::URL::fileURLWithPath("/out"));
    EXPECT_EQ(panel.chosenURL(), platform::URL::fileURLWithPath("/out"));
    EXPECT_FALSE(panel.isWaiting());
}

} // namespace
} // namespace tolvane::tests
