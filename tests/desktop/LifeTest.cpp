// How the program begins and ends, and what happens to panels meanwhile.
#include "tests/desktop/AccessibleWindows.h"
#include "tests/desktop/DesktopTest.h"

#include <string>

namespace tolvane::tests {
namespace {

using Life = DesktopTest;

using LifeWithAlerts = AccessibleDesktopTest;

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

TEST_F(LifeWithAlerts, aMissingFileIsNamedWithTheReasonAndOthersAreOpenedMeanwhile) {
    const std::string path = desktop().files().path("not there");
    Process& tolvane = startTolvane({path});
    desktop().waitForWindow(alertTitle);
    EXPECT_TRUE(waitForName("“not there” could not be opened."));
    // The terminal program gives the same reason, after the name.
    const std::string complaint = desktop().run({programPath("tolvane-cli"), "report", path}).err;
    const auto start = complaint.find(path + ": ");
    ASSERT_NE(start, std::string::npos) << complaint;
    EXPECT_TRUE(waitForName(complaint.substr(start + path.size() + 2) + path));
    handOver({file("first")});
    const std::string first = desktop().waitForWindow(titleOf("first"));
    EXPECT_TRUE(Desktop::isRunning(tolvane));
    answerAlerts({"Return"});
    EXPECT_EQ(desktop().copiedBy(first, {"ctrl+shift+c"}), desktop().files().path("first"));
    quit(first, tolvane);
}

TEST_F(Life, endsWithAnAlertOrTheStartWindowWhenNothingElseIsOpen) {
    Process& alone = startTolvane({desktop().files().path("not there")});
    answerAlerts({"Return"});
    expectGoodEnd(alone);
    Process& tolvane = startTolvane({});
    desktop().press(desktop().waitForWindow(startWindowTitle), {"ctrl+w"});
    expectGoodEnd(tolvane);
}

// The Save panel outlives its window, and then ends the program when it is answered or cancelled.
TEST_F(Life, endsWithThePanelOfAClosedWindow) {
    const std::string destination = desktop().files().path("saved.text");
    for (const bool saves : {false, true}) {
        SCOPED_TRACE(saves ? "saved" : "cancelled");
        const auto [tolvane, window] = startWith("first");
        desktop().press(window, {"ctrl+s"});
        const std::string panel = desktop().waitForWindow(savePanelTitle);
        desktop().press(window, {"ctrl+w"});
        desktop().waitUntilGone(titleOf("first"));
        EXPECT_TRUE(Desktop::isRunning(tolvane));
        if (saves) {
            answerPanel(savePanelTitle, destination);
        } else {
            desktop().press(panel, {"Escape"});
        }
        expectGoodEnd(tolvane);
    }
    EXPECT_TRUE(contentsOfFile(destination)
                    .starts_with("Details for file first\nPath: " + desktop().files().path("first") + "\n"));
}

TEST_F(Life, endsWithManyWindowsAndPanelsWhenToldTo) {
    Process& tolvane = startTolvane({file("first"), file("second"), file("third")});
    const std::string first = desktop().waitForWindow(titleOf("first"));
    const std::string second = desktop().waitForWindow(titleOf("second"));
    const std::string third = desktop().waitForWindow(titleOf("third"));
    desktop().press(third, {"ctrl+b"});
    desktop().waitForWindow(resolverTitle);
    desktop().press(first, {"ctrl+s"});
    desktop().waitForWindow(savePanelTitle);
    desktop().press(second, {"ctrl+o"});
    desktop().waitForWindow(openPanelTitle);
    quit(third, tolvane);
}

} // namespace
} // namespace tolvane::tests
