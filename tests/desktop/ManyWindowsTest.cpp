// Many windows, opened and closed.
#include "tests/desktop/DesktopTest.h"

#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using ManyWindows = DesktopTest;

constexpr int windowsAtATime = 20;
constexpr int rounds = 10;
constexpr int firstMeasuredRound = 2;
/// The allowed growth of the memory from then on.
constexpr double mostGrowth = 1.15;

TEST_F(ManyWindows, leaveNothingBehind) {
    const auto [tolvane, kept] = startWith("kept");
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
            if (window.id != kept) {
                desktop().press(window.id, {"ctrl+w"});
            }
        }
        ASSERT_TRUE(waitUntil([this] { return desktop().windows().size() == 1; }))
            << desktop().windows().size() << " windows stay in round " << round;
        if (round == firstMeasuredRound) {
            before = tolvane.memory("VmRSS");
        }
    }
    const long after = tolvane.memory("VmRSS");
    RecordProperty("memoryBefore", std::to_string(before));
    RecordProperty("memoryAfter", std::to_string(after));
    EXPECT_LT(static_cast<double>(after), mostGrowth * static_cast<double>(before));
    EXPECT_EQ(desktop().copiedBy(kept, {"ctrl+shift+c"}), desktop().files().path("kept"));
    quit(kept, tolvane);
}

} // namespace
} // namespace tolvane::tests
