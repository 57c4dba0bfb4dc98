#include "platform/linux/RecentForkAttributes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace tolvane::platform {

namespace {

using std::chrono::milliseconds;

class RecentForkAttributesTest : public testing::Test {
protected:
    RecentForkAttributesTest() {
        status.device = 1;
        status.fileNumber = 2;
        status.changeDate = Date::fromUnixTime(100, 5);
    }

    ForkAttributes look() { return recent.ofItem("/item", status); }

    ItemStatus status;
    ForkAttributes listed{"user.com.apple.ResourceFork", nullptr};
    int lists = 0;
    std::chrono::steady_clock::time_point now;
    RecentForkAttributes recent{
        [this](const std::string&) {
            ++lists;
            return listed;
        },
        [this] { return now; }};
};

} // namespace

TEST_F(RecentForkAttributesTest, listsOnceForOneItemInOneState) {
    EXPECT_STREQ(look().resourceFork, "user.com.apple.ResourceFork");
    now += milliseconds(9);
    EXPECT_STREQ(look().resourceFork, "user.com.apple.ResourceFork");
    EXPECT_EQ(lists, 1);
}

TEST_F(RecentForkAttributesTest, listsAgainAfterAChange) {
    look();
    listed = {nullptr, "user.com.apple.FinderInfo"};
    status.changeDate = Date::fromUnixTime(100, 6);
    EXPECT_STREQ(look().finderInfo, "user.com.apple.FinderInfo");
    EXPECT_EQ(look().resourceFork, nullptr);
    EXPECT_EQ(lists, 2);
}

TEST_F(RecentForkAttributesTest, listsAgainForAnotherItem) {
    look();
    status.fileNumber = 3;
    look();
    status.device = 4;
    look();
    EXPECT_EQ(lists, 3);
}

TEST_F(RecentForkAttributesTest, forgetsAfterAFewMilliseconds) {
    look();
    now += milliseconds(10);
    look();
    EXPECT_EQ(lists, 2);
    now += milliseconds(9);
    look();
    EXPECT_EQ(lists, 2) << "the second look counts from its own time";
}

} // namespace tolvane::platform
