#include "resolver/TRViewController.h"

#include "resolver/TRWindow.h"
#include "tests/support/ResolverWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <any>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::AttributedString;
using platform::ButtonState;
using platform::Color;
using platform::Font;
using resolver::TRViewController;

class TRViewControllerTest : public testing::Test {
protected:
    TRViewControllerTest() { resolver.open(); }

    std::shared_ptr<TRViewController> unconnected() {
        return TRViewController::initWithCoder({}, resolver.resolverSources());
    }

    void perform(std::string_view selector) {
        const auto action = controller().actionForSelector(selector);
        ASSERT_TRUE(action) << selector;
        action(nullptr);
    }

    static bool isConnected(const platform::OutletTable::Entry& entry) {
        return std::visit([](const auto* outlet) { return outlet->isConnected(); }, entry.outlet);
    }

    /// The size is stored, and the output restyled, although the size may be unchanged.
    static void expectChange(ResolverWindow& window, std::string_view selector, double size) {
        window.defaults.setDouble(-1, "fontSizeRes");
        platform::TextStorage& output = *window.controller().outputTextbox->textStorage();
        output.setAttributedString({"unstyled", {}});
        window.controller().actionForSelector(selector)(nullptr);
        EXPECT_EQ(window.controller().theFontSize(), size);
        EXPECT_EQ(window.defaults.doubleForKey("fontSizeRes"), size);
        EXPECT_EQ(
            output.attributedString(),
            AttributedString("unstyled", {Color::textColor, Font::systemFontOfSize(size)}))
            << size;
    }

    TRViewController& controller() { return resolver.controller(); }

    ResolverWindow resolver;
};

using TRViewControllerDeathTest = TRViewControllerTest;

// Making one

TEST_F(TRViewControllerTest, startsWithItsInitialValues) {
    resolver.defaults.setDouble(20, "fontSizeRes");
    const auto fromNib =
        TRViewController::initWithNibName("Resolver", &resolver.bundle, resolver.resolverSources());
    EXPECT_EQ(fromNib->bmURL(), std::nullopt);
    EXPECT_EQ(fromNib->theFontSize(), 12.0) << "the stored size is read when the view loads";
    EXPECT_EQ(fromNib->nibName(), "Resolver");
    EXPECT_EQ(fromNib->bundle(), &resolver.bundle);

    const auto fromCoder = TRViewController::initWithCoder({"Scene"}, resolver.resolverSources());
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
    EXPECT_NE(dynamic_cast<resolver::TRWindow*>(&resolver.window()), nullptr);
    EXPECT_TRUE(resolver.window().isVisible());
    EXPECT_TRUE(resolver.log.empty()) << "showing the window asks nothing";
}

TEST_F(TRViewControllerTest, passesTheRepresentedObjectThrough) {
    EXPECT_FALSE(controller().representedObject().has_value());
    controller().setRepresentedObject(std::string("object"));
    EXPECT_EQ(std::any_cast<std::string>(controller().representedObject()), "object");
    const platform::ContentController& base = controller();
    EXPECT_EQ(std::any_cast<std::string>(base.representedObject()), "object");
    EXPECT_EQ(resolver.inputText() + resolver.outputText() + resolver.pathText(), "");
}

// Appearing

TEST_F(TRViewControllerTest, becomesTheWindowsDelegateAtEachAppearance) {
    EXPECT_EQ(resolver.window().delegate(), resolver.sharedController());
    resolver.window().setDelegate({});
    resolver.showAgain();
    EXPECT_EQ(resolver.window().delegate(), resolver.sharedController());
    resolver.window().close();
    EXPECT_FALSE(resolver.window().isVisible());
}

TEST_F(TRViewControllerTest, clearsTheCheckBoxAtEachAppearance) {
    EXPECT_EQ(controller().refreshDataCheckbox->state(), ButtonState::off);
    controller().refreshDataCheckbox->setState(ButtonState::on);
    resolver.window().makeKeyAndOrderFront();
    EXPECT_EQ(controller().refreshDataCheckbox->state(), ButtonState::on) << "raising is no appearance";
    resolver.showAgain();
    EXPECT_EQ(controller().refreshDataCheckbox->state(), ButtonState::off);
}

TEST_F(TRViewControllerTest, keepsItsTextsWhenShownAgain) {
    resolver.resolve(ResolverWindow::bookmarkText);
    resolver.showAgain();
    EXPECT_EQ(resolver.inputText(), ResolverWindow::bookmarkText);
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_NE(resolver.pathText(), "");
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
    resolver.defaults.setDouble(20, "fontSizeRes");
    const auto unloaded = unconnected();
    platform::connectOutlets(*unloaded);
    unloaded->outputTextbox->setString("plain");
    unloaded->loadViewIfNeeded();
    EXPECT_EQ(unloaded->theFontSize(), 20.0);
    EXPECT_EQ(unloaded->outputTextbox->textStorage()->attributedString(), AttributedString("plain", {}));
}

TEST_F(TRViewControllerTest, storesEachNewSizeAndRestylesTheOutput) {
    ResolverWindow window;
    window.defaults.setDouble(23.5, "fontSizeRes");
    window.open();
    EXPECT_EQ(window.controller().theFontSize(), 23.5);
    for (const auto& [selector, size] :
         {std::pair{"decFontSize:", 22.5},
          {"incFontSize:", 23.5},
          {"incFontSize:", 24.0},
          {"incFontSize:", 24.0}}) {
        expectChange(window, selector, size);
    }
    EXPECT_EQ(window.defaults.doubleForKey("fontSize"), 0.0) << "the details window has a size of its own";
    EXPECT_EQ(controller().theFontSize(), 12.0) << "so has every other window";

    ResolverWindow small;
    small.defaults.setDouble(4.5, "fontSizeRes");
    small.open();
    expectChange(small, "decFontSize:", 4.0);
    expectChange(small, "decFontSize:", 4.0);
}

TEST_F(TRViewControllerTest, replacesAllStylingWhenRestyled) {
    auto* storage = controller().outputTextbox->textStorage();
    storage->setAttributedString({"one", {Color::textColor, Font::systemFontOfSize(30)}});
    storage->appendAttributedString({" two", {}});
    controller().restyleOutput();
    EXPECT_EQ(
        storage->attributedString(),
        AttributedString("one two", {Color::textColor, Font::systemFontOfSize(12)}));
}

TEST_F(TRViewControllerTest, restylesNothingWithoutStorage) {
    controller().outputTextbox->removeTextStorage();
    controller().incFontSize(nullptr);
    EXPECT_EQ(controller().theFontSize(), 13.0);
    EXPECT_EQ(resolver.defaults.doubleForKey("fontSizeRes"), 13.0);
}

TEST_F(TRViewControllerDeathTest, cannotChangeTheSizeThroughAnUnconnectedOutlet) {
    const auto bare = unconnected();
    EXPECT_DEATH(bare->incFontSize(nullptr), "^tolvane: fatal: outlet outputTextbox is not connected");
    EXPECT_DEATH(bare->decFontSize(nullptr), "^tolvane: fatal: outlet outputTextbox is not connected");
}

// Actions by their selectors

TEST_F(TRViewControllerTest, analysesAndResolvesTheInput) {
    resolver.paste(ResolverWindow::bookmarkText);
    perform("analyseButton:");
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_EQ(resolver.pathText(), "");
    perform("resolveButton:");
    EXPECT_EQ(resolver.pathText(), "/data/notes.txt\nvolfs path : /.vol/5/123");
}

TEST_F(TRViewControllerTest, hasNoOtherActionsThanItsWindows) {
    for (const std::string_view selector : {"", "analyseButton", "copyPath:", "saveCommand:"}) {
        EXPECT_FALSE(controller().actionForSelector(selector)) << selector;
        EXPECT_FALSE(controller().isActionEnabled(selector)) << selector;
    }
    EXPECT_TRUE(controller().isActionEnabled("openFileButton:"));
}

TEST_F(TRViewControllerTest, offersToRevealAndPreviewOnceAnItemWasFound) {
    for (const std::string_view selector : {"revealButton:", "previewButton:"}) {
        ResolverWindow window;
        window.open();
        EXPECT_FALSE(window.controller().isActionEnabled(selector)) << selector;
        window.controller().actionForSelector(selector)(nullptr);
        EXPECT_TRUE(window.log.empty()) << selector;
        window.resolve(ResolverWindow::bookmarkText);
        window.resolve(ResolverWindow::garbage);
        EXPECT_TRUE(window.controller().isActionEnabled(selector)) << selector;
    }
}

} // namespace
} // namespace tolvane::tests
