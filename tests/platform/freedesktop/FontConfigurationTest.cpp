#include "platform/freedesktop/FontConfiguration.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

TEST(FontConfiguration, isReadBesideOtherWork) {
    FontConfiguration configuration;
    EXPECT_TRUE(configuration.isRead());
    EXPECT_TRUE(configuration.isRead());
}

TEST(FontConfiguration, isWaitedForAtTheEnd) {
    const FontConfiguration first;
    const FontConfiguration second;
}

} // namespace
} // namespace tolvane::platform
