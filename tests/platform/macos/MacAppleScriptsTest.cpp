#include "platform/macos/desktop/MacAppleScripts.h"

#include "tests/platform/macos/substitute/Substitute.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane {
namespace {

using namespace platform;
using namespace tests::macos;
using testing::ElementsAre;

class MacAppleScriptsTest : public testing::Test {
protected:
    Substitute substitute;
    MacAppleScripts scripts;
};

TEST_F(MacAppleScriptsTest, runsTheTextAsItIs) {
    const auto script = scripts.initWithSource("tell \"Finder\"\nto reveal");
    ASSERT_TRUE(script);
    EXPECT_TRUE(script->executeAndReturnError());
    EXPECT_THAT(substitute.calls, ElementsAre("script tell \"Finder\"\nto reveal", "execute"));
}

TEST_F(MacAppleScriptsTest, makesNoneWhereACallFails) {
    for (std::size_t index = 0; index < 2; ++index) {
        substitute.failCall(index);
        EXPECT_EQ(scripts.initWithSource("text"), nullptr) << index;
        EXPECT_TRUE(substitute.hasFailed()) << index;
        EXPECT_EQ(livingObjects(), 0U) << index;
    }
}

TEST_F(MacAppleScriptsTest, makesNoneOfInvalidText) {
    EXPECT_EQ(scripts.initWithSource("\xFF"), nullptr);
    EXPECT_TRUE(substitute.calls.empty());
}

TEST_F(MacAppleScriptsTest, failsWhereTheScriptDoes) {
    const auto script = scripts.initWithSource("text");
    ASSERT_TRUE(script);
    substitute.failCall(0);
    EXPECT_FALSE(script->executeAndReturnError());
}

} // namespace
} // namespace tolvane
