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
        return {.services = {{"example.tolvane.tolvane", programPath("tolvane") + " --await-bus"}}};
    }

    void call(std::vector<std::string> methodAndArguments) {
        const ProcessOutcome outcome = callApplication(std::move(methodAndArguments));
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
};

TEST_F(BusActivation, showsWhatIsAskedForAndNoOtherWindow) {
    using Request = std::vector<std::string>;
    for (const auto& [request, title] : std::vector<std::pair<Request, std::string>>{
             {{"Activate", "{}"}, startWindowTitle},
             {{"Open", "['file://" + file("letter") + "']", "{}"}, titleOf("letter")},
             {{"ActivateAction", "resolver", "[]", "{}"}, resolverTitle}}) {
        SCOPED_TRACE(request.front());
        call(request);
        const std::string window = desktop().waitForWindow(title);
        EXPECT_EQ(desktop().windows().size(), 1U);
        desktop().press(window, {"ctrl+q"});
        EXPECT_TRUE(waitUntil([this] { return !isOnBus(); }));
    }
}

TEST_F(BusActivation, endsWhenNothingIsAskedFor) {
    expectGoodEnd(startTolvane({"--await-bus"}));
}

TEST_F(BusActivation, endsAfterAnActionThatItDoesNotKnow) {
    call({"ActivateAction", "unheard-of", "[]", "{}"});
    EXPECT_TRUE(isOnBus());
    EXPECT_TRUE(waitUntil([this] { return !isOnBus(); }));
}

TEST_F(BusActivation, asksAProgramThatRunsForTheResolverAlone) {
    const auto [program, letter] = startWith("letter");
    handOver({"--await-bus"});
    handOver({"--resolver"});
    desktop().waitForWindow(resolverTitle);
    EXPECT_EQ(desktop().windows().size(), 2U) << "the file and what was asked for since";
    quit(letter, program);
}

} // namespace
} // namespace tolvane::tests
