#include "platform/memory/MemoryAppleScript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace tolvane::tests {
namespace {

TEST(MemoryAppleScripts, handOverTheTextsThatWereToBeRun) {
    platform::MemoryAppleScripts scripts;
    const auto first = scripts.initWithSource("first");
    const auto second = scripts.initWithSource("second \xFF");
    EXPECT_TRUE(scripts.handedOver().empty()) << "making a script does not run it";
    EXPECT_TRUE(second->executeAndReturnError());
    EXPECT_TRUE(first->executeAndReturnError());
    EXPECT_THAT(scripts.handedOver(), testing::ElementsAre("second \xFF", "first"));
}

TEST(MemoryAppleScripts, mayBeGoneBeforeTheirScripts) {
    std::unique_ptr<platform::AppleScript> script;
    {
        platform::MemoryAppleScripts scripts;
        script = scripts.initWithSource("late");
    }
    EXPECT_TRUE(script->executeAndReturnError());
}

} // namespace
} // namespace tolvane::tests
