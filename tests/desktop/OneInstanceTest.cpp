// Starts of the program while it runs already.
#include "tests/desktop/DesktopTest.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

namespace tolvane::tests {

namespace {

class OneInstance : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (IsSkipped()) {
            return;
        }
        firstFile = file("first");
        first = &startTolvane({firstFile});
        firstWindow = desktop().waitForWindow(titleOf("first"));
    }

    std::string firstFile;
    Process* first = nullptr;
    std::string firstWindow;
};

TEST_F(OneInstance, showsTheFilesOfASecondStart) {
    handOver({file("second"), file("third")});
    desktop().waitForWindow(titleOf("second"));
    desktop().waitForWindow(titleOf("third"));
    EXPECT_EQ(desktop().windows().size(), 3U);
    EXPECT_TRUE(Desktop::isRunning(*first));
    quit(firstWindow, *first);
    EXPECT_TRUE(desktop().windows().empty());
}

TEST_F(OneInstance, bringsAFileThatIsOpenToTheFront) {
    handOver({file("second")});
    const std::string second = desktop().waitForWindow(titleOf("second"));
    for (const std::string& name :
         {firstFile, std::string("first"), std::string("./first"), "file://" + firstFile}) {
        desktop().activate(second);
        handOver({name}, desktop().files().path());
        EXPECT_TRUE(waitUntil([&] { return desktop().activeWindow() == firstWindow; })) << name;
    }
    // A file that is asked for later is shown later, so nothing is on its way any more.
    handOver({file("last")});
    desktop().waitForWindow(titleOf("last"));
    EXPECT_EQ(desktop().windowsTitled(titleOf("first")), std::vector<std::string>{firstWindow});
    EXPECT_EQ(desktop().windows().size(), 3U);
    quit(firstWindow, *first);
}

TEST_F(OneInstance, opensTheFileOfAURLWithEscapes) {
    file("a b%ü");
    handOver({"file://" + desktop().files().path() + "/a%20b%25%C3%BC"});
    desktop().waitForWindow(titleOf("a b%ü"));
    quit(firstWindow, *first);
}

TEST_F(OneInstance, runsAloneWithoutASessionBus) {
    ProcessSetup setup;
    setup.command = {desktopProgram(), firstFile};
    setup.environment = desktop().environment();
    std::erase_if(setup.environment, [](const std::string& variable) {
        return variable.starts_with("DBUS_SESSION_BUS_ADDRESS=");
    });
    setup.environment.emplace_back("DBUS_SESSION_BUS_ADDRESS=disabled:");
    Process& alone = desktop().start(std::move(setup));
    EXPECT_TRUE(waitUntil([this] { return desktop().windowsTitled(titleOf("first")).size() == 2; }));
    EXPECT_TRUE(Desktop::isRunning(*first));
    auto windows = desktop().windowsTitled(titleOf("first"));
    std::erase(windows, firstWindow);
    ASSERT_EQ(windows.size(), 1U);
    desktop().settle();
    quit(windows.front(), alone);
    EXPECT_EQ(desktop().windowsTitled(titleOf("first")), std::vector<std::string>{firstWindow});
    quit(firstWindow, *first);
}

TEST_F(OneInstance, startsAnewAfterItHasEnded) {
    quit(firstWindow, *first);
    Process& second = startTolvane({firstFile});
    quit(desktop().waitForWindow(titleOf("first")), second);
}

TEST_F(OneInstance, losesNoFileThatComesWhileItEnds) {
    // Its last window is closed, at another moment of the start each time. Whoever gets the file shows it:
    // the instance that is about to end, or the one that was started with it.
    constexpr int rounds = 10;
    std::string window = firstWindow;
    std::string name = "first";
    Process* running = first;
    for (int round = 0; round < rounds; ++round) {
        const std::string next = "file " + std::to_string(round);
        Process& later = startTolvane({file(next)});
        std::this_thread::sleep_for(std::chrono::milliseconds(15 * round));
        desktop().press(window, {"ctrl+w"});
        const std::string nextWindow = desktop().waitForWindow(titleOf(next));
        if (HasFailure()) {
            return;
        }
        // Only when nothing else is to come is it known who shows it.
        ASSERT_TRUE(waitUntil([&] { return !Desktop::isRunning(*running) || !Desktop::isRunning(later); }));
        if (!Desktop::isRunning(*running)) {
            expectGoodEnd(*running);
            running = &later;
        } else {
            expectGoodEnd(later);
        }
        desktop().waitUntilGone(titleOf(name));
        desktop().settle();
        window = nextWindow;
        name = next;
    }
    quit(window, *running);
}

} // namespace

} // namespace tolvane::tests
