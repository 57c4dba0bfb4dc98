// How the program begins and ends, and what happens to panels meanwhile.
#include "tests/desktop/AccessibleWindows.h"
#include "tests/desktop/DesktopTest.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace tolvane::tests {

namespace {

using testing::Contains;
using testing::HasSubstr;

using Life = DesktopTest;

/// The text without the places where it may be broken into lines.
std::string withoutBreaks(std::string text) {
    const std::string zeroWidthSpace = "\u200b";
    for (auto at = text.find(zeroWidthSpace); at != std::string::npos; at = text.find(zeroWidthSpace)) {
        text.erase(at, zeroWidthSpace.size());
    }
    return text;
}

class LifeWithAlerts : public DesktopTest {
protected:
    void SetUp() override {
        if (const std::string missing = missingAccessibilityProgram(); !missing.empty()) {
            GTEST_SKIP() << missing << " is not installed";
        }
        DesktopTest::SetUp();
    }

    DesktopSetup setup() const override { return accessibleDesktop(); }

    /// Waits for the alert, and answers all it says.
    std::vector<std::string> alertTexts() {
        desktop().waitForWindow(alertTitle);
        std::vector<std::string> texts;
        EXPECT_TRUE(waitUntil([&] {
            texts.clear();
            for (const AccessibleObject& object : accessibleObjects(desktop())) {
                texts.push_back(withoutBreaks(object.name));
            }
            return texts.size() > 2;
        }));
        return texts;
    }

    static constexpr const char* alertTitle = "Tolvane";
};

TEST_F(Life, beginsWithAWindowToOpenFilesFrom) {
    Process& tolvane = startTolvane({});
    const std::string window = desktop().waitForWindow(startWindowTitle);
    EXPECT_EQ(desktop().windows().size(), 1U);
    // It makes room for the first file, and the program goes on.
    handOver({file("first")});
    const std::string first = desktop().waitForWindow(titleOf("first"));
    desktop().waitUntilGone(startWindowTitle);
    // A start without files asks for that window again.
    handOver({});
    const std::string again = desktop().waitForWindow(startWindowTitle);
    desktop().press(again, {"ctrl+w"});
    desktop().waitUntilGone(startWindowTitle);
    quit(first, tolvane);
}

TEST_F(Life, endsWithItsLastWindow) {
    Process& tolvane = startTolvane({file("first"), file("second")});
    const std::string first = desktop().waitForWindow(titleOf("first"));
    const std::string second = desktop().waitForWindow(titleOf("second"));
    desktop().press(first, {"ctrl+w"});
    desktop().waitUntilGone(titleOf("first"));
    EXPECT_TRUE(Desktop::isRunning(tolvane));
    desktop().press(second, {"ctrl+w"});
    expectGoodEnd(tolvane);
}

TEST_F(Life, endsWithTheStartWindowWhenNothingElseIsOpen) {
    Process& tolvane = startTolvane({});
    desktop().press(desktop().waitForWindow(startWindowTitle), {"ctrl+w"});
    expectGoodEnd(tolvane);
}

TEST_F(Life, endsWithManyWindowsWhenToldTo) {
    Process& tolvane = startTolvane({file("first"), file("second"), file("third")});
    desktop().waitForWindow(titleOf("first"));
    desktop().waitForWindow(titleOf("second"));
    const std::string third = desktop().waitForWindow(titleOf("third"));
    desktop().press(third, {"ctrl+b"});
    desktop().waitForWindow(resolverTitle);
    quit(third, tolvane);
}

TEST_F(LifeWithAlerts, aMissingFileIsNamedWithTheReason) {
    const std::string path = desktop().files().path("not there");
    Process& tolvane = startTolvane({path});
    const auto texts = alertTexts();
    EXPECT_THAT(texts, Contains(HasSubstr("“not there” could not be opened.")));
    // The terminal program gives the same reason, after the name.
    const std::string complaint = desktop().run({terminalProgram(), "report", path}).err;
    const auto start = complaint.find(path + ": ");
    ASSERT_NE(start, std::string::npos) << complaint;
    const std::string reason = complaint.substr(start + path.size() + 2);
    EXPECT_THAT(texts, Contains(HasSubstr(reason + path)));
    desktop().press(desktop().waitForWindow(alertTitle), {"Return"});
    expectGoodEnd(tolvane);
}

TEST_F(LifeWithAlerts, aFileIsOpenedWhileAnAlertIsShown) {
    Process& tolvane = startTolvane({desktop().files().path("not there")});
    const std::string alert = desktop().waitForWindow(alertTitle);
    handOver({file("first")});
    const std::string first = desktop().waitForWindow(titleOf("first"));
    EXPECT_TRUE(Desktop::isRunning(tolvane));
    desktop().press(alert, {"Return"});
    desktop().waitUntilGone(alertTitle);
    EXPECT_EQ(desktop().copiedBy(first, {"ctrl+shift+c"}), desktop().files().path("first"));
    quit(first, tolvane);
}

TEST_F(Life, savesIntoAPanelWhoseWindowIsClosed) {
    const std::string path = file("first");
    Process& tolvane = startTolvane({path});
    const std::string window = desktop().waitForWindow(titleOf("first"));
    desktop().press(window, {"ctrl+s"});
    const std::string panel = desktop().waitForWindow(savePanelTitle);
    desktop().press(window, {"ctrl+w"});
    desktop().waitUntilGone(titleOf("first"));
    EXPECT_TRUE(Desktop::isRunning(tolvane));
    desktop().press(panel, {"ctrl+a"});
    const std::string destination = desktop().files().path("saved.text");
    desktop().type(destination);
    desktop().press(panel, {"Return"});
    expectGoodEnd(tolvane);
    EXPECT_TRUE(contentsOfFile(destination).starts_with("Details for file first\nPath: " + path + "\n"));
}

TEST_F(Life, endsWhenThePanelOfAClosedWindowIsCancelled) {
    Process& tolvane = startTolvane({file("first")});
    const std::string window = desktop().waitForWindow(titleOf("first"));
    desktop().press(window, {"ctrl+s"});
    const std::string panel = desktop().waitForWindow(savePanelTitle);
    desktop().press(window, {"ctrl+w"});
    desktop().waitUntilGone(titleOf("first"));
    desktop().press(panel, {"Escape"});
    expectGoodEnd(tolvane);
}

TEST_F(Life, endsWithPanelsOpenWhenToldTo) {
    Process& tolvane = startTolvane({file("first"), file("second")});
    const std::string first = desktop().waitForWindow(titleOf("first"));
    const std::string second = desktop().waitForWindow(titleOf("second"));
    desktop().press(first, {"ctrl+s"});
    desktop().waitForWindow(savePanelTitle);
    desktop().press(second, {"ctrl+o"});
    desktop().waitForWindow(openPanelTitle);
    quit(second, tolvane);
}

} // namespace

} // namespace tolvane::tests
