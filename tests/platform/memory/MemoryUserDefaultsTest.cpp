#include "platform/memory/MemoryUserDefaults.h"

#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

TEST(MemoryUserDefaults, readsAnAbsentKeyAsZero) {
    EXPECT_EQ(platform::MemoryUserDefaults().doubleForKey("fontSize"), 0.0);
}

TEST(MemoryUserDefaults, keepsOneNumberForEachKey) {
    platform::MemoryUserDefaults defaults;
    defaults.setDouble(12.5, "fontSize");
    defaults.setDouble(14, "fontSizeRes");
    defaults.setDouble(13, "fontSize");
    EXPECT_EQ(defaults.doubleForKey("fontSize"), 13.0);
    EXPECT_EQ(defaults.doubleForKey("fontSizeRes"), 14.0);
}

TEST(MemoryUserDefaults, keepsYesAndNo) {
    platform::MemoryUserDefaults defaults;
    EXPECT_FALSE(defaults.boolForKey("noUpdateCheck"));
    defaults.setBool(true, "noUpdateCheck");
    EXPECT_TRUE(defaults.boolForKey("noUpdateCheck"));
    EXPECT_FALSE(defaults.boolForKey("fontSize"));
    defaults.setBool(false, "noUpdateCheck");
    EXPECT_FALSE(defaults.boolForKey("noUpdateCheck"));
}

} // namespace
} // namespace tolvane::tests
