#include "platform/values/Date.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace tolvane::platform {

namespace {

/// From 1 January 1970 to 1 January 2001.
constexpr std::int64_t referenceDateInUnixTime = 978'307'200;
constexpr std::int64_t secondsPerDay = 86'400;
constexpr std::uint32_t nanosecondsPerSecond = 1'000'000'000;

struct CivilDay {
    std::int64_t year;
    unsigned month;
    unsigned day;
};

std::int64_t floorDivide(std::int64_t dividend, std::int64_t divisor) {
    const std::int64_t quotient = dividend / divisor;
    return dividend % divisor < 0 ? quotient - 1 : quotient;
}

/// The remainder of floorDivide. Not computed from the quotient, whose product may overflow.
std::int64_t floorRemainder(std::int64_t dividend, std::int64_t divisor) {
    const std::int64_t remainder = dividend % divisor;
    return remainder < 0 ? remainder + divisor : remainder;
}

/// Whole seconds since 2001 as seconds since 1970, clamped to 64 bits.
std::int64_t unixSecondsOf(double wholeSeconds) {
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr double twoToThe63 = 9'223'372'036'854'775'808.0;
    if (wholeSeconds < -twoToThe63) {
        return Limits::min();
    }
    std::int64_t seconds = 0;
    if (wholeSeconds >= twoToThe63
        || __builtin_add_overflow(
            static_cast<std::int64_t>(wholeSeconds), referenceDateInUnixTime, &seconds)) {
        return Limits::max();
    }
    return seconds;
}

/// The proleptic Gregorian calendar. Counting years from March puts the leap day last, so that the month
/// follows from the day of the year alone.
CivilDay civilDayOf(std::int64_t daysSince1970) {
    constexpr std::int64_t daysPerEra = 146'097; // 400 years
    constexpr std::int64_t daysFromYear0March1To1970 = 719'468;
    const std::int64_t day = daysSince1970 + daysFromYear0March1To1970;
    const std::int64_t era = floorDivide(day, daysPerEra);
    const std::int64_t dayOfEra = day - era * daysPerEra;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1'460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const auto dayOfMonth = static_cast<unsigned>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    const auto month = static_cast<unsigned>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, dayOfMonth};
}

/// The number with leading zeros up to this many digits; longer numbers keep all of theirs.
void appendPadded(std::string& text, std::uint64_t number, std::size_t digits) {
    std::array<char, 20> written{};
    std::size_t start = written.size();
    for (; number > 0 || written.size() - start < digits; number /= 10) {
        written.at(--start) = static_cast<char>('0' + number % 10);
    }
    text.append(&written.at(start), written.size() - start);
}

void appendTwoDigits(std::string& text, std::uint64_t number) {
    const std::array digits{static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
    text.append(digits.data(), digits.size());
}

/// "2024-08-09 18:27:02" with the given character between day and time.
std::string dayAndTime(std::int64_t unixSeconds, char separator) {
    const std::int64_t days = floorDivide(unixSeconds, secondsPerDay);
    const auto secondOfDay = static_cast<std::uint64_t>(floorRemainder(unixSeconds, secondsPerDay));
    const CivilDay civil = civilDayOf(days);
    std::string text;
    text.reserve(32);
    if (civil.year < 0) {
        text += '-';
    }
    appendPadded(text, static_cast<std::uint64_t>(std::abs(civil.year)), 4);
    text += '-';
    appendTwoDigits(text, civil.month);
    text += '-';
    appendTwoDigits(text, civil.day);
    text += separator;
    appendTwoDigits(text, secondOfDay / 3'600);
    text += ':';
    appendTwoDigits(text, secondOfDay / 60 % 60);
    text += ':';
    appendTwoDigits(text, secondOfDay % 60);
    return text;
}

} // namespace

Date::Date(double secondsSinceReferenceDate) : interval_(secondsSinceReferenceDate) {
    if (std::isnan(interval_)) {
        return;
    }
    const double wholeSeconds = std::floor(interval_);
    unixSeconds_ = unixSecondsOf(wholeSeconds);
    if (std::isfinite(interval_)) {
        const double fraction = (interval_ - wholeSeconds) * nanosecondsPerSecond;
        nanoseconds_ = std::min(static_cast<std::uint32_t>(std::llround(fraction)), nanosecondsPerSecond - 1);
    }
}

Date Date::fromUnixTime(std::int64_t seconds, std::uint32_t nanoseconds) {
    const double wholeSeconds = static_cast<double>(seconds) - static_cast<double>(referenceDateInUnixTime);
    const double interval = wholeSeconds + static_cast<double>(nanoseconds) / nanosecondsPerSecond;
    return {interval, seconds, nanoseconds};
}

bool Date::hasCalendarDate() const {
    constexpr double most = 9.3e18;
    return std::abs(interval_) < most;
}

std::string Date::description() const {
    if (!hasCalendarDate()) {
        std::array<char, 32> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), interval_).ptr;
        return "no date (" + std::string(digits.data(), end) + ")";
    }
    return dayAndTime(unixSeconds_, ' ') + " +0000";
}

std::string Date::iso8601() const {
    std::string text = dayAndTime(unixSeconds_, 'T');
    constexpr std::size_t digitsOfPlainYears = 4;
    if (!text.starts_with('-') && text.find('-') > digitsOfPlainYears) {
        text.insert(0, 1, '+');
    }
    text += '.';
    appendPadded(text, nanoseconds_, 9);
    text += 'Z';
    return text;
}

} // namespace tolvane::platform
