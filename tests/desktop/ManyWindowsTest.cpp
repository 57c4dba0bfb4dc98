// A long day with the program.
#include "tests/desktop/DesktopTest.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace tolvane::tests {

namespace {

using ManyWindows = DesktopTest;

constexpr int windowsAtATime = 20;
constexpr int firstMeasuredRound = 2;
/// What the memory may have grown by while five times as many windows were opened and closed.
constexpr double mostGrowth = 1.15;

constexpr int rounds = 10;

/// The memory of a process that is in use, in kilobytes.
long residentMemory(const Process& process) {
    std::ifstream status("/proc/" + std::to_string(process.id()) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::stol(line.substr(line.find(':') + 1));
        }
    }
    return 0;
}

TEST_F(ManyWindows, leaveNothingBehind) {
    Process& tolvane = startTolvane({file("kept")});
    const std::string kept = desktop().waitForWindow(titleOf("kept"));
    long before = 0;
    for (int round = 1; round <= rounds; ++round) {
        std::vector<std::string> paths;
        paths.reserve(windowsAtATime);
        for (int i = 0; i < windowsAtATime; ++i) {
            paths.push_back(file("file " + std::to_string(round) + " " + std::to_string(i)));
        }
        handOver(paths);
        ASSERT_TRUE(waitUntil([this] { return desktop().windows().size() == windowsAtATime + 1; }))
            << desktop().windows().size() << " windows in round " << round;
        desktop().settle();
        for (const DesktopWindow& window : desktop().windows()) {
            if (window.id != kept) {
                desktop().press(window.id, {"ctrl+w"});
            }
        }
        ASSERT_TRUE(waitUntil([this] { return desktop().windows().size() == 1; }))
            << desktop().windows().size() << " windows stay in round " << round;
        if (round == firstMeasuredRound) {
            before = residentMemory(tolvane);
        }
    }
    const long after = residentMemory(tolvane);
    RecordProperty("memoryBefore", std::to_string(before));
    RecordProperty("memoryAfter", std::to_string(after));
    EXPECT_GT(before, 0);
    EXPECT_LT(static_cast<double>(after), mostGrowth * static_cast<double>(before));
    EXPECT_EQ(desktop().copiedBy(kept, {"ctrl+shift+c"}), desktop().files().path("kept"));
    quit(kept, tolvane);
}

} // namespace

} // namespace tolvane::tests
