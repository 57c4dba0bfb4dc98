// The window that lists the bookmarks in a file, used with keys.
#include "tests/desktop/DesktopTest.h"
#include "tests/support/Process.h"

#include <string>

namespace tolvane::tests {
namespace {

constexpr const char* listTitle = "list.txt — Bookmarks — Tolvane";

/// In the box with what the selected one says, from below.
constexpr int detailsPlace = -120;

using FoundBookmarks = DesktopTest;

TEST_F(FoundBookmarks, areListedOpenedAndExported) {
    const std::string item = file("item");
    const std::string bookmark = printedLine({"bookmark", "make", "--", item});
    const std::string list = file("list.txt", bookmark + "\n");
    Process& tolvane = startTolvane({});
    desktop().press(desktop().waitForWindow(startWindowTitle), {"ctrl+shift+i"});
    answerPanel(openPanelTitle, list);
    const std::string window = desktop().waitForWindow(listTitle);

    // The list is filled by another thread. Copying what its first one says can be tried until it is there.
    EXPECT_TRUE(waitUntil([&] {
        desktop().click(window, 100, detailsPlace);
        desktop().press(window, {"ctrl+a", "ctrl+c"});
        return desktop().clipboard().find("\nPath: " + item + "\n") != std::string::npos;
    })) << desktop().clipboard();

    const std::string saved = desktop().files().path("saved.json");
    desktop().press(window, {"alt+f", "j"});
    answerPanel(savePanelTitle, saved);
    EXPECT_TRUE(waitUntil([&] {
        return contentsOfFile(saved) == printed({"bookmark", "find", "--json", "--", list});
    })) << contentsOfFile(saved);

    desktop().press(window, {"alt+b", "o"});
    const std::string resolver = desktop().waitForWindow(resolverTitle);
    desktop().click(resolver, 100, 110);
    EXPECT_EQ(desktop().copiedBy(resolver, {"ctrl+a", "ctrl+c"}), bookmark);
    quit(resolver, tolvane);
}

} // namespace
} // namespace tolvane::tests
