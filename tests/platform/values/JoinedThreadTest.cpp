#include "platform/values/JoinedThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <vector>

namespace tolvane {
namespace {

using platform::JoinedThread;

TEST(JoinedThread, isWaitedForWhenTheObjectGoes) {
    std::atomic<int> finished = 0;
    {
        std::vector<JoinedThread> threads;
        for (int i = 0; i < 3; ++i) {
            threads.emplace_back([&finished] { ++finished; });
        }
    }
    EXPECT_EQ(finished, 3);
}

} // namespace
} // namespace tolvane
