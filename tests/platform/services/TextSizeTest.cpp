#include "platform/services/TextSize.h"

#include "tests/support/MemoryUserDefaults.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace tolvane::platform {
namespace {

TEST(TextSize, isTheStoredOneOrTheDefault) {
    MemoryUserDefaults defaults;
    EXPECT_EQ(loadFontSize(defaults, "size"), 12.0) << "nothing is stored";
    for (const auto& [stored, loaded] :
         {std::pair{0.0, 12.0},
          {3.5, 12.0},
          {-8.0, 12.0},
          {3.999, 12.0},
          {4.0, 4.0},
          {17.5, 17.5},
          {30.0, 30.0},
          {std::numeric_limits<double>::max(), std::numeric_limits<double>::max()},
          {std::numeric_limits<double>::infinity(), 12.0},
          {-std::numeric_limits<double>::infinity(), 12.0},
          {std::numeric_limits<double>::quiet_NaN(), 12.0}}) {
        defaults.setDouble(stored, "size");
        EXPECT_EQ(loadFontSize(defaults, "size"), loaded) << stored;
    }
}

TEST(TextSize, changesByOnePointWithinTheBounds) {
    struct Row {
        double size;
        double larger;
        double smaller;
    };
    for (const auto& [size, larger, smaller] :
         {Row{12.0, 13.0, 11.0}, Row{30.0, 24.0, 29.0}, Row{24.0, 24.0, 23.0}, Row{23.5, 24.0, 22.5},
          Row{4.0, 5.0, 4.0}, Row{4.5, 5.5, 4.0}}) {
        EXPECT_EQ(largerFontSize(size), larger) << size;
        EXPECT_EQ(smallerFontSize(size), smaller) << size;
    }
}

} // namespace
} // namespace tolvane::platform
