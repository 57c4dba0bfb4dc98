#include "platform/values/FatalError.h"

#include <gtest/gtest.h>

#include <csignal>

namespace tolvane::platform {
namespace {

TEST(FatalErrorDeathTest, writesOneLineAndAborts) {
    for (const std::string reason : {"the floor is gone", ""}) {
        EXPECT_EXIT(
            fatalError(reason), testing::KilledBySignal(SIGABRT), "^tolvane: fatal: " + reason + "\n$");
    }
}

} // namespace
} // namespace tolvane::platform
