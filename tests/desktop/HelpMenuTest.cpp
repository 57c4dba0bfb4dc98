// The pages and the statement that the Help menu offers.
#include "tests/desktop/AccessibleWindows.h"
#include "tests/desktop/DesktopTest.h"

#include <gmock/gmock.h>

#include <string>

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

constexpr const char* privacyTitle = "Privacy — Tolvane";

using HelpMenu = AccessibleDesktopTest;

TEST_F(HelpMenu, opensPagesWithTheDesktopsOpener) {
    const Opener opener;
    Process& tolvane = startTolvane({file("first")}, {}, {opener.pathVariable()});
    const std::string window = desktop().waitForWindow(titleOf("first"));
    desktop().press(window, {"alt+h", "s"});
    const std::string support = "1\nhttps://tolvane.example/support\n";
    EXPECT_TRUE(waitUntil([&] { return opener.calls() == support; })) << opener.calls();
    desktop().press(window, {"alt+h", "u"});
    EXPECT_TRUE(waitUntil([&] {
        return opener.calls().starts_with(support + "1\nhttps://tolvane.example/updates/");
    })) << opener.calls();
    quit(window, tolvane);
}

TEST_F(HelpMenu, showsAPrivacyWindowEachTime) {
    const auto [tolvane, first] = startWith("first");
    desktop().press(first, {"alt+h", "p"});
    const std::string privacy = desktop().waitForWindow(privacyTitle);
    // It has the same menus, and its whole text can be copied.
    EXPECT_THAT(desktop().copiedBy(privacy, {"ctrl+a", "ctrl+c"}), HasSubstr("noUpdateCheck=true"));
    EXPECT_TRUE(waitUntil([this] {
        return hasObject(accessibleObjects(), "", "Privacy statement", "noUpdateCheck=true");
    })) << "The statement cannot be read by those who do not see it";
    desktop().press(privacy, {"alt+h", "p"});
    EXPECT_TRUE(waitUntil([this] { return desktop().windowsTitled(privacyTitle).size() == 2; }));
    desktop().settle();
    for (const std::string& window : desktop().windowsTitled(privacyTitle)) {
        desktop().press(window, {"ctrl+w"});
    }
    desktop().waitUntilGone(privacyTitle);
    EXPECT_TRUE(Desktop::isRunning(tolvane));
    desktop().press(first, {"alt+h", "p"});
    quit(desktop().waitForWindow(privacyTitle), tolvane);
}

} // namespace
} // namespace tolvane::tests
