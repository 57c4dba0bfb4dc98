#pragma once

#include <cstdint>
#include <string>

namespace tolvane::platform {

/// A point in time: seconds since 1 January 2001 00:00:00 UTC, as the platform counts.
///
/// A double cannot represent a file's time stamp to the nanosecond, and rounding up would even show the wrong
/// second. A date therefore also keeps whole seconds and nanoseconds: those it was made from, or those
/// nearest to the double. Two dates are equal if their doubles are.
class Date {
public:
    /// From a double as stored in bookmarks and settings. Values outside the range of signed 64-bit seconds
    /// keep their double and the nearest whole seconds; NaN keeps those of 1 January 1970.
    explicit Date(double secondsSinceReferenceDate);

    /// From a file's time stamp: seconds since 1 January 1970 UTC, and nanoseconds below 1,000,000,000 to be
    /// added (-1 and 500,000,000 mean half a second before 1970).
    static Date fromUnixTime(std::int64_t seconds, std::uint32_t nanoseconds);

    double timeIntervalSinceReferenceDate() const { return interval_; }

    /// Seconds since 1 January 1970 UTC, rounded down, and the nanoseconds to add.
    std::int64_t unixSeconds() const { return unixSeconds_; }
    std::uint32_t nanoseconds() const { return nanoseconds_; }

    /// False for infinities, NaN, and values outside the range of whole seconds.
    bool hasCalendarDate() const;

    /// The form "2024-08-09 18:27:02 +0000": always UTC, fractions cut off. Years past 9999 have more digits,
    /// years before 0 a minus sign. Without a calendar date: "no date (nan)", with the number in parentheses.
    std::string description() const;

    /// The form "2024-08-09T18:27:02.123456789Z", always with nine digits of fraction. Years past 9999 have a
    /// plus sign, as ISO 8601 requires.
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
