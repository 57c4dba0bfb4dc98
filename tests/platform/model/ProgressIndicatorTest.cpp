#include "platform/model/ProgressIndicator.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

TEST(ProgressIndicator, notifiesAboutChangesOnly) {
    ProgressIndicator indicator;
    int notified = 0;
    const Subscription subscription = indicator.observe([&notified] { ++notified; });
    indicator.setProgress({});
    EXPECT_EQ(notified, 0);
    indicator.setProgress({1, 2});
    indicator.setProgress({1, 2});
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(indicator.progress().done, 1U);
}

} // namespace
} // namespace tolvane::platform
