// The window that lists the bookmarks in a file, used with keys.
#include "tests/desktop/DesktopTest.h"
#include "tests/support/Process.h"

#include <string>

namespace tolvane::tests {
namespace {

constexpr const char* listTitle = "list.txt — Bookmarks — Tolvane";

using FoundBookmarks = DesktopTest;

TEST_F(FoundBookmarks, areListedOpenedAndExported) {
    const std::string item = file("item");
    const std::string bookmark = printedLine({"bookmark", "make", "--", item});
    const std::string list = file("list.txt", bookmark + "\n");
    Process& tolvane = startTolvane({});
    desktop().press(desktop().waitForWindow(startWindowTitle), {"ctrl+shift+i"});
    const std::string panel = desktop().waitForWindow(openPanelTitle);
    desktop().activate(panel);
    desktop().type(list);
    desktop().press(panel, {"Return"});
    desktop().waitUntilGone(openPanelTitle);
    const std::string window = desktop().waitForWindow(listTitle);
    desktop().settle();

    const std::string saved = desktop().files().path("saved.json");
    // The list is filled on another thread, and the menu does nothing before.
    EXPECT_TRUE(waitUntil([&] {
        desktop().press(window, {"alt+f", "j"});
        return !desktop().windowsTitled(savePanelTitle).empty();
    }));
    saveAt(saved, desktop().waitForWindow(savePanelTitle));
    desktop().waitUntilGone(savePanelTitle);
    EXPECT_TRUE(waitUntil([&] {
        return contentsOfFile(saved) == printed({"bookmark", "find", "--json", "--", list});
    })) << contentsOfFile(saved);

    // The table has the keyboard, and its first row is selected.
    desktop().press(window, {"Return"});
    const std::string resolver = desktop().waitForWindow(resolverTitle);
    desktop().click(resolver, 100, 110);
    EXPECT_EQ(desktop().copiedBy(resolver, {"ctrl+a", "ctrl+c"}), bookmark);
    quit(resolver, tolvane);
}

} // namespace
} // namespace tolvane::tests
