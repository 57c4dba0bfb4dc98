#include "platform/macos/session/MacUserSession.h"

#include "tests/platform/macos/substitute/Substitute.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace tolvane {
namespace {

using namespace platform;
using namespace tests::macos;

class MacUserSessionTest : public testing::Test {
protected:
    Substitute substitute;
    MacUserSession session;
};

TEST_F(MacUserSessionTest, describesDatesInFullForTheCurrentLocale) {
    EXPECT_EQ(session.describeForLocale(Date(0)), "a date");
    EXPECT_THAT(substitute.calls, testing::ElementsAre("formatter 4 4"));
}

TEST_F(MacUserSessionTest, describesDatesItselfWhereACallFails) {
    for (std::size_t index = 0; index < 4; ++index) {
        substitute.failCall(index);
        EXPECT_EQ(session.describeForLocale(Date(0)), "2001-01-01 00:00:00 +0000") << index;
        EXPECT_TRUE(substitute.hasFailed()) << index;
        EXPECT_EQ(livingObjects(), 0U) << index;
    }
}

TEST_F(MacUserSessionTest, describesWhatIsInNoCalendarItself) {
    const Date never(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(session.describeForLocale(never), never.description());
    EXPECT_TRUE(substitute.calls.empty());
}

TEST_F(MacUserSessionTest, returnsTheHomeFolderOrTheRoot) {
    substitute.homeFolder = [] { return newString("/Users/a"); };
    EXPECT_EQ(session.homeDirectory().path(), "/Users/a");
    substitute.homeFolder = [] { return newString("relative"); };
    EXPECT_EQ(session.homeDirectory().path(), "/");
    substitute.homeFolder = nullptr;
    EXPECT_EQ(session.homeDirectory().path(), "/");
}

TEST_F(MacUserSessionTest, readsTheClockToTheNanosecond) {
    constexpr std::int64_t year2020 = 1'577'836'800;
    const Date now = session.now();
    EXPECT_GT(now.unixSeconds(), year2020);
    EXPECT_LT(now.nanoseconds(), 1'000'000'000U);
}

TEST_F(MacUserSessionTest, returnsTheSystemsVersion) {
    EXPECT_EQ(MacProcessInfo().operatingSystemVersion(), (OperatingSystemVersion{13, 4, 1}));
}

} // namespace
} // namespace tolvane
