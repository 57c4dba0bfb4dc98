// Starts of the program by the session bus, and by the commands of its desktop entry.
#include "tests/desktop/DesktopTest.h"

#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {
namespace {

class BusActivation : public DesktopTest {
protected:
    DesktopSetup setup() const override {
        return {.services = {{"example.tolvane.tolvane", desktopProgram() + " --await-bus"}}};
    }

    void call(std::vector<std::string> methodAndArguments) {
        const ProcessOutcome outcome = callApplication(std::move(methodAndArguments));
        EXPECT_EQ(outcome.status, 0) << outcome.err;
    }

    /// Waits for the only window and quits the program.
    void quitFromOnlyWindow(const std::string& title) {
        const std::string window = desktop().waitForWindow(title);
        EXPECT_EQ(desktop().windows().size(), 1U);
        desktop().press(window, {"ctrl+q"});
        desktop().waitUntilGone(title);
    }

    bool isOnBus() {
        const ProcessOutcome outcome = desktop().run(
            {"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
             "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.NameHasOwner",
             "example.tolvane.tolvane"});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return outcome.out.starts_with("(true");
    }
};

TEST_F(BusActivation, showsTheStartWindow) {
    call({"Activate", "{}"});
    quitFromOnlyWindow(startWindowTitle);
}

TEST_F(BusActivation, showsAFileAndNoOtherWindow) {
    call({"Open", "['file://" + file("letter") + "']", "{}"});
    quitFromOnlyWindow(titleOf("letter"));
}

TEST_F(BusActivation, showsTheResolverAndNoOtherWindow) {
    call({"ActivateAction", "resolver", "[]", "{}"});
    quitFromOnlyWindow(resolverTitle);
}

TEST_F(BusActivation, endsWhenNothingIsAskedFor) {
    expectGoodEnd(startTolvane({"--await-bus"}));
}

TEST_F(BusActivation, endsAfterAnActionThatItDoesNotKnow) {
    call({"ActivateAction", "unheard-of", "[]", "{}"});
    EXPECT_TRUE(isOnBus());
    EXPECT_TRUE(waitUntil([this] { return !isOnBus(); }));
}

TEST_F(BusActivation, asksNothingOfAProgramThatRuns) {
    const auto [program, letter] = startWith("letter");
    handOver({"--await-bus"});
    handOver({file("second")});
    desktop().waitForWindow(titleOf("second"));
    EXPECT_EQ(desktop().windows().size(), 2U);
    quit(letter, program);
}

TEST_F(BusActivation, opensTheResolverByACommand) {
    Process& program = startTolvane({"--resolver"});
    const std::string window = desktop().waitForWindow(resolverTitle);
    EXPECT_EQ(desktop().windows().size(), 1U);
    quit(window, program);
}

TEST_F(BusActivation, opensTheResolverInAProgramThatRuns) {
    const auto [program, letter] = startWith("letter");
    handOver({"--resolver"});
    desktop().waitForWindow(resolverTitle);
    quit(letter, program);
}

} // namespace
} // namespace tolvane::tests
