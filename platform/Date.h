#pragma once

#include <cstdint>
#include <string>

namespace tolvane::platform {

/// A point in time: seconds since 1 January 2001 00:00:00 UTC, as the platform's dates count.
///
/// A double cannot hold a file's time stamp to the nanosecond, and rounding one up would even show the wrong
/// second. A date therefore also keeps whole seconds and nanoseconds: exactly those it was made from, or the
/// second that the double lies in and the nanosecond of it nearest to the double. Two dates are equal when
/// their doubles are.
class Date {
public:
    /// From a double as stored in bookmarks and settings. Values beyond the years that a signed 64-bit count
    /// of seconds can hold, and what is no number, keep their double and take the nearest whole seconds
    /// (those of 1 January 1970 for no number).
    explicit Date(double secondsSinceReferenceDate);

    /// From a file's time stamp: seconds since 1 January 1970 UTC, and nanoseconds below 1,000,000,000 that
    /// are added to them (so -1 and 500,000,000 mean half a second before 1970).
    static Date fromUnixTime(std::int64_t seconds, std::uint32_t nanoseconds);

    double timeIntervalSinceReferenceDate() const { return interval_; }

    /// Seconds since 1 January 1970 UTC, rounded down, and the nanoseconds to be added to them.
    std::int64_t unixSeconds() const { return unixSeconds_; }
    std::uint32_t nanoseconds() const { return nanoseconds_; }

    /// False for what is no finite number, and for values far past the years that whole seconds are kept for.
    bool hasCalendarDate() const;

    /// The fixed form "2024-08-09 18:27:02 +0000": always UTC, the fraction dropped, not rounded. Years past
    /// 9999 take as many digits as they need, years before the year 0 a minus sign. A value
    /// without a calendar date is "no date (nan)", with the number in the parentheses.
    std::string description() const;

    /// The form "2024-08-09T18:27:02.123456789Z", always with nine digits of fraction. Years past 9999 bear a
    /// plus sign, as the standard wants of years with more than four digits.
    std::string iso8601() const;

    friend bool operator==(const Date& a, const Date& b) { return a.interval_ == b.interval_; }

private:
    Date(double interval, std::int64_t unixSeconds, std::uint32_t nanoseconds)
        : interval_(interval)
        , unixSeconds_(unixSeconds)
        , nanoseconds_(nanoseconds) {}

    double interval_;
    std::int64_t unixSeconds_ = 0;
    std::uint32_t nanoseconds_ = 0;
};

} // namespace tolvane::platform
