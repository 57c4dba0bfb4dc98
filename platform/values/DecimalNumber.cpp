#include "platform/values/DecimalNumber.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

namespace tolvane::platform {

namespace {

std::optional<double> namedNumber(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    });
    if (lower == "inf" || lower == "infinity") {
        return std::numeric_limits<double>::infinity();
    }
    return lower == "nan" ? std::optional(std::numeric_limits<double>::quiet_NaN()) : std::nullopt;
}

bool startsAsNumber(std::string_view text) {
    return text.starts_with('.') || (!text.empty() && text.front() >= '0' && text.front() <= '9');
}

/// The stream would also take blanks, a plus and hexadecimal digits.
std::optional<double> numberInDigits(std::string_view text) {
    if (!startsAsNumber(text) || text.find_first_not_of("0123456789.eE+-") != std::string_view::npos) {
        return std::nullopt;
    }
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    double number = 0;
    stream >> number;
    if (stream.fail() || stream.peek() != std::istringstream::traits_type::eof()) {
        return std::nullopt;
    }
    const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
    const bool isZero = mantissa.find_first_of("123456789") == std::string_view::npos;
    return number != 0 || isZero ? std::optional(number) : std::nullopt;
}

} // namespace

std::optional<double> decimalNumber(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative ? 1 : 0);
    auto number = numberInDigits(text);
    if (!number) {
        number = namedNumber(text);
    }
    return number && isNegative ? -*number : number;
}

} // namespace tolvane::platform
