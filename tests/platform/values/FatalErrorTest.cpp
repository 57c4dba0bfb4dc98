#include "platform/values/FatalError.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
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

} // namespace
} // namespace tolvane::platform
