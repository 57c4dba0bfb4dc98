// Starts of the program while it runs already.
#include "tests/desktop/DesktopTest.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

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

TEST_F(OneInstance, showsTheFileOfASecondStartAndBringsOneThatIsOpenToTheFront) {
    file("a b%ü");
    handOver({"file://" + desktop().files().path() + "/a%20b%25%C3%BC"});
    const std::string second = desktop().waitForWindow(titleOf("a b%ü"));
    for (const std::string& name :
         {firstFile, std::string("first"), std::string("./first"), "file://" + firstFile}) {
        desktop().activate(second);
        handOver({name}, desktop().files().path());
        EXPECT_TRUE(waitUntil([&] { return desktop().activeWindow() == firstWindow; })) << name;
    }
    // Files are shown in their order, so no other one is to come.
    handOver({file("last")});
    desktop().waitForWindow(titleOf("last"));
    EXPECT_EQ(desktop().windowsTitled(titleOf("first")), std::vector<std::string>{firstWindow});
    EXPECT_EQ(desktop().windows().size(), 3U);
    quit(firstWindow, *first);
}

TEST_F(OneInstance, runsAloneWithoutASessionBus) {
    Process& alone = startTolvane({firstFile}, {}, {"DBUS_SESSION_BUS_ADDRESS=disabled:"});
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

TEST_F(OneInstance, losesNoFileThatComesWhileItEnds) {
    // Its last window is closed at another moment of the second start each time. Either the instance that was
    // about to end shows the file, or the new one. If the file's window exists already, the key may close
    // that one.
    constexpr int rounds = 12;
    Process* running = first;
    for (int round = 0; round < rounds; ++round) {
        const std::string window = desktop().waitForWindow(titleOf("first"));
        Process& later = startTolvane({file("second")});
        std::this_thread::sleep_for(std::chrono::milliseconds(15 * round));
        desktop().press(window, {"ctrl+w"});
        ASSERT_TRUE(waitUntil([&] { return !Desktop::isRunning(*running) || !Desktop::isRunning(later); }));
        Process& left = Desktop::isRunning(later) ? later : *running;
        expectGoodEnd(&left == &later ? *running : later);
        const auto isOneWindowLeft = [this] { return desktop().windows().size() == 1; };
        EXPECT_TRUE(waitUntil(isOneWindowLeft)) << "The file is lost in round " << round;
        desktop().settle();
        ASSERT_TRUE(waitUntil(isOneWindowLeft)) << "The file is lost in round " << round;
        quit(desktop().windows().front().id, left);
        running = &startTolvane({firstFile});
    }
    quit(desktop().waitForWindow(titleOf("first")), *running);
}

TEST_F(OneInstance, opensAndClosesManyWindowsThatLeaveNothingBehind) {
    constexpr int windowsAtATime = 20;
    constexpr int rounds = 10;
    constexpr int firstMeasuredRound = 2;
    /// The allowed growth of the memory from then on.
    constexpr double mostGrowth = 1.15;
    long before = 0;
    for (int round = 1; round <= rounds; ++round) {
        std::vector<std::string> paths;
        for (int i = 0; i < windowsAtATime; ++i) {
            paths.push_back(file("file " + std::to_string(round) + " " + std::to_string(i)));
        }
        handOver(paths);
        ASSERT_TRUE(waitUntil([this] { return desktop().windows().size() == windowsAtATime + 1; }))
            << desktop().windows().size() << " windows in round " << round;
        desktop().settle();
        for (const DesktopWindow& window : desktop().windows()) {
            if (window.id != firstWindow) {
                desktop().press(window.id, {"ctrl+w"});
            }
        }
        ASSERT_TRUE(waitUntil([this] { return desktop().windows().size() == 1; }))
            << desktop().windows().size() << " windows stay in round " << round;
        if (round == firstMeasuredRound) {
            before = first->memory("VmRSS");
        }
    }
    const long after = first->memory("VmRSS");
    RecordProperty("memoryBefore", std::to_string(before));
    RecordProperty("memoryAfter", std::to_string(after));
    EXPECT_LT(static_cast<double>(after), mostGrowth * static_cast<double>(before));
    EXPECT_EQ(desktop().copiedBy(firstWindow, {"ctrl+shift+c"}), firstFile);
    quit(firstWindow, *first);
}

} // namespace
} // namespace tolvane::tests
