#include "platform/values/FatalError.h"

#include <gtest/gtest.h>

#include <csignal>

namespace tolvane::platform {
namespace {

TEST(FatalErrorDeathTest, writesOneLineAndAborts) {
    EXPECT_EXIT(
        fatalError("the floor is gone"), testing::KilledBySignal(SIGABRT),
        "^tolvane: fatal: the floor is gone\n$");
}

TEST(FatalErrorDeathTest, writesItsLineForAnEmptyReasonToo) {
    EXPECT_EXIT(fatalError(""), testing::KilledBySignal(SIGABRT), "^tolvane: fatal: \n$");
}

} // namespace
} // namespace tolvane::platform
