// Windows on screens that are smaller than they would like.
#include "tests/desktop/DesktopTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace tolvane::tests {

namespace {

struct Place {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

class SmallScreen : public DesktopTest {
protected:
    /// Of what is inside the frame.
    Place placeOf(const std::string& window) {
        const std::string told = desktop().run({"xwininfo", "-id", window}).out;
        const auto number = [&told](const std::string& label) {
            const auto found = told.find(label);
            EXPECT_NE(found, std::string::npos) << label << " in " << told;
            return found == std::string::npos ? 0 : std::atoi(told.c_str() + found + label.size());
        };
        return {
            number("Absolute upper-left X:"), number("Absolute upper-left Y:"), number("Width:"),
            number("Height:")};
    }

    /// With its frame.
    void expectOnScreen(const std::string& window, int width, int height) {
        const Place place = placeOf(window);
        const std::string frame = desktop().run({"xprop", "-id", window, "_NET_FRAME_EXTENTS"}).out;
        std::istringstream extents(frame.substr(std::min(frame.find("= ") + 2, frame.size())));
        int left = 0;
        int right = 0;
        int top = 0;
        int bottom = 0;
        char comma = ' ';
        ASSERT_TRUE(extents >> left >> comma >> right >> comma >> top >> comma >> bottom) << frame;
        EXPECT_GT(top, 0);
        EXPECT_GE(place.x - left, 0);
        EXPECT_GE(place.y - top, 0);
        EXPECT_LE(place.x + place.width + right, width);
        EXPECT_LE(place.y + place.height + bottom, height);
    }
};

class Notebook : public SmallScreen {
protected:
    DesktopSetup setup() const override { return {.screen = "1366x768"}; }
};

TEST_F(Notebook, showsSeveralFilesOneBehindTheOther) {
    Process& program = startTolvane({file("a"), file("b"), file("c")});
    std::vector<Place> places;
    for (const char* const name : {"a", "b", "c"}) {
        const std::string window = desktop().waitForWindow(titleOf(name));
        expectOnScreen(window, 1366, 768);
        places.push_back(placeOf(window));
    }
    for (std::size_t i = 1; i < places.size(); ++i) {
        EXPECT_EQ(places[i].x - places[i - 1].x, 28);
        EXPECT_EQ(places[i].y - places[i - 1].y, 28);
    }
    quit(desktop().waitForWindow(titleOf("c")), program);
}

TEST_F(Notebook, showsTheButtonBelowTheDetails) {
    Process& program = startTolvane({file("a")});
    const std::string window = desktop().waitForWindow(titleOf("a"));
    desktop().click(window, -60, -26);
    desktop().waitForWindow(savePanelTitle);
    quit(window, program);
}

class TwiceTheScale : public SmallScreen {
protected:
    DesktopSetup setup() const override { return {.variables = {"QT_SCALE_FACTOR=2"}, .screen = "1280x900"}; }
};

TEST_F(TwiceTheScale, keepsEveryWindowOnTheScreen) {
    Process& program = startTolvane({file("a"), file("b")});
    const std::string first = desktop().waitForWindow(titleOf("a"));
    expectOnScreen(first, 1280, 900);
    expectOnScreen(desktop().waitForWindow(titleOf("b")), 1280, 900);
    desktop().press(first, {"ctrl+b"});
    expectOnScreen(desktop().waitForWindow(resolverTitle), 1280, 900);
    desktop().press(first, {"ctrl+o"});
    expectOnScreen(desktop().waitForWindow(openPanelTitle), 1280, 900);
    desktop().press(desktop().waitForWindow(openPanelTitle), {"Escape"});
    desktop().waitUntilGone(openPanelTitle);
    quit(first, program);
}

} // namespace

} // namespace tolvane::tests
