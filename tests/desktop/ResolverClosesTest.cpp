// What becomes of a resolver's preview and panel when it is closed.
#include "tests/desktop/DesktopTest.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvane::tests {

namespace {

class ResolverCloses : public DesktopTest {};

TEST_F(ResolverCloses, andItsPreviewGoesOn) {
    std::string bookmark = printed({"bookmark", "make", "--", file("seen.txt", "something to read\n")});
    bookmark.pop_back();
    Process& program = startTolvane({"--resolver"});
    const std::string resolver = desktop().waitForWindow(resolverTitle);
    desktop().setClipboard(bookmark);
    desktop().press(resolver, {"ctrl+v", "ctrl+Return", "ctrl+shift+y"});
    const std::string preview = desktop().waitForWindow(titleOf("seen.txt — Preview"));
    desktop().press(resolver, {"ctrl+shift+w"});
    desktop().waitUntilGone(resolverTitle);
    EXPECT_EQ(desktop().copiedBy(preview, {"ctrl+a", "ctrl+c"}), "something to read\n");
    EXPECT_TRUE(Desktop::isRunning(program));
    desktop().press(preview, {"Escape"});
    expectGoodEnd(program);
}

TEST_F(ResolverCloses, andItsPanelGoesAlong) {
    Process& program = startTolvane({file("a")});
    const std::string details = desktop().waitForWindow(titleOf("a"));
    desktop().press(details, {"ctrl+b"});
    const std::string resolver = desktop().waitForWindow(resolverTitle);
    desktop().press(resolver, {"ctrl+shift+o"});
    desktop().waitForWindow(openPanelTitle);
    desktop().press(details, {"ctrl+shift+w"});
    desktop().waitUntilGone(resolverTitle);
    desktop().waitUntilGone(openPanelTitle);
    quit(details, program);
}

} // namespace

} // namespace tolvane::tests
