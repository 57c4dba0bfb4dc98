#include "platform/freedesktop/FontConfiguration.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tolvane::platform {
namespace {

TEST(FontConfiguration, isReadBesideOtherWork) {
    FontConfiguration configuration;
    EXPECT_TRUE(configuration.isRead());
    EXPECT_TRUE(configuration.isRead());
}

TEST(FontConfigurationDeathTest, isWaitedForAtTheEnd) {
    const auto startAndEnd = [] {
        { const FontConfiguration notAskedFor; }
        std::exit(0);
    };
    EXPECT_EXIT(startAndEnd(), testing::ExitedWithCode(0), "^$");
}

} // namespace
} // namespace tolvane::platform
