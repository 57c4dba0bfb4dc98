#include "platform/memory/MemoryPasteboard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

TEST(MemoryPasteboard, holdsWhatWasWrittenSinceItWasCleared) {
    platform::MemoryPasteboard pasteboard;
    EXPECT_TRUE(pasteboard.writeObjects(std::vector<std::string>{"old"}));
    pasteboard.clearContents();
    EXPECT_TRUE(pasteboard.writeObjects(std::vector<std::string>{"a", "b"}));
    EXPECT_THAT(pasteboard.texts(), testing::ElementsAre("a", "b"));
}

} // namespace
} // namespace tolvane::tests
