// The desktop program where there is nothing to show windows on.
#include "tests/desktop/DesktopTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tolvane::tests {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class WithoutDisplay : public testing::Test {
protected:
    ProcessOutcome tolvane(
        std::vector<std::string> arguments, const std::vector<std::string>& variables = {}) {
        ProcessSetup setup;
        setup.command = std::move(arguments);
        setup.command.insert(setup.command.begin(), desktopProgram());
        setup.environment.emplace_back("HOME=" + home.path());
        setup.environment.emplace_back("DBUS_SESSION_BUS_ADDRESS=disabled:");
        setup.environment.insert(setup.environment.end(), variables.begin(), variables.end());
        return run(setup);
    }

    static void expectOneLineAboutTheTerminalProgram(const ProcessOutcome& outcome) {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, HasSubstr("tolvane-cli"));
        EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
        EXPECT_TRUE(outcome.err.ends_with('\n'));
    }

    TemporaryFolder home;
};

TEST_F(WithoutDisplay, pointsToTheTerminalProgram) {
    expectOneLineAboutTheTerminalProgram(tolvane({}));
    expectOneLineAboutTheTerminalProgram(tolvane({home.file("file")}));
}

TEST_F(WithoutDisplay, pointsToTheTerminalProgramWhenTheDisplayIsNone) {
    expectOneLineAboutTheTerminalProgram(tolvane({home.file("file")}, {"DISPLAY=:nowhere"}));
    expectOneLineAboutTheTerminalProgram(
        tolvane({home.file("file")}, {"WAYLAND_DISPLAY=nowhere", "XDG_RUNTIME_DIR=" + home.path()}));
}

TEST_F(WithoutDisplay, explainsItself) {
    const ProcessOutcome outcome = tolvane({"--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith("Usage: tolvane "));
    EXPECT_EQ(outcome.err, "");
    // Only once Qt has taken its own options out is it known that help is asked for.
    EXPECT_EQ(tolvane({"-platform", "offscreen", "--help"}).out, outcome.out);
}

TEST_F(WithoutDisplay, saysItsVersion) {
    const ProcessOutcome outcome = tolvane({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, testing::MatchesRegex("tolvane [0-9]+\\.[0-9]+.*\n"));
    EXPECT_EQ(outcome.err, "");
}

using WithDisplay = DesktopTest;

TEST_F(WithDisplay, refusesAnOptionThatItDoesNotKnow) {
    const auto outcome = desktop().endOf(startTolvane({"--frobnicate"}));
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->status, 2);
    EXPECT_EQ(outcome->err, "tolvane: there is no option --frobnicate\nTry 'tolvane --help'.\n");
}

TEST_F(WithDisplay, showsATerminalNothingThatItWouldActOn) {
    const auto outcome = desktop().endOf(startTolvane({"-\x1B[31m\xFF"}));
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->status, 2);
    EXPECT_EQ(outcome->err, "tolvane: there is no option -⟨ESC⟩[31m\uFFFD\nTry 'tolvane --help'.\n");
}

TEST_F(WithDisplay, opensAFileWhoseNameBeginsWithADash) {
    file("--frobnicate");
    Process& tolvane = startTolvane({"--", "--frobnicate"}, desktop().files().path());
    quit(desktop().waitForWindow(titleOf("--frobnicate")), tolvane);
}

TEST_F(WithDisplay, opensAFileWithTheNameOfAnOptionOfTheToolkit) {
    file("-reverse");
    Process& tolvane = startTolvane({"--", "-reverse"}, desktop().files().path());
    quit(desktop().waitForWindow(titleOf("-reverse")), tolvane);
}

} // namespace

} // namespace tolvane::tests
