#include "platform/propertylist/XMLPropertyListValues.h"

#include "platform/values/Base64.h"
#include "platform/values/DecimalNumber.h"

#include <algorithm>
#include <charconv>
#include <chrono>

namespace tolvane::platform {

namespace {

constexpr std::string_view whiteSpace = "\t\n\r ";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(whiteSpace), text.size());
    return text.substr(first, text.find_last_not_of(whiteSpace) + 1 - first);
}

/// The whole text as a number. A sign of its own is not taken.
template <typename Number>
std::optional<Number> numberOf(std::string_view text, int base) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && !text.starts_with('-') ? std::optional(number) : std::nullopt;
}

/// Takes a sign off the front; true for a minus.
bool takeSign(std::string_view& text) {
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative || text.starts_with('+') ? 1 : 0);
    return isNegative;
}

/// Takes so many decimal digits, and then this character, off the front.
std::optional<int> takeField(std::string_view& text, std::size_t digits, char end) {
    const std::string_view field = text.substr(0, digits);
    const bool isField = text.size() > digits && text[digits] == end
                         && std::ranges::all_of(field, [](char c) { return c >= '0' && c <= '9'; });
    text.remove_prefix(isField ? digits + 1 : 0);
    return isField ? numberOf<int>(field, 10) : std::nullopt;
}

} // namespace

std::optional<Value> integerInPropertyList(std::string_view text) {
    constexpr std::uint64_t largestNegative = std::uint64_t{1} << 63U;
    text = trimmed(text);
    const bool isNegative = takeSign(text);
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    text.remove_prefix(isHexadecimal ? 2 : 0);
    const auto number = numberOf<std::uint64_t>(text, isHexadecimal ? 16 : 10);
    if (!number || (isNegative && *number > largestNegative)) {
        return std::nullopt;
    }
    if (isNegative) {
        return static_cast<std::int64_t>(0 - *number);
    }
    return *number < largestNegative ? Value(static_cast<std::int64_t>(*number)) : Value(*number);
}

std::optional<Value> realInPropertyList(std::string_view text) {
    text = trimmed(text);
    const bool isNegative = takeSign(text);
    const auto number = text.starts_with('-') ? std::nullopt : decimalNumber(text);
    if (!number) {
        return std::nullopt;
    }
    return isNegative ? -*number : *number;
}

std::optional<Value> dateInPropertyList(std::string_view text) {
    constexpr std::size_t fieldsAfterYear = std::string_view("-MM-DDTHH:MM:SSZ").size();
    constexpr std::size_t mostYearDigits = 5;
    text = trimmed(text);
    const bool isBeforeYear0 = text.starts_with('-');
    text.remove_prefix(isBeforeYear0 ? 1 : 0);
    const std::size_t yearDigits = text.size() - std::min(text.size(), fieldsAfterYear);
    if (yearDigits < 4 || yearDigits > mostYearDigits) {
        return std::nullopt;
    }
    const auto year = takeField(text, yearDigits, '-');
    const auto month = takeField(text, 2, '-');
    const auto day = takeField(text, 2, 'T');
    const auto hour = takeField(text, 2, ':');
    const auto minute = takeField(text, 2, ':');
    const auto second = takeField(text, 2, 'Z');
    if (!year || !month || !day || !hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59
        || *year > static_cast<int>(std::chrono::year::max())) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{
        std::chrono::year(isBeforeYear0 ? -*year : *year), std::chrono::month(static_cast<unsigned>(*month)),
        std::chrono::day(static_cast<unsigned>(*day))};
    if (!date.ok()) {
        return std::nullopt;
    }
    const std::chrono::sys_seconds time = std::chrono::sys_days(date) + std::chrono::hours(*hour)
                                          + std::chrono::minutes(*minute) + std::chrono::seconds(*second);
    return Date::fromUnixTime(time.time_since_epoch().count(), 0);
}

std::optional<Value> dataInPropertyList(std::string_view text) {
    std::string digits(text);
    std::erase_if(digits, [](char c) { return whiteSpace.contains(c); });
    auto data = base64DecodedData(digits);
    return data ? std::optional<Value>(*std::move(data)) : std::nullopt;
}

} // namespace tolvane::platform
