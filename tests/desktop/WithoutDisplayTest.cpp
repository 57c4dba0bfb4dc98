// The desktop program where there is nothing to show windows on.
#include "tests/desktop/DesktopTest.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::StartsWith;

class WithoutDisplay : public testing::Test {
protected:
    ProcessOutcome tolvane(
        std::vector<std::string> arguments, const std::vector<std::string>& variables = {}) {
        arguments.insert(arguments.begin(), desktopProgram());
        ProcessSetup setup{.command = std::move(arguments)};
        setup.environment.emplace_back("HOME=" + home.path());
        setup.environment.emplace_back("DBUS_SESSION_BUS_ADDRESS=disabled:");
        setup.environment.insert(setup.environment.end(), variables.begin(), variables.end());
        return run(setup);
    }

    TemporaryFolder home;
};

TEST_F(WithoutDisplay, pointsToTheTerminalProgram) {
    const std::string file = home.file("file");
    for (const auto& outcome :
         {tolvane({}), tolvane({file}), tolvane({file}, {"DISPLAY=:nowhere"}),
          tolvane({file}, {"WAYLAND_DISPLAY=nowhere", "XDG_RUNTIME_DIR=" + home.path()})}) {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, testing::MatchesRegex("[^\n]*tolvane-cli[^\n]*\n"));
    }
}

TEST_F(WithoutDisplay, explainsItself) {
    const ProcessOutcome outcome = tolvane({"--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith("Usage: tolvane "));
    EXPECT_EQ(outcome.err, "");
    // Qt removes its own options first.
    EXPECT_EQ(tolvane({"-platform", "offscreen", "--help"}).out, outcome.out);
}

TEST_F(WithoutDisplay, saysItsVersion) {
    const ProcessOutcome outcome = tolvane({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, testing::MatchesRegex("tolvane [0-9]+\\.[0-9]+.*\n"));
    EXPECT_EQ(outcome.err, "");
}

using WithDisplay = DesktopTest;

TEST_F(WithDisplay, refusesAnUnknownOptionWithoutSteeringTheTerminal) {
    for (const auto& [option, shown] :
         {std::pair{"--frobnicate", "--frobnicate"}, std::pair{"-\x1B[31m\xFF", "-⟨ESC⟩[31m\uFFFD"}}) {
        const auto outcome = desktop().endOf(startTolvane({option}));
        ASSERT_TRUE(outcome);
        EXPECT_EQ(outcome->status, 2);
        EXPECT_EQ(
            outcome->err, "tolvane: there is no option " + std::string(shown) + "\nTry 'tolvane --help'.\n");
    }
}

// The second name is one of Qt's options.
TEST_F(WithDisplay, opensFilesWhoseNamesBeginWithADash) {
    for (const std::string name : {"--frobnicate", "-reverse"}) {
        file(name);
        Process& tolvane = startTolvane({"--", name}, desktop().files().path());
        quit(desktop().waitForWindow(titleOf(name)), tolvane);
    }
}

} // namespace
} // namespace tolvane::tests
