#include "tests/support/DetailsWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::tests {
namespace {

using testing::ElementsAre;

class ActionsTest : public testing::Test {
protected:
    ActionsTest() { details.open(); }

    void perform(std::string_view selector) {
        const auto action = details.controller().actionForSelector(selector);
        ASSERT_TRUE(action) << selector;
        action(nullptr);
    }

    DetailsWindow details;
};

TEST_F(ActionsTest, copyTheFieldThatTheyName) {
    const details::ViewController& controller = details.controller();
    const std::array<std::pair<std::string_view, std::string>, 6> copied{{
        {"copyPath:", controller.pathTextbox->stringValue()},
        {"copyVolfs:", controller.volfsPathTextbox->stringValue()},
        {"copyFrefURL:", controller.frURLTextbox->stringValue()},
        {"copyPerms:", controller.permsTextbox->stringValue()},
        {"copyBookmark:", details.bookmarkText()},
        {"copyXattrs:", details.attributesText()},
    }};
    for (const auto& [selector, text] : copied) {
        ASSERT_FALSE(text.empty()) << selector;
        perform(selector);
        EXPECT_THAT(details.pasteboard.texts(), ElementsAre(text)) << selector;
    }
}

TEST_F(ActionsTest, changeTheTextSize) {
    perform("incFontSize:");
    EXPECT_EQ(details.controller().theFontSize(), 13.0);
    perform("decFontSize:");
    perform("decFontSize:");
    EXPECT_EQ(details.controller().theFontSize(), 11.0);
}

TEST_F(ActionsTest, askWhereToSave) {
    perform("saveCommand:");
    const auto panel = details.savePanels.newest();
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(panel->isWaiting());
    panel->answer(0, std::nullopt);
}

TEST_F(ActionsTest, areNoOthersThanTheWindowsOwn) {
    for (const std::string_view selector : {"", "copyPath", "analyseButton:", "openDocument:"}) {
        EXPECT_FALSE(details.controller().actionForSelector(selector)) << selector;
        EXPECT_FALSE(details.controller().isActionEnabled(selector)) << selector;
    }
}

TEST_F(ActionsTest, doNotOfferToCopyAnEmptyField) {
    details::ViewController& controller = details.controller();
    const auto selectors = {
        "copyPath:", "copyVolfs:", "copyFrefURL:", "copyPerms:", "copyBookmark:", "copyXattrs:"};
    for (const std::string_view selector : selectors) {
        EXPECT_TRUE(controller.isActionEnabled(selector)) << selector;
    }
    controller.pathTextbox->setStringValue("");
    controller.volfsPathTextbox->setStringValue("");
    controller.frURLTextbox->setStringValue("");
    controller.permsTextbox->setStringValue("");
    controller.bookmarkTextbox->setString("");
    controller.inodeText->setString("");
    for (const std::string_view selector : selectors) {
        EXPECT_FALSE(controller.isActionEnabled(selector)) << selector;
    }
    EXPECT_TRUE(controller.isActionEnabled("saveCommand:"));
    EXPECT_TRUE(controller.isActionEnabled("incFontSize:"));
}

} // namespace
} // namespace tolvane::tests
