// The icon that windows carry.
#include "tests/desktop/DesktopTest.h"

#include <string>

namespace tolvane::tests {

namespace {

class Icon : public DesktopTest {};

TEST_F(Icon, isOnEveryWindowWithoutBeingInstalled) {
    Process& program = startTolvane({file("letter")});
    const std::string letter = desktop().waitForWindow(titleOf("letter"));
    const auto hasIcon = [this](const std::string& window) {
        // Its first picture is shown with a head line that tells the size.
        const ProcessOutcome outcome = desktop().run({"xprop", "-id", window, "_NET_WM_ICON"});
        return outcome.out.find("Icon (16 x 16)") != std::string::npos;
    };
    EXPECT_TRUE(waitUntil([&] { return hasIcon(letter); }));
    handOver({file("second")});
    const std::string second = desktop().waitForWindow(titleOf("second"));
    EXPECT_TRUE(waitUntil([&] { return hasIcon(second); }));
    quit(letter, program);
}

} // namespace

} // namespace tolvane::tests
