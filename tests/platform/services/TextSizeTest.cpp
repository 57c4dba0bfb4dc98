#include "platform/services/TextSize.h"

#include "tests/support/MemoryUserDefaults.h"

#include <gtest/gtest.h>

#include <limits>

namespace tolvane::tests {
namespace {

double loadedFrom(double stored) {
    platform::MemoryUserDefaults defaults;
    defaults.setDouble(stored, "size");
    return platform::loadFontSize(defaults, "size");
}

TEST(TextSize, isTheStoredOneUnlessThatIsTooSmall) {
    EXPECT_EQ(loadedFrom(4.0), 4.0);
    EXPECT_EQ(loadedFrom(3.5), 12.0);
    EXPECT_EQ(loadedFrom(0.0), 12.0);
    EXPECT_EQ(loadedFrom(-13.0), 12.0);
    EXPECT_EQ(loadedFrom(30.0), 30.0);
    EXPECT_EQ(loadedFrom(std::numeric_limits<double>::max()), std::numeric_limits<double>::max());
}

TEST(TextSize, isTheDefaultWhereTheStoredOneIsNotFinite) {
    EXPECT_EQ(loadedFrom(std::numeric_limits<double>::infinity()), 12.0);
    EXPECT_EQ(loadedFrom(-std::numeric_limits<double>::infinity()), 12.0);
    EXPECT_EQ(loadedFrom(std::numeric_limits<double>::quiet_NaN()), 12.0);
}

} // namespace
} // namespace tolvane::tests
