#include "resolver/TRViewController.h"

#include "resolver/TRWindow.h"
#include "tests/resolver/OpenResolver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::AttributedString;
using platform::ButtonState;
using platform::Color;
using platform::Font;
using resolver::TRViewController;

class TRViewControllerTest : public OpenResolver {
protected:
    static bool isConnected(const platform::OutletTable::Entry& entry) {
        return std::visit([](const auto* outlet) { return outlet->isConnected(); }, entry.outlet);
    }

    /// The size is stored, and the output restyled, although the size may be unchanged.
    void expectChange(std::string_view selector, double size) {
        defaults.setDouble(-1, "fontSizeRes");
        controller().outputTextbox->textStorage()->setAttributedString({"unstyled", {}});
        perform(selector);
        EXPECT_EQ(controller().theFontSize(), size);
        EXPECT_EQ(defaults.doubleForKey("fontSizeRes"), size);
        EXPECT_EQ(
            styledOutput(), AttributedString("unstyled", {Color::textColor, Font::systemFontOfSize(size)}))
            << size;
    }
};

using TRViewControllerDeathTest = TRViewControllerTest;

// Making one

TEST_F(TRViewControllerTest, startsWithItsInitialValues) {
    defaults.setDouble(20, "fontSizeRes");
    const auto fromNib = TRViewController::initWithNibName("Resolver", &bundle, resolverSources());
    EXPECT_EQ(fromNib->bmURL(), std::nullopt);
    EXPECT_EQ(fromNib->theFontSize(), 12.0) << "the stored size is read when the view loads";
    EXPECT_EQ(fromNib->nibName(), "Resolver");
    EXPECT_EQ(fromNib->bundle(), &bundle);

    const auto fromCoder = TRViewController::initWithCoder({"Scene"}, resolverSources());
    EXPECT_EQ(fromCoder->bmURL(), std::nullopt);
    EXPECT_EQ(fromCoder->theFontSize(), 12.0);
    EXPECT_EQ(fromCoder->nibName(), "Scene");
    for (const auto& entry : fromCoder->outlets().entries()) {
        EXPECT_FALSE(isConnected(entry)) << entry.name;
    }
}

TEST_F(TRViewControllerTest, declaresItsOutletsInTheWindowsOrder) {
    std::vector<std::string> names;
    for (const auto& entry : controller().outlets().entries()) {
        names.emplace_back(entry.name);
        EXPECT_TRUE(isConnected(entry)) << entry.name;
    }
    EXPECT_THAT(
        names, testing::ElementsAre(
                   "inputScroller", "inputTextbox", "outputScroller", "outputTextbox", "filePathTextbox",
                   "refreshDataCheckbox", "comparisonTable"));
}

TEST_F(TRViewControllerTest, fillsAWindowOfTheClassThatTheSceneNames) {
    EXPECT_NE(dynamic_cast<resolver::TRWindow*>(&window()), nullptr);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(status(), "");
    EXPECT_TRUE(log.empty()) << "showing the window asks nothing";
}

// Appearing

TEST_F(TRViewControllerTest, becomesTheWindowsDelegateAtEachAppearance) {
    EXPECT_EQ(window().delegate(), sharedController());
    window().setDelegate({});
    showAgain();
    EXPECT_EQ(window().delegate(), sharedController());
    window().close();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(TRViewControllerTest, clearsTheCheckBoxAtEachAppearance) {
    EXPECT_EQ(controller().refreshDataCheckbox->state(), ButtonState::off);
    controller().refreshDataCheckbox->setState(ButtonState::on);
    window().makeKeyAndOrderFront();
    EXPECT_EQ(controller().refreshDataCheckbox->state(), ButtonState::on) << "raising is no appearance";
    showAgain();
    EXPECT_EQ(controller().refreshDataCheckbox->state(), ButtonState::off);
}

TEST_F(TRViewControllerTest, keepsItsTextsWhenShownAgain) {
    resolve();
    showAgain();
    EXPECT_EQ(inputText(), bookmarkText);
    EXPECT_EQ(outputText(), analysis);
    EXPECT_NE(pathText(), "");
}

TEST_F(TRViewControllerTest, clearsTheCheckBoxInNoWindowToo) {
    const auto windowless = unconnected();
    platform::Button checkBox;
    checkBox.setState(ButtonState::on);
    windowless->refreshDataCheckbox.connect(checkBox);
    windowless->viewDidAppear();
    EXPECT_EQ(checkBox.state(), ButtonState::off);
}

TEST_F(TRViewControllerDeathTest, cannotAppearWithoutItsCheckBox) {
    EXPECT_DEATH(
        unconnected()->viewDidAppear(), "^tolvane: fatal: outlet refreshDataCheckbox is not connected");
}

// Text size

TEST_F(TRViewControllerTest, doesNotRestyleWhenItLoads) {
    defaults.setDouble(20, "fontSizeRes");
    const auto unloaded = unconnected();
    platform::connectOutlets(*unloaded);
    unloaded->outputTextbox->setString("plain");
    unloaded->loadViewIfNeeded();
    EXPECT_EQ(unloaded->theFontSize(), 20.0);
    EXPECT_EQ(unloaded->outputTextbox->textStorage()->attributedString(), AttributedString("plain", {}));
}

TEST_F(TRViewControllerTest, storesEachNewSizeAndRestylesTheOutput) {
    const auto other = sharedController();
    defaults.setDouble(23.5, "fontSizeRes");
    open();
    EXPECT_EQ(controller().theFontSize(), 23.5);
    expectChange("decFontSize:", 22.5);
    expectChange("incFontSize:", 23.5);
    expectChange("incFontSize:", 24.0);
    expectChange("incFontSize:", 24.0);
    EXPECT_EQ(defaults.doubleForKey("fontSize"), 0.0) << "the details window has a size of its own";
    EXPECT_EQ(other->theFontSize(), 12.0) << "so has every other window";
}

TEST_F(TRViewControllerTest, restylesNothingWithoutStorage) {
    controller().outputTextbox->removeTextStorage();
    controller().incFontSize(nullptr);
    EXPECT_EQ(controller().theFontSize(), 13.0);
    EXPECT_EQ(defaults.doubleForKey("fontSizeRes"), 13.0);
}

TEST_F(TRViewControllerDeathTest, cannotChangeTheSizeThroughAnUnconnectedOutlet) {
    const auto bare = unconnected();
    EXPECT_DEATH(bare->incFontSize(nullptr), "^tolvane: fatal: outlet outputTextbox is not connected");
    EXPECT_DEATH(bare->decFontSize(nullptr), "^tolvane: fatal: outlet outputTextbox is not connected");
}

TEST_F(TRViewControllerTest, hasNoOtherActionsThanItsWindows) {
    for (const std::string_view selector : {"", "analyseButton", "copyPath:", "saveCommand:"}) {
        EXPECT_FALSE(controller().actionForSelector(selector)) << selector;
        EXPECT_FALSE(controller().isActionEnabled(selector)) << selector;
    }
    EXPECT_TRUE(controller().isActionEnabled("openFileButton:"));
}

} // namespace
} // namespace tolvane::tests
