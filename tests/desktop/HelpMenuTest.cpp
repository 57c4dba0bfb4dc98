// The pages and the statement that the Help menu offers.
#include "tests/desktop/AccessibleWindows.h"
#include "tests/desktop/DesktopTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>

namespace tolvane::tests {

namespace {

using testing::HasSubstr;

constexpr const char* privacyTitle = "Privacy — Tolvane";

class HelpMenu : public DesktopTest {
protected:
    void SetUp() override {
        if (const std::string missing = missingAccessibilityProgram(); !missing.empty()) {
            GTEST_SKIP() << missing << " is not installed";
        }
        std::filesystem::permissions(
            tools_.file("xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" >>\"${0%/*}/opened\"\n"),
            std::filesystem::perms::owner_all);
        DesktopTest::SetUp();
    }

    DesktopSetup setup() const override { return accessibleDesktop(); }

    /// Starts the program where the desktop's opener is one that writes down what it is to open.
    Process& startWithOpener(const std::string& path) {
        ProcessSetup program;
        program.command = {desktopProgram(), path};
        program.environment = desktop().environment();
        std::erase_if(
            program.environment, [](const std::string& variable) { return variable.starts_with("PATH="); });
        program.environment.push_back("PATH=" + tools_.path() + ":/usr/local/bin:/usr/bin:/bin");
        return desktop().start(std::move(program));
    }

    std::string opened() const {
        return std::filesystem::exists(tools_.path("opened")) ? contentsOfFile(tools_.path("opened")) : "";
    }

private:
    TemporaryFolder tools_;
};

TEST_F(HelpMenu, opensPagesWithTheDesktopsOpener) {
    Process& tolvane = startWithOpener(file("first"));
    const std::string window = desktop().waitForWindow(titleOf("first"));
    desktop().press(window, {"alt+h", "s"});
    const std::string support = "1\nhttps://tolvane.example/support\n";
    EXPECT_TRUE(waitUntil([&] { return opened() == support; })) << opened();
    desktop().press(window, {"alt+h", "u"});
    EXPECT_TRUE(waitUntil([&] {
        return opened().starts_with(support + "1\nhttps://tolvane.example/updates/");
    })) << opened();
    quit(window, tolvane);
}

TEST_F(HelpMenu, showsAPrivacyWindowEachTime) {
    Process& tolvane = startTolvane({file("first")});
    const std::string first = desktop().waitForWindow(titleOf("first"));
    desktop().press(first, {"alt+h", "p"});
    const std::string privacy = desktop().waitForWindow(privacyTitle);
    // It has the same menus, and its text can be copied whole.
    EXPECT_THAT(desktop().copiedBy(privacy, {"ctrl+a", "ctrl+c"}), HasSubstr("noUpdateCheck=true"));
    EXPECT_TRUE(waitUntil([this] {
        return std::ranges::any_of(accessibleObjects(desktop()), [](const AccessibleObject& object) {
            return object.name == "Privacy statement" && object.text.contains("noUpdateCheck=true");
        });
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
