#include "platform/values/FatalError.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <limits>
#include <thread>

namespace tolvane::platform {
namespace {

TEST(FatalErrorDeathTest, writesOneLineAndAborts) {
    for (const std::string reason : {"the floor is gone", ""}) {
        EXPECT_EXIT(
            fatalError(reason), testing::KilledBySignal(SIGABRT), "^tolvane: fatal: " + reason + "\n$");
    }
}

TEST(FatalErrorDeathTest, callsTheFunctionOfItsThreadFirst) {
    const auto say = [](const char* word) { return [word] { std::fputs(word, stderr); }; };
    EXPECT_EXIT(
        {
            const BeforeFatalError outer(say("outer "));
            { const BeforeFatalError inner(say("inner ")); }
            std::jthread([&] { const BeforeFatalError ofAnother(say("other ")); }).join();
            fatalError("the floor is gone");
        },
        testing::KilledBySignal(SIGABRT), "^outer tolvane: fatal: the floor is gone\n$");
    EXPECT_EXIT(
        {
            const BeforeFatalError outer(say("outer "));
            const BeforeFatalError inner([] { fatalError("again"); });
            fatalError("the floor is gone");
        },
        testing::KilledBySignal(SIGABRT), "^tolvane: fatal: again\n$");
}

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

TEST(CheckedArithmetic, addsUpToTheEdges) {
    EXPECT_EQ(checkedAdd(2, 3, "sum"), 5);
    EXPECT_EQ(checkedAdd(highest - 1, 1, "sum"), highest);
    EXPECT_EQ(checkedAdd(highest, 0, "sum"), highest);
    EXPECT_EQ(checkedAdd(lowest + 1, -1, "sum"), lowest);
    EXPECT_EQ(checkedAdd(lowest, highest, "sum"), -1);
}

TEST(CheckedArithmetic, subtractsUpToTheEdges) {
    EXPECT_EQ(checkedSubtract(2, 3, "difference"), -1);
    EXPECT_EQ(checkedSubtract(highest, 0, "difference"), highest);
    EXPECT_EQ(checkedSubtract(-1, lowest, "difference"), highest);
    EXPECT_EQ(checkedSubtract(-1, highest, "difference"), lowest);
    EXPECT_EQ(checkedSubtract(lowest, lowest, "difference"), 0);
}

TEST(CheckedArithmeticDeathTest, namesTheSumOrDifferenceThatDoesNotFit) {
    EXPECT_DEATH(checkedAdd(highest, 1, "the size of all forks"), "fatal: the size of all forks overflows");
    EXPECT_DEATH(checkedAdd(lowest, -1, "the size of all forks"), "fatal: the size of all forks overflows");
    EXPECT_DEATH(checkedSubtract(0, lowest, "the resource fork"), "fatal: the resource fork overflows");
    EXPECT_DEATH(checkedSubtract(lowest, 1, "the resource fork"), "fatal: the resource fork overflows");
}

} // namespace
} // namespace tolvane::platform
