#include "platform/linux/session/LocaleDates.h"

#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace tolvane::platform {

namespace {

/// Rounded down, so that no date is described as the next second. Nothing for dates beyond ICU's calendar,
/// for which it would describe its last date.
std::optional<UDate> millisecondsSince1970(const Date& date) {
    constexpr UDate calendarStart = -184'303'902'528'000'000.0;
    constexpr UDate calendarEnd = 183'882'168'921'600'000.0;
    constexpr UDate millisecondsPerSecond = 1'000;
    constexpr std::uint32_t nanosecondsPerMillisecond = 1'000'000;
    const std::uint32_t wholeMilliseconds = date.nanoseconds() / nanosecondsPerMillisecond;
    const UDate milliseconds =
        static_cast<UDate>(date.unixSeconds()) * millisecondsPerSecond + wholeMilliseconds;
    return milliseconds >= calendarStart && milliseconds <= calendarEnd ? std::optional(milliseconds)
                                                                        : std::nullopt;
}

constexpr std::array<std::pair<std::string_view, std::string_view>, 5> scriptModifiers{{
    {"latin", "_Latn"},
    {"cyrillic", "_Cyrl"},
    {"arabic", "_Arab"},
    {"devanagari", "_Deva"},
    {"hebrew", "_Hebr"},
}};

std::string_view scriptOf(std::string_view modifier) {
    const auto* place =
        std::ranges::find(scriptModifiers, modifier, [](const auto& entry) { return entry.first; });
    return place == scriptModifiers.end() ? std::string_view() : place->second;
}

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// Names are untrusted, and long parts make the date library crash. The limits are those of language tags.
bool canBeLocale(std::string_view name) {
    constexpr std::size_t longestName = 64;
    constexpr std::size_t longestPart = 8;
    std::size_t partLength = 0;
    for (const char c : name) {
        const bool separates = c == '_' || c == '-';
        partLength = separates ? 0 : partLength + 1;
        if ((!separates && !isLetterOrDigit(c)) || partLength > longestPart) {
            return false;
        }
    }
    return !name.empty() && name.size() <= longestName;
}

std::unique_ptr<icu::DateFormat> formatterFor(const std::string& locale) {
    return std::unique_ptr<icu::DateFormat>(icu::DateFormat::createDateTimeInstance(
        icu::DateFormat::kFull, icu::DateFormat::kFull, icu::Locale(locale.c_str())));
}

/// ICU formats dates of an unknown language in numbers alone.
bool hasWords(const icu::DateFormat& formatter) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale used = formatter.getLocale(ULOC_ACTUAL_LOCALE, status);
    const std::string_view language = used.getLanguage();
    return U_SUCCESS(status) && !language.empty() && language != "root";
}

} // namespace

LocaleDates::LocaleDates(const std::string& locale, const std::optional<std::string>& timeZone)
    : formatter_(formatterFor(locale)) {
    if (formatter_ && !hasWords(*formatter_)) {
        formatter_ = formatterFor(icuLocaleName({}));
    }
    if (formatter_ && timeZone) {
        formatter_->adoptTimeZone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(*timeZone)));
    }
}

const std::optional<std::string>& LocaleDates::describe(const Date& date) {
    if (!described_ || *described_ != date.unixSeconds()) {
        description_ = describeAnew(date);
        described_ = date.unixSeconds();
    }
    return description_;
}

std::optional<std::string> LocaleDates::describeAnew(const Date& date) const {
    const auto milliseconds = millisecondsSince1970(date);
    if (!formatter_ || !milliseconds) {
        return std::nullopt;
    }
    icu::UnicodeString text;
    std::string description;
    formatter_->format(*milliseconds, text).toUTF8String(description);
    return description.empty() ? std::nullopt : std::optional(std::move(description));
}

std::string icuLocaleName(std::string_view environmentName) {
    const auto modifierStart = std::min(environmentName.find('@'), environmentName.size());
    const auto modifier = environmentName.substr(std::min(modifierStart + 1, environmentName.size()));
    auto name = environmentName.substr(0, modifierStart);
    name = name.substr(0, name.find('.'));
    if (name == "C" || name == "POSIX" || !canBeLocale(name)) {
        return "en_US_POSIX";
    }
    const auto languageEnd = std::min(name.find('_'), name.size());
    std::string result(name.substr(0, languageEnd));
    result += scriptOf(modifier);
    result += name.substr(languageEnd);
    if (modifier == "valencia") {
        result += "_VALENCIA";
    }
    return result;
}

} // namespace tolvane::platform
