#include "platform/values/Date.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {
namespace {

using Seconds = std::numeric_limits<std::int64_t>;

constexpr std::int64_t reference = 978'307'200;
constexpr double infinity = std::numeric_limits<double>::infinity();

std::string descriptionAt(std::int64_t unixSeconds) {
    return Date::fromUnixTime(unixSeconds, 0).description();
}

TEST(Date, describesPointsInTime) {
    const std::pair<std::int64_t, std::string_view> cases[] = {
        {0, "1970-01-01 00:00:00 +0000"},
        {-1, "1969-12-31 23:59:59 +0000"},
        {reference, "2001-01-01 00:00:00 +0000"},
        {1'723'228'022, "2024-08-09 18:27:02 +0000"},
        {253'402'300'799, "9999-12-31 23:59:59 +0000"},
        {253'402'300'800, "10000-01-01 00:00:00 +0000"},
        {-62'135'596'800, "0001-01-01 00:00:00 +0000"},
        {-62'135'596'801, "0000-12-31 23:59:59 +0000"},
        {-62'167'219'200, "0000-01-01 00:00:00 +0000"},
        {-62'167'219'201, "-0001-12-31 23:59:59 +0000"},
        {Seconds::max(), "292277026596-12-04 15:30:07 +0000"},
        {Seconds::min(), "-292277022657-01-27 08:29:52 +0000"},
    };
    for (const auto& [unixSeconds, description] : cases) {
        EXPECT_EQ(descriptionAt(unixSeconds), description);
    }
}

TEST(Date, agreesWithTheCalendarOfTheStandardLibrary) {
    using namespace std::chrono;
    const auto compare = [](sys_days from, sys_days to, days step) {
        for (sys_days day = from; day <= to; day += step) {
            const year_month_day civil = day;
            const int year = static_cast<int>(civil.year());
            char expected[48];
            std::snprintf(
                expected, sizeof expected, "%s%04d-%02u-%02u 13:14:15 +0000", year < 0 ? "-" : "",
                std::abs(year), static_cast<unsigned>(civil.month()), static_cast<unsigned>(civil.day()));
            const auto seconds = (day.time_since_epoch() + 13h + 14min + 15s) / 1s;
            ASSERT_EQ(descriptionAt(seconds), expected);
        }
    };
    compare(sys_days{1895y / 1 / 1}, sys_days{2105y / 1 / 1}, days{1});
    compare(sys_days{-5y / 1 / 1}, sys_days{5y / 1 / 1}, days{1});
    compare(sys_days{year::min() / 1 / 1}, sys_days{year::max() / 12 / 31}, days{397});
}

TEST(Date, dropsTheFractionAndRoundsDownBeforeTheReferenceDateToo) {
    EXPECT_EQ(Date(744'920'822.5517).description(), "2024-08-09 18:27:02 +0000");
    EXPECT_EQ(Date(744'920'822.9999999).description(), "2024-08-09 18:27:02 +0000");
    const Date date(-0.25);
    EXPECT_EQ(date.description(), "2000-12-31 23:59:59 +0000");
    EXPECT_EQ(date.unixSeconds(), reference - 1);
    EXPECT_EQ(date.nanoseconds(), 750'000'000U);
    EXPECT_EQ(date.timeIntervalSinceReferenceDate(), -0.25);
    EXPECT_EQ(Date(-1e-20).unixSeconds(), reference - 1);
    EXPECT_EQ(Date(-1e-20).nanoseconds(), 999'999'999U);
}

TEST(Date, countsFromTheReferenceDate) {
    EXPECT_EQ(Date(0).iso8601(), "2001-01-01T00:00:00.000000000Z");
    EXPECT_EQ(Date(-978'307'200).iso8601(), "1970-01-01T00:00:00.000000000Z");
    EXPECT_EQ(Date::fromUnixTime(0, 0).timeIntervalSinceReferenceDate(), -978'307'200.0);
    EXPECT_EQ(Date::fromUnixTime(-1, 500'000'000).timeIntervalSinceReferenceDate(), -978'307'200.5);
}

TEST(Date, writesNineDigitsOfFractionAndMarksLongYears) {
    EXPECT_EQ(Date::fromUnixTime(1'723'228'022, 123'456'789).iso8601(), "2024-08-09T18:27:02.123456789Z");
    EXPECT_EQ(Date::fromUnixTime(0, 1).iso8601(), "1970-01-01T00:00:00.000000001Z");
    EXPECT_EQ(Date::fromUnixTime(-1, 500'000'000).iso8601(), "1969-12-31T23:59:59.500000000Z");
    EXPECT_EQ(Date::fromUnixTime(-62'167'219'201, 0).iso8601(), "-0001-12-31T23:59:59.000000000Z");
    EXPECT_EQ(Date::fromUnixTime(253'402'300'799, 0).iso8601(), "9999-12-31T23:59:59.000000000Z");
    EXPECT_EQ(Date::fromUnixTime(253'402'300'800, 0).iso8601(), "+10000-01-01T00:00:00.000000000Z");
}

TEST(Date, keepsNanosecondsThatADoubleCannotButIsEqualWhenTheDoublesAre) {
    const Date date = Date::fromUnixTime(1'723'228'022, 999'999'999);
    EXPECT_EQ(date, Date(744'920'823.0));
    EXPECT_EQ(Date(0.0), Date::fromUnixTime(reference, 0));
    EXPECT_FALSE(Date(0.0) == Date(1.0));
    ASSERT_EQ(date.timeIntervalSinceReferenceDate(), 744'920'823.0);
    EXPECT_EQ(date.description(), "2024-08-09 18:27:02 +0000");
    EXPECT_EQ(date.iso8601(), "2024-08-09T18:27:02.999999999Z");
    EXPECT_EQ(date.unixSeconds(), 1'723'228'022);
    EXPECT_EQ(date.nanoseconds(), 999'999'999U);
}

TEST(Date, holdsSecondsWithinSixtyFourBits) {
    const std::pair<double, std::int64_t> cases[] = {
        {9.21e18, 9'210'000'000'000'000'000 + reference},
        {0x1.fffffffffffffp62, Seconds::max()},
        {0x1p63, Seconds::max()},
        {std::numeric_limits<double>::max(), Seconds::max()},
        {infinity, Seconds::max()},
        {-0x1p63, Seconds::min() + reference},
        {-0x1.0000000000001p63, Seconds::min()},
        {-infinity, Seconds::min()},
    };
    for (const auto& [interval, unixSeconds] : cases) {
        const Date date(interval);
        EXPECT_EQ(date.unixSeconds(), unixSeconds) << interval;
        EXPECT_EQ(date.nanoseconds(), 0U) << interval;
        EXPECT_EQ(date.timeIntervalSinceReferenceDate(), interval);
    }
    EXPECT_EQ(Date(0x1p63).description(), "292277026596-12-04 15:30:07 +0000");
}

TEST(Date, doesNotDescribeInvalidDatesAsDatesAndHasTheStartOf1970ForNoNumber) {
    EXPECT_EQ(Date(infinity).description(), "no date (inf)");
    EXPECT_EQ(Date(-infinity).description(), "no date (-inf)");
    EXPECT_EQ(Date(1e308).description(), "no date (1e+308)");
    const Date date(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(date.description(), "no date (nan)");
    EXPECT_TRUE(std::isnan(date.timeIntervalSinceReferenceDate()));
    EXPECT_EQ(date.iso8601(), "1970-01-01T00:00:00.000000000Z");
    EXPECT_FALSE(date == date);
}

} // namespace
} // namespace tolvane::platform
