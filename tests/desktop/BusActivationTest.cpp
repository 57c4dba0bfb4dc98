// Starts of the program by the session bus, and by the commands of its desktop entry.
#include "tests/desktop/DesktopTest.h"

#include <string>
#include <vector>

namespace tolvane::tests {

namespace {

class BusActivation : public DesktopTest {
protected:
    DesktopSetup setup() const override {
        return {.services = {{"example.tolvane.tolvane", desktopProgram() + " --await-bus"}}};
    }

    /// Calls the application, whether it runs or not.
    void call(std::vector<std::string> methodAndArguments) {
        std::vector<std::string> command{
            "gdbus",
            "call",
            "--session",
            "--dest",
            "example.tolvane.tolvane",
            "--object-path",
            "/example/tolvane/tolvane",
            "--method"};
        command.insert(command.end(), methodAndArguments.begin(), methodAndArguments.end());
        const ProcessOutcome outcome = desktop().run(command);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
    }

    bool isOnBus() {
        const ProcessOutcome outcome = desktop().run(
            {"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
             "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.NameHasOwner",
             "example.tolvane.tolvane"});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return outcome.out.starts_with("(true");
    }

    void quitFrom(const std::string& window, const std::string& title) {
        desktop().settle();
        desktop().press(window, {"ctrl+q"});
        desktop().waitUntilGone(title);
    }
};

TEST_F(BusActivation, showsTheStartWindow) {
    call({"org.freedesktop.Application.Activate", "{}"});
    quitFrom(desktop().waitForWindow(startWindowTitle), startWindowTitle);
}

TEST_F(BusActivation, showsAFileAndNoOtherWindow) {
    const std::string letter = file("letter");
    call({"org.freedesktop.Application.Open", "['file://" + letter + "']", "{}"});
    const std::string window = desktop().waitForWindow(titleOf("letter"));
    desktop().settle();
    EXPECT_EQ(desktop().windows().size(), 1U);
    quitFrom(window, titleOf("letter"));
}

TEST_F(BusActivation, showsTheResolverAndNoOtherWindow) {
    call({"org.freedesktop.Application.ActivateAction", "resolver", "[]", "{}"});
    const std::string window = desktop().waitForWindow(resolverTitle);
    desktop().settle();
    EXPECT_EQ(desktop().windows().size(), 1U);
    quitFrom(window, resolverTitle);
}

TEST_F(BusActivation, endsWhenNothingIsAskedFor) {
    expectGoodEnd(startTolvane({"--await-bus"}));
}

TEST_F(BusActivation, endsAfterAnActionThatItDoesNotKnow) {
    call({"org.freedesktop.Application.ActivateAction", "unheard-of", "[]", "{}"});
    EXPECT_TRUE(isOnBus());
    EXPECT_TRUE(waitUntil([this] { return !isOnBus(); }));
}

TEST_F(BusActivation, asksNothingOfAProgramThatRuns) {
    Process& program = startTolvane({file("letter")});
    const std::string letter = desktop().waitForWindow(titleOf("letter"));
    handOver({"--await-bus"});
    handOver({file("second")});
    desktop().waitForWindow(titleOf("second"));
    EXPECT_EQ(desktop().windows().size(), 2U);
    desktop().settle();
    quit(letter, program);
}

TEST_F(BusActivation, opensTheResolverByACommand) {
    Process& program = startTolvane({"--resolver"});
    const std::string window = desktop().waitForWindow(resolverTitle);
    desktop().settle();
    EXPECT_EQ(desktop().windows().size(), 1U);
    quit(window, program);
}

TEST_F(BusActivation, opensTheResolverInAProgramThatRuns) {
    Process& program = startTolvane({file("letter")});
    const std::string letter = desktop().waitForWindow(titleOf("letter"));
    handOver({"--resolver"});
    desktop().waitForWindow(resolverTitle);
    desktop().settle();
    quit(letter, program);
}

} // namespace

} // namespace tolvane::tests
