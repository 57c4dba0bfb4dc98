#include "platform/bookmark/resolution/LocalTime.h"

#include <gtest/gtest.h>

#include <limits>

namespace tolvane::platform {
namespace {

bool isAhead(double hours) {
    return isLocalTimeOf(Date(hours * 3'600), Date(0));
}

TEST(LocalTime, isAMomentInAnyZoneThatThereIs) {
    for (const double hours : {-12.0, -9.5, 0.0, 5.75, 14.0}) {
        EXPECT_TRUE(isAhead(hours)) << hours;
    }
    for (const double hours : {-12.25, 14.25, 1.1, 24.0, 1e30, -1e30}) {
        EXPECT_FALSE(isAhead(hours)) << hours;
    }
}

TEST(LocalTime, agreesToTheSecond) {
    EXPECT_TRUE(isLocalTimeOf(Date(3'600), Date(0.75))) << "local times have no fraction";
    EXPECT_FALSE(isLocalTimeOf(Date(3'601), Date(0)));
    EXPECT_FALSE(isLocalTimeOf(Date(3'599), Date(0)));
}

TEST(LocalTime, isNoneOfDatesOutsideTheCalendar) {
    EXPECT_FALSE(isLocalTimeOf(Date(0), Date(std::numeric_limits<double>::infinity())));
    EXPECT_FALSE(isLocalTimeOf(Date(-1e18), Date(1e18)));
}

} // namespace
} // namespace tolvane::platform
