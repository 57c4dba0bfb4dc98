#include "resolver/TRViewController.h"

#include "resolver/TRWindow.h"
#include "tests/support/ResolverWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <any>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::AttributedString;
using platform::ButtonState;
using platform::Color;
using platform::Font;
using resolver::TRViewController;
using testing::ElementsAre;

class TRViewControllerTest : public testing::Test {
protected:
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
        EXPECT_FALSE(std::visit([](const auto* outlet) { return outlet->isConnected(); }, entry.outlet))
            << entry.name;
    }
}

TEST_F(TRViewControllerTest, declaresItsOutletsInTheWindowsOrder) {
    resolver.open();
    std::vector<std::string> names;
    for (const auto& entry : controller().outlets().entries()) {
        names.emplace_back(entry.name);
        EXPECT_TRUE(std::visit([](const auto* outlet) { return outlet->isConnected(); }, entry.outlet))
            << entry.name;
    }
    EXPECT_THAT(
        names, ElementsAre(
                   "inputScroller", "inputTextbox", "outputScroller", "outputTextbox", "filePathTextbox",
                   "refreshDataCheckbox"));
}

TEST_F(TRViewControllerTest, fillsAWindowOfTheClassThatTheSceneNames) {
    resolver.open();
    EXPECT_NE(dynamic_cast<resolver::TRWindow*>(&resolver.window()), nullptr);
    EXPECT_TRUE(resolver.window().isVisible());
    EXPECT_TRUE(resolver.log.empty()) << "showing the window asks nothing";
}

TEST_F(TRViewControllerTest, passesTheRepresentedObjectThrough) {
    resolver.open();
    EXPECT_FALSE(controller().representedObject().has_value());
    controller().setRepresentedObject(std::string("object"));
    EXPECT_EQ(std::any_cast<std::string>(controller().representedObject()), "object");
    const platform::ViewController& base = controller();
    EXPECT_EQ(std::any_cast<std::string>(base.representedObject()), "object");
    EXPECT_EQ(resolver.inputText() + resolver.outputText() + resolver.pathText(), "");
}

// Appearing

TEST_F(TRViewControllerTest, becomesTheWindowsDelegateAtEachAppearance) {
    resolver.open();
    EXPECT_EQ(resolver.window().delegate(), resolver.sharedController());
    resolver.window().setDelegate({});
    resolver.showAgain();
    EXPECT_EQ(resolver.window().delegate(), resolver.sharedController());
    resolver.window().close();
    EXPECT_FALSE(resolver.window().isVisible());
}

TEST_F(TRViewControllerTest, clearsTheCheckBoxAtEachAppearance) {
    resolver.open();
    EXPECT_EQ(controller().refreshDataCheckbox->state(), ButtonState::off);
    controller().refreshDataCheckbox->setState(ButtonState::on);
    resolver.window().makeKeyAndOrderFront();
    EXPECT_EQ(controller().refreshDataCheckbox->state(), ButtonState::on) << "raising is no appearance";
    resolver.showAgain();
    EXPECT_EQ(controller().refreshDataCheckbox->state(), ButtonState::off);
}

TEST_F(TRViewControllerTest, keepsItsTextsWhenShownAgain) {
    resolver.open();
    resolver.resolve(ResolverWindow::bookmarkText);
    resolver.showAgain();
    EXPECT_EQ(resolver.inputText(), ResolverWindow::bookmarkText);
    EXPECT_EQ(resolver.outputText(), ResolverWindow::analysis);
    EXPECT_NE(resolver.pathText(), "");
}

TEST_F(TRViewControllerTest, clearsTheCheckBoxInNoWindowToo) {
    const auto windowless = TRViewController::initWithCoder({}, resolver.resolverSources());
    platform::Button checkBox;
    checkBox.setState(ButtonState::on);
    windowless->refreshDataCheckbox.connect(checkBox);
    windowless->viewDidAppear();
    EXPECT_EQ(checkBox.state(), ButtonState::off);
}

TEST_F(TRViewControllerDeathTest, cannotAppearWithoutItsCheckBox) {
    const auto bare = TRViewController::initWithCoder({}, resolver.resolverSources());
    EXPECT_DEATH(bare->viewDidAppear(), "^tolvane: fatal: outlet refreshDataCheckbox is not connected");
}

// Text size

TEST_F(TRViewControllerTest, startsAtTheStoredSizeOrTheDefault) {
    const std::vector<std::pair<double, double>> cases{{0.0, 12.0}, {3.5, 12.0},  {-8.0, 12.0}, {3.999, 12.0},
                                                       {4.0, 4.0},  {17.5, 17.5}, {30.0, 30.0}};
    for (const auto& [stored, loaded] : cases) {
        ResolverWindow window;
        window.defaults.setDouble(stored, "fontSizeRes");
        window.open();
        EXPECT_EQ(window.controller().theFontSize(), loaded) << stored;
    }
    resolver.open();
    EXPECT_EQ(controller().theFontSize(), 12.0) << "nothing is stored";
}

TEST_F(TRViewControllerTest, doesNotRestyleWhenItLoads) {
    resolver.defaults.setDouble(20, "fontSizeRes");
    const auto unloaded = TRViewController::initWithCoder({}, resolver.resolverSources());
    platform::connectOutlets(*unloaded);
    unloaded->outputTextbox->setString("plain");
    unloaded->loadViewIfNeeded();
    EXPECT_EQ(unloaded->theFontSize(), 20.0);
    EXPECT_EQ(unloaded->outputTextbox->textStorage()->attributedString(), AttributedString("plain", {}));
}

TEST_F(TRViewControllerTest, stepsByOnePointWithinTheBounds) {
    const std::vector<std::tuple<double, double, double>> cases{{12.0, 13.0, 11.0}, {30.0, 24.0, 29.0},
                                                                {24.0, 24.0, 23.0}, {23.5, 24.0, 22.5},
                                                                {4.0, 5.0, 4.0},    {4.5, 5.5, 4.0}};
    for (const auto& [stored, larger, smaller] : cases) {
        for (const bool increases : {true, false}) {
            ResolverWindow window;
            window.defaults.setDouble(stored, "fontSizeRes");
            window.open();
            window.controller().outputTextbox->setString("output");
            window.defaults.setDouble(-1, "fontSizeRes");
            const double expected = increases ? larger : smaller;
            if (increases) {
                window.controller().incFontSize(nullptr);
            } else {
                window.controller().decFontSize(nullptr);
            }
            EXPECT_EQ(window.controller().theFontSize(), expected) << stored;
            EXPECT_EQ(window.defaults.doubleForKey("fontSizeRes"), expected)
                << "stored although it may be unchanged";
            EXPECT_EQ(window.defaults.doubleForKey("fontSize"), 0.0)
                << "the details window has a size of its own";
            EXPECT_EQ(
                window.controller().outputTextbox->textStorage()->attributedString(),
                AttributedString("output", {Color::textColor, Font::systemFontOfSize(expected)}));
        }
    }
}

TEST_F(TRViewControllerTest, replacesAllStylingWhenRestyled) {
    resolver.open();
    auto* storage = controller().outputTextbox->textStorage();
    storage->setAttributedString({"one", {Color::textColor, Font::systemFontOfSize(30)}});
    storage->appendAttributedString({" two", {}});
    controller().restyleOutput();
    EXPECT_EQ(
        storage->attributedString(),
        AttributedString("one two", {Color::textColor, Font::systemFontOfSize(12)}));
}

TEST_F(TRViewControllerTest, keepsOtherWindowsAtTheirSize) {
    resolver.open();
    ResolverWindow other;
    other.open();
    controller().incFontSize(nullptr);
    EXPECT_EQ(other.controller().theFontSize(), 12.0);
}

TEST_F(TRViewControllerTest, restylesNothingWithoutStorage) {
    resolver.open();
    controller().outputTextbox->removeTextStorage();
    controller().incFontSize(nullptr);
    EXPECT_EQ(controller().theFontSize(), 13.0);
    EXPECT_EQ(resolver.defaults.doubleForKey("fontSizeRes"), 13.0);
}

TEST_F(TRViewControllerDeathTest, cannotChangeTheSizeThroughAnUnconnectedOutlet) {
    const auto bare = TRViewController::initWithCoder({}, resolver.resolverSources());
    EXPECT_DEATH(bare->incFontSize(nullptr), "^tolvane: fatal: outlet outputTextbox is not connected");
    EXPECT_DEATH(bare->decFontSize(nullptr), "^tolvane: fatal: outlet outputTextbox is not connected");
}

} // namespace
} // namespace tolvane::tests
