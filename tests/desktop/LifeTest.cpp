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

class LifeWithAlerts : public AccessibleDesktopTest {
protected:
    /// Waits for the alert, and returns all its texts.
    std::vector<std::string> alertTexts() {
        desktop().waitForWindow(alertTitle);
        std::vector<std::string> texts;
        EXPECT_TRUE(waitUntil([&] {
            texts.clear();
            for (const AccessibleObject& object : accessibleObjects()) {
                texts.push_back(object.name);
            }
            return texts.size() > 2;
        }));
        return texts;
    }

    static constexpr const char* alertTitle = "Tolvane";
};

TEST_F(Life, beginsWithAWindowToOpenFilesFrom) {
    Process& tolvane = startTolvane({});
    desktop().waitForWindow(startWindowTitle);
    EXPECT_EQ(desktop().windows().size(), 1U);
    // It makes room for the first file, and the program goes on.
    handOver({file("first")});
    const std::string first = desktop().waitForWindow(titleOf("first"));
    desktop().waitUntilGone(startWindowTitle);
    // A start without files asks for that window again.
    handOver({});
    desktop().press(desktop().waitForWindow(startWindowTitle), {"ctrl+w"});
    desktop().waitUntilGone(startWindowTitle);
    quit(first, tolvane);
}

TEST_F(Life, endsWithItsLastWindow) {
    Process& tolvane = startTolvane({file("first"), file("second")});
    const std::string second = desktop().waitForWindow(titleOf("second"));
    desktop().press(desktop().waitForWindow(titleOf("first")), {"ctrl+w"});
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
    EXPECT_THAT(texts, Contains(HasSubstr(complaint.substr(start + path.size() + 2) + path)));
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

// The Save panel outlives its window, and then ends the program when it is answered or cancelled.
TEST_F(Life, savesAfterTheWindowIsClosed) {
    const auto [tolvane, window] = startWith("first");
    desktop().press(window, {"ctrl+s"});
    const std::string panel = desktop().waitForWindow(savePanelTitle);
    desktop().press(window, {"ctrl+w"});
    desktop().waitUntilGone(titleOf("first"));
    EXPECT_TRUE(Desktop::isRunning(tolvane));
    const std::string destination = desktop().files().path("saved.text");
    saveAt(destination, panel);
    expectGoodEnd(tolvane);
    EXPECT_TRUE(contentsOfFile(destination)
                    .starts_with("Details for file first\nPath: " + desktop().files().path("first") + "\n"));
}

TEST_F(Life, endsWhenThePanelOfAClosedWindowIsCancelled) {
    const auto [tolvane, window] = startWith("first");
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
